// Operations with one failed allocation, each allocation in turn: the operation has its result or
// reports that it has not, and the next one works. Strings, lists, numbers and dates do the same in
// the fuzz targets; locales, files and threads beside their tests.
#include <gtest/gtest.h>

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

// The text that an operation has allocated for its caller.
template <class Call>
std::string Given(Call call) {
    char* out = nullptr;
    const bool good = call(&out);
    const std::string text = good && out ? out : "";
    if (good) std::free(out);
    return text;
}

template <class Value>
std::string Shown(Value& value) {
    CGNString text;
    value.GetDisplayBuffer(text);
    return Text(text);
}

// Japanese in Shift-JIS that is longer than any buffer on the stack.
const std::string& LongText() {
    static const std::string s_text = [] {
        std::string text;
        for (int i = 0; i < 300; ++i) text += "\x93\xFA\x96{a";
        return text;
    }();
    return s_text;
}

std::string ReadLine(const TemporaryFile& file, int codeSet) {
    char line[80] = "";
    const OpenFile stream(file.Path(), "rb");
    return mbfgets(line, sizeof line, stream, codeSet) ? line : "";
}

std::string Converted(const std::function<int(const char*, const char*)>& convert) {
    const TemporaryFile in("\x93\xFA\x96{\n\x8C\xEA\n"), out;
    return convert(in.Path(), out.Path()) ? out.Bytes() : "";
}

std::string PartOf(const char* locale, int part) {
    char text[80] = "";
    const mbLocale opened = mbOpenLocale(locale, mbOpenBest, nullptr);
    if (!opened || !mbGetLocalePart(opened, part, text, sizeof text)) text[0] = 0;
    mbCloseLocale(opened);
    return text;
}

// Operations, each with the text that it results in. A failure is reported or makes the text empty.
const struct {
    const char* name;
    std::function<std::string()> run;
} kOperations[] = {
    {"mbConvertAlloc",
     [] {
         return Given([](char** out) {
             return mbConvertAlloc("\x93\xFA", 2, mbShiftJis, out, mbUtf8, nullptr);
         });
     }},
    {"mbConvertToUTF8",
     [] { return Given([](char** out) { return mbConvertToUTF8("\x93\xFA", out, "ja_JP"); }); }},
    {"mbConvertFromUTF8",
     [] { return Given([](char** out) { return mbConvertFromUTF8("\xE6\x97\xA5", out); }); }},
    {"mbUrlDecode", [] { return Given([](char** out) { return mbUrlDecode("a%41", out); }); }},
    {"MaxStringLengthOnWinAndUnix",
     [] {
         const CodeSetGuard chinese(mbBig5);
         const unsigned length = MaxStringLengthOnWinAndUnix(
             "\xA4\xA4"
             "a");
         return length ? std::to_string(length) : "";
     }},
    {"mbfgets", [] { return ReadLine(TemporaryFile("\xC6\xFC\xCB\xDC\n"), mbEucJp); }},
    {"mbfputs",
     [] {
         const TemporaryFile file;
         const OpenFile stream(file.Path(), "wb");
         mbfputs("\x93\xFA", stream, mbEucJp);
         std::fflush(stream);
         return file.Bytes();
     }},
    {"mbconvertnativefile",
     [] {
         return Converted([](const char* in, const char* out) {
             return mbconvertnativefile(in, out, 0, mbEucJp);
         });
     }},
    {"mbconvertfile2native_ex",
     [] {
         return Converted([](const char* in, const char* out) {
             return mbconvertfile2native_ex(in, out, 0, mbShiftJis, mbUtf8, nullptr);
         });
     }},
    {"mbOpenLocale", [] { return PartOf("ja_JP", mbPartCountry); }},
    {"mbDisplayTZone",
     [] {
         char text[200] = "";
         mbDisplayTZone(text, sizeof text, "Asia/Tokyo");
         return std::string(text);
     }},
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
    {"moment shown",
     [] {
         CGNDateTime moment(1269093600);
         moment.FormatForDisplay(2);
         return Shown(moment);
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
    {"ini file",
     [] {
         const TemporaryFile file("[s]\nk=v\n");
         const std::string path = std::string("./") + file.Path();
         CGNString value;
         OSSetConfig("another value", "s", "k", path.c_str());
         OSGetConfig(value, "", "s", "k", path.c_str());
         return Text(value);
     }},
    {"preferences",
     [] {
         const TemporaryFile file("[s]\na=1\nb=2\n");
         const std::string path = std::string("./") + file.Path();
         CGNString values;
         OSLocalPreferenceSet().GetPreferenceSectionValueFromIni("s", values, path.c_str());
         return Text(values);
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
    {"text of the environment",
     [] { return Text(OSExpandEnvironmentVariables(("%NONE%" + LongText()).c_str())); }},
    {"program run",
     [] {
         CGNString output;
         OSRunSyncProcess("..\\process_child print a b", output);
         return Text(output);
     }},
    {"stopwatch",
     [] {
         const TemporaryFile file;
         OSSetPerf(1);
         CGNPerf::OpenFile(file.Path());
         { const CGNPerf perf("a stopwatch"); }
         CGNPerf::CloseFile();
         OSSetPerf(0);
         return std::string(file.Bytes().empty() ? "" : "logged");
     }},
    {"staying awake",
     [] {
         const OSKeepAwake first, second;
         return std::string("asked");
     }},
    {"mbstrcoll", [] { return std::to_string(mbstrcoll(LongText().c_str(), "\x93\xFA")); }},
    {"OLE value",
     [] {
         COSOLEValue array;
         if (!array.SetArray(2)) return std::string();
         *array.GetItem(0) = COSOLEValue(LongText().c_str());
         COSOLEArguments arguments;
         arguments.Add(array).Add(7);
         COSOLEArguments copy(arguments);
         CGNString text;
         copy = arguments;
         return array.GetItem(0)->GetText(text) ? Text(text) : "";
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
