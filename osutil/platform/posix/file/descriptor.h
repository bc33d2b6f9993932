// File descriptors.
#pragma once

#include <unistd.h>

#include <cstddef>
#include <cstdint>

namespace genutil::platform {

// A file descriptor, closed at the end of the scope.
class OpenDescriptor {
  public:
    explicit OpenDescriptor(int file) : m_file(file) {}
    OpenDescriptor(const OpenDescriptor&) = delete;
    OpenDescriptor& operator=(const OpenDescriptor&) = delete;
    ~OpenDescriptor() {
        if (m_file >= 0) close(m_file);
    }
    int Get() const { return m_file; }
    bool IsOpen() const { return m_file >= 0; }
    bool Close() {  // returns false if written data may be lost
        const int file = m_file;
        m_file = -1;
        return close(file) == 0;
    }

  private:
    int m_file;
};

// Reads exactly `size` bytes from `offset` on. Returns false if there are fewer or if reading
// fails.
bool ReadExactly(int file, std::int64_t offset, void* out, std::size_t size);

// Writes at the position of a file. Returns false if not everything was written.
bool WriteAll(int file, const char* bytes, std::size_t size);

}  // namespace genutil::platform
