// Platform layer: files and directories by path.
//
// Paths and names are in the current code set. A null path refers to a file that cannot be
// accessed. Failed allocations are reported to the assertion service and make the call fail.
#pragma once

#include <cstddef>
#include <cstdint>

namespace genutil::platform {

// Results of the functions that create and remove.
enum FileCode : int {
    kDone = 0,
    kFailed = -1,
    kExists = -2,
    kNotFound = -3,
    kAccessDenied = -4,
    kNotEmpty = -5
};

enum class Opening {
    kRead,              // an existing file
    kCreate,            // a new file; if the name exists in any form, Code() is kExists
    kCreateOrTruncate,  // a new file, or an existing one truncated
    kCreateOrAppend,    // a new file, or the end of an existing one; for reading and writing
    kAppend             // the end of an existing file
};

// An open file, closed at the end of its scope. Other programs may read it meanwhile.
class File {
  public:
    File(const char* path, Opening opening);
    ~File() { Close(); }
    File(const File&) = delete;
    File& operator=(const File&) = delete;

    FileCode Code() const { return m_code; }  // of opening the file
    // Returns the number of bytes, or -1 if the file is not open or is not a file of known size,
    // such as a directory.
    std::int64_t Size() const;
    // Returns true if all `count` bytes from `offset` on were read.
    bool ReadAt(std::int64_t offset, char* out, std::size_t count);
    bool Write(const char* bytes, std::size_t count);  // returns true if all were written
    bool Close();  // returns true if it was open and the system has accepted everything

  private:
    std::intptr_t m_handle;
    FileCode m_code;
};

bool Exists(const char* path);  // returns true if anything has the name, even a broken link

// Returns true if the system can have a file of that name in its directory, and one with an ending
// such as ".001".
bool NameFits(const char* path);

FileCode MakeDirectory(const char* path);
// Removes an empty directory, or a link to a directory instead of that directory.
FileCode RemoveEmptyDirectory(const char* path);
// Removes anything but a directory. A link is removed instead of its target.
FileCode RemoveFile(const char* path);
}  // namespace genutil::platform
