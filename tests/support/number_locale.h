// Gives the global locale number settings of an application within a scope.
#pragma once

#include "genlocale.h"
#include "tests/support/code_set_guard.h"

class NumberLocale {
  public:
    NumberLocale(const char* decimal, const char* separator, const char* grouping = "3;0",
                 int codeSet = mbWestern)
        : m_codeSet(codeSet) {
        Change(decimal, separator, grouping);
    }
    ~NumberLocale() { CLCGlobalLocale::Free(); }
    NumberLocale(const NumberLocale&) = delete;
    NumberLocale& operator=(const NumberLocale&) = delete;

    // Sign, negative format and leading zero would be visible in results that used them.
    static void Change(const char* decimal, const char* separator, const char* grouping = "3;0") {
        CLCGlobalLocale* locale = CLCGlobalLocale::Instance();
        locale->SetLocale("en_US");
        locale->Customize("", "", "", 1, grouping, 3, 0, decimal, "~", separator, "en_US");
    }

  private:
    CodeSetGuard m_codeSet;
};
