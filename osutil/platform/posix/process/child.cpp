#include "osutil/platform/posix/process/child.h"

#include <poll.h>
#include <signal.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <mutex>
#include <utility>

#include "genutil/allocate.h"
#include "osutil/platform/process/processes.h"

namespace genutil::platform {

Child::Child(pid_t number)
    : m_number(number), m_descriptor(static_cast<int>(syscall(SYS_pidfd_open, number, 0))) {}

Child::Child(Child&& other) noexcept
    : m_number(other.m_number), m_descriptor(std::exchange(other.m_descriptor, -1)) {}

Child::~Child() {
    if (m_descriptor >= 0) close(m_descriptor);
}

int Child::Wait(siginfo_t* info, int options) const {
    const bool byDescriptor = m_descriptor >= 0;
    const auto id = static_cast<id_t>(byDescriptor ? m_descriptor : m_number);
    int result;
    do {
        *info = {};
        result = waitid(byDescriptor ? P_PIDFD : P_PID, id, info, options);
    } while (result != 0 && errno == EINTR);
    return result;
}

bool Child::EndsWithin(int milliseconds) const {
    using Clock = std::chrono::steady_clock;
    // The limit is absolute, because a process with a timer of its own is interrupted repeatedly.
    const auto limit = Clock::now() + std::chrono::milliseconds(milliseconds);
    for (;;) {
        const auto rest = std::chrono::floor<std::chrono::milliseconds>(limit - Clock::now());
        const int left = std::max(0, static_cast<int>(rest.count()));
        if (m_descriptor >= 0) {
            pollfd wait = {m_descriptor, POLLIN, 0};
            const int ready = poll(&wait, 1, left);
            if (ready >= 0 || errno != EINTR) return ready > 0;
        } else {
            siginfo_t info;
            if (Wait(&info, WEXITED | WNOHANG | WNOWAIT) != 0 || info.si_pid == m_number)
                return true;
            if (left == 0) return false;
            usleep(1000);
        }
    }
}

long Child::ExitCode() {
    siginfo_t info;
    if (Wait(&info, WEXITED) != 0) return kUnknownExitCode;
    return info.si_code == CLD_EXITED ? info.si_status : 128 + info.si_status;
}

void Child::Kill() const {
    if (m_descriptor >= 0)
        syscall(SYS_pidfd_send_signal, m_descriptor, SIGKILL, nullptr, 0);
    else
        kill(m_number, SIGKILL);
}

bool Child::Reap() {
    siginfo_t info;
    return Wait(&info, WEXITED | WNOHANG) != 0 || info.si_pid == m_number;
}

namespace {

struct Adopted {
    Child child;
    Adopted* next;
};

constinit std::mutex g_lock;
constinit Adopted* g_first = nullptr;

}  // namespace

void Adopt(Child* child) {
    auto* const adopted = New<Adopted>(Adopted{std::move(*child), nullptr});
    if (!adopted) return;  // its record remains until the process ends
    const std::lock_guard lock(g_lock);
    adopted->next = g_first;
    g_first = adopted;
}

void ReapAdopted() {
    const std::lock_guard lock(g_lock);
    for (Adopted** link = &g_first; *link;) {
        Adopted* const adopted = *link;
        if (!adopted->child.Reap()) {
            link = &adopted->next;
            continue;
        }
        *link = adopted->next;
        delete adopted;
    }
}

}  // namespace genutil::platform
