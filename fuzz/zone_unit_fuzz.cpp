// Rules of time zones and compiled zone files. The first byte chooses which.
#include <cstdint>
#include <memory>
#include <string>

#include "fuzz/check.h"
#include "genutil/zone/zone_periods.h"
#include "genutil/zone/zone_rule.h"

using namespace genutil;

namespace {

void CheckPeriods(const ZonePeriods& periods) {
    Check(periods.count > 0 && periods.count <= ZonePeriods::kMost, "number of periods");
    Check(periods.at[0].start <= 0, "the first period begins before 1970");
    for (std::size_t i = 1; i < periods.count; ++i)
        Check(periods.at[i - 1].start < periods.at[i].start, "periods in order");
}

void CheckRule(const char* text) {
    ZoneRule rule;
    if (!ParseZoneRule(text, &rule)) return;
    const auto isOffset = [](std::int32_t seconds) {
        return seconds >= -25 * 3600 && seconds <= 25 * 3600;
    };
    Check(isOffset(rule.standardOffset), "standard offset");
    Check(!rule.daylightName[0] || isOffset(rule.daylightOffset), "daylight offset");
    if (rule.daylightName[0])
        for (const int year : {1970, 2000, 2037}) {
            LocalTimeOfChange(rule.toDaylight, year);
            LocalTimeOfChange(rule.toStandard, year);
        }
    const auto periods = std::make_unique<ZonePeriods>();
    AddRule(rule, INT64_MIN, periods.get());
    CheckPeriods(*periods);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size < 1) return 0;
    if (data[0] & 1) {
        const std::string text(reinterpret_cast<const char*>(data) + 1, size - 1);
        CheckRule(text.c_str());
        return 0;
    }
    const auto periods = std::make_unique<ZonePeriods>();
    ZoneRule rule = {};
    if (ReadZoneFile(data + 1, size - 1, periods.get(), &rule)) CheckPeriods(*periods);
    return 0;
}
