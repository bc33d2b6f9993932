// Lists of the files in a directory.
#include <cstring>

#include "genutil/string/storage.h"
#include "osfile.h"
#include "osutil/file/matching_entries.h"
#include "osutil/file/path.h"

using genutil::JoinPath;
using genutil::MatchingEntries;
using genutil::platform::Directory;
using genutil::platform::IsDots;
using Storage = genutil::StringStorage;

namespace {

// The paths of a directory's entries, one after another in the same buffer.
class Paths {
  public:
    explicit Paths(CGNString const& directory)
        : m_good(JoinPath(m_path, directory, "")), m_prefix(m_path.GetLength()) {}
    // Returns false if allocation fails.
    bool AddTo(CGNStringList& list, const char* name) {
        const std::size_t length = std::strlen(name);
        if (!m_good) return false;
        Storage::Store(m_path, name, m_prefix, length);
        return m_path.GetLength() == m_prefix + length && AddName(list, m_path);
    }
    static bool AddName(CGNStringList& list, const char* name) {
        const int count = list.GetCount();
        if (!list.AddItem(name)) return false;
        const CGNString* const added = list.GetItem(count);
        return added && *added == name;
    }

  private:
    CGNString m_path;
    const bool m_good;
    const std::uint32_t m_prefix;
};

}  // namespace

int OSGetFileList(CGNString const& path, CGNString const& pattern, CGNStringList& list) {
    MatchingEntries matches(path, pattern);
    Paths paths(path);
    bool lost = false;
    while (matches.Next()) lost |= !paths.AddTo(list, matches.Entry().Name());
    return matches.IsOpen() && !matches.HasFailed() && !lost ? 0 : osFileFailed;
}

namespace {

// Not inlined, so that its stack space is free before subdirectories are listed. *lost becomes true
// if entries are missing from the list.
[[gnu::noinline]] int ListFiles(CGNString const& path, CGNString const& pattern,
                                CGNStringList& list, bool fullPaths, bool* lost) {
    MatchingEntries matches(path, pattern);
    Paths paths(path);
    while (matches.Next()) {
        if (matches.Entry().IsDirectory()) continue;
        const char* const name = matches.Entry().Name();
        *lost |= !(fullPaths ? paths.AddTo(list, name) : Paths::AddName(list, name));
    }
    *lost |= matches.HasFailed();
    return matches.IsOpen() ? 0 : osFileFailed;
}

// Lists the subdirectories of a directory, which is closed before they are listed, because trees
// may be deep. *lost becomes true if entries are missing from the list.
[[gnu::noinline]] int ListFolders(CGNString const& path, CGNStringList& list, bool* lost) {
    MatchingEntries all(path, "*");
    while (all.Next()) {
        const Directory& entry = all.Entry();
        // A link may lead back to a parent directory.
        if (!IsDots(entry.Name()) && !entry.IsLink() && entry.IsDirectory())
            *lost |= !Paths::AddName(list, entry.Name());
    }
    *lost |= all.HasFailed();
    return all.IsOpen() ? 0 : osFileFailed;
}

int List(CGNString const& path, CGNString const& pattern, CGNStringList& list, bool recurse,
         bool fullPaths, bool* lost) {
    const int result = ListFiles(path, pattern, list, fullPaths, lost);
    if (!recurse) return result;
    CGNStringList folders(10, 10);
    const int recursion = ListFolders(path, folders, lost);
    for (int i = 0; i < folders.GetCount(); ++i) {
        CGNString below;
        CGNStringList found(10, 10);
        if (folders.GetItem(i) && JoinPath(below, path, *folders.GetItem(i)))
            List(below, pattern, found, recurse, fullPaths, lost);
        else
            *lost = true;
        for (int k = 0; k < found.GetCount(); ++k)
            *lost |= !found.GetItem(k) || !Paths::AddName(list, *found.GetItem(k));
    }
    return recursion;
}

}  // namespace

int OSGetFileList(CGNString const& path, CGNString const& pattern, CGNStringList& list,
                  unsigned char recurse, unsigned char fullPaths) {
    bool lost = false;
    const int result = List(path, pattern, list, recurse != 0, fullPaths != 0, &lost);
    return lost ? osFileFailed : result;
}
