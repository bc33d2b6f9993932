// Programs started with posix_spawn.
#include "osutil/platform/process/processes.h"

#include <fcntl.h>
#include <signal.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "osutil/platform/file/path_units.h"
#include "osutil/platform/posix/file/paths.h"
#include "osutil/platform/posix/process/child.h"
#include "osutil/process/address.h"
#include "osutil/process/command_line.h"

namespace genutil::platform {

namespace {

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

// The start attributes of a program: no signal is blocked or ignored, whatever the calling process
// does.
class Start {
  public:
    Start() {
        posix_spawnattr_init(&m_attributes);
        posix_spawn_file_actions_init(&m_actions);
        sigset_t signals;
        sigemptyset(&signals);
        posix_spawnattr_setsigmask(&m_attributes, &signals);
        sigfillset(&signals);
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
    // Same as above, but for a program that nobody waits for. Its parent ends at once, so the
    // system removes its record when it ends.
    int SpawnDetached(char** arguments) {
        int ends[2];
        if (pipe2(ends, O_CLOEXEC) != 0) return errno;
        // The process in between shares this one's memory, so no signal may be handled in it.
        sigset_t all, before;
        sigfillset(&all);
        pthread_sigmask(SIG_SETMASK, &all, &before);
        const pid_t between = vfork();
        if (between == 0) {
            pid_t child;
            const int result = Spawn(arguments, &child);
            _exit(write(ends[1], &result, sizeof result) == sizeof result ? 0 : 1);
        }
        int error = errno;
        pthread_sigmask(SIG_SETMASK, &before, nullptr);
        close(ends[1]);
        if (between > 0) {
            // Not the exit code: a process can ignore those of its children.
            if (read(ends[0], &error, sizeof error) != sizeof error) error = ECHILD;
            while (waitpid(between, nullptr, 0) < 0 && errno == EINTR) continue;
        }
        close(ends[0]);
        return error;
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
    ReapAdopted();
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
    Child running(child);
    if (!whole) {
        running.Kill();
        running.ExitCode();
        return 1;
    }
    // A program may close its output shortly before it ends.
    if (running.EndsWithin(250)) return running.ExitCode();
    Adopt(&running);
    return kStillActive;
}

unsigned long StartProgram(const char* commandLine) {
    const Command command(commandLine);
    if (command.Error()) return static_cast<unsigned long>(command.Error());
    Start start;
    start.StandardFilesOnly();
    return static_cast<unsigned long>(start.SpawnDetached(command.Arguments()));
}

void DescribeError(unsigned long error, char* out, std::size_t size) {
    const char* text = strerrordesc_np(static_cast<int>(error));
    std::snprintf(out, size, "%s", text ? text : "");
}

// Opens an existing file by its full name, since the program starts in another directory, or an
// address.
bool OpenDocument(const char* path) {
    ReapAdopted();
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
    std::free(full);
    if (!started) return false;
    // It reports soon whether a program could be started, unless it is that program itself.
    Child opening(child);
    if (opening.EndsWithin(1000)) {
        const long code = opening.ExitCode();
        return code == 0 || code == kUnknownExitCode;
    }
    Adopt(&opening);
    return true;
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
