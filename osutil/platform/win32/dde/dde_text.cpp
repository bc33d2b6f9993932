#include "osutil/platform/win32/dde/dde_text.h"

#include <cstring>
#include <cwchar>

#include "osutil/platform/win32/windows_api.h"

namespace genutil::platform {

wchar_t* DdeAnswer::NewUnits(std::size_t count) {
    m_count = 0;
    m_units.Reset(static_cast<unsigned short*>(Allocate((std::uint64_t{count} + 1) * 2)));
    return reinterpret_cast<wchar_t*>(m_units.Get());
}

bool DdeAnswer::TakeUnits(const void* units, std::size_t count) {
    wchar_t* const text = NewUnits(count);
    if (!text) return false;
    std::memcpy(text, units, count * 2);
    text[count] = 0;
    m_count = std::wcslen(text);
    return true;
}

bool DdeAnswer::TakeSystemText(const void* bytes, std::size_t size) {
    const auto from = static_cast<const char*>(bytes);
    const int length = static_cast<int>(strnlen(from, size));
    wchar_t* const text = NewUnits(static_cast<std::size_t>(length));
    if (text)
        m_count =
            static_cast<std::size_t>(MultiByteToWideChar(CP_ACP, 0, from, length, text, length));
    return text != nullptr;
}

bool DdeSystemText::Make(const wchar_t* text, std::size_t count) {
    const int units = static_cast<int>(count + 1);
    const int room = WideCharToMultiByte(CP_ACP, 0, text, units, nullptr, 0, nullptr, nullptr);
    m_bytes.Reset(static_cast<char*>(Allocate(static_cast<std::uint64_t>(room))));
    if (!m_bytes.Get()) return false;
    m_size = static_cast<DWORD>(
        WideCharToMultiByte(CP_ACP, 0, text, units, m_bytes.Get(), room, nullptr, nullptr));
    return true;
}

}  // namespace genutil::platform
