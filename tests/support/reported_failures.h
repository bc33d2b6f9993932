// Counts the failures that are reported to the assertion service within a scope.
#pragma once

#include "gendiag.h"

class ReportedFailures {
  public:
    ReportedFailures() {
        CGNAssert::Free();
        CGNAssert::Instance()->SetNativeAssert(0);
        CGNAssert::Instance()->Init(
            [](void* self) -> unsigned char {
                ++static_cast<ReportedFailures*>(self)->m_count;
                return 0;
            },
            this);
    }
    ~ReportedFailures() { CGNAssert::Free(); }
    ReportedFailures(const ReportedFailures&) = delete;
    ReportedFailures& operator=(const ReportedFailures&) = delete;
    int Count() const { return m_count; }

  private:
    int m_count = 0;
};
