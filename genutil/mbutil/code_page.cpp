#include "genutil/mbutil/code_page.h"

#include <new>

#include "genutil/mbutil/code_page_fill.h"
#include "genutil/mbutil/code_set_info.h"
#include "mbutil.h"

namespace genutil {

namespace {

// The Windows code page of each code set, or 0 if it has none.
constexpr std::uint16_t kCodePages[] = {
    1252, 28591, 28605, 0,     0,     932,   1252,  936,   0,     950,   0, 949,  // 0 to 11
    1361, 0,     28592, 28593, 28594, 28595, 28596, 28597, 28598, 28599, 0,       // 12 to 22
    1250, 1251,  1253,  1254,  1255,  1256,  1257,  1258,                         // 23 to 30
    0,    0,     0,     0,     0,     0,     0,     0,     0,     874,            // 31 to 40
};
constexpr std::uint16_t kMoreCodePages[] = {20866, 21866, 437, 850, 852, 866};  // 105 to 110

unsigned CodePageOf(int codeSet) {
    return codeSet < mbKoi8R ? kCodePages[codeSet] : kMoreCodePages[codeSet - mbKoi8R];
}

template <CodeForm kForm>
const CodePage* UnicodePage() {
    static const struct Page : CodePage {
        Page() {
            form = kForm;
            substitute = Substitute::kReplacement;
        }
    } page;
    return &page;
}

Substitute SubstituteOf(int codeSet) {
    if (codeSet >= mbJis && codeSet <= mbShiftJis) return Substitute::kGeta;
    const bool unicode = codeSet == mbUtf16 || codeSet == mbUtf8 || codeSet >= mbUtf16Be;
    return unicode ? Substitute::kReplacement : Substitute::kQuestion;
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
            return FillCutToEuc(page, 936) && FillBack(page, codeSet);
        case mbEucKr:
            return FillCutToEuc(page, 949) && FillBack(page, codeSet);
        case mbEucTw:
            return FillEucTw(page, FindCodePage(mbBig5)) && FillBack(page, codeSet);
        case mbJohab:
            return FillJohab(page) && FillBack(page, codeSet);
        case mbGb18030:
            return FillGb18030(page) && FillBack(page, codeSet);
        case mb8859_10:
            return Fill8859(page, 10) && FillBack(page, codeSet);
        case mb8859_11:
            return Fill8859(page, 11) && FillBack(page, codeSet);
        case mb8859_13:
            return Fill8859(page, 13) && FillBack(page, codeSet);
        case mb8859_14:
            return Fill8859(page, 14) && FillBack(page, codeSet);
        case mb8859_16:
            return Fill8859(page, 16) && FillBack(page, codeSet);
        case mbUtf16Be:
            page.form = CodeForm::kUtf16BigEndian;
            return true;
        case mbUtf32:
            page.form = CodeForm::kUtf32;
            return true;
        case mbUtf32Be:
            page.form = CodeForm::kUtf32BigEndian;
            return true;
        default:
            return FillWindows(page, CodePageOf(codeSet)) && FillBack(page, codeSet);
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

const CodePage* PageOfForm(CodeForm form) {
    switch (form) {
        case CodeForm::kUtf16BigEndian:
            return UnicodePage<CodeForm::kUtf16BigEndian>();
        case CodeForm::kUtf32:
            return UnicodePage<CodeForm::kUtf32>();
        case CodeForm::kUtf32BigEndian:
            return UnicodePage<CodeForm::kUtf32BigEndian>();
        default:
            return UnicodePage<CodeForm::kUtf16>();
    }
}

const CodePage* FindCodePage(int codeSet) {
    if (codeSet >= kFirstConversionOnly) return FindListedCodePage(mbWestern);
    if (const CodePage* page = FindListedCodePage(codeSet)) return page;
    return FindCodeSet(codeSet) ? nullptr : FindListedCodePage(mbWestern);
}

}  // namespace genutil
