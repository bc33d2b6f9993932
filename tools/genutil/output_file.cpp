#include "tools/genutil/output_file.h"

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <system_error>

#include "tools/genutil/command.h"
#include "tools/genutil/system.h"

namespace {

// The file to remove if the program is interrupted; empty if there is none.
char g_unfinished[4096];

extern "C" void RemoveUnfinished(int) {
    if (g_unfinished[0]) std::remove(g_unfinished);
    std::_Exit(kError);
}

void Remember(const std::string& path) {
    if (path.size() >= sizeof g_unfinished) return;
    std::memcpy(g_unfinished, path.c_str(), path.size() + 1);
    std::signal(SIGINT, RemoveUnfinished);
    std::signal(SIGTERM, RemoveUnfinished);
}

bool Fail(const std::string& path, int error) {
    Complain(path + ": cannot be written: " + std::strerror(error));
    return false;
}

bool WriteAndClose(std::FILE* file, const std::string& text) {
    const bool written = std::fwrite(text.data(), 1, text.size(), file) == text.size();
    return std::fclose(file) == 0 && written;
}

}  // namespace

bool MayWrite(const std::string& path, bool force) {
    switch (KindOf(path)) {
        case FileKind::kFolder:
            Complain(path + ": is a folder");
            return false;
        case FileKind::kFile:
            if (force) return true;
            Complain(path + ": exists already; --force replaces it");
            return false;
        default:
            return true;
    }
}

namespace {

// Writes a new file beside a path. Returns its name, or nothing after a message.
std::string WriteBeside(const std::string& path, const std::string& text, bool isPrivate) {
    std::string part;
    std::FILE* file = nullptr;
    for (int i = 0; !file && i < 100; ++i) {
        part = path + "." + std::to_string(i) + ".part";
        file = CreateNewFile(part, isPrivate);
        if (!file && errno != EEXIST) break;
    }
    if (!file) {
        Fail(path, errno);
        return {};
    }
    Remember(part);
    if (WriteAndClose(file, text)) return part;
    const int error = errno;
    std::remove(part.c_str());
    g_unfinished[0] = 0;
    Fail(path, error);
    return {};
}

// Returns the file to which a link leads, so that the link remains.
std::string TargetOf(const std::string& path) {
    std::error_code error;
    if (!std::filesystem::is_symlink(PathOf(path), error)) return path;
    const std::string target = ArgumentOf(std::filesystem::canonical(PathOf(path), error));
    return error ? path : target;
}

}  // namespace

bool WriteFile(const std::string& path, const std::string& text) {
    if (KindOf(path) == FileKind::kOther) {
        std::FILE* file = std::fopen(path.c_str(), "wb");
        return (file && WriteAndClose(file, text)) || Fail(path, errno);
    }
    const std::string target = TargetOf(path), part = WriteBeside(target, text, false);
    if (part.empty()) return false;
    const bool done = MoveOver(part, target);
    const int error = errno;
    if (!done) std::remove(part.c_str());
    g_unfinished[0] = 0;
    return done || Fail(path, error);
}

bool RewriteFile(const std::string& path, const std::string& text) {
    const std::string target = TargetOf(path);
    std::FILE* file = std::fopen(target.c_str(), "r+b");  // fails before anything is written
    if (!file) return Fail(path, errno);
    // The rights of the file itself may be narrower than those of a new one.
    const std::string part = WriteBeside(target, text, true);
    g_unfinished[0] = 0;  // from here on, it is what an interruption must not remove
    if (part.empty()) {
        std::fclose(file);
        return false;
    }
    if (!WriteAndClose(file, text) || !CutFile(target, text.size())) {
        Complain(path + ": cannot be written: " + std::strerror(errno) + "; the text is in " +
                 part);
        return false;
    }
    std::remove(part.c_str());
    return true;
}
