// Writes genutil/zone/windows_zones.inc: the zones of Windows and their names in the tz database,
// from ICU's copy of the Unicode project's table.
//
//     g++ tools/tables/windows_zones.cpp -licui18n -licuuc -o /tmp/windows_zones
//     /tmp/windows_zones > genutil/zone/windows_zones.inc
#include <unicode/ucal.h>
#include <unicode/uenum.h>
#include <unicode/ustring.h>

#include <algorithm>
#include <cstdio>
#include <map>
#include <string>
#include <vector>

static std::string Utf8(const UChar* text, int32_t length) {
    char buffer[128];
    UErrorCode error = U_ZERO_ERROR;
    int32_t bytes = 0;
    u_strToUTF8(buffer, sizeof buffer, &bytes, text, length, &error);
    return std::string(buffer, static_cast<std::size_t>(bytes));
}

int main() {
    std::map<std::string, std::vector<std::string>> zones;
    UErrorCode error = U_ZERO_ERROR;
    UEnumeration* ids = ucal_openTimeZones(&error);
    int32_t length = 0;
    while (const UChar* id = uenum_unext(ids, &length, &error)) {
        UChar windows[128];
        const int32_t size = ucal_getWindowsTimeZoneID(id, length, windows, 128, &error);
        const std::string name = Utf8(id, length);
        if (size > 0 && name.find("SystemV") == std::string::npos)
            zones[Utf8(windows, size)].push_back(name);
    }
    uenum_close(ids);
    std::puts(
        "// Zone of Windows and its names in the tz database, the usual one first; written by\n"
        "// tools/tables/windows_zones.cpp.");
    for (auto& [windows, names] : zones) {
        UChar wide[128], first[128];
        u_uastrcpy(wide, windows.c_str());
        const int32_t size = ucal_getTimeZoneIDForWindowsID(wide, -1, nullptr, first, 128, &error);
        const std::string usual = Utf8(first, size);
        std::sort(names.begin(), names.end());
        std::printf("{\"%s\",\n    \"%s", windows.c_str(), usual.c_str());
        std::size_t column = 5 + usual.size();
        for (const std::string& name : names) {
            if (name == usual) continue;
            if (column + name.size() > 90) {
                std::printf("\"\n    \"");
                column = 5;
            }
            std::printf(" %s", name.c_str());
            column += name.size() + 1;
        }
        std::puts("\"},");
    }
}
