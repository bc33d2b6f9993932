// Platform layer: walks over directories, and the removal of whole trees. Paths and names are in
// the current code set.
#pragma once

#include <cstdint>

#include "osutil/platform/file/files.h"

namespace genutil::platform {

// Removes a file, a link or a directory with all its content. Links are removed, not followed.
// Stops at the first failure.
bool RemoveTree(const char* path);

// Returns true if a name is "." or "..".
template <class Unit>
bool IsDots(const Unit* name) {
    return name[0] == '.' && (name[1] == 0 || (name[1] == '.' && name[2] == 0));
}

// A walk over the entries of a directory, including "." and ".." if the system has them.
class Directory {
  public:
    // Opens a directory before its first entry. It is closed if there is no such directory.
    enum class Links { kFollow, kRefuse };
    Directory(const char* path, Links links);
    // Opens the directory that is the current entry. It is closed if the entry is not a directory,
    // or is a link to one.
    Directory EntryAsDirectory() const;
    ~Directory();
    Directory(const Directory&) = delete;
    Directory& operator=(const Directory&) = delete;

    bool IsOpen() const { return m_state != nullptr; }
    // Advances to the next entry. Returns false after the last one, and if the walk fails.
    bool Next();
    // Returns true if the directory exists but could not be opened, or if the walk ended before the
    // last entry.
    bool HasFailed() const { return m_failed; }

    // The current entry. Its name is valid until the next call of Next().
    const char* Name() const;
    bool IsDirectory() const;  // for a link, that of its target
    bool IsLink() const;
    // Returns false for a name that a path would interpret as several names: on Linux a name may
    // contain "\\".
    bool IsOneName() const;
    bool ModificationTime(std::int64_t* seconds) const;  // since 1970; for a link, its own
    // Of a link, its own. Returns false if the entry has vanished.
    enum class Kind { kFile, kDirectory, kLink, kOther };
    struct Status {
        Kind kind;
        std::int64_t size;      // in bytes; 0 for a directory
        std::int64_t modified;  // seconds since 1970
    };
    bool ReadStatus(Status* status) const;
    // Remove the entry like the functions for a path, by the name under which the system knows it.
    FileCode RemoveEntryFile();
    FileCode RemoveEntryDirectory();

  private:
    struct State;
    explicit Directory(State* state) : m_state(state) {}

    State* m_state;
    bool m_failed = false;
};

}  // namespace genutil::platform
