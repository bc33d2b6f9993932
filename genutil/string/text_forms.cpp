// CGNString's forms in Unicode and UTF-8, and its order with options.
#include "osutil/platform/locale/text_forms.h"

#include <cstring>

#include "genstring.h"
#include "genutil/mbutil/code_page.h"
#include "genutil/mbutil/code_set_info.h"
#include "genutil/mbutil/wide_convert.h"
#include "genutil/string/storage.h"
#include "genutil/string/wide_view.h"
#include "mbutil.h"

using genutil::NewText;
using genutil::Owned;
using genutil::Placing;
using Storage = genutil::StringStorage;
using Wide = unsigned short;
namespace platform = genutil::platform;

// -- UTF-8 ---------------------------------------------------------------------------------------

namespace {

// Converts a text to another code set and stores it and the number of lost characters.
bool StoreConverted(CGNString& out, const char* text, int from, int to, unsigned int* lost) {
    mbConversion report{};
    char* made = nullptr;
    const bool done = mbConvertAlloc(text, std::strlen(text), from, &made, to, &report);
    if (lost) *lost = static_cast<unsigned int>(report.lost);
    const bool fits = done && report.produced <= genutil::kMaxTextLength;
    if (!genutil::AssertAllocation(fits, "genutil/genstr", __LINE__)) {
        genutil::Release(made);
        return false;
    }
    Storage::Adopt(out, made, report.produced, report.produced, Placing::kStored);
    return true;
}

// Returns the code set that the characters of strings are read in, which is Western if the current
// number is not listed.
int CurrentCodeSet() {
    mbIsMultiByte();  // initialises
    const int codeSet = mbGetLocaleCodeSet();
    const bool isListed = codeSet < genutil::kFirstConversionOnly && genutil::FindCodeSet(codeSet);
    return isListed ? codeSet : mbWestern;
}

}  // namespace

unsigned char CGNString::ToUtf8(CGNString& out, unsigned int* lost) const {
    return StoreConverted(out, m_data, CurrentCodeSet(), mbUtf8, lost);
}

unsigned char CGNString::FromUtf8(const char* text, unsigned int* lost) {
    return StoreConverted(*this, text ? text : "", mbUtf8, CurrentCodeSet(), lost);
}

// -- Normal forms --------------------------------------------------------------------------------

unsigned char CGNString::Normalize(NormalForm form) {
    if (form > kNormalFormKD || !Storage::EnsureWide(*this) || Storage::IsBroken(*this)) return 0;
    const auto platformForm = static_cast<platform::NormalForm>(form);
    std::uint64_t room = std::uint64_t{m_wideLength} + m_wideLength / 2 + 16;
    for (int attempt = 0; attempt < 4; ++attempt) {
        const Owned<Wide> normal(NewText<Wide>(room));
        if (!normal.Get()) return 0;
        const std::int64_t length = platform::Normalize(
            platformForm, m_wide, m_wideLength, normal.Get(), static_cast<std::size_t>(room));
        if (length < 0) return 0;
        if (static_cast<std::uint64_t>(length) > room) {
            room = static_cast<std::uint64_t>(length);
            continue;
        }
        const auto count = static_cast<std::size_t>(length);
        if (genutil::NarrowLength(normal.Get(), count) < 0) return 0;
        std::uint32_t bytes;
        char* const text =
            genutil::NewNarrowText(static_cast<const Wide*>(normal.Get()), count, &bytes);
        if (!text) return 0;
        Storage::Adopt(*this, text, bytes, bytes, Placing::kStored);
        return 1;
    }
    return 0;
}

// -- Order ---------------------------------------------------------------------------------------

static_assert(unsigned{CGNString::kIgnoreCase} == platform::kIgnoreCase);
static_assert(unsigned{CGNString::kIgnoreWidth} == platform::kIgnoreWidth);
static_assert(unsigned{CGNString::kIgnoreKana} == platform::kIgnoreKana);
static_assert(unsigned{CGNString::kDigitsAsNumbers} == platform::kDigitsAsNumbers);

int CGNString::Collate(const CGNString& other, unsigned int options) const {
    const genutil::WideView theirs(other.m_wide, other.m_wideLength, other.m_data, other.m_length);
    if (!Storage::EnsureWide(*this) || !theirs.Characters())
        return std::strcmp(m_data, other.m_data);
    return platform::CompareTexts(m_wide, m_wideLength, theirs.Characters(), theirs.Length(),
                                  options & platform::kAllCollation);
}

unsigned char CGNString::GetSortKey(CGNString& key, unsigned int options) const {
    if (!Storage::EnsureWide(*this)) return 0;
    const auto make = [&](char* out, std::uint64_t room) {
        return platform::SortKey(m_wide, m_wideLength, options & platform::kAllCollation, out,
                                 static_cast<std::size_t>(room));
    };
    const std::int64_t length = make(nullptr, 0);
    if (!genutil::AssertAllocation(length >= 0, "genutil/genstr", __LINE__)) return 0;
    const auto bytes = static_cast<std::uint64_t>(length);
    char* const text = NewText<char>(bytes);
    if (!text) return 0;
    text[0] = 0;
    if (make(text, bytes + 1) != length) {
        genutil::AssertAllocation(false, "genutil/genstr", __LINE__);
        genutil::Release(text);
        return 0;
    }
    Storage::Adopt(key, text, bytes, bytes, Placing::kStored);
    return 1;
}
