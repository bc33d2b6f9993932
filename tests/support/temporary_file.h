// Bytes of files, and files with given bytes in the current folder that exist within a scope.
#pragma once

#include <cstdio>
#include <fstream>
#include <iterator>
#include <string>

inline std::string BytesOf(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), {}};
}

class TemporaryFile {
  public:
    explicit TemporaryFile(const std::string& bytes = "") {
        static int count = 0;
        m_path = "./temporary." + std::to_string(++count) + "." +
                 std::to_string(reinterpret_cast<std::size_t>(&count) & 0xFFFF);
        std::ofstream(m_path, std::ios::binary) << bytes;
    }
    ~TemporaryFile() { std::remove(m_path.c_str()); }
    TemporaryFile(const TemporaryFile&) = delete;
    TemporaryFile& operator=(const TemporaryFile&) = delete;
    const char* Path() const { return m_path.c_str(); }
    std::string Bytes() const { return BytesOf(m_path); }

  private:
    std::string m_path;
};

// An open stream, closed at the end of the scope.
class OpenFile {
  public:
    OpenFile(const char* path, const char* mode) : m_stream(std::fopen(path, mode)) {}
    ~OpenFile() { std::fclose(m_stream); }
    OpenFile(const OpenFile&) = delete;
    OpenFile& operator=(const OpenFile&) = delete;
    operator std::FILE*() const { return m_stream; }

  private:
    std::FILE* m_stream;
};
