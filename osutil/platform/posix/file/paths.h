// Paths of the system from paths in the current code set, and names in the current code set from
// names of the system. The system's paths are UTF-8 with "/" between names.
#pragma once

#include "osutil/platform/file/path_units.h"

namespace genutil::platform {

// The units in UTF-8, with a terminator, into a new text in the buffer. Returns its bytes; -1,
// after the report, when memory runs out.
long EncodeUtf8(const PathUnits& units, PathBuffer<char>& buffer);

// The directory for temporary files, by its variable: an absolute path.
const char* TemporaryFolder();

// A path in the current code set, with "\" or "/" between its names, as the system takes it. A byte
// 0x5C that is part of a character is no separator. Bytes that do not convert pass as they are, and
// so does a name that the system has under its bytes only: NameText may have passed it.
class SystemPath {
  public:
    explicit SystemPath(const char* path);  // null is no path
    SystemPath(const SystemPath&) = delete;
    SystemPath& operator=(const SystemPath&) = delete;

    // Null, with errno set, when there is no path or memory ran out (which has been reported).
    const char* Get() const { return m_path; }

  private:
    void UseNamesAsTheyAre(const char* path);

    PathBuffer<char> m_buffer, m_found;
    const char* m_path = nullptr;
};

// A name that the system gave, in the current code set. One that does not convert passes as it is.
class NameText : public NarrowedName {
  public:
    explicit NameText(const char* name);
};

// Returns false if a name in the current code set has a separator of paths in it.
bool IsOneName(const char* name);

}  // namespace genutil::platform
