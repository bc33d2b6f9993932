// Access to the texts of a locale object without copying them.
#pragma once

#include "genlocale.h"

namespace genutil {

struct LocaleAccess {
    static constexpr long kShort = 1, kLong = 2;

    static const CGNString& DateFormat(const CLCLocale& locale, long which) {
        return which == kLong ? locale.m_longDateFormat : locale.m_shortDateFormat;
    }
    static const CGNString& TimeFormat(const CLCLocale& l) { return l.m_timeFormat; }
    static const CGNString& DateSeparator(const CLCLocale& l) { return l.m_dateSeparator; }
    static const CGNString& TimeSeparator(const CLCLocale& l) { return l.m_timeSeparator; }
    static const CGNString& Marker(const CLCLocale& l, bool pm) { return pm ? l.m_pm : l.m_am; }

    static const CGNString& DecimalSymbol(const CLCLocale& l) { return l.m_decimalSymbol; }
    static const CGNString& NegativeSign(const CLCLocale& l) { return l.m_negativeSign; }
    static const CGNString& DigitsInGroup(const CLCLocale& l) { return l.m_digitsInGroup; }
    static std::int32_t NegativeFormat(const CLCLocale& l) { return l.m_negativeFormat; }
    static unsigned char LeadingZeroes(const CLCLocale& l) { return l.m_leadingZeroes; }
    static const CGNString& GroupSeparator(const CLCLocale& l) { return l.m_groupSeparator; }

    // The following functions return null if the index is out of range.
    static const CGNString* MonthName(const CLCLocale& l, int i) {
        return At(l.m_monthNames, i, kMonths);
    }
    static const CGNString* MonthAbbreviation(const CLCLocale& l, int i) {
        return At(l.m_monthAbbreviations, i, kMonths);
    }
    static const CGNString* DayName(const CLCLocale& l, int i) {
        return At(l.m_dayNames, i, kDays);
    }
    static const CGNString* DayAbbreviation(const CLCLocale& l, int i) {
        return At(l.m_dayAbbreviations, i, kDays);
    }
    static const CEmperor* Era(const CLCLocale& l, int i) {
        return i >= 0 && i < kEras ? &l.m_eras[i] : nullptr;
    }

    static constexpr int kMonths = CLCLocale::kMonths, kDays = CLCLocale::kDays,
                         kEras = CLCLocale::kEras;

  private:
    static const CGNString* At(const CGNString* names, int i, int count) {
        return i >= 0 && i < count ? &names[i] : nullptr;
    }
};

}  // namespace genutil
