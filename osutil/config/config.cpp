// Settings in initialisation files and in the registry. Every setting is text; the functions for
// integers convert it.
#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstdlib>

#include "genutil/mbutil/code_set.h"
#include "osconfig.h"
#include "osutil/config/ini_edit.h"
#include "osutil/config/ini_text.h"
#include "osutil/platform/config/profiles.h"
#include "osutil/platform/config/registry.h"
#include "osutil/platform/locale/locale_info.h"

using namespace genutil;

namespace {

constexpr std::size_t kBuffer = 1024;  // for a text to read, with its terminator

class DecimalText {
  public:
    explicit DecimalText(long value) {
        std::snprintf(m_text, sizeof m_text, "%d", static_cast<int>(value));
    }
    operator const char*() const { return m_text; }

  private:
    char m_text[16];
};

// Returns the number at the start of a text, after blanks, clamped to 32 bits.
long NumberOf(const char* text) {
    return std::clamp<long>(std::strtol(text, nullptr, 10), INT32_MIN, INT32_MAX);
}

void ReadProfileText(char* text, const char* file, const char* section, const char* key,
                     const char* fallback) {
    EnsureInitialised();
    const std::size_t length =
        platform::ReadProfileValue(file, section, key, fallback, text, kBuffer);
    if (length >= kBuffer - 2) text[WholeCharacters({text, length})] = 0;
}

void WriteProfileText(const char* file, const char* section, const char* key, const char* value) {
    EnsureInitialised();
    if (!IniHolds(section, key, value ? value : "")) return;
    platform::WriteProfileValue(file, section, key, value);
}

class KeyPath {
  public:
    KeyPath(const CGNString& subkey, const CGNString& baseKey) : m_path(baseKey) {
        EnsureInitialised();
        if (subkey.IsEmpty()) return;
        m_path += '\\';
        m_path += subkey;
    }
    operator const char*() const { return m_path; }

  private:
    CGNString m_path;
};

struct ValueLists {
    CGNStringList* names;
    CGNStringList* values;

    static void Add(void* context, const char* name, const char* text) {
        auto* lists = static_cast<ValueLists*>(context);
        if (lists->names->AddItem(name)) lists->values->AddItem(text);
    }
};

}  // namespace

unsigned char OSGetConfig(CGNString& result, const CGNString& defaultValue,
                          const CGNString& section, const CGNString& key, const CGNString& file) {
    char text[kBuffer];
    ReadProfileText(text, file, section, key, defaultValue);
    result = text;
    return 1;
}

unsigned char OSGetConfig(long& result, long defaultValue, const CGNString& section,
                          const CGNString& key, const CGNString& file) {
    char text[kBuffer];
    ReadProfileText(text, file, section, key, DecimalText(defaultValue));
    result = NumberOf(text);
    return 1;
}

unsigned char OSSetConfig(const CGNString& value, const CGNString& section, const CGNString& key,
                          const CGNString& file) {
    WriteProfileText(file, section, key, value);
    return 1;
}

unsigned char OSSetConfig(const int& value, const CGNString& section, const CGNString& key,
                          const CGNString& file) {
    WriteProfileText(file, section, key, DecimalText(value));
    return 1;
}

unsigned char OSDeleteKeyConfig(const CGNString& section, const char* key, const CGNString& file) {
    EnsureInitialised();
    if (key)
        WriteProfileText(file, section, key, nullptr);
    else
        platform::WriteProfileValue(file, section, nullptr, nullptr);
    return 1;
}

unsigned char OSGetSystemConfig(CGNString& result, const CGNString& defaultValue,
                                const CGNString& section, const CGNString& key) {
    char text[kBuffer];
    ReadProfileText(text, nullptr, section, key, defaultValue);
    result = text;
    return 1;
}

unsigned char OSSetSystemConfig(const CGNString& value, const CGNString& section,
                                const CGNString& key) {
    WriteProfileText(nullptr, section, key, value);
    return 1;
}

unsigned char OSGetSystemConfigReg(CGNString& result, const CGNString& defaultValue,
                                   const CGNString& subkey, const CGNString& name,
                                   const CGNString& baseKey) {
    char text[kBuffer];
    const KeyPath path(subkey, baseKey);
    const bool read = platform::ReadRegistryValue(path, name, text, sizeof text);
    if (read)
        result = text;
    else
        result = defaultValue;
    return read;
}

unsigned char OSGetSystemConfigReg(long& result, long defaultValue, const CGNString& subkey,
                                   const CGNString& name, const CGNString& baseKey) {
    char text[kBuffer];
    const bool read =
        platform::ReadRegistryValue(KeyPath(subkey, baseKey), name, text, sizeof text);
    result = read ? NumberOf(text) : defaultValue;
    return read;
}

unsigned char OSGetSystemConfigReg(const CGNString& subkey, CGNStringList& names,
                                   CGNStringList& values, const CGNString& baseKey) {
    ValueLists lists{&names, &values};
    platform::VisitRegistryValues(KeyPath(subkey, baseKey), kBuffer, ValueLists::Add, &lists);
    return 0;  // the last status, which is "no more items" at best; callers examine the lists
}

unsigned char OSSetSystemConfigReg(const CGNString& value, const CGNString& subkey,
                                   const CGNString& name, const CGNString& baseKey) {
    return platform::WriteRegistryValue(KeyPath(subkey, baseKey), name, value);
}

unsigned char OSSetSystemConfigReg(int& value, const CGNString& subkey, const CGNString& name,
                                   const CGNString& baseKey) {
    return platform::WriteRegistryValue(KeyPath(subkey, baseKey), name, DecimalText(value));
}

unsigned char OSDelSystemConfigReg(const CGNString& subkey, const CGNString& name,
                                   const CGNString& baseKey) {
    return platform::RemoveRegistryValue(KeyPath(subkey, baseKey), name);
}

int OSGetLocaleInfo(unsigned long locale, unsigned long type, char* buffer, int size) {
    return platform::AskLocale(locale, type, buffer, size);
}
