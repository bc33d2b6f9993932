#include "genutil/zone/local_clock.h"

#include <cstring>

#include "gentimezone.h"
#include "genutil/zone/thread_zone.h"
#include "genutil/zone/zone.h"
#include "osutil/platform/time/clock.h"
#include "osutil/platform/time/zones.h"
#include "osutil/thread/mutex_holder.h"
#include "osutil/thread/thread_record.h"
#include "osutil/thread/thread_value.h"
#include "osutil/thread/threaded.h"

namespace genutil {

struct ZoneAccess {
    static OSTimeZone* Instance() {
        OSTimeZone* zone = OSTimeZone::m_instance;
        return zone ? zone : OSTimeZone::GetInstance();
    }
    // Not a copy, which would be empty (the zone of the machine) if allocation fails.
    static const char* SystemZone(const OSTimeZone& zone) { return zone.m_systemZone; }
};

namespace {

const Zone& ZoneOfVariable() {
    char variable[platform::kZoneVariableSize];
    return Zone::Find(platform::GetZoneVariable(variable, sizeof variable) ? variable
                                                                           : kMachineZone);
}

// Returns the record of the zone of the last conversion. It belongs to the thread, so that no
// thread waits for another. Returns null if allocation of the thread's data fails.
ZoneInUse* LastZone() {
    static ZoneInUse ofProcess;
    if (!IsThreaded()) return &ofProcess;
    ThreadRecord* self = CurrentThreadRecord();
    return self ? &self->lastZone : nullptr;
}

// Sets the variable to a text and returns the zone of that text. The zone is recorded if nobody
// else changed the variable meanwhile and if it does not replace one whose allocation failed.
[[gnu::noinline]] const Zone& ZoneFor(OSTimeZone* process, const char* own, ZoneInUse* last) {
    if (own && process) process->SetTZ(own);
    const std::uint32_t state = platform::ZoneVariableState();
    const Zone& ofVariable = ZoneOfVariable();
    const Zone& zone = own ? Zone::Find(*own ? own : kMachineZone) : ofVariable;
    if (last && &zone == &ofVariable && *zone.Variable() && platform::ZoneVariableState() == state)
        *last = {&zone, state};
    return zone;
}

// Returns the zone for conversions, after setting the zone of the process to it as programs expect.
// A thread with its own zone uses that one even if another class sets the variable at the same
// time.
const Zone& ZoneInForce() {
    OSTimeZone* process = ZoneAccess::Instance();
    const char* own = IsThreaded() ? ThreadZone() : nullptr;
    const std::uint32_t state =
        IsThreaded() ? platform::ZoneVariableState() : platform::RereadZoneVariable();
    ZoneInUse* last = LastZone();
    if (last && state != 0 && last->state == state) {
        const Zone& zone = *static_cast<const Zone*>(last->zone);
        if (!own || std::strcmp(*own ? own : kMachineZone, zone.Variable()) == 0) return zone;
    }
    return ZoneFor(process, own, last);
}

}  // namespace

unsigned char CreateClockMutex(_osmutex** mutex) {
    if (!*mutex) *mutex = OSMutexCreate();
    return *mutex != nullptr;
}

void LocalTime(_osmutex* mutex, long seconds, std::tm* local) {
    const MutexHolder lock(mutex);
    const std::int32_t moment = MomentOf(seconds);
    // Programs have stored negative numbers to represent "no end".
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
