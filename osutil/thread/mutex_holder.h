// A mutex held for the duration of a scope.
#pragma once

#include "osutil/thread/lock.h"

namespace genutil {

class MutexHolder {
  public:
    explicit MutexHolder(_osmutex* mutex) : m_mutex(mutex) {
        WaitMutex(m_mutex);
    }  // null means
       // none
    ~MutexHolder() { EndMutex(m_mutex); }
    MutexHolder(const MutexHolder&) = delete;
    MutexHolder& operator=(const MutexHolder&) = delete;

  private:
    _osmutex* m_mutex;
};

}  // namespace genutil
