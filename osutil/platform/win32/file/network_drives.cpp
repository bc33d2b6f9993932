#include "osutil/platform/file/network_drives.h"

#include "osutil/platform/win32/file/paths.h"
#include "osutil/platform/win32/windows_api.h"

namespace genutil::platform {

bool VisitConnectedDisks(ResourceVisitor visitor, void* context) {
    HANDLE enumeration;
    if (WNetOpenEnumW(RESOURCE_CONNECTED, RESOURCETYPE_DISK, 0, nullptr, &enumeration) != NO_ERROR)
        return false;
    PathBuffer<NETRESOURCEW> buffer;
    DWORD bytes = 1600;
    DWORD result = buffer.Reserve(bytes / sizeof(NETRESOURCEW)) ? NO_ERROR : ERROR_OUTOFMEMORY;
    while (result == NO_ERROR || result == ERROR_MORE_DATA) {
        const DWORD room = bytes;
        DWORD count = static_cast<DWORD>(-1);  // as many as fit
        result = WNetEnumResourceW(enumeration, &count, buffer.Get(), &bytes);
        if (result == NO_ERROR) {
            for (DWORD i = 0; i < count; ++i) {
                const NETRESOURCEW& disk = buffer.Get()[i];
                if (!disk.lpLocalName || !disk.lpRemoteName) continue;
                const NameText local(disk.lpLocalName), remote(disk.lpRemoteName);
                if (local.Get() && remote.Get()) visitor(context, local.Get(), remote.Get());
            }
        } else if (result == ERROR_MORE_DATA) {
            // Not even one entry fits. `bytes` is the required size if that is larger.
            bytes = bytes > room ? bytes : 2 * room;
            const std::size_t records = bytes / sizeof(NETRESOURCEW) + 1;
            if (!buffer.Reserve(records)) result = ERROR_OUTOFMEMORY;
        }
    }
    WNetCloseEnum(enumeration);
    return true;
}

}  // namespace genutil::platform
