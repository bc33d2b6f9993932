// Operations in any order, in which an allocation fails. Each gives its result or reports a
// failure, and the next one works. The first byte chooses the operation, the second the allocation.
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <iterator>
#include <string>

#include "fuzz/check.h"
#include "genutil.h"
#include "tests/support/allocation_gate.h"
#include "tests/support/code_set_guard.h"
#include "tests/support/reported_failures.h"
#include "tests/support/temporary_file.h"

namespace {

std::string Text(const CGNString& text) {
    return static_cast<const char*>(text);
}

// Returns a text that an operation has allocated for its caller.
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

// A Japanese text in Shift-JIS that is longer than any buffer on the stack.
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

// Operations, each with its resulting text.
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
    {"moment shown",
     [] {
         CGNDateTime moment(1269093600);
         moment.FormatForDisplay(2);
         return Shown(moment);
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
         // A text that could not be allocated is empty, and an empty subkey means the parent.
         static const CGNString s_base(("genutil allocation " + std::string(100, 'b')).c_str()),
             s_sub("sub"), s_name("v"), s_kept("kept"), s_below("below");
         CGNString parent("kept"), value;
         OSSetSystemConfigReg(s_kept, "", s_name, s_base);
         OSSetSystemConfigReg(s_below, s_sub, s_name, s_base);
         OSGetSystemConfigReg(parent, s_kept, "", s_name, s_base);
         Check(parent == "kept" || parent.IsEmpty(), "the value of the parent key changes");
         OSGetSystemConfigReg(value, "", s_sub, s_name, s_base);
         return Text(value);
     }},
    {"text of the environment",
     [] { return Text(OSExpandEnvironmentVariables(("%NONE%" + LongText()).c_str())); }},
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

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size < 2) return 0;
    static std::string expected[std::size(kOperations)];
    static const bool isReady = [] {
        mbIsMultiByte();
        InitMbutilExt(mbShiftJis);
        CLCGlobalLocale::Instance()->SetLocale("en_US");
        for (std::size_t i = 0; i < std::size(kOperations); ++i) expected[i] = kOperations[i].run();
        return true;
    }();
    const std::size_t index = data[0] % std::size(kOperations);
    Check(isReady && !expected[index].empty(), kOperations[index].name);
    const ReportedFailures reported;
    std::string result;
    {
        const AllocationGate gate(data[1] % 64, 1);
        result = kOperations[index].run();
    }
    Check(result == expected[index] || result.empty() || reported.Count() > 0,
          kOperations[index].name);
    Check(kOperations[index].run() == expected[index], kOperations[index].name);
    return 0;
}
