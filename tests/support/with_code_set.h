// Makes a code set current for the length of a scope.
#pragma once

#include "mbutil.h"

class WithCodeSet {
  public:
    explicit WithCodeSet(int codeSet) {
        mbIsMultiByte();  // initialises; done later, that would override the choice
        m_before = InitMbutilExt(codeSet);
    }
    WithCodeSet(const WithCodeSet&) = delete;
    WithCodeSet& operator=(const WithCodeSet&) = delete;
    ~WithCodeSet() { InitMbutilExt(m_before); }

  private:
    int m_before;
};
