// Settings of a locale from an ini file.
#include <cstring>
#include <string_view>

#include "genlocale.h"
#include "genutil/allocate.h"
#include "genutil/assert_allocation.h"
#include "genutil/locale/locale_code_set.h"
#include "genutil/locale/pattern_characters.h"
#include "osutil/config/ini_text.h"
#include "osutil/platform/file/files.h"

using namespace genutil;

namespace {

// The text of an ini file and one section of it.
class IniSection {
  public:
    bool Open(const char* path, const char* section) {
        platform::File file(path, platform::Opening::kRead);
        const std::int64_t length = file.Size();
        if (length <= 0) return false;
        m_text.Reset(static_cast<char*>(Allocate(static_cast<std::uint64_t>(length))));
        if (!AssertAllocation(m_text.Get() != nullptr, "genutil/locale_ini", __LINE__))
            return false;
        const auto size = static_cast<std::size_t>(length);
        if (!file.ReadAt(0, m_text.Get(), size)) return false;
        return FindIniSection({m_text.Get(), size}, section, &m_lines);
    }

    // Reads an existing value that is not empty and shorter than `kLimit`.
    bool Text(const char* key, CGNString& value) const {
        std::string_view found;
        if (!FindIniValue(m_lines, key, &found) || found.empty() || found.size() >= kLimit)
            return false;
        value.CopyNBytes(found.data(), static_cast<unsigned>(found.size()));
        return true;
    }

    // Reads a value of digits only, at most `most`.
    bool Number(const char* key, long most, long* value) const {
        CGNString text;
        return Text(key, text) && ParseNumber(std::string_view(text), most, value);
    }

    static bool ParseNumber(std::string_view digits, long most, long* value) {
        long number = 0;
        for (const char c : digits) {
            if (c < '0' || c > '9') return false;
            number = number * 10 + (c - '0');
            if (number > most) return false;
        }
        *value = number;
        return !digits.empty();
    }

  private:
    static constexpr std::size_t kLimit = 256;

    Owned<char> m_text;
    std::string_view m_lines;
};

// Splits a text at its first comma.
std::string_view NextPart(std::string_view* text) {
    const std::size_t comma = text->find(',');
    std::string_view part = text->substr(0, comma);
    text->remove_prefix(comma == std::string_view::npos ? text->size() : comma + 1);
    while (!part.empty() && part.front() == ' ') part.remove_prefix(1);
    while (!part.empty() && part.back() == ' ') part.remove_suffix(1);
    return part;
}

// Reads "name,first year[,number of years]". A comma is never part of a longer character.
bool ReadEra(const IniSection& ini, const char* key, CEmperor* era) {
    constexpr long kLastYear = 9999;
    CGNString value, name;
    if (!ini.Text(key, value)) return false;
    std::string_view rest(value);
    const std::string_view nameText = NextPart(&rest);
    long firstYear = 0, yearCount = 0;
    if (nameText.empty() || !IniSection::ParseNumber(NextPart(&rest), kLastYear, &firstYear))
        return false;
    if (!rest.empty() && !IniSection::ParseNumber(NextPart(&rest), kLastYear, &yearCount))
        return false;
    name.CopyNBytes(nameText.data(), static_cast<unsigned>(nameText.size()));
    era->Set(name, firstYear, yearCount);
    return true;
}

// Fills the list with the eras of the keys, up to the first missing one.
void ReadEras(const IniSection& ini, CEmperor* eras, int count) {
    static constexpr const char* kKeys[] = {"Era1", "Era2", "Era3"};
    CEmperor read;
    for (int i = 0; i < count; ++i) {
        if (!ReadEra(ini, kKeys[i], &read)) {
            if (i == 0) return;
            for (; i < count; ++i) eras[i] = CEmperor();
            return;
        }
        eras[i] = read;
    }
}

// Replaces the separator in a pattern, outside apostrophes.
void ReplaceSeparator(CGNString& pattern, int codeSet, const CGNString& from, const CGNString& to) {
    if (from.IsEmpty() || from == to) return;
    CGNString replaced;
    const char* skipTo = nullptr;
    ForEachInPattern(pattern, codeSet, [&](const char* at, int length, bool quoted) {
        if (skipTo && at < skipTo) return;
        if (!quoted && std::strncmp(at, from, from.GetLength()) == 0) {
            replaced += to;
            skipTo = at + from.GetLength();
            return;
        }
        for (int i = 0; i < length; ++i) replaced += at[i];
    });
    pattern = replaced;
}

// A time pattern in parts: the clock and the marker for the parts of the day.
struct TimePattern {
    CGNString clock;
    bool hasMarker = false;
    bool markerFirst = false;
};

// Splits a time pattern. The hour tokens become `hour`, or are kept if it is 0.
TimePattern SplitTimePattern(const CGNString& pattern, int codeSet, char hour) {
    TimePattern parts;
    ForEachInPattern(pattern, codeSet, [&](const char* at, int length, bool quoted) {
        if (!quoted && *at == 't') {
            if (!parts.hasMarker) parts.markerFirst = parts.clock.IsEmpty();
            parts.hasMarker = true;
            return;
        }
        const bool leadingBlank = !quoted && *at == ' ' && parts.clock.IsEmpty();
        if (leadingBlank) return;
        const bool isHour = !quoted && (*at == 'h' || *at == 'H');
        if (isHour && hour)
            parts.clock += hour;
        else
            for (int i = 0; i < length; ++i) parts.clock += at[i];
    });
    unsigned length = parts.clock.GetLength();
    const char* clock = parts.clock;
    while (length > 0 && clock[length - 1] == ' ') --length;
    CGNString trimmed;
    trimmed.CopyNBytes(clock, length);
    parts.clock = trimmed;
    return parts;
}

CGNString JoinTimePattern(const TimePattern& parts) {
    CGNString pattern;
    if (parts.hasMarker && parts.markerFirst) pattern = "tt ";
    pattern += parts.clock;
    if (parts.hasMarker && !parts.markerFirst) pattern += " tt";
    return pattern;
}

}  // namespace

void CLCLocale::LoadIniDateTimeSettings(char* iniFile, CGNString& section) {
    IniSection ini;
    if (!ini.Open(iniFile, section)) return;
    const int codeSet = GetCodeSet();
    CGNString text;
    long number = 0;

    if (ini.Text("DateSeparator", text)) {
        ReplaceSeparator(m_shortDateFormat, codeSet, m_dateSeparator, text);
        m_dateSeparator = text;
    }
    if (ini.Text("NewShortDateFormat", text)) {
        m_shortDateFormat = text;
    } else if (ini.Text("ShortDateFormat", text)) {
        ConvertOldImportShortDateFormat(text);
        m_shortDateFormat = text;
    }
    if (ini.Text("NewLongDateFormat", text)) {
        m_longDateFormat = text;
    } else if (ini.Text("LongDateFormat", text)) {
        ConvertOldImportLongDateFormat(text);
        m_longDateFormat = text;
    }
    constexpr long kLastCalendar = 23, kLastDisplayMode = 3;
    if (ini.Number("CalendarType", kLastCalendar, &number) && number > 0) SetCalendarType(number);
    if (ini.Number("DateDisplayMode", kLastDisplayMode, &number)) SetLongOrShort(number);

    if (ini.Text("TimeSeparator", text)) {
        ReplaceSeparator(m_timeFormat, codeSet, m_timeSeparator, text);
        m_timeSeparator = text;
    }
    if (ini.Text("AMString", text)) m_am = text;
    if (ini.Text("PMString", text)) m_pm = text;
    if (ini.Number("24HourTimeFormat", 1, &number)) {
        TimePattern parts = SplitTimePattern(m_timeFormat, codeSet, number ? 'H' : 'h');
        parts.hasMarker = number == 0;
        m_timeFormat = JoinTimePattern(parts);
        m_24Hour = number != 0;
    }
    if (ini.Number("AMPMPrefix", 1, &number)) {
        TimePattern parts = SplitTimePattern(m_timeFormat, codeSet, 0);
        parts.markerFirst = number != 0;
        m_timeFormat = JoinTimePattern(parts);
    }
    ReadEras(ini, m_eras, kEras);
    Touch();
}
