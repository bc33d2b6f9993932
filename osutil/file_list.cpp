// Lists of the files in a directory.
#include "osfile.h"
#include "osutil/name_pattern.h"
#include "osutil/path.h"
#include "osutil/platform/files.h"

using genutil::IsDots;
using genutil::JoinPath;
using genutil::platform::Directory;

namespace {

// The entries of a directory that a pattern selects. The pattern may begin with directories of its
// own, since it is joined to the path before it is looked at.
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
            directory += '\\';  // which makes a root of nothing, and a drive's of "X:"
        }
        CGNString directory, name;
    };
    Parts m_parts;
    Directory m_directory;
    genutil::NamePattern m_pattern;
};

void AddPath(CGNStringList& list, CGNString const& directory, const char* name) {
    CGNString path;
    if (JoinPath(path, directory, name)) list.AddItem(path);
}

}  // namespace

int OSGetFileList(CGNString const& path, CGNString const& pattern, CGNStringList& list) {
    Matches matches(path, pattern);
    while (matches.Next()) AddPath(list, path, matches.Entry().Name());
    return matches.IsOpen() ? 0 : osFileFailed;
}

int OSGetFileList(CGNString const& path, CGNString const& pattern, CGNStringList& list,
                  unsigned char recurse, unsigned char fullPaths) {
    Matches matches(path, pattern);
    while (matches.Next()) {
        if (matches.Entry().IsDirectory()) continue;
        if (fullPaths)
            AddPath(list, path, matches.Entry().Name());
        else
            list.AddItem(matches.Entry().Name());
    }
    if (!recurse) return matches.IsOpen() ? 0 : osFileFailed;
    Matches all(path, "*");
    while (all.Next()) {
        const Directory& entry = all.Entry();
        if (IsDots(entry.Name()) || entry.IsLink() || !entry.IsDirectory()) continue;
        CGNString below;
        if (!JoinPath(below, path, entry.Name())) continue;
        CGNStringList found(10, 10);
        OSGetFileList(below, pattern, found, recurse, fullPaths);
        list += found;
    }
    return all.IsOpen() ? 0 : osFileFailed;
}
