// Walks over directories, and the removal of whole trees. Paths and names are in the current code
// set.
#pragma once

#include <cstdint>

#include "osutil/platform/file/files.h"

namespace genutil::platform {

// A file, a link or a directory with all that is in it, links included and nothing they lead to.
// Stops at the first failure.
bool RemoveTree(const char* path);

// Whether a name is "." or "..".
template <class Unit>
bool IsDots(const Unit* name) {
    return name[0] == '.' && (name[1] == 0 || (name[1] == '.' && name[2] == 0));
}

// A walk over the entries of a directory, "." and ".." among them where the system has them.
class Directory {
  public:
    // With its entries unread, or closed when there is no such directory.
    enum class Links { kFollow, kRefuse };
    Directory(const char* path, Links links);
    // The directory that the entry is; closed when it is none, or a link to one.
    Directory EntryAsDirectory() const;
    ~Directory();
    Directory(const Directory&) = delete;
    Directory& operator=(const Directory&) = delete;

    bool IsOpen() const { return m_state != nullptr; }
    // Goes to the next entry. Returns false after the last one, and if the walk fails.
    bool Next();
    // Returns true if the directory exists but could not be opened, or if the walk ended before the
    // last entry.
    bool HasFailed() const { return m_failed; }

    // The entry. Its name is valid until the next.
    const char* Name() const;
    bool IsDirectory() const;  // a link counts as what it leads to
    bool IsLink() const;
    // Returns false for a name that a path would take for several: on Linux a name may contain
    // "\\".
    bool IsOneName() const;
    bool ModificationTime(std::int64_t* seconds) const;  // since 1970; a link's own
    // As those for a path, by the name that the system knows the entry under.
    FileCode RemoveEntryFile();
    FileCode RemoveEntryDirectory();

  private:
    struct State;
    explicit Directory(State* state) : m_state(state) {}

    State* m_state;
    bool m_failed = false;
};

}  // namespace genutil::platform
