// Conversion of paths in the current code set to paths of the system, and of names of the system to
// names in the current code set. The system's paths are UTF-8 with "/" between names.
#pragma once

#include "osutil/platform/file/path_units.h"

namespace genutil::platform {

// Converts units to terminated UTF-8 in a buffer. Returns the number of bytes. Returns -1, after
// reporting it, if allocation fails.
long EncodeUtf8(const PathUnits& units, PathBuffer<char>& buffer);

// Returns the directory for temporary files, from its environment variable: an absolute path.
const char* TemporaryFolder();

// A path in the current code set, with "\" or "/" between names, in the form of the system. A byte
// 0x5C that is part of a character is not a separator. Bytes that do not convert are passed
// unchanged. So is a name that the system has only in these bytes, because NameText may have passed
// it.
class SystemPath {
  public:
    explicit SystemPath(const char* path);  // null means no path
    SystemPath(const SystemPath&) = delete;
    SystemPath& operator=(const SystemPath&) = delete;

    // Returns null, with errno set, if there is no path or if allocation failed, which has been
    // reported.
    const char* Get() const { return m_path; }

  private:
    void UseNamesAsTheyAre(const char* path);

    PathBuffer<char> m_buffer, m_found;
    const char* m_path = nullptr;
};

// A name received from the system, in the current code set. A name that does not convert is passed
// unchanged.
class NameText : public NarrowedName {
  public:
    explicit NameText(const char* name);
};

// Returns false if a name in the current code set contains a path separator.
bool IsOneName(const char* name);

}  // namespace genutil::platform
