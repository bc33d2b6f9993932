#include "osutil/config/ini_convert.h"

#include <algorithm>

#include "genutil/assert_allocation.h"
#include "genutil/mbutil/code_set.h"
#include "mbutil.h"

namespace genutil {

namespace {

bool HasUtf16Mark(std::string_view text) {
    return text.starts_with("\xFF\xFE") || text.starts_with("\xFE\xFF");
}

bool HasOnlyReturns(std::string_view text) {
    return text.find('\n') == std::string_view::npos && text.find('\r') != std::string_view::npos;
}

bool ConvertUtf16(IniText* text) {
    const std::size_t room = mbConvertBound(text->size, mbUtf16, g_codeSetState.codeSet);
    Owned<char> converted(static_cast<char*>(Allocate(room)));
    if (!AssertAllocation(converted.Get() != nullptr, "osutil/osconfig", __LINE__)) return false;
    mbConversion report = {};
    mbConvert(text->bytes.Get(), text->size, mbUtf16, converted.Get(), room, g_codeSetState.codeSet,
              &report);
    text->bytes.Reset(converted.Take());
    text->size = report.produced;
    return true;
}

}  // namespace

bool IsForeignIni(std::string_view beginning) {
    return HasUtf16Mark(beginning) || HasOnlyReturns(beginning);
}

bool ConvertIni(IniText* text) {
    if (HasUtf16Mark(text->View()) && !ConvertUtf16(text)) return false;
    if (HasOnlyReturns(text->View()))
        std::replace(text->bytes.Get(), text->bytes.Get() + text->size, '\r', '\n');
    return true;
}

}  // namespace genutil
