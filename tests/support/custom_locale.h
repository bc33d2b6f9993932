// Gives the global locale formats of an application within a scope.
#pragma once

#include "genlocale.h"
#include "tests/support/code_set_guard.h"

class CustomLocale {
  public:
    CustomLocale(const char* name, const char* shortDate, const char* longDate, const char* time)
        : m_codeSet(CodeSetOf(name)) {
        CLCLocale* locale = CLCGlobalLocale::Instance();
        locale->SetCustomized(0);
        locale->Customize(time, shortDate, longDate, 1, "3;0", 1, 1, ".", "-", ",", name);
    }
    ~CustomLocale() { CLCGlobalLocale::Free(); }
    CustomLocale(const CustomLocale&) = delete;
    CustomLocale& operator=(const CustomLocale&) = delete;

    CLCLocale* operator->() const { return CLCGlobalLocale::Instance(); }

  private:
    static int CodeSetOf(const char* name) {
        mbLocale locale = mbOpenLocale(name, mbOpenBest, nullptr);
        const int codeSet = mbLocaleCodeSet(locale);
        mbCloseLocale(locale);
        return codeSet;
    }
    CodeSetGuard m_codeSet;
};
