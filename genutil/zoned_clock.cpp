#include "genutil/zoned_clock.h"

#include <atomic>
#include <cstring>

#include "gentimezone.h"
#include "genutil/zone.h"
#include "osutil/mutex_holder.h"
#include "osutil/platform/clock.h"
#include "osutil/platform/zones.h"
#include "osutil/thread_value.h"
#include "osutil/threaded.h"

namespace genutil {

struct ZoneAccess {
    // No copy, which without memory would be empty: the zone of the machine.
    static const char* SystemZone(const OSTimeZone& zone) { return zone.m_systemZone; }
};

namespace {

// The zone to convert in, made that of the process first as programs expect. A thread with a zone
// of its own converts in it even when another class sets the variable at the same moment.
const Zone& ZoneInForce() {
    OSTimeZone* zone = OSTimeZone::GetInstance();
    const char* own = IsThreaded() ? ThreadZone() : nullptr;
    if (own) {
        if (zone) zone->SetTZ(own);
        return Zone::Find(*own ? own : kMachineZone);
    }
    if (zone) zone->SetThreadTZ();
    char variable[256];
    return Zone::Find(platform::GetZoneVariable(variable, sizeof variable) ? variable
                                                                           : kMachineZone);
}

}  // namespace

const char* ThreadZone() {
    static constexpr ShortName kName = {"timezone"};
    return static_cast<const char*>(ThreadVariable(kName));
}

std::int32_t MomentOf(long seconds) {
    if (seconds > INT32_MAX) return INT32_MAX;
    if (seconds < INT32_MIN) return INT32_MIN;
    return static_cast<std::int32_t>(seconds);
}

unsigned char CreateClockMutex(_osmutex** mutex) {
    if (!*mutex) *mutex = OSMutexCreate();
    return *mutex != nullptr;
}

void LocalTime(_osmutex* mutex, long seconds, std::tm* local) {
    const MutexHolder lock(mutex);
    const std::int32_t moment = MomentOf(seconds);
    // Programs have stored negative numbers for "no end".
    ZoneInForce().ToLocal(moment < 0 ? kLastSecond : moment, local);
}

long MakeTime(_osmutex* mutex, std::tm* local) {
    const MutexHolder lock(mutex);
    return ZoneInForce().FromLocal(local);
}

long ReadClock(_osmutex* mutex) {
    const MutexHolder lock(mutex);
    if (OSTimeZone* zone = OSTimeZone::GetInstance()) zone->SetTZ(ZoneAccess::SystemZone(*zone));
    return MomentOf(static_cast<long>(platform::SecondsNow()));
}

}  // namespace genutil
