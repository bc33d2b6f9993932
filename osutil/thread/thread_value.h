// One pointer for each thread, under its variable store; and a variable of the store at speed.
#pragma once

namespace genutil {

// Gives the calling thread a value; `release`, if not null, gets it when the thread ends. False in
// a process that is not threaded, and without memory.
bool SetThreadValue(void* value, void (*release)(void* value));

// The calling thread's; null without one.
void* ThreadValue();

// The name of a variable, filled up with zeros.
struct ShortName {
    char text[16];
};

// As CGNLclSt::GetLocalVariable.
void* ThreadVariable(const ShortName& name);

}  // namespace genutil
