// The catalogues of locales and time zones.
#include <cstring>

#include "gencatalogue.h"
#include "genutil/allocate.h"
#include "genutil/assert_allocation.h"

namespace {

// The rows of one catalogue. The list exists while there are any.
template <class Row>
class Rows {
  public:
    static long Count() { return g_list ? g_list->GetCount() : 0; }
    static Row* At(long index) {
        const bool inside = index >= 0 && index < Count();
        return inside ? reinterpret_cast<Row*>(g_list->GetItem(static_cast<int>(index))) : nullptr;
    }

    static void Register(Row* row) {
        if (!g_list) g_list = genutil::New<CGNList>();
        if (genutil::AssertAllocation(g_list != nullptr, "genutil/catalogue", __LINE__))
            g_list->AddItem(reinterpret_cast<GNItem>(row));
    }
    // Searches from the end, where Free() removes rows.
    static void Unregister(const Row* row) {
        for (long i = Count(); i-- > 0;) {
            if (At(i) != row) continue;
            g_list->DeleteItem(static_cast<int>(i));
            break;
        }
        if (g_list && Count() == 0) {
            delete g_list;
            g_list = nullptr;
        }
    }

    // Adds a row to the list. Returns null if allocation fails.
    static Row* Add() {
        const long before = Count();
        Row* row = genutil::New<Row>();
        genutil::AssertAllocation(row != nullptr, "genutil/catalogue", __LINE__);
        if (row && Count() > before) return row;
        delete row;
        return nullptr;
    }

    static void Free() {
        while (const long count = Count()) delete At(count - 1);
    }

    template <class Matches>
    static Row* Find(Matches matches) {
        for (long i = 0; i < Count(); ++i)
            if (Row* row = At(i); matches(*row)) return row;
        return nullptr;
    }

  private:
    static CGNList* g_list;
};
template <class Row>
CGNList* Rows<Row>::g_list = nullptr;

using Locales = Rows<LocaleInfo>;
using Zones = Rows<CLCTimeZoneInfo>;

// Locales with shorter descriptions are left out, on which programs rely.
constexpr std::size_t kShortestDescription = 13;

void BuildLocales(MBLocaleSelect select) {
    char name[64] = "en_US", description[128];
    int cursor1 = -1, cursor2 = -1;
    while (mbGetNextLocaleEx(name, sizeof name, &cursor1, &cursor2, select)) {
        mbDisplayLocale(description, sizeof description, name, mbStyleEnglish);
        if (std::strlen(description) < kShortestDescription) continue;
        LocaleInfo* row = Locales::Add();
        if (!row) continue;
        row->SetLocaleId(mbGetLCID(name));
        row->SetName(name);
        row->SetDescription(description);
    }
}

void BuildZones() {
    char name[64] = "", display[128] = "";
    mbTZoneCursor cursor = mbFirstTZone;
    // A zone without a text is listed and ends the list.
    for (int goOn = 1; goOn && mbGetNextTZone(name, sizeof name, &cursor) >= 1;) {
        goOn = mbDisplayTZone(display, sizeof display, name);
        CLCTimeZoneInfo* row = Zones::Add();
        if (!row) continue;
        row->SetName(name);
        row->SetDisplayText(display);
    }
}

}  // namespace

// -- Locales -------------------------------------------------------------------------------------

LocaleInfo::LocaleInfo() : m_localeId(0) {
    Locales::Register(this);
}
LocaleInfo::~LocaleInfo() {
    Locales::Unregister(this);
}

long LocaleInfo::GetLocaleInfoCount(MBLocaleSelect select) {
    if (Locales::Count() == 0) BuildLocales(select);
    return Locales::Count();
}

LocaleInfo* LocaleInfo::GetLocaleInfoItem(long index) {
    return Locales::At(index);
}

unsigned char LocaleInfo::GetLocale(long lcid, CGNString& name) {
    GetLocaleInfoCount(mbSelectAll);
    const auto id = static_cast<std::uint32_t>(lcid);
    const LocaleInfo* row = Locales::Find([&](const LocaleInfo& r) { return r.m_localeId == id; });
    if (!row) return 0;
    name = row->m_name;
    return 1;
}

unsigned char LocaleInfo::GetLocaleFromLocaleDescription(CGNString& description, CGNString& name,
                                                         MBLocaleSelect select) {
    const LocaleInfo* row = nullptr;
    const bool empty = description.IsEmpty();
    if (!empty) {
        GetLocaleInfoCount(select);
        row = Locales::Find(
            [&](const LocaleInfo& r) { return r.m_description.IsEqualNoCase(description) != 0; });
    }
    if (row)
        name = row->m_name;
    else
        name.Empty();
    return row || empty;
}

unsigned char LocaleInfo::GetLocaleDescriptionFromLocale(CGNString& name, CGNString& description,
                                                         MBLocaleSelect select) {
    if (name.IsEmpty()) {
        description.Empty();
        return 1;
    }
    GetLocaleInfoCount(select);
    const LocaleInfo* row =
        Locales::Find([&](const LocaleInfo& r) { return r.m_name.IsEqualNoCase(name) != 0; });
    if (!row) return 0;
    description = row->m_description;
    return 1;
}

void LocaleInfo::Free() {
    Locales::Free();
}

// -- Time zones ----------------------------------------------------------------------------------

CLCTimeZoneInfo::CLCTimeZoneInfo() {
    Zones::Register(this);
}
CLCTimeZoneInfo::~CLCTimeZoneInfo() {
    Zones::Unregister(this);
}

long CLCTimeZoneInfo::GetInfoCount() {
    if (Zones::Count() == 0) BuildZones();
    return Zones::Count();
}

CLCTimeZoneInfo* CLCTimeZoneInfo::GetInfoItem(long index) {
    return Zones::At(index);
}

CLCTimeZoneInfo* CLCTimeZoneInfo::GetInfoItemFromTimeZone(const char* name) {
    if (!name) return nullptr;
    GetInfoCount();
    return Zones::Find([&](const CLCTimeZoneInfo& r) { return std::strcmp(r.m_name, name) == 0; });
}

void CLCTimeZoneInfo::Free() {
    Zones::Free();
}
