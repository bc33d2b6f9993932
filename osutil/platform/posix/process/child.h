// Processes that this one has started.
#pragma once

#include <signal.h>
#include <sys/types.h>

namespace genutil::platform {

// A child, identified by a descriptor where the system has them. The number of an ended child may
// be that of another one, if the program waits for all of its children itself.
class Child {
  public:
    explicit Child(pid_t number);
    Child(Child&& other) noexcept;
    Child(const Child&) = delete;
    Child& operator=(const Child&) = delete;
    ~Child();

    // Waits for at most that time. Returns true if the child has ended.
    bool EndsWithin(int milliseconds) const;
    // Waits. Returns 128 + signal if a signal ended it, and kUnknownExitCode if the program ignores
    // the ends of its children or waits for them itself.
    long ExitCode();
    void Kill() const;
    // Removes the record of an ended child. Returns false if it still runs.
    bool Reap();

  private:
    int Wait(siginfo_t* info, int options) const;

    pid_t m_number;
    int m_descriptor;  // -1: the system has none
};

// Keeps a child that nobody waits for. The system keeps its record when it ends, until
// ReapAdopted().
void Adopt(Child* child);
void ReapAdopted();

}  // namespace genutil::platform
