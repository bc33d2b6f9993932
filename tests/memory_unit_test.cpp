// Operations with one failed allocation, each allocation in turn: the operation has its result or
// reports that it has not, and the next one works. fuzz/allocation_unit_fuzz.cpp does the same with
// quicker operations.
#include <gtest/gtest.h>

#include <atomic>
#include <climits>
#include <cstdlib>
#include <functional>
#include <string>

#include "genutil.h"
#include "tests/support/allocation_gate.h"
#include "tests/support/code_set_guard.h"
#include "tests/support/reported_failures.h"
#include "tests/support/temporary_file.h"

namespace {

std::string Text(const CGNString& text) {
    return static_cast<const char*>(text);
}

// Operations, each with the text that it results in. A failure is reported or makes the text empty.
const struct {
    const char* name;
    std::function<std::string()> run;
} kOperations[] = {
    {"catalogue of locales",
     [] {
         LocaleInfo::Free();
         CGNString name("ja_JP"), description;
         LocaleInfo::GetLocaleDescriptionFromLocale(name, description, mbSelectAll);
         return Text(description);
     }},
    {"catalogue of zones",
     [] {
         CLCTimeZoneInfo::Free();
         CLCTimeZoneInfo* const info = CLCTimeZoneInfo::GetInfoItemFromTimeZone("Asia/Tokyo");
         return info ? Text(info->GetDisplayText()) : "";
     }},
    {"resource library",
     [] {
         CGNString text;
         if (CGNLclSt* const variables = CGNLclSt::Instance()) variables->Init(4);
         OSAttachLocaleResDLLTS(TEST_RESOURCES "texts.dll");
         OSLoadString(text, 1000);
         OSDetachLocaleResDLLTS();
         CGNLclSt::Free();
         return Text(text);
     }},
    {"build version",
     [] {
         COSBuildVersion version(TEST_RESOURCES "texts.dll");
         return version.Init() ? Text(version.GetVersionString()) : "";
     }},
    {"trace settings",
     [] {
         OSSetThreaded();
         const TemporaryFile file;
         CGNString path(file.Path());
         CGNTrace trace;
         const bool isSet = trace.Init() && trace.ResetFormat("<{message}>") &&
                            trace.ResetModules("m,a long name of a module") &&
                            trace.ResetOutput(1, path, 1) && trace.ResetRotation(1) &&
                            trace.ResetAsync(1) && CGNTrace::KeepLastLines(5, file.Path());
         trace.ResetMask(1);
         trace.WriteMsg(nullptr, 1, "m", "%s", "text");
         trace.Flush();
         CGNTrace::KeepLastLines(0, nullptr);
         return isSet ? file.Bytes() : "";
     }},
    {"locks",
     [] {
         OSSetThreaded();
         _osmutex* mutex = OSMutexCreate();
         _osrdwr* lock = OSRWLockCreate();
         _oscondition* condition = OSConditionCreate();
         std::atomic<int> entered{0};
         if (OSMutexTryWait(mutex, OSNoLimit)) {
             ++entered;
             OSConditionWaitFor(condition, mutex, 1);
             OSMutexRelease(mutex);
         }
         if (OSRWLockWriteTryWait(lock, 0)) ++entered;
         CGNNamedMutexPool pool;
         if (pool.Init() && pool.WaitNamedMutex("name", 0)) ++entered;
         {
             OSThread thread([&] { ++entered; });
         }
         const bool isComplete = entered == 4 && condition;
         OSRWLockDestroy(lock);
         OSConditionDestroy(condition);
         OSMutexDestroy(mutex);
         return isComplete ? "entered" : "";
     }},
    {"ini file",
     [] {
         const TemporaryFile file("[s]\nk=v\n");
         const std::string path = std::string("./") + file.Path();
         CGNString value;
         OSSetConfig("another value", "s", "k", path.c_str());
         OSGetConfig(value, "", "s", "k", path.c_str());
         return Text(value);
     }},
    {"registry",
     [] {
         static const CGNString base("Software\\genutil test"), key("memory"), name("name");
         CGNString value;
         CGNStringList names, values;
         OSSetSystemConfigReg("text", key, name, base);
         OSGetSystemConfigReg(value, "", key, name, base);
         OSGetSystemConfigReg(key, names, values, base);
         OSDelSystemConfigReg(key, name, base);
         return names.GetCount() == 1 && names.GetItem(0) ? Text(value) + Text(*names.GetItem(0))
                                                          : "";
     }},
    {"program run",
     [] {
         CGNString output;
         OSRunSyncProcess("..\\process_child print a b", output);
         return Text(output);
     }},
};

TEST(Memory, FailedAllocationsAreReportedAndTheNextCallWorks) {
    const CodeSetGuard japanese(mbShiftJis);
    CLCGlobalLocale::Instance()->SetLocale("en_US");
    for (const auto& operation : kOperations) {
        SCOPED_TRACE(operation.name);
        const std::string expected = operation.run();
        EXPECT_NE(expected, "");
        for (int failing = 0; failing < 5000; failing += failing < 60 ? 1 : failing / 8) {
            const ReportedFailures reported;
            std::string result;
            bool done;
            {
                const AllocationGate gate(failing, 1);
                result = operation.run();
                done = gate.Count() <= failing;
            }
            EXPECT_TRUE(result == expected || result.empty() || reported.Count() > 0)
                << failing << ": " << result;
            ASSERT_EQ(operation.run(), expected) << failing;
            if (done) {
                EXPECT_EQ(result, expected);
                break;
            }
        }
    }
}

}  // namespace
