#include <cstddef>
#include <cstdlib>
#include <memory>
#include <string_view>

#include "osconfig.h"
#include "osfile.h"
#include "ospreferences.h"
#include "osutil/config/ini_text.h"

using namespace genutil;

namespace genutil {

struct PreferenceLayout {
    static_assert(sizeof(void*) != 4 || sizeof(IQVPreferenceSet) == 8);
    static_assert(sizeof(void*) != 4 || sizeof(OSLocalPreferenceSet) == 12);
};

}  // namespace genutil

namespace {

struct FreeText {
    void operator()(char* text) const { std::free(text); }
};

// Finds the text after the first line that begins with the head. Returns false if there is none.
bool FindRest(std::string_view text, std::string_view head, std::string_view* rest) {
    text = SkipIniMark(text);
    while (!text.empty()) {
        const std::size_t end = text.find('\n');
        const bool found = text.substr(0, head.size()) == head;
        text = end == std::string_view::npos ? std::string_view() : text.substr(end + 1);
        *rest = text;
        if (found) return true;
    }
    return false;
}

const char* OrEmpty(const char* text) {
    return text ? text : "";
}

}  // namespace

IQVPreferenceSet::~IQVPreferenceSet() = default;

long IQVPreferenceSet::LoadPreferenceValues(void*, QVStatusList&) {
    return 1;
}

long IQVPreferenceSet::SavePreferenceValues(void*, QVStatusList&) {
    return 1;
}

long IQVPreferenceSet::Reload(void*, unsigned char, QVStatusList&) {
    return 1;
}

IQVPreferenceSet::PreferenceType IQVPreferenceSet::GetPreferenceType() {
    return m_type;
}

OSLocalPreferenceSet::OSLocalPreferenceSet() : OSLocalPreferenceSet(0) {}

OSLocalPreferenceSet::OSLocalPreferenceSet(unsigned char defaultsOnly)
    : IQVPreferenceSet(localPreferences), m_defaultsOnly(defaultsOnly) {}

OSLocalPreferenceSet::~OSLocalPreferenceSet() = default;

long OSLocalPreferenceSet::GetPreferenceValue(const char* key, CGNString& value,
                                              const char* defaultValue, const char* section,
                                              const char* file) {
    if (m_defaultsOnly) {
        value = OrEmpty(defaultValue);
        return 1;
    }
    if (!key || !*key) return GetPreferenceSectionValueFromIni(section, value, file);
    return OSGetConfig(value, OrEmpty(defaultValue), OrEmpty(section), key, OrEmpty(file));
}

long OSLocalPreferenceSet::SetPreferenceValue(const char* key, CGNString& value,
                                              const char* section, const char* file) {
    if (m_defaultsOnly) return 1;
    return OSSetConfig(value, OrEmpty(section), OrEmpty(key), OrEmpty(file));
}

long OSLocalPreferenceSet::Reload(void*, unsigned char, QVStatusList&) {
    return 1;
}

long OSLocalPreferenceSet::GetPreferenceSectionValueFromIni(const char* section, CGNString& value,
                                                            const char* file) {
    if (m_defaultsOnly) return 1;
    struct _stat status;
    char* contents = nullptr;
    if (OSFileStat(OrEmpty(file), status) != 0 || !OSGetFileContents(contents, OrEmpty(file)))
        return 0;
    const std::unique_ptr<char, FreeText> owner(contents);
    CGNString head("[");
    head += OrEmpty(section);
    head += ']';
    std::string_view rest;
    if (!FindRest(contents, std::string_view(head), &rest)) return 1;
    // The next head must follow a line end. One directly after the first head is therefore not
    // found.
    const std::string_view lines = rest.substr(0, rest.find("\n["));
    value.CopyNBytes(lines.data(), static_cast<unsigned>(lines.size()));
    return 1;
}
