// Conversion of automation values from and to the library's own types, only where it is exact.
#include <charconv>
#include <cmath>
#include <cstdio>
#include <string_view>

#include "genutil/calendar.h"
#include "genutil/string/storage.h"
#include "osutil/automation/ole_access.h"
#include "osutil/automation/ole_date.h"
#include "osutil/automation/ole_number.h"

using namespace genutil;

namespace {

std::string_view View(const CGNString& text) {
    return {static_cast<const char*>(text), text.GetLength()};
}

// The text of a number, with room for any automation number.
class NumberBuffer {
  public:
    std::string_view Currency(std::int64_t amount) {
        return {m_text, WriteOleCurrency(amount, m_text)};
    }
    std::string_view Decimal(const OleDecimal& number) {
        return {m_text, WriteOleDecimal(number, m_text)};
    }
    std::string_view Integer(std::int64_t number) {
        const auto end = std::to_chars(m_text, m_text + sizeof m_text, number).ptr;
        return {m_text, static_cast<std::size_t>(end - m_text)};
    }
    // Returns the shortest text that is read as the same number.
    std::string_view Real(double number) {
        const auto end = std::to_chars(m_text, m_text + sizeof m_text, number).ptr;
        return {m_text, static_cast<std::size_t>(end - m_text)};
    }

  private:
    char m_text[kOleNumberSize];
};

bool InRange(OleMoment moment) {
    return moment.day >= kFirstOleDay && moment.day <= kLastOleDay && moment.second >= 0 &&
           moment.second < kSecondsPerDay;
}

// Converts a decimal whose fraction is all zeroes to a whole number.
bool WholeNumber(std::string_view text, long long* out) {
    const std::size_t symbol = text.find('.');
    if (symbol != text.npos) {
        if (text.find_first_not_of('0', symbol + 1) != text.npos) return false;
        text = text.substr(0, symbol);
    }
    const auto read = std::from_chars(text.data(), text.data() + text.size(), *out);
    return read.ec == std::errc() && read.ptr == text.data() + text.size();
}

bool WholeReal(double real, long long* out) {
    constexpr double kLimit = 9223372036854775808.0;  // 2^63
    if (!(real >= -kLimit && real < kLimit) || real != std::trunc(real)) return false;
    *out = static_cast<long long>(real);
    return true;
}

void WriteDate(OleMoment moment, CGNString* out) {
    // Computed in the Gregorian calendar like the server's dates, whereas CGNDate changes calendars
    // in 1582.
    const CalendarDate date =
        FromGregorianDays(static_cast<std::uint32_t>(moment.day + kOleDayZero) - kGregorianEpoch);
    char text[32];
    std::snprintf(text, sizeof text, "%04d-%02d-%02d %02d:%02d:%02d", static_cast<int>(date.year),
                  static_cast<int>(date.month), static_cast<int>(date.day),
                  static_cast<int>(moment.second / kSecondsPerHour),
                  static_cast<int>(moment.second / 60 % 60), static_cast<int>(moment.second % 60));
    *out = text;
}

}  // namespace

unsigned char COSOLEValue::SetDecimal(const CGNDecimal& number) {
    CGNDecimal copy(number);
    const CGNString text(copy.GetRawBuffer());
    OleDecimal decimal;
    const bool fits = ReadOleDecimal(View(text), &decimal);
    Become(fits ? kDecimal : kEmpty);
    if (!fits) return 0;
    NumberBuffer buffer;
    const std::string_view written = buffer.Decimal(decimal);
    if (StringStorage::Put(m_text, written.data(), written.size())) return 1;
    Become(kEmpty);
    return 0;
}

unsigned char COSOLEValue::SetCurrency(const CGNCurrency& amount) {
    CGNCurrency copy(amount);
    std::int64_t scaled = 0;
    if (!ReadOleCurrency(View(copy.GetDecimalPortion()), &scaled)) {
        Become(kEmpty);
        return 0;
    }
    OleAccess::SetScaled(this, scaled);
    return 1;
}

unsigned char COSOLEValue::SetDateTime(const CGNDateTime& moment) {
    struct tm local = {};
    moment.ToTM(&local);
    const int year = local.tm_year + 1900, month = local.tm_mon + 1;
    if (moment.IsEmpty() || !DateExists(year, month, local.tm_mday)) {
        Become(kEmpty);
        return 0;
    }
    const OleMoment fields = {DayNumberOf(year, month, local.tm_mday) - kOleDayZero,
                              local.tm_hour * kSecondsPerHour + local.tm_min * 60 + local.tm_sec};
    return InRange(fields) && SetOleDate(WriteOleDate(fields));
}

unsigned char COSOLEValue::SetDate(const CGNDate& date, long secondOfDay) {
    const OleMoment moment = {date.GetDateValue() - kOleDayZero,
                              static_cast<std::int32_t>(secondOfDay)};
    if (!date.IsEmpty() && secondOfDay == moment.second && InRange(moment))
        return SetOleDate(WriteOleDate(moment));
    Become(kEmpty);
    return 0;
}

unsigned char COSOLEValue::SetOleDate(double days) {
    OleMoment moment;
    const bool fits = ReadOleDate(days, &moment);
    Become(fits ? kDate : kEmpty);
    if (fits) m_real = days;
    return fits;
}

unsigned char COSOLEValue::GetBoolean(unsigned char& out) const {
    if (m_kind != kBoolean) return 0;
    out = m_integer != 0;
    return 1;
}

unsigned char COSOLEValue::GetInteger(long long& out) const {
    long long whole = m_integer;
    NumberBuffer buffer;
    switch (m_kind) {
        case kInteger:
        case kBoolean:
            break;
        case kReal:
            if (!WholeReal(m_real, &whole)) return 0;
            break;
        case kCurrency:
            if (!WholeNumber(buffer.Currency(m_integer), &whole)) return 0;
            break;
        case kDecimal:
            if (!WholeNumber(View(m_text), &whole)) return 0;
            break;
        default:
            return 0;
    }
    out = whole;
    return 1;
}

unsigned char COSOLEValue::GetReal(double& out) const {
    constexpr std::int64_t kExact = std::int64_t{1} << 53;
    if (m_kind == kReal)
        out = m_real;
    else if (m_kind == kInteger && m_integer >= -kExact && m_integer <= kExact)
        out = static_cast<double>(m_integer);
    else
        return 0;
    return 1;
}

unsigned char COSOLEValue::GetText(CGNString& out) const {
    NumberBuffer buffer;
    std::string_view text;
    char error[16];
    OleMoment moment;
    switch (m_kind) {
        case kEmpty:
        case kNull:
        case kMissing:
            break;
        case kBoolean:
            text = m_integer ? "true" : "false";
            break;
        case kInteger:
            text = buffer.Integer(m_integer);
            break;
        case kReal:
            text = buffer.Real(m_real);
            break;
        case kText:
        case kDecimal:
            text = View(m_text);
            break;
        case kDate:
            if (!ReadOleDate(m_real, &moment)) return 0;
            WriteDate(moment, &out);
            return 1;
        case kCurrency:
            text = buffer.Currency(m_integer);
            break;
        case kError:
            std::snprintf(error, sizeof error, "0x%08X", static_cast<unsigned>(m_integer));
            text = error;
            break;
        default:
            return 0;
    }
    return StringStorage::Put(out, text.data(), text.size());
}

unsigned char COSOLEValue::GetError(long& code) const {
    if (m_kind != kError) return 0;
    code = static_cast<long>(m_integer);
    return 1;
}

unsigned char COSOLEValue::GetDecimal(CGNDecimal& out) const {
    CGNString text;
    if (m_kind != kDecimal && m_kind != kCurrency && m_kind != kInteger) return 0;
    if (!GetText(text)) return 0;
    out = CGNDecimal(text);
    return 1;
}

unsigned char COSOLEValue::GetCurrency(CGNCurrency& out, const CGNString& code) const {
    CGNDecimal number;
    std::int64_t scaled = 0;
    if (!GetDecimal(number) || !ReadOleCurrency(View(number.GetRawBuffer()), &scaled)) return 0;
    NumberBuffer buffer;
    CGNString text;
    const std::string_view written = buffer.Currency(scaled);
    if (!StringStorage::Put(text, written.data(), written.size())) return 0;
    if (!code.IsEmpty()) (text += ' ') += code;
    out.SetBuffer(text);
    return 1;
}

unsigned char COSOLEValue::GetDateTime(CGNDateTime& out) const {
    CGNDate date;
    long second = 0;
    if (!GetDate(date, &second) || date.GetYearBC() || date.GetYear() < 1969) return 0;
    struct tm local = {};
    local.tm_year = date.GetYear() - 1900;
    local.tm_mon = date.GetMonth() - 1;
    local.tm_mday = date.GetDay();
    local.tm_hour = static_cast<int>(second / kSecondsPerHour);
    local.tm_min = static_cast<int>(second / 60 % 60);
    local.tm_sec = static_cast<int>(second % 60);
    local.tm_isdst = -1;
    const long seconds = CGNDateTime::MkTimeTS(&local);
    if (seconds < 0) return 0;
    out = CGNDateTime(seconds);
    return 1;
}

unsigned char COSOLEValue::GetDate(CGNDate& out, long* secondOfDay) const {
    OleMoment moment;
    if (m_kind != kDate || !ReadOleDate(m_real, &moment)) return 0;
    out = CGNDate(static_cast<int>(moment.day + kOleDayZero));
    if (secondOfDay) *secondOfDay = moment.second;
    return 1;
}

unsigned char COSOLEValue::GetOleDate(double& days) const {
    if (m_kind != kDate) return 0;
    days = m_real;
    return 1;
}

unsigned char COSOLEValue::GetAutomation(COSOLEAutomation& out) const {
    if (m_kind != kObject) return 0;
    OleAccess::SetObject(&out, m_object);
    return 1;
}
