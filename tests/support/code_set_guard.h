// Makes a code set current within a scope.
#pragma once

#include "mbutil.h"

class CodeSetGuard {
  public:
    explicit CodeSetGuard(int codeSet) {
        mbIsMultiByte();  // initialises: an explicit choice would not survive it
        m_previous = InitMbutilExt(codeSet);
    }
    ~CodeSetGuard() { InitMbutilExt(m_previous); }
    CodeSetGuard(const CodeSetGuard&) = delete;
    CodeSetGuard& operator=(const CodeSetGuard&) = delete;

  private:
    int m_previous;
};
