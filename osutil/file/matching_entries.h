// Walks over the entries of a directory that match a pattern.
#pragma once

#include "genstring.h"
#include "osutil/file/name_pattern.h"
#include "osutil/file/path.h"
#include "osutil/platform/file/directories.h"

namespace genutil {

// The entries of a directory that match a pattern. The pattern may begin with directories of its
// own, since it is joined to the path before use.
class MatchingEntries {
  public:
    MatchingEntries(CGNString const& path, const char* pattern)
        : m_parts(path, pattern),
          m_directory(m_parts.directory, platform::Directory::Links::kFollow),
          m_pattern(m_parts.name) {}
    // Skips names that a path would interpret as several names, because they would denote another
    // file.
    bool Next() {
        while (m_directory.Next())
            if (m_directory.IsOneName() && m_pattern.Matches(m_directory.Name())) return true;
        return false;
    }
    bool IsOpen() const { return m_directory.IsOpen(); }
    bool HasFailed() const {
        return !m_parts.good || m_directory.HasFailed() || m_pattern.HasFailed();
    }
    const platform::Directory& Entry() const { return m_directory; }

  private:
    struct Parts {
        Parts(CGNString const& path, const char* pattern) {
            CGNString joined;
            if (!JoinPath(joined, path, pattern)) return;
            joined.SplitFilePath(directory, name);
            const unsigned length = directory.GetLength();
            directory += '\\';  // turns an empty path into a root, and "X:" into the root of a
                                // drive
            good = directory.GetLength() == length + 1 &&
                   length + name.GetLength() + 1 >= joined.GetLength();
        }
        CGNString directory, name;
        bool good = false;
    };
    Parts m_parts;
    platform::Directory m_directory;
    NamePattern m_pattern;
};

}  // namespace genutil
