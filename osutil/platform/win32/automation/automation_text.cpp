// Texts of COM, which may contain a 0, as CGNString may.
#include "genutil/allocate.h"
#include "genutil/assert_allocation.h"
#include "genutil/mbutil/wide_convert.h"
#include "genutil/string/storage.h"
#include "osutil/platform/win32/automation/automation_variant.h"

namespace genutil::platform {

namespace {

template <class Unit>
std::size_t UpToZero(const Unit* text, std::size_t count) {
    std::size_t length = 0;
    while (length < count && text[length] != 0) ++length;
    return length;
}

}  // namespace

CGNString NarrowText(const wchar_t* text, std::size_t count) {
    CGNString narrow;
    const auto units = reinterpret_cast<const unsigned short*>(text);
    const std::uint64_t room = kMostNarrowBytes * std::uint64_t{count};
    const Owned<char> buffer(static_cast<char*>(Allocate(room + 1)));
    if (!AssertAllocation(buffer.Get() != nullptr, "osutil/osautomation", __LINE__)) return narrow;
    std::size_t length = 0;
    for (std::size_t i = 0; i < count; ++i) {
        const std::size_t part = UpToZero(units + i, count - i);
        const long written = ToNarrowLossy(
            buffer.Get() + length, static_cast<std::size_t>(room) - length, units + i, part);
        if (written < 0) return narrow;
        length += static_cast<std::size_t>(written);
        i += part;
        if (i < count) buffer.Get()[length++] = 0;
    }
    StringStorage::Put(narrow, buffer.Get(), length);
    return narrow;
}

CGNString TakeText(BSTR text) {
    const CGNString narrow(NarrowText(text, SysStringLen(text)));
    SysFreeString(text);
    return narrow;
}

BSTR WideText(const CGNString& text) {
    const char* const bytes = text;
    const std::size_t count = text.GetLength();
    const Owned<unsigned short> units(
        static_cast<unsigned short*>(Allocate((std::uint64_t{count} + 1) * 2)));
    if (!AssertAllocation(units.Get() != nullptr, "osutil/osautomation", __LINE__)) return nullptr;
    std::size_t length = 0;
    for (std::size_t i = 0; i < count; ++i) {
        const std::size_t part = UpToZero(bytes + i, count - i);
        const long written = ToWide(units.Get() + length, count - length, bytes + i, part);
        if (written < 0) return nullptr;
        length += static_cast<std::size_t>(written);
        i += part;
        if (i < count) units.Get()[length++] = 0;
    }
    return SysAllocStringLen(reinterpret_cast<const wchar_t*>(units.Get()),
                             static_cast<UINT>(length));
}

}  // namespace genutil::platform
