#include "genutil/mbutil/code_page.h"

#include <new>

#include "genutil/mbutil/code_page_fill.h"
#include "genutil/mbutil/code_set_info.h"
#include "mbutil.h"

namespace genutil {

namespace {

// The Windows code page of each code set, or 0 if it has none.
constexpr std::uint16_t kCodePages[kCodePageSlots] = {
    1252, 28591, 28605, 0,     0,     932,   1252,  936,   0,     950,   0, 949,  // 0 to 11
    1361, 0,     28592, 28593, 28594, 28595, 28596, 28597, 28598, 28599, 0,       // 12 to 22
    1250, 1251,  1253,  1254,  1255,  1256,  1257,  1258,                         // 23 to 30
    0,    0,     0,     0,     0,     0,     0,     0,     0,     874,            // 31 to 40
};

Substitute SubstituteOf(int codeSet) {
    if (codeSet >= mbJis && codeSet <= mbShiftJis) return Substitute::kGeta;
    return codeSet == mbUtf16 || codeSet == mbUtf8 ? Substitute::kReplacement
                                                   : Substitute::kQuestion;
}

bool Fill(CodePage& page, int codeSet) {
    page.substitute = SubstituteOf(codeSet);
    switch (codeSet) {
        case mbJis:
            page.form = CodeForm::kIso2022Jp;
            return (page.base = FindCodePage(mbEucJp)) != nullptr;
        case mbIso2022Cn:
            page.form = CodeForm::kIso2022Cn;
            page.base = FindCodePage(mbEucCn);
            return page.base && (page.secondBase = FindCodePage(mbEucTw));
        case mbIso2022Kr:
            page.form = CodeForm::kIso2022Kr;
            return (page.base = FindCodePage(mbEucKr)) != nullptr;
        case mbUtf16:
            page.form = CodeForm::kUtf16;
            return true;
        case mbUtf8:
            page.form = CodeForm::kUtf8;
            return true;
        case mbEucJp:
            return FillEucJp(page) && FillBack(page, codeSet);
        case mbEucCn:
            return FillCutToEuc(page, kCodePages[mbGb2312]) && FillBack(page, codeSet);
        case mbEucKr:
            return FillCutToEuc(page, kCodePages[mbKorean]) && FillBack(page, codeSet);
        case mbEucTw:
            return FillEucTw(page, FindCodePage(mbBig5)) && FillBack(page, codeSet);
        case mbJohab:
            return FillJohab(page) && FillBack(page, codeSet);
        case mb8859_10:
            return Fill8859_10(page) && FillBack(page, codeSet);
        default:
            return FillWindows(page, kCodePages[codeSet]) && FillBack(page, codeSet);
    }
}

}  // namespace

std::atomic<const CodePage*> g_codePages[kCodePageSlots];

// Two threads may fill the same tables concurrently. The first to finish publishes its own. Tables
// are never released, so pointers to them remain valid.
const CodePage* FillCodePage(int codeSet) {
    if (!FindCodeSet(codeSet)) return nullptr;
    std::unique_ptr<CodePage> made(new (std::nothrow) CodePage);
    if (!made || !Fill(*made, codeSet)) return nullptr;
    const CodePage* first = nullptr;
    if (!g_codePages[codeSet].compare_exchange_strong(first, made.get(), std::memory_order_acq_rel))
        return first;
    return made.release();
}

const CodePage* BigEndianUtf16() {
    static const struct BigEndianPage : CodePage {
        BigEndianPage() {
            form = CodeForm::kUtf16BigEndian;
            substitute = Substitute::kReplacement;
        }
    } page;
    return &page;
}

const CodePage* FindCodePage(int codeSet) {
    if (const CodePage* page = FindListedCodePage(codeSet)) return page;
    return FindCodeSet(codeSet) ? nullptr : FindListedCodePage(mbWestern);
}

}  // namespace genutil
