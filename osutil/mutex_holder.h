// A mutex held for the length of a scope.
#pragma once

#include "osthread.h"

namespace genutil {

class MutexHolder {
  public:
    explicit MutexHolder(_osmutex* mutex) : m_mutex(mutex) {  // null holds nothing
        if (m_mutex) OSMutexWait(m_mutex);
    }
    ~MutexHolder() {
        if (m_mutex) OSMutexRelease(m_mutex);
    }
    MutexHolder(const MutexHolder&) = delete;
    MutexHolder& operator=(const MutexHolder&) = delete;

  private:
    _osmutex* m_mutex;
};

}  // namespace genutil
