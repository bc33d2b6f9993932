// Lists of the files in a directory.
#include <cstring>

#include "genutil/string/storage.h"
#include "osfile.h"
#include "osutil/file/name_pattern.h"
#include "osutil/file/path.h"
#include "osutil/platform/file/directories.h"

using genutil::JoinPath;
using genutil::platform::Directory;
using genutil::platform::IsDots;
using Storage = genutil::StringStorage;

namespace {

// The entries of a directory that match a pattern. The pattern may begin with directories of its
// own, since it is joined to the path before use.
class Matches {
  public:
    Matches(CGNString const& path, CGNString const& pattern)
        : m_parts(path, pattern),
          m_directory(m_parts.directory, Directory::Links::kFollow),
          m_pattern(m_parts.name) {}
    bool IsOpen() const { return m_directory.IsOpen(); }
    bool Next() {
        while (m_directory.Next())
            if (m_pattern.Matches(m_directory.Name())) return true;
        return false;
    }
    const Directory& Entry() const { return m_directory; }

  private:
    struct Parts {
        Parts(CGNString const& path, CGNString const& pattern) {
            CGNString joined;
            if (!JoinPath(joined, path, pattern)) return;
            joined.SplitFilePath(directory, name);
            directory += '\\';  // turns an empty path into a root, and "X:" into the root of a
                                // drive
        }
        CGNString directory, name;
    };
    Parts m_parts;
    Directory m_directory;
    genutil::NamePattern m_pattern;
};

// The paths of a directory's entries, one after another in the same buffer.
class Paths {
  public:
    explicit Paths(CGNString const& directory)
        : m_good(JoinPath(m_path, directory, "")), m_prefix(m_path.GetLength()) {}
    void AddTo(CGNStringList& list, const char* name) {
        const std::size_t length = std::strlen(name);
        if (!m_good) return;
        Storage::Store(m_path, name, m_prefix, length);
        if (m_path.GetLength() == m_prefix + length) list.AddItem(m_path);
    }

  private:
    CGNString m_path;
    const bool m_good;
    const std::uint32_t m_prefix;
};

}  // namespace

int OSGetFileList(CGNString const& path, CGNString const& pattern, CGNStringList& list) {
    Matches matches(path, pattern);
    Paths paths(path);
    while (matches.Next()) paths.AddTo(list, matches.Entry().Name());
    return matches.IsOpen() ? 0 : osFileFailed;
}

namespace {

// Not inlined, so that its stack space is free before subdirectories are listed.
[[gnu::noinline]] int ListFiles(CGNString const& path, CGNString const& pattern,
                                CGNStringList& list, bool fullPaths) {
    Matches matches(path, pattern);
    Paths paths(path);
    while (matches.Next()) {
        if (matches.Entry().IsDirectory()) continue;
        if (fullPaths)
            paths.AddTo(list, matches.Entry().Name());
        else
            list.AddItem(matches.Entry().Name());
    }
    return matches.IsOpen() ? 0 : osFileFailed;
}

// Lists the subdirectories of a directory, which is closed before they are listed, because trees
// may be deep.
[[gnu::noinline]] int ListFolders(CGNString const& path, CGNStringList& list) {
    Matches all(path, "*");
    while (all.Next()) {
        const Directory& entry = all.Entry();
        // A link may lead back to a parent directory.
        if (!IsDots(entry.Name()) && !entry.IsLink() && entry.IsDirectory())
            list.AddItem(entry.Name());
    }
    return all.IsOpen() ? 0 : osFileFailed;
}

}  // namespace

int OSGetFileList(CGNString const& path, CGNString const& pattern, CGNStringList& list,
                  unsigned char recurse, unsigned char fullPaths) {
    const int result = ListFiles(path, pattern, list, fullPaths != 0);
    if (!recurse) return result;
    CGNStringList folders(10, 10);
    const int recursion = ListFolders(path, folders);
    for (int i = 0; i < folders.GetCount(); ++i) {
        CGNString below;
        if (!folders.GetItem(i) || !JoinPath(below, path, *folders.GetItem(i))) continue;
        CGNStringList found(10, 10);
        OSGetFileList(below, pattern, found, recurse, fullPaths);
        list += found;
    }
    return recursion;
}
