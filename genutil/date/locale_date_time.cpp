// CLCDateTime: moments in a locale of their own.
#include "genmoment.h"

using namespace genutil;

CLCDateTime::CLCDateTime(CLCLocale* locale) : m_locale(locale) {}
CLCDateTime::CLCDateTime(CLCLocale* locale, long seconds) : m_locale(locale), m_moment(seconds) {}
CLCDateTime::CLCDateTime(const CLCDateTime& other) = default;
CLCDateTime& CLCDateTime::operator=(const CLCDateTime& other) = default;
CLCDateTime::~CLCDateTime() = default;

CLCLocale* CLCDateTime::Locale() const {
    return m_locale ? m_locale : CLCGlobalLocale::Instance();
}

unsigned char CLCDateTime::FormatForDisplay(long style) {
    return m_moment.FormatIn(Locale(), style);
}

unsigned char CLCDateTime::FormatDateForDisplay(long style) {
    if (m_moment.IsEmpty()) return 0;
    m_moment.m_display.Clear();
    return m_moment.AddDateIn(Locale(), style);
}

unsigned char CLCDateTime::FormatTimeForDisplay() {
    m_moment.m_display.Clear();
    return m_moment.AddTimeIn(Locale());
}

void CLCDateTime::GetDisplayBuffer(CGNString& out) const {
    m_moment.GetDisplayBuffer(out);
}

unsigned char CLCDateTime::FromString(const CGNString& text) {
    return m_moment.ReadIn(Locale(), text);
}
unsigned char CLCDateTime::FromString(const CGNString& date, const CGNString& time) {
    return m_moment.ReadIn(Locale(), date, time);
}
