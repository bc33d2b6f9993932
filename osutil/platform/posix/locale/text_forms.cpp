// Normal forms and order of texts, through ICU.
#include "osutil/platform/locale/text_forms.h"

#include <unicode/uchar.h>
#include <unicode/ucol.h>
#include <unicode/unorm2.h>

#include <algorithm>

#include "genutil/allocate.h"
#include "osutil/platform/posix/locale/user_collator.h"

namespace genutil::platform {

namespace {

static_assert(sizeof(UChar) == sizeof(std::uint16_t));
const UChar* AsUnits(const std::uint16_t* text) {
    return reinterpret_cast<const UChar*>(text);
}
UChar* AsUnits(std::uint16_t* text) {
    return reinterpret_cast<UChar*>(text);
}

const UNormalizer2* NormalizerOf(NormalForm form) {
    UErrorCode error = U_ZERO_ERROR;
    switch (form) {
        case NormalForm::kC:
            return unorm2_getNFCInstance(&error);
        case NormalForm::kD:
            return unorm2_getNFDInstance(&error);
        case NormalForm::kKC:
            return unorm2_getNFKCInstance(&error);
        default:
            return unorm2_getNFKDInstance(&error);
    }
}

// Returns a full-width or half-width character in its usual width.
std::uint16_t UsualWidth(std::uint16_t c) {
    const int type = u_getIntPropertyValue(c, UCHAR_DECOMPOSITION_TYPE);
    if (type != U_DT_WIDE && type != U_DT_NARROW) return c;
    UChar usual[2];
    UErrorCode error = U_ZERO_ERROR;
    const UNormalizer2* normalizer = unorm2_getNFKCInstance(&error);
    const int32_t n = unorm2_getRawDecomposition(normalizer, c, usual, 2, &error);
    return n == 1 && U_SUCCESS(error) ? usual[0] : c;
}

std::uint16_t Hiragana(std::uint16_t c) {
    const bool katakana = (c >= 0x30A1 && c <= 0x30F6) || c == 0x30FD || c == 0x30FE;
    return katakana ? static_cast<std::uint16_t>(c - 0x60) : c;
}

// ICU's collation ignores case, width and kana together or not at all, so the differences to ignore
// are removed from the text first.
void MakeSame(std::uint16_t* text, std::size_t length, unsigned options) {
    for (std::size_t i = 0; i < length; ++i) {
        if (options & kIgnoreWidth) text[i] = UsualWidth(text[i]);
        if (options & kIgnoreCase) text[i] = FoldCase(text[i]);
        if (options & kIgnoreKana) text[i] = Hiragana(text[i]);
    }
}

// A text in which ignored differences are removed. Units() is null if allocation fails.
class Comparable {
  public:
    Comparable(const std::uint16_t* text, std::size_t length, unsigned options) : m_text(text) {
        if ((options & (kIgnoreCase | kIgnoreWidth | kIgnoreKana)) == 0) return;
        m_copy.Reset(static_cast<std::uint16_t*>(Allocate(std::uint64_t{length} * 2 + 2)));
        m_text = m_copy.Get();
        if (!m_text) return;
        std::copy_n(text, length, m_copy.Get());
        MakeSame(m_copy.Get(), length, options);
    }
    const UChar* Units() const { return AsUnits(m_text); }

  private:
    Owned<std::uint16_t> m_copy;
    const std::uint16_t* m_text;
};

// Opens each collator once and keeps it, like UserCollator().
const UCollator* CollatorOf(unsigned options) {
    if (!(options & (kDigitsAsNumbers | kIgnoreWidth))) return UserCollator();
    static const UCollator* const numeric = OpenUserCollator(true);
    static const UCollator* const plain = OpenUserCollator(false);
    return options & kDigitsAsNumbers ? numeric : plain;
}

}  // namespace

std::uint16_t FoldCase(std::uint16_t character) {
    const UChar32 folded = u_foldCase(character, U_FOLD_CASE_DEFAULT);
    return folded >= 0 && folded <= 0xFFFF ? static_cast<std::uint16_t>(folded) : character;
}

std::int64_t Normalize(NormalForm form, const std::uint16_t* text, std::size_t length,
                       std::uint16_t* out, std::size_t room) {
    UErrorCode error = U_ZERO_ERROR;
    const UNormalizer2* const normalizer = NormalizerOf(form);
    if (!normalizer) return -1;
    const int32_t n = unorm2_normalize(normalizer, AsUnits(text), static_cast<int32_t>(length),
                                       AsUnits(out), static_cast<int32_t>(room), &error);
    return U_SUCCESS(error) || error == U_BUFFER_OVERFLOW_ERROR ? n : -1;
}

int CompareTexts(const std::uint16_t* a, std::size_t aLength, const std::uint16_t* b,
                 std::size_t bLength, unsigned options) {
    const Comparable x(a, aLength, options), y(b, bLength, options);
    if (!x.Units() || !y.Units()) return CompareTexts(a, aLength, b, bLength, 0);
    if (const UCollator* collator = CollatorOf(options))
        return ucol_strcoll(collator, x.Units(), static_cast<int32_t>(aLength), y.Units(),
                            static_cast<int32_t>(bLength));
    const bool less = std::lexicographical_compare(x.Units(), x.Units() + aLength, y.Units(),
                                                   y.Units() + bLength);
    return less ? -1 : !std::equal(x.Units(), x.Units() + aLength, y.Units(), y.Units() + bLength);
}

std::int64_t SortKey(const std::uint16_t* text, std::size_t length, unsigned options, char* out,
                     std::size_t room) {
    const UCollator* const collator = CollatorOf(options);
    if (!collator) return -1;
    const Comparable comparable(text, length, options);
    if (!comparable.Units()) return -1;
    const int32_t n =
        ucol_getSortKey(collator, comparable.Units(), static_cast<int32_t>(length),
                        reinterpret_cast<std::uint8_t*>(out), static_cast<int32_t>(room));
    return n == 0 ? -1 : n - 1;  // excluding the terminator, for which there must be room
}

}  // namespace genutil::platform
