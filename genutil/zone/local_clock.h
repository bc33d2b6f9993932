// The clock and the conversions of the date classes, each under a mutex of its class.
#pragma once

#include <cstdint>
#include <ctime>

#include "osthread.h"

namespace genutil {

// The zone text that the calling thread keeps in its variable "timezone"; null without one.
const char* ThreadZone();

// A long holds more than a moment where it has 64 bits: what does not fit is the nearest end.
std::int32_t MomentOf(long seconds);

unsigned char CreateClockMutex(_osmutex** mutex);
void LocalTime(_osmutex* mutex, long seconds, std::tm* local);
long MakeTime(_osmutex* mutex, std::tm* local);
long ReadClock(_osmutex* mutex);

}  // namespace genutil
