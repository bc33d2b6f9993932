// The clock and the conversions of the date classes, each under the mutex of its class.
#pragma once

#include <cstdint>
#include <ctime>

#include "osthread.h"

namespace genutil {

unsigned char CreateClockMutex(_osmutex** mutex);
void LocalTime(_osmutex* mutex, long seconds, std::tm* local);
long MakeTime(_osmutex* mutex, std::tm* local);
long ReadClock(_osmutex* mutex);

}  // namespace genutil
