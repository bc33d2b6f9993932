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
    // No copy, which without memory would be empty: the zone of the machine.
    static const char* SystemZone(const OSTimeZone& zone) { return zone.m_systemZone; }
};

namespace {

const Zone& ZoneOfVariable() {
    char variable[platform::kZoneVariableSize];
    return Zone::Find(platform::GetZoneVariable(variable, sizeof variable) ? variable
                                                                           : kMachineZone);
}

// Where the zone of the last conversion is kept: with the thread, so that none waits for another.
// Null without memory for what is kept of a thread.
ZoneInUse* LastZone() {
    static ZoneInUse ofProcess;
    if (!IsThreaded()) return &ofProcess;
    ThreadRecord* self = CurrentThreadRecord();
    return self ? &self->lastZone : nullptr;
}

// The zone of a text, after the variable was made that text. It is kept if nobody else changed the
// variable meanwhile and it does not stand in for one that there was no memory for.
[[gnu::noinline]] const Zone& ZoneFor(OSTimeZone* process, const char* own, ZoneInUse* last) {
    if (own && process) process->SetTZ(own);
    const std::uint32_t state = platform::ZoneVariableState();
    const Zone& ofVariable = ZoneOfVariable();
    const Zone& zone = own ? Zone::Find(*own ? own : kMachineZone) : ofVariable;
    if (last && &zone == &ofVariable && *zone.Variable() && platform::ZoneVariableState() == state)
        *last = {&zone, state};
    return zone;
}

// The zone to convert in, made that of the process first as programs expect. A thread with a zone
// of its own converts in it even when another class sets the variable at the same moment.
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
