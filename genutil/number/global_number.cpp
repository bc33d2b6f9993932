// The holders of a locale, of number settings and of money settings.
#include "gennumholder.h"
#include "genutil/allocate.h"
#include "genutil/assert_allocation.h"

using namespace genutil;

CLCNumber::CLCNumber() = default;
CLCNumber::~CLCNumber() = default;
CLCNumber::CLCNumber(const CLCNumber&) = default;
CLCNumber& CLCNumber::operator=(const CLCNumber&) = default;

CLCMoney::CLCMoney() = default;
CLCMoney::~CLCMoney() = default;
CLCMoney::CLCMoney(const CLCMoney&) = default;
CLCMoney& CLCMoney::operator=(const CLCMoney&) = default;

template <class Held>
static Held* Hold() {
    Held* held = New<Held>();
    AssertAllocation(held != nullptr, "genutil/number_holders", __LINE__);
    return held;
}

// Programs embed holders, so each must consist of its pointer only.
static_assert(sizeof(CGNLocale) == sizeof(void*));
static_assert(sizeof(CGNNumber) == sizeof(void*));
static_assert(sizeof(CGNMoney) == sizeof(void*));

CGNLocale::CGNLocale() : m_locale(Hold<CLCLocale>()) {}
CGNLocale::~CGNLocale() {
    delete m_locale;
}
CGNNumber::CGNNumber() : m_number(Hold<CLCNumber>()) {}
CGNNumber::~CGNNumber() {
    delete m_number;
}
CGNMoney::CGNMoney() : m_money(Hold<CLCMoney>()) {}
CGNMoney::~CGNMoney() {
    delete m_money;
}
