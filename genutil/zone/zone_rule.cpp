#include "genutil/zone/zone_rule.h"

#include "genutil/ascii.h"
#include "genutil/calendar.h"

namespace genutil {

namespace {

// Each function reads one element of the grammar at p and advances past it. Returns false if it is
// not there.
class Reader {
  public:
    explicit Reader(const char* text) : m_at(text) {}

    bool AtEnd() const { return *m_at == 0; }
    char Next() const { return *m_at; }

    bool Skip(char c) {
        if (*m_at != c) return false;
        ++m_at;
        return true;
    }

    bool Name(char (&out)[16]) {
        const bool quoted = Skip('<');
        std::size_t n = 0;
        while (IsAsciiLetter(*m_at) ||
               (quoted && (IsAsciiDigit(*m_at) || *m_at == '+' || *m_at == '-'))) {
            if (n + 1 == sizeof out) return false;
            out[n++] = *m_at++;
        }
        out[n] = 0;
        return n >= 3 && (!quoted || Skip('>'));
    }

    bool Number(int least, int most, int* out) {
        if (!IsAsciiDigit(*m_at)) return false;
        int value = 0;
        while (IsAsciiDigit(*m_at) && value <= most) value = value * 10 + (*m_at++ - '0');
        *out = value;
        return value >= least && value <= most;
    }

    // Reads an offset in seconds.
    bool Offset(int mostHours, std::int32_t* out) {
        const bool negative = Skip('-');
        if (!negative) Skip('+');
        int hours = 0, minutes = 0, seconds = 0;
        if (!Number(0, mostHours, &hours)) return false;
        if (Skip(':')) {
            if (!Number(0, 59, &minutes)) return false;
            if (Skip(':') && !Number(0, 59, &seconds)) return false;
        }
        const std::int32_t value = hours * kSecondsPerHour + minutes * 60 + seconds;
        *out = negative ? -value : value;
        return true;
    }

    bool Change(ZoneChange* out) {
        int day = 0, month = 0, week = 0, weekday = 0;
        if (Skip('M')) {
            out->kind = ZoneChange::kMonthWeekDay;
            if (!(Number(1, 12, &month) && Skip('.') && Number(1, 5, &week) && Skip('.') &&
                  Number(0, 6, &weekday)))
                return false;
        } else if (Skip('J')) {
            out->kind = ZoneChange::kDayWithoutLeapDay;
            if (!Number(1, 365, &day)) return false;
        } else {
            out->kind = ZoneChange::kDayFromZero;
            if (!Number(0, 365, &day)) return false;
        }
        out->month = static_cast<std::uint8_t>(month);
        out->week = static_cast<std::uint8_t>(week);
        out->weekday = static_cast<std::uint8_t>(weekday);
        out->day = static_cast<std::int16_t>(day);
        out->time = 2 * kSecondsPerHour;
        return !Skip('/') || Offset(167, &out->time);
    }

  private:
    const char* m_at;
};

}  // namespace

bool ParseZoneRule(const char* text, ZoneRule* rule) {
    *rule = {};
    Reader reader(text);
    std::int32_t west = 0;
    if (!reader.Name(rule->standardName) || !reader.Offset(24, &west)) return false;
    rule->standardOffset = -west;
    if (reader.AtEnd()) return true;

    if (!reader.Name(rule->daylightName)) return false;
    west -= kSecondsPerHour;
    if (reader.Next() != ',' && !reader.AtEnd() && !reader.Offset(24, &west)) return false;
    rule->daylightOffset = -west;
    if (reader.AtEnd()) {
        Reader usual(",M3.2.0,M11.1.0");
        return usual.Skip(',') && usual.Change(&rule->toDaylight) && usual.Skip(',') &&
               usual.Change(&rule->toStandard);
    }
    return reader.Skip(',') && reader.Change(&rule->toDaylight) && reader.Skip(',') &&
           reader.Change(&rule->toStandard) && reader.AtEnd();
}

}  // namespace genutil
