// Makes a zone that of the process, and the one that the clock returns to, within a scope.
#pragma once

#include "gentimezone.h"
#include "mbutil.h"

class ZoneGuard {
  public:
    explicit ZoneGuard(const char* zone) { Set(zone); }
    ~ZoneGuard() { Set(nullptr); }
    ZoneGuard(const ZoneGuard&) = delete;
    ZoneGuard& operator=(const ZoneGuard&) = delete;

    static void Set(const char* zone) {
        mbSetTZone(zone);
        OSTimeZone::Free();
    }
};
