// One pointer for each thread, under its variable store.
#pragma once

namespace genutil {

// Gives the calling thread a value; `release`, if not null, gets it when the thread ends. False in
// a process that is not threaded, and without memory.
bool SetThreadValue(void* value, void (*release)(void* value));

// The calling thread's; null without one.
void* ThreadValue();

}  // namespace genutil
