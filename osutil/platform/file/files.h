// What the library asks of an operating system about files and directories.
//
// Paths and names are in the current code set; a null path is one of a file that cannot be reached.
// Failures of memory are reported to the assertion service and fail the call.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdio>

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

// Opens a file as a stream of the C runtime, which closes it; null when it does not open. The mode
// is that of fopen, of at most three letters.
std::FILE* OpenStream(const char* path, const char* mode);
// The place in a stream of the C library, beyond 2 GB too; -1 when it has none.
std::int64_t PlaceIn(std::FILE* stream);
bool GoTo(std::FILE* stream, std::int64_t place);

bool Exists(const char* path);  // whether anything has the name, be it a link to nothing

FileCode MakeDirectory(const char* path);
// An empty directory; a link to a directory goes in place of that directory.
FileCode RemoveEmptyDirectory(const char* path);
// Anything but a directory; a link goes in place of what it leads to.
FileCode RemoveFile(const char* path);
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
    bool Next();  // goes to the next entry; false behind the last one

    // The entry. Its name is valid until the next.
    const char* Name() const;
    bool IsDirectory() const;  // a link counts as what it leads to
    bool IsLink() const;
    bool ModificationTime(std::int64_t* seconds) const;  // since 1970; a link's own
    // As those for a path, by the name that the system knows the entry under.
    FileCode RemoveEntryFile();
    FileCode RemoveEntryDirectory();

  private:
    struct State;
    explicit Directory(State* state) : m_state(state) {}

    State* m_state;
};

// The directory for temporary files with a separator behind it. Bytes stored, without a terminator;
// 0 when they and the terminator are more than `size`.
std::size_t TemporaryDirectory(char* out, std::size_t size);

// Tells of each disk resource that this machine is connected to. `local` is what it is known as
// here ("X:"), or null. False when they cannot be enumerated.
using ResourceVisitor = void (*)(void* context, const char* local, const char* remote);
bool VisitConnectedDisks(ResourceVisitor visitor, void* context);

}  // namespace genutil::platform
