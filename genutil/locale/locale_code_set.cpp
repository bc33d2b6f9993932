#include "genutil/locale/locale_code_set.h"

#include "genlocale.h"
#include "genutil/locale/locale_edits.h"
#include "genutil/locale/locale_facts.h"
#include "genutil/mbutil/code_set.h"
#include "genutil/mbutil/code_set_info.h"

using namespace genutil;

// A name is more specific than an identifier, which several locales may share: Croatian is not
// written in Cyrillic.
int genutil::CodeSetOfLocale(const CGNString& name, std::uint32_t localeId) {
    const std::uint32_t language = LanguageOfLocaleId(localeId);
    const bool isUser = localeId == kUserLocaleId;
    const LocaleRow* row = isUser || name.IsEmpty() ? nullptr : FindLocaleByName(name);
    return row && row->language == language ? row->codeSet : CodeSetOfLocaleTexts(language);
}

// Cached because readers call this for every word, and the user's locale requires a system call.
int CLCLocale::GetCodeSet() const {
    static Kept<const CodeSetInfo> kept;
    const std::uint64_t mark = MarkOf(this);
    if (const CodeSetInfo* known = kept.For(mark)) return known->codeSet;
    const int codeSet = CodeSetOfLocale(m_localeName, m_localeId);
    if (const CodeSetInfo* info = FindCodeSet(codeSet)) kept.Keep(mark, info);
    return codeSet;
}
