// Reading profile files through file descriptors.
#include "osutil/platform/config/profiles.h"

#include <fcntl.h>

#include <cerrno>
#include <cstring>
#include <ctime>
#include <string_view>

#include "osutil/config/ini_text.h"
#include "osutil/platform/posix/config/profile_cache.h"
#include "osutil/platform/posix/config/profile_path.h"
#include "osutil/platform/posix/file/descriptor.h"

namespace genutil::platform {

ProfilePath::ProfilePath(const char* file) : m_given(file), m_path(m_given.Get()) {
    if (file && (!m_path || std::strchr(m_path, '/'))) return;
    m_path = m_kept.emplace(file ? m_path : "default.ini").Get();
}

namespace {

// Two changes of a file within one tick of its clock have the same time, so a state identifies the
// content only if it is older than a tick. Times without a fraction come from a file system that
// keeps seconds, or even two (all in nanoseconds).
constexpr std::int64_t kSecond = 1'000'000'000;
constexpr std::int64_t kTick = 50'000'000, kCoarseTick = 2 * kSecond;

bool IsCertain(const FileState& state) {
    timespec now;
    clock_gettime(CLOCK_REALTIME_COARSE, &now);  // the clock used for file times
    const bool coarse = state.changed % kSecond == 0 || state.modified % kSecond == 0;
    const std::int64_t before = FileState::Nanoseconds(now) - (coarse ? kCoarseTick : kTick);
    return state.changed < before && state.modified < before;
}

struct Query {
    std::string_view section, key;
    char* out;
    std::size_t size;

    std::size_t Store(std::string_view value) const {
        const std::size_t length = value.size() < size ? value.size() : size - 1;
        std::memcpy(out, value.data(), length);
        return length;
    }
};

bool SearchText(std::string_view text, const Query& query, std::size_t* length) {
    IniSearch search(query.section, query.key);
    search.Next(text, true);
    if (search.IsFound()) *length = query.Store(search.Value());
    return search.IsFound();
}

// Reads a whole file and converts its lines if necessary.
bool LoadText(int file, std::int64_t size, IniText* text) {
    text->size = static_cast<std::size_t>(size);
    text->bytes.Reset(static_cast<char*>(Allocate(static_cast<std::uint64_t>(size) + 1)));
    return text->bytes.Get() && ReadExactly(file, 0, text->bytes.Get(), text->size) &&
           ConvertIni(text);
}

bool SearchForeignFile(int file, const Query& query, std::size_t* length) {
    struct stat status;
    IniText text;
    return fstat(file, &status) == 0 && LoadText(file, status.st_size, &text) &&
           SearchText(text.View(), query, length);
}

// Reads piece by piece and no further than necessary. Returns false if the value is not found.
bool SearchFile(int file, const Query& query, std::size_t* length) {
    constexpr std::size_t kPiece = 32768;
    char first[kPiece];
    Owned<char> larger;
    char* buffer = first;
    std::size_t room = kPiece, kept = 0;
    IniSearch search(query.section, query.key);
    for (bool isFirst = true;;) {
        const ssize_t count = read(file, buffer + kept, room - kept);
        if (count < 0 && errno == EINTR) continue;
        if (count < 0) return false;
        const std::size_t filled = kept + static_cast<std::size_t>(count);
        if (isFirst && kept == 0 && IsForeignIni({buffer, filled}))
            return SearchForeignFile(file, query, length);
        const void* feed = memrchr(buffer + kept, '\n', filled - kept);
        std::size_t whole =
            feed ? static_cast<std::size_t>(static_cast<const char*>(feed) + 1 - buffer) : 0;
        if (count == 0) whole = filled;
        if (whole && search.Next({buffer, whole}, isFirst)) break;
        if (count == 0) return false;
        isFirst = isFirst && whole == 0;
        kept = filled - whole;
        if (kept == room) {  // a single line fills it
            Owned<char> next(static_cast<char*>(Allocate(std::uint64_t{room} * 2)));
            if (!AssertAllocation(next.Get() != nullptr, "osutil/osconfig", __LINE__)) return false;
            std::memcpy(next.Get(), buffer, kept);
            larger.Reset(next.Take());
            buffer = larger.Get();
            room *= 2;
        } else {
            std::memmove(buffer, buffer + whole, kept);
        }
    }
    if (search.IsFound()) *length = query.Store(search.Value());
    return search.IsFound();
}

bool HasState(int file, const FileState& state) {
    struct stat status;
    return fstat(file, &status) == 0 && FileState::Of(status) == state;
}

// Reads a whole file for the cache, if it still has that state.
bool LoadState(int file, const FileState& state, IniText* text) {
    return IsCertain(state) && HasState(file, state) && LoadText(file, state.size, text) &&
           HasState(file, state);
}

bool ReadValue(const char* path, const Query& query, std::size_t* length) {
    struct stat status;
    if (!path || stat(path, &status) != 0 || !S_ISREG(status.st_mode)) return false;
    const FileState state = FileState::Of(status);
    const Cached cached =
        AskProfileCache(state, query.section, query.key, query.out, query.size, length);
    if (cached == Cached::kFound || cached == Cached::kMissing) return cached == Cached::kFound;
    const OpenDescriptor file(open(path, O_RDONLY | O_CLOEXEC | O_NONBLOCK));
    if (!file.IsOpen()) return false;
    IniText text;
    if (cached == Cached::kLoad && LoadState(file.Get(), state, &text)) {
        const bool found = SearchText(text.View(), query, length);
        FillProfileCache(state, &text);
        return found;
    }
    return SearchFile(file.Get(), query, length);
}

}  // namespace

std::size_t ReadProfileValue(const char* file, const char* section, const char* key,
                             const char* fallback, char* out, std::size_t size) {
    const ProfilePath path(file);
    const Query query{section, key, out, size};
    std::size_t length = 0;
    if (!ReadValue(path.Get(), query, &length)) {
        std::string_view text = fallback;
        while (!text.empty() && text.back() == ' ') text.remove_suffix(1);
        length = query.Store(text);
    }
    // A text ends at its first 0, which a file may contain.
    out[length] = 0;
    return std::strlen(out);
}

}  // namespace genutil::platform
