// CGNString from a printf format and from a string resource.
#include <cstdarg>
#include <cstdio>
#include <iterator>

#include "genstring.h"
#include "genutil/string/message_text.h"
#include "genutil/string/storage.h"
#include "osresource.h"

using Storage = genutil::StringStorage;

int CGNString::sprintf(const char* format, ...) {
    va_list arguments;
    va_start(arguments, format);
    const int length = sprintf2(format, arguments);
    va_end(arguments);
    return length;
}

// The arguments may point into this string, so the result is written to another buffer first.
int CGNString::sprintf2(const char* format, va_list arguments) {
    if (!format) {
        Empty();
        return 0;
    }
    char shortText[512];
    va_list again;
    va_copy(again, arguments);
    const int length = std::vsnprintf(shortText, sizeof shortText, format, arguments);
    const auto size = static_cast<std::size_t>(length);
    char* text = length < 0 ? nullptr : genutil::NewText<char>(size);
    if (text) {
        if (size < sizeof shortText)
            genutil::CopyUnits(text, static_cast<const char*>(shortText), size + 1);
        else
            std::vsnprintf(text, size + 1, format, again);
        Storage::Adopt(*this, text, size, size, genutil::Placing::kStored);
    }
    va_end(again);
    return text ? length : -1;
}

unsigned char CGNString::LoadStringResource(long id, const char* s1, const char* s2, const char* s3,
                                            const char* s4, const char* s5, const char* s6,
                                            const char* s7, const char* s8, const char* s9,
                                            const char* s10) {
    const char* const texts[] = {s1, s2, s3, s4, s5, s6, s7, s8, s9, s10};
    static_assert(std::size(texts) == genutil::kMostSubstitutions);
    CGNString message;
    if (OSLoadString(message, id) == 0) {
        Empty();
        return 0;
    }
    const CGNString text = genutil::Substitute(message, texts);
    Storage::Store(*this, text, 0, text.GetLength());
    return 1;
}
