// Files and directories by path.
//
// Paths and names are in the current code set; a null path is one of a file that cannot be reached.
// Failures of memory are reported to the assertion service and fail the call.
#pragma once

#include <cstddef>
#include <cstdint>

namespace genutil::platform {

// What the functions that make and remove report.
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
    kCreate,            // a new file; where anything has the name, Code() is kExists
    kCreateOrTruncate,  // a new file or an emptied one
    kCreateOrAppend,    // a new file or the end of one, read and written
    kAppend             // the end of an existing file
};

// An open file, closed with its scope. Others may read it meanwhile.
class File {
  public:
    File(const char* path, Opening opening);
    ~File() { Close(); }
    File(const File&) = delete;
    File& operator=(const File&) = delete;

    FileCode Code() const { return m_code; }  // of opening it
    // Bytes; -1 when it is not open or is no file with bytes of a known number, as a directory is.
    std::int64_t Size() const;
    // Whether all of `count` bytes from `offset` on were there.
    bool ReadAt(std::int64_t offset, char* out, std::size_t count);
    bool Write(const char* bytes, std::size_t count);  // whether all were written
    bool Close();  // whether it was open and the system has taken everything

  private:
    std::intptr_t m_handle;
    FileCode m_code;
};

bool Exists(const char* path);  // whether anything has the name, be it a link to nothing

FileCode MakeDirectory(const char* path);
// An empty directory; a link to a directory goes in place of that directory.
FileCode RemoveEmptyDirectory(const char* path);
// Anything but a directory; a link goes in place of what it leads to.
FileCode RemoveFile(const char* path);
}  // namespace genutil::platform
