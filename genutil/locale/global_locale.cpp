// The locale of the process.
#include "genlocale.h"
#include "genutil/allocate.h"
#include "genutil/assert_allocation.h"

using namespace genutil;

CLCGlobalLocale* CLCGlobalLocale::m_pInstance = nullptr;

CLCGlobalLocale* CLCGlobalLocale::Instance() {
    if (m_pInstance) return m_pInstance;
    m_pInstance = New<CLCGlobalLocale>();
    if (AssertAllocation(m_pInstance != nullptr, "genutil/locale_global", __LINE__))
        m_pInstance->Init();
    return m_pInstance;
}

void CLCGlobalLocale::Free() {
    delete m_pInstance;
    m_pInstance = nullptr;
    LocaleInfo::Free();
}
