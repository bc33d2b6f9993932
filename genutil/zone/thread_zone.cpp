// The time zone of the process and of each thread.
#include "genutil/zone/thread_zone.h"

#include <cstdio>
#include <cstring>
#include <mutex>

#include "gentimezone.h"
#include "genutil/assert_allocation.h"
#include "genutil/singleton.h"
#include "genutil/zone/two_transitions.h"
#include "genutil/zone/zone.h"
#include "osthread.h"
#include "osutil/platform/time/clock.h"
#include "osutil/platform/time/zones.h"
#include "osutil/thread/thread_value.h"
#include "osutil/thread/threaded.h"

using namespace genutil;

// Programs hold such objects by value.
static_assert(sizeof(void*) != 4 || sizeof(OSTimeZone) == 128 + sizeof(CGNString));

const char* genutil::ThreadZone() {
    static constexpr ShortName kName = {"timezone"};
    return static_cast<const char*>(ThreadVariable(kName));
}

OSTimeZone* OSTimeZone::m_instance = nullptr;

OSTimeZone* OSTimeZone::GetInstance() {
    InstanceOf(m_instance, [] { return new (std::nothrow) OSTimeZone; });
    AssertAllocation(m_instance != nullptr, "genutil/timezone", __LINE__);
    return m_instance;
}

void OSTimeZone::Free() {
    FreeInstance(m_instance);
}

OSTimeZone::OSTimeZone() : m_environment(), m_systemZone(GetTZ()) {}
OSTimeZone::OSTimeZone(const OSTimeZone& other) = default;
OSTimeZone& OSTimeZone::operator=(const OSTimeZone& other) = default;
OSTimeZone::~OSTimeZone() = default;

CGNString OSTimeZone::GetTZ() const {
    char zone[platform::kZoneVariableSize];
    platform::GetZoneVariable(zone, sizeof zone);
    return zone;
}

CGNString OSTimeZone::GetSystemTZ() const {
    return m_systemZone;
}

void OSTimeZone::SetTZ(const char* zone) {
    if (!IsThreaded()) return;
    if (!zone) zone = "";
    // The date classes call this function under mutexes of their own.
    static std::mutex oneAtATime;
    const std::lock_guard<std::mutex> lock(oneAtATime);
    char current[platform::kZoneVariableSize];
    platform::GetZoneVariable(current, sizeof current);
    if (std::strcmp(zone, current) == 0) return;
    if (std::strlen(zone) + sizeof "TZ=" > sizeof m_environment) return;
    std::snprintf(m_environment, sizeof m_environment, "TZ=%s", zone);
    // Some runtimes do not accept the first zone that is set.
    if (!*current) platform::SetZoneVariable("dummy");
    // An empty zone is that of the machine, so the variable is removed.
    platform::SetZoneVariable(*zone ? zone : nullptr);
}

void OSTimeZone::SetThreadTZ() {
    if (!IsThreaded())
        platform::RereadZoneVariable();
    else if (const char* zone = ThreadZone())
        SetTZ(zone);
}

struct tm* GetLocalTimeFromUCT(const long* utc) {
    char variable[platform::kZoneVariableSize];
    const bool byVariable =
        platform::kZoneVariableIsTheSystems && platform::GetZoneVariable(variable, sizeof variable);
    const Zone& zone = Zone::Find(byVariable ? variable : kMachineZone);
    // The machine's zone is read again because it may have changed.
    char text[64];
    ZoneRule rule;
    const bool fresh = !byVariable && platform::ReadZoneRule(nullptr, text, sizeof text) &&
                       ParseZoneRule(text, &rule);
    if (!fresh) rule = zone.Rule();
    std::tm now;
    zone.ToLocal(MomentOf(static_cast<long>(platform::SecondsNow())), &now);
    const TwoTransitions rules = TwoTransitionsOf(rule, now.tm_year + 1900);

    const std::int64_t standard = std::int64_t{MomentOf(*utc)} - rules.bias * 60;
    const auto convert = [](std::int64_t seconds) -> std::tm* {
        const auto moment = static_cast<std::time_t>(seconds);
        return moment == seconds ? std::gmtime(&moment) : nullptr;
    };
    std::tm* local = convert(standard);
    if (!local || !IsDaylight(*local, rules)) return local;
    local = convert(standard - rules.daylightBias * 60);
    if (local) local->tm_isdst = 1;
    return local;
}
