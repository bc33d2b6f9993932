#include "osutil/automation/ole_date.h"

#include "genutil/calendar.h"

namespace genutil {

bool ReadOleDate(double days, OleMoment* out) {
    if (!(days > kFirstOleDay - 1.0 && days < kLastOleDay + 1.0)) return false;
    OleMoment moment;
    moment.day = static_cast<std::int32_t>(days);
    const double fraction = days < moment.day ? moment.day - days : days - moment.day;
    // The fraction of a whole second is off by far less than half a second.
    moment.second = static_cast<std::int32_t>(fraction * kSecondsPerDay + 0.5);
    if (moment.second == kSecondsPerDay) {
        if (moment.day == kLastOleDay) return false;
        ++moment.day;
        moment.second = 0;
    }
    *out = moment;
    return true;
}

double WriteOleDate(OleMoment moment) {
    const double fraction = static_cast<double>(moment.second) / kSecondsPerDay;
    return moment.day < 0 ? moment.day - fraction : moment.day + fraction;
}

}  // namespace genutil
