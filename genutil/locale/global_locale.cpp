// The locale of the process.
#include "genlocale.h"
#include "genutil/assert_allocation.h"
#include "genutil/singleton.h"

using namespace genutil;

CLCGlobalLocale* CLCGlobalLocale::m_pInstance = nullptr;

CLCGlobalLocale* CLCGlobalLocale::Instance() {
    if (m_pInstance) return m_pInstance;
    InstanceOf(m_pInstance, [] { return new (std::nothrow) CLCGlobalLocale; });
    if (AssertAllocation(m_pInstance != nullptr, "genutil/locale_global", __LINE__))
        m_pInstance->Init();
    return m_pInstance;
}

void CLCGlobalLocale::Free() {
    FreeInstance(m_pInstance);
    LocaleInfo::Free();
}
