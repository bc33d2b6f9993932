// Settings in initialisation files and in the registry. Every setting is text; the functions for
// integers convert it.
#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "genutil/mbutil/code_read.h"
#include "genutil/mbutil/code_set.h"
#include "genutil/mbutil/step.h"
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

// Returns the number of bytes without an incomplete sequence at the end. UTF-8 is stepped byte by
// byte, but a value is cut between characters all the same.
std::size_t WholeUtf8(std::string_view text) {
    std::size_t lead = text.size();
    while (lead > 0 && text.size() - lead < 3 && IsContinuation(*Bytes(text.data() + lead - 1)))
        --lead;
    if (lead == 0) return text.size();
    const unsigned first = *Bytes(text.data() + --lead);
    const unsigned length = first < 0xC2 ? 1 : first < 0xE0 ? 2 : first < 0xF0 ? 3 : 4;
    return length > text.size() - lead ? lead : text.size();
}

void ReadProfileText(char* text, const char* file, const char* section, const char* key,
                     const char* fallback) {
    EnsureInitialised();
    const std::size_t length =
        platform::ReadProfileValue(file, section, key, fallback, text, kBuffer);
    if (length < kBuffer - 2) return;
    const bool isUtf8 = g_codeSetState.codeSet == mbUtf8;
    text[isUtf8 ? WholeUtf8({text, length}) : WholeCharacters({text, length})] = 0;
}

// Returns false if a text with a 0 byte would be written only in part.
template <class... Texts>
bool AreTerminatedOnce(const Texts&... texts) {
    return ((std::strlen(texts) == static_cast<std::size_t>(texts.GetLengthInBytes())) && ...);
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
        auto length = baseKey.GetLengthInBytes();
        if (!subkey.IsEmpty()) {
            m_path += '\\';
            m_path += subkey;
            length += 1 + subkey.GetLengthInBytes();
        }
        m_isWhole = m_path.GetLengthInBytes() == length && AreTerminatedOnce(m_path);
    }
    // A path that lacks its end, because an allocation failed or because it contains a 0 byte,
    // would name another key.
    bool IsWhole() const { return m_isWhole; }
    operator const char*() const { return m_path; }

  private:
    CGNString m_path;
    bool m_isWhole;
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
    if (AreTerminatedOnce(file, section, key, value)) WriteProfileText(file, section, key, value);
    return 1;
}

unsigned char OSSetConfig(const int& value, const CGNString& section, const CGNString& key,
                          const CGNString& file) {
    if (AreTerminatedOnce(file, section, key))
        WriteProfileText(file, section, key, DecimalText(value));
    return 1;
}

unsigned char OSDeleteKeyConfig(const CGNString& section, const char* key, const CGNString& file) {
    EnsureInitialised();
    if (!AreTerminatedOnce(section, file)) return 1;
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
    if (AreTerminatedOnce(section, key, value)) WriteProfileText(nullptr, section, key, value);
    return 1;
}

unsigned char OSGetSystemConfigReg(CGNString& result, const CGNString& defaultValue,
                                   const CGNString& subkey, const CGNString& name,
                                   const CGNString& baseKey) {
    char text[kBuffer];
    const KeyPath path(subkey, baseKey);
    const bool read = path.IsWhole() && platform::ReadRegistryValue(path, name, text, sizeof text);
    if (read)
        result = text;
    else
        result = defaultValue;
    return read;
}

unsigned char OSGetSystemConfigReg(long& result, long defaultValue, const CGNString& subkey,
                                   const CGNString& name, const CGNString& baseKey) {
    char text[kBuffer];
    const KeyPath path(subkey, baseKey);
    const bool read = path.IsWhole() && platform::ReadRegistryValue(path, name, text, sizeof text);
    result = read ? NumberOf(text) : defaultValue;
    return read;
}

unsigned char OSGetSystemConfigReg(const CGNString& subkey, CGNStringList& names,
                                   CGNStringList& values, const CGNString& baseKey) {
    ValueLists lists{&names, &values};
    const KeyPath path(subkey, baseKey);
    if (path.IsWhole()) platform::VisitRegistryValues(path, kBuffer, ValueLists::Add, &lists);
    return 0;  // the last status, which is "no more items" at best; callers examine the lists
}

unsigned char OSSetSystemConfigReg(const CGNString& value, const CGNString& subkey,
                                   const CGNString& name, const CGNString& baseKey) {
    const KeyPath path(subkey, baseKey);
    return path.IsWhole() && AreTerminatedOnce(name, value) &&
           platform::WriteRegistryValue(path, name, value);
}

unsigned char OSSetSystemConfigReg(int& value, const CGNString& subkey, const CGNString& name,
                                   const CGNString& baseKey) {
    return OSSetSystemConfigReg(const_cast<const int&>(value), subkey, name, baseKey);
}

unsigned char OSSetSystemConfigReg(const int& value, const CGNString& subkey, const CGNString& name,
                                   const CGNString& baseKey) {
    const KeyPath path(subkey, baseKey);
    return path.IsWhole() && AreTerminatedOnce(name) &&
           platform::WriteRegistryValue(path, name, DecimalText(value));
}

unsigned char OSDelSystemConfigReg(const CGNString& subkey, const CGNString& name,
                                   const CGNString& baseKey) {
    const KeyPath path(subkey, baseKey);
    return path.IsWhole() && AreTerminatedOnce(name) && platform::RemoveRegistryValue(path, name);
}

int OSGetLocaleInfo(unsigned long locale, unsigned long type, char* buffer, int size) {
    return platform::AskLocale(locale, type, buffer, size);
}
