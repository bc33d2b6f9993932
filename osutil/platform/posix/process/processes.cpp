// Programs started with posix_spawn.
#include "osutil/platform/process/processes.h"

#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <spawn.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <mutex>

#include "genutil/allocate.h"
#include "genutil/ascii.h"
#include "osutil/platform/file/path_units.h"
#include "osutil/platform/posix/file/paths.h"
#include "osutil/process/command_line.h"

namespace genutil::platform {

namespace {

// -- Children that are not waited for
// --------------------------------------------------------------

// The system keeps the record of an ended child until it is waited for. This is done when another
// one is started.
class Children {
  public:
    void Adopt(pid_t child) {
        const std::lock_guard<std::mutex> lock(m_lock);
        auto* node = static_cast<Node*>(Allocate(sizeof(Node)));
        if (!node) return;  // its record remains until the process ends
        *node = {child, m_first};
        m_first = node;
    }
    void Reap() {
        const std::lock_guard<std::mutex> lock(m_lock);
        for (Node** link = &m_first; *link;) {
            Node* const node = *link;
            if (waitpid(node->child, nullptr, WNOHANG) == 0) {
                link = &node->next;
                continue;
            }
            *link = node->next;
            Release(node);
        }
    }

  private:
    struct Node {
        pid_t child;
        Node* next;
    };
    std::mutex m_lock;
    Node* m_first = nullptr;
};
constinit Children g_children;

// -- Starting ------------------------------------------------------------------------------------

// A UTF-8 command line split into arguments. The name of the program has "/" between its parts.
class Command {
  public:
    explicit Command(const char* line) {
        const PathUnits units(line);
        if (!units.Get()) return;
        const long length = EncodeUtf8(units, m_text);
        if (length < 0) return;
        char** const arguments =
            m_arguments.Reserve(MostArguments(static_cast<std::size_t>(length)));
        if (!arguments) return;
        m_error = ENOENT;  // as for a line without a program
        if (SplitCommandLine(m_text.Get(), arguments) == 0) return;
        for (char* p = arguments[0]; *p; ++p)
            if (*p == '\\') *p = '/';
        m_error = 0;
    }
    int Error() const { return m_error; }
    char** Arguments() const { return m_arguments.Get(); }

  private:
    PathBuffer<char> m_text;
    PathBuffer<char*> m_arguments;
    int m_error = ENOMEM;
};

// The start attributes of a program: no signal is blocked and broken pipes are not ignored,
// regardless of the calling thread.
class Start {
  public:
    Start() {
        posix_spawnattr_init(&m_attributes);
        posix_spawn_file_actions_init(&m_actions);
        sigset_t signals;
        sigemptyset(&signals);
        posix_spawnattr_setsigmask(&m_attributes, &signals);
        sigaddset(&signals, SIGPIPE);
        posix_spawnattr_setsigdefault(&m_attributes, &signals);
    }
    ~Start() {
        posix_spawnattr_destroy(&m_attributes);
        posix_spawn_file_actions_destroy(&m_actions);
    }
    Start(const Start&) = delete;
    Start& operator=(const Start&) = delete;

    void Output(int file) {
        for (const int standard : {STDOUT_FILENO, STDERR_FILENO})
            Note(posix_spawn_file_actions_adddup2(&m_actions, file, standard));
        m_flags |= POSIX_SPAWN_SETSID;
    }
    void StandardFilesOnly() {
        Note(posix_spawn_file_actions_addclosefrom_np(&m_actions, STDERR_FILENO + 1));
    }
    void Directory(const char* path) {
        Note(posix_spawn_file_actions_addchdir_np(&m_actions, path));
    }
    int Spawn(char** arguments, pid_t* child) {
        Note(posix_spawnattr_setflags(&m_attributes, static_cast<short>(m_flags)));
        if (m_error) return m_error;
        return posix_spawnp(child, arguments[0], &m_actions, &m_attributes, arguments, environ);
    }

  private:
    void Note(int error) {
        if (error) m_error = error;
    }

    posix_spawnattr_t m_attributes;
    posix_spawn_file_actions_t m_actions;
    int m_flags = POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF;
    int m_error = 0;
};

// -- Ending --------------------------------------------------------------------------------------

long ExitCode(pid_t child) {
    int status = 0;
    while (waitpid(child, &status, 0) < 0)
        if (errno != EINTR) return 1;  // the process lets the system reap its children
    return WIFSIGNALED(status) ? 128 + WTERMSIG(status) : WEXITSTATUS(status);
}

// Returns true if a child ends within this time. A program may close its output shortly before it
// ends.
bool EndsSoon(pid_t child) {
    using Clock = std::chrono::steady_clock;
    constexpr int kMilliseconds = 250;
    const auto handle = static_cast<int>(syscall(SYS_pidfd_open, child, 0));
    if (handle >= 0) {
        pollfd wait = {handle, POLLIN, 0};
        // The limit is absolute, because a process with a timer of its own is interrupted
        // repeatedly.
        const auto limit = Clock::now() + std::chrono::milliseconds(kMilliseconds);
        int ready, left = kMilliseconds;
        while ((ready = poll(&wait, 1, left)) < 0 && errno == EINTR) {
            const auto rest = std::chrono::floor<std::chrono::milliseconds>(limit - Clock::now());
            left = std::max(0, static_cast<int>(rest.count()));
        }
        close(handle);
        return ready > 0;
    }
    for (int waited = 0; waited < kMilliseconds; ++waited) {
        siginfo_t info = {};
        if (waitid(P_PID, static_cast<id_t>(child), &info, WEXITED | WNOHANG | WNOWAIT) != 0 ||
            info.si_pid == child)
            return true;
        usleep(1000);
    }
    return false;
}

// Passes on output until the other end is closed. Returns false if it was not read to its end.
bool ReadAll(int file, TakeOutput take, void* context) {
    char bytes[32768];
    for (;;) {
        const ssize_t got = read(file, bytes, sizeof bytes);
        if (got == 0) return true;
        if (got < 0 && errno == EINTR) continue;
        if (got < 0 || !take(context, bytes, static_cast<std::size_t>(got))) return false;
    }
}

}  // namespace

long RunProgram(const char* commandLine, TakeOutput take, void* context) {
    g_children.Reap();
    const Command command(commandLine);
    if (command.Error()) return command.Error();
    int ends[2];
    if (pipe2(ends, O_CLOEXEC) != 0) return errno;
    Start start;
    start.Output(ends[1]);
    pid_t child = 0;
    const int error = start.Spawn(command.Arguments(), &child);
    close(ends[1]);
    const bool whole = error == 0 && ReadAll(ends[0], take, context);
    close(ends[0]);
    if (error) return error;
    if (!whole) {
        kill(child, SIGKILL);
        ExitCode(child);
        return 1;
    }
    if (EndsSoon(child)) return ExitCode(child);
    g_children.Adopt(child);
    return kStillActive;
}

unsigned long StartProgram(const char* commandLine) {
    g_children.Reap();
    const Command command(commandLine);
    if (command.Error()) return static_cast<unsigned long>(command.Error());
    Start start;
    start.StandardFilesOnly();
    pid_t child = 0;
    const int error = start.Spawn(command.Arguments(), &child);
    if (error == 0) g_children.Adopt(child);
    return static_cast<unsigned long>(error);
}

void DescribeError(unsigned long error, char* out, std::size_t size) {
    const char* text = strerrordesc_np(static_cast<int>(error));
    std::snprintf(out, size, "%s", text ? text : "");
}

namespace {

// Returns true if a text begins with a scheme: at least two characters, of which the first is a
// letter. A leading "-" would make it an option of the program.
bool IsAddress(const char* text) {
    const std::size_t length =
        std::strspn(text, "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789+-.");
    return IsAsciiLetter(*text) && length > 1 && text[length] == ':';
}

}  // namespace

// Opens an existing file by its full name, since the program starts in another directory, or an
// address.
bool OpenDocument(const char* path) {
    g_children.Reap();
    const SystemPath name(path);
    if (!name.Get()) return false;
    char* const full = realpath(name.Get(), nullptr);
    if (!full && !IsAddress(name.Get())) return false;
    char program[] = "xdg-open";
    char* const target = full ? full : const_cast<char*>(name.Get());
    char* arguments[] = {program, target, nullptr};
    Start start;
    start.StandardFilesOnly();
    start.Directory(TemporaryFolder());
    pid_t child = 0;
    const bool started = start.Spawn(arguments, &child) == 0;
    if (started) g_children.Adopt(child);
    std::free(full);
    return started;
}

bool ReadVariable(const char* name, char* out, std::size_t size) {
    const PathUnits units(name);
    PathBuffer<char> systemName;
    if (!units.Get() || EncodeUtf8(units, systemName) < 0) return false;
    const char* const value = std::getenv(systemName.Get());
    if (!value) return false;
    const NameText text(value);
    text.CopyTo(out, size);
    return text.Get() != nullptr;
}

}  // namespace genutil::platform
