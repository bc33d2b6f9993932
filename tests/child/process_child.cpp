// A program for the tests of processes. Its first argument is the command.
#include <fcntl.h>
#include <unistd.h>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <thread>

#ifdef _WIN32
#include <io.h>
#include <process.h>
extern "C" {
int _dowildcard = 0;  // arguments are to arrive as they were given
}
#endif

namespace {

void Sleep(int milliseconds) {
    std::this_thread::sleep_for(std::chrono::milliseconds(milliseconds));
}

void PrintArguments(int count, char** arguments) {
    for (int i = 0; i < count; ++i) std::printf("[%s]", arguments[i]);
}

// In lines, so that a pipe is filled many times over.
void PrintMany(int megabytes) {
    char line[1024];
    std::memset(line, 'x', sizeof line);
    line[sizeof line - 1] = '\n';
    for (int i = 0; i < megabytes * 1024; ++i) std::fwrite(line, 1, sizeof line, stdout);
}

void CloseOutput() {
    std::fflush(stdout);
    close(STDOUT_FILENO);
    close(STDERR_FILENO);
}

// Starts a program that uses this one's output for a moment longer.
void LeaveAnother(const char* self) {
#ifdef _WIN32
    _spawnl(_P_NOWAIT, self, "child", "late", nullptr);
#else
    if (fork() == 0) execl(self, "child", "late", nullptr);
#endif
}

// Acts as the program that opens documents: logs its argument.
int Open(const char* document) {
    char directory[4096];
    std::FILE* log = std::fopen(std::getenv("OPENED"), "w");
    if (!log) return 1;
    std::fprintf(log, "%s in %s", document, getcwd(directory, sizeof directory));
    return std::fclose(log);
}

}  // namespace

int main(int count, char** arguments) {
    const char* const what = count > 1 ? arguments[1] : "";
    const int number = count > 2 ? std::atoi(arguments[2]) : 0;
    if (std::strstr(arguments[0], "xdg-open")) return Open(what);
#ifdef _WIN32
    setmode(STDOUT_FILENO, O_BINARY);
#endif
    if (std::strcmp(what, "args") == 0) {
        PrintArguments(count - 2, arguments + 2);
    } else if (std::strcmp(what, "print") == 0) {
        std::fputs(arguments[2], stdout);
        std::fflush(stdout);
        std::fputs(arguments[3], stderr);
        return count > 4 ? std::atoi(arguments[4]) : 0;
    } else if (std::strcmp(what, "bytes") == 0) {
        std::fwrite("a\0b\r\n\xff", 1, 6, stdout);
    } else if (std::strcmp(what, "many") == 0) {
        PrintMany(number);
    } else if (std::strcmp(what, "wide") == 0) {
        for (int i = 0; i < number; ++i) std::fputs("\x82\xA0", stdout);
        std::fputs("x", stdout);
    } else if (std::strcmp(what, "close") == 0) {
        std::fputs("early", stdout);
        CloseOutput();
        Sleep(number);
    } else if (std::strcmp(what, "slow") == 0) {
        for (int i = 0; i < number; ++i) {
            std::putchar('0' + i);
            std::fflush(stdout);
            Sleep(20);
        }
    } else if (std::strcmp(what, "leave") == 0) {
        std::fputs("a", stdout);
        std::fflush(stdout);
        LeaveAnother(arguments[0]);
        return number;
    } else if (std::strcmp(what, "late") == 0) {
        Sleep(200);
        std::fputs("b", stdout);
    } else if (std::strcmp(what, "die") == 0) {
        std::_Exit(count > 2 ? number : 0);
    }
    return 0;
}
