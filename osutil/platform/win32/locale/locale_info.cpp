#include "osutil/platform/locale/locale_info.h"

#include "osutil/platform/win32/windows_api.h"

namespace genutil::platform {

int AskLocale(unsigned long locale, unsigned long type, char* out, int size) {
    return GetLocaleInfoA(locale, type, out, size);
}

}  // namespace genutil::platform
