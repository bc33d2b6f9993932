// Conversion of whole text files.
#include <algorithm>
#include <climits>
#include <cstddef>
#include <cstdio>
#include <cstring>
#include <initializer_list>

#include "genutil/mbutil/code_set.h"
#include "genutil/mbutil/scratch.h"
#include "osutil/platform/file/files.h"
#include "osutil/platform/file/streams.h"

using namespace genutil;

namespace {

class File {
  public:
    File(const char* path, const char* mode) : m_stream(platform::OpenStream(path, mode)) {}
    ~File() {
        if (m_stream) std::fclose(m_stream);
    }
    File(const File&) = delete;
    File& operator=(const File&) = delete;
    std::FILE* Stream() const { return m_stream; }  // null if it could not be opened
    // Returns true if everything was written, including the last buffer.
    bool Close() {
        const bool good = !std::ferror(m_stream) && std::fclose(m_stream) == 0;
        m_stream = nullptr;
        return good;
    }

  private:
    std::FILE* m_stream;
};

// Releases the old buffer if allocation fails.
void GrowBuffer(Owned<char>* buffer, std::uint64_t size) {
    char* const old = buffer->Take();
    buffer->Reset(static_cast<char*>(Reallocate(old, size)));
    if (!buffer->Get()) Release(old);
}

// A line of any length, read in pieces, so that no limit splits a character.
class Line {
  public:
    Line() { Grow(2048); }
    Line(const Line&) = delete;
    Line& operator=(const Line&) = delete;
    const char* Text() const { return m_text.Get(); }  // null if allocation failed

    // Returns false at the end of the file and if allocation fails.
    bool Read(std::FILE* stream) {
        std::size_t length = 0;
        while (char* const text = m_text.Get()) {
            const std::uint64_t room = std::min<std::uint64_t>(m_size - length, INT_MAX);
            if (!std::fgets(text + length, static_cast<int>(room), stream)) return length > 0;
            const std::size_t read = std::strlen(text + length);
            length += read;
            if (read + 1 < room || text[length - 1] == '\n') return true;
            if (length + 1 == m_size) Grow(2 * m_size);
        }
        return false;
    }

  private:
    void Grow(std::uint64_t size) {
        GrowBuffer(&m_text, size);
        m_size = size;
    }
    Owned<char> m_text;
    std::uint64_t m_size = 0;
};

bool WriteConverted(const char* line, std::FILE* out, int from, int to) {
    const Scratch converted(ConvertedSize(std::strlen(line)));
    if (!converted.Bytes()) return false;
    std::fputs(convertStrExt(line, from, converted.Bytes(), to), out);
    return true;
}

// Converts line by line up to the end or to a line that begins with NUL. With a single-byte current
// code set, lines are copied.
int ConvertLines(const char* inPath, const char* outPath, int append, int from, int to) {
    if (!g_codeSetState.multiByte) to = from;
    File in(inPath, "rt");
    if (!in.Stream()) return 0;
    File out(outPath, append ? "at" : "wt");
    Line line;
    if (!out.Stream() || !line.Text()) return 0;
    while (line.Read(in.Stream()) && line.Text()[0])
        if (!WriteConverted(line.Text(), out.Stream(), from, to)) return 0;
    return line.Text() != nullptr;
}

// Reads all bytes of a file. Returns false if it cannot be read or if allocation fails.
bool ReadAll(const char* path, Owned<char>* bytes, std::size_t* length) {
    const File in(path, "rb");
    if (!in.Stream()) return false;
    std::uint64_t size = 1 << 16;
    *length = 0;
    for (GrowBuffer(bytes, size); bytes->Get(); GrowBuffer(bytes, size *= 2)) {
        const auto room = static_cast<std::size_t>(size - *length);
        const std::size_t read = std::fread(bytes->Get() + *length, 1, room, in.Stream());
        *length += read;
        if (read < room) return !std::ferror(in.Stream());
    }
    return false;
}

}  // namespace

int mbconvertnativefile(const char* inPath, const char* outPath, int append, int toCodeSet) {
    EnsureInitialised();
    return ConvertLines(inPath, outPath, append, g_codeSetState.codeSet, toCodeSet);
}

int mbconvertfile2native(const char* inPath, const char* outPath, int append, int fromCodeSet) {
    EnsureInitialised();
    return ConvertLines(inPath, outPath, append, fromCodeSet, g_codeSetState.codeSet);
}

int mbconvertfile2native_ex(const char* inPath, const char* outPath, int append, int fromCodeSet,
                            int toCodeSet, mbConversion* conversion) {
    mbConversion unasked = {nullptr, 0, 0, 0, 0};
    if (!conversion) conversion = &unasked;
    Owned<char> text, converted;
    std::size_t length;
    char* out = nullptr;
    if (!ReadAll(inPath, &text, &length) ||
        !mbConvertAlloc(text.Get(), length, fromCodeSet, &out, toCodeSet, conversion))
        return 0;
    converted.Reset(out);
    text.Reset(nullptr);
    File file(outPath, append ? "ab" : "wb");
    return file.Stream() &&
           std::fwrite(converted.Get(), 1, conversion->produced, file.Stream()) ==
               conversion->produced &&
           file.Close();
}
