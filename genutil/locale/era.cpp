// Japanese eras, and the list of eras in a locale.
#include "genutil/locale/era.h"

#include "genlocale.h"

using namespace genutil;

// Programs hold eras by value.
static_assert(sizeof(void*) != 4 || sizeof(CEmperor) == 40);

CEmperor::CEmperor() : m_firstYear(0), m_yearCount(0) {}

CEmperor::CEmperor(CGNString name, long firstYear, long yearCount)
    : m_name(name),
      m_firstYear(static_cast<std::int32_t>(firstYear)),
      m_yearCount(static_cast<std::int32_t>(yearCount)) {}

CEmperor::CEmperor(const CEmperor& other) = default;
CEmperor& CEmperor::operator=(const CEmperor& other) = default;
CEmperor::~CEmperor() = default;

void CEmperor::Set(CGNString name, long firstYear, long yearCount) {
    m_name = name;
    m_firstYear = static_cast<std::int32_t>(firstYear);
    m_yearCount = static_cast<std::int32_t>(yearCount);
}

void CEmperor::Emperor(CGNString& name) const {
    name = m_name;
}

long CEmperor::GetFirstYear() const {
    return m_firstYear;
}

unsigned char CEmperor::IsEmpty() const {
    return m_name.IsEmpty() && m_firstYear == 0 && m_yearCount == 0;
}

namespace {

// Computes a - b + c without overflow for any numbers.
long Shifted(long a, long b, long c) {
    using Unsigned = unsigned long;
    return static_cast<long>(static_cast<Unsigned>(a) - static_cast<Unsigned>(b) +
                             static_cast<Unsigned>(c));
}

}  // namespace

// The count is compared with the year itself, not with the year within the era, as programs expect.
// It therefore does not end an era. The list does, because it is newest first.
long CEmperor::EmperorYrFromGregorianYr(long year) const {
    if (year < m_firstYear || m_yearCount < 0) return 0;
    return Shifted(year, m_firstYear, 1);
}

namespace genutil {

void FillEras(CEmperor* eras, int count) {
    static constexpr struct {
        const char* name;
        std::int32_t firstYear, yearCount;
    } kEras[] = {
#include "genutil/locale/eras.inc"
    };
    int i = 0;
    for (const auto& era : kEras) eras[i++].Set(era.name, era.firstYear, era.yearCount);
    for (; i < count; ++i) eras[i].Set(nullptr, 0, 0);
}

}  // namespace genutil

namespace {

// Returns the first era of a list, up to its first empty one, to which a year belongs, or null if
// there is none.
const CEmperor* FindEra(const CEmperor* eras, int count, long year) {
    for (int i = 0; i < count && !eras[i].IsEmpty(); ++i)
        if (eras[i].EmperorYrFromGregorianYr(year) != 0) return &eras[i];
    return nullptr;
}

}  // namespace

unsigned char CLCLocale::Emperor(long index, CGNString& name) const {
    if (index >= 0 && index < kEras)
        m_eras[index].Emperor(name);
    else
        name.Empty();
    return 1;
}

unsigned char CLCLocale::EmperorFromGregorianYr(long year, CGNString& name) const {
    const CEmperor* era = FindEra(m_eras, kEras, year);
    if (era) era->Emperor(name);
    return era != nullptr;
}

long CLCLocale::EmperorYrFromGregorianYr(long year) const {
    const CEmperor* era = FindEra(m_eras, kEras, year);
    return era ? era->EmperorYrFromGregorianYr(year) : year;
}

long CLCLocale::GregorianYrFromEmperorYr(CEmperor era, long eraYear) const {
    return Shifted(era.GetFirstYear(), 1, eraYear);
}
