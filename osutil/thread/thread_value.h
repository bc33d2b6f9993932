// One pointer per thread, on which its variable store is built, and fast access to a variable of
// the store.
#pragma once

namespace genutil {

// Sets the value of the calling thread. `release`, if not null, is called with it when the thread
// ends. Returns false if the process is not threaded or if allocation fails.
bool SetThreadValue(void* value, void (*release)(void* value));

// Returns the calling thread's value, or null if there is none.
void* ThreadValue();

// The name of a variable, padded with zeros.
struct ShortName {
    char text[16];
};

// Same as CGNLclSt::GetLocalVariable().
void* ThreadVariable(const ShortName& name);

}  // namespace genutil
