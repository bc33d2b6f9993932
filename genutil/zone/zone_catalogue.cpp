#include "genutil/zone/zone_catalogue.h"

#include <algorithm>
#include <atomic>
#include <cstdio>
#include <cstring>

#include "genutil/allocate.h"
#include "genutil/assert_allocation.h"
#include "genutil/zone/windows_names.h"
#include "genutil/zone/zone_rule.h"
#include "osutil/platform/time/zones.h"

namespace genutil {

namespace {

struct Builder {
    ZoneRow* rows = nullptr;
    std::size_t count = 0, capacity = 0;
    bool full = false;  // allocation failed

    bool MakeRoom() {
        if (count < capacity) return true;
        const std::size_t larger = capacity ? capacity * 2 : 256;
        void* grown = full ? nullptr : Reallocate(rows, std::uint64_t{larger} * sizeof *rows);
        full = !AssertAllocation(grown != nullptr, "genutil/mbutil", __LINE__);
        if (full) return false;
        rows = static_cast<ZoneRow*>(grown);
        capacity = larger;
        return true;
    }
};

void AddZone(void* context, const platform::Zone& zone) {
    Builder& builder = *static_cast<Builder*>(context);
    ZoneRule rule;
    if (!ParseZoneRule(zone.rule, &rule) || !builder.MakeRoom()) return;
    ZoneRow& row = builder.rows[builder.count++];
    if (!ZoneOfWindows(row.name, sizeof row.name, zone.name)) std::strcpy(row.name, zone.name);
    row.standardOffset = rule.standardOffset;
    WriteZoneDisplay(row.display, sizeof row.display, rule.standardOffset, zone.place);
}

bool WestOf(const ZoneRow& a, const ZoneRow& b) {
    if (a.standardOffset != b.standardOffset) return a.standardOffset < b.standardOffset;
    return std::strcmp(a.display, b.display) < 0;
}

std::atomic<const ZoneCatalogue*> g_catalogue{nullptr};

}  // namespace

void WriteZoneDisplay(char* out, std::size_t size, std::int32_t standardOffset, const char* place) {
    const int minutes = (standardOffset < 0 ? -standardOffset : standardOffset) / 60;
    std::snprintf(out, size, "(UTC%c%02d:%02d) %s", standardOffset < 0 ? '-' : '+', minutes / 60,
                  minutes % 60, place);
}

const ZoneCatalogue& GetZoneCatalogue() {
    static constexpr ZoneCatalogue kNone = {nullptr, 0};
    if (const ZoneCatalogue* built = g_catalogue.load(std::memory_order_acquire)) return *built;
    Builder builder;
    platform::VisitZones(AddZone, &builder);
    auto* made = builder.full ? nullptr : New<ZoneCatalogue>();
    if (!AssertAllocation(made != nullptr, "genutil/mbutil", __LINE__)) {
        Release(builder.rows);
        return kNone;
    }
    std::sort(builder.rows, builder.rows + builder.count, WestOf);
    *made = {builder.rows, builder.count};
    // Concurrent threads each build a catalogue. The first to finish publishes its own for all.
    const ZoneCatalogue* first = nullptr;
    if (g_catalogue.compare_exchange_strong(first, made, std::memory_order_acq_rel)) return *made;
    Release(made->rows);
    delete made;
    return *first;
}

const ZoneRow* FindZone(const char* name) {
    const ZoneCatalogue& catalogue = GetZoneCatalogue();
    for (std::size_t i = 0; i < catalogue.count; ++i)
        if (std::strcmp(catalogue.rows[i].name, name) == 0) return &catalogue.rows[i];
    return nullptr;
}

}  // namespace genutil
