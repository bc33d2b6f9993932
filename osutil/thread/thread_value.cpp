#include "osutil/thread/thread_value.h"

#include "osutil/thread/thread_record.h"
#include "osutil/thread/threaded.h"

namespace genutil {

bool SetThreadValue(void* value, void (*release)(void*)) {
    ThreadRecord* record = IsThreaded() ? CurrentThreadRecord() : nullptr;
    if (!record) return false;
    record->value = value;
    record->releaseValue = release;
    return true;
}

void* ThreadValue() {
    ThreadRecord* record = IsThreaded() ? CurrentThreadRecord() : nullptr;
    return record ? record->value : nullptr;
}

}  // namespace genutil
