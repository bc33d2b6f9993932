// Conversion of whole text files.
#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <initializer_list>

#include "genutil/mbutil/code_set.h"
#include "genutil/mbutil/scratch.h"
#include "osutil/platform/files.h"

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
    std::FILE* Stream() const { return m_stream; }  // null when it did not open
    // Whether everything was written, to the last buffer.
    bool Close() {
        const bool good = !std::ferror(m_stream) && std::fclose(m_stream) == 0;
        m_stream = nullptr;
        return good;
    }

  private:
    std::FILE* m_stream;
};

// A line of any length, read in pieces, so that no limit falls inside a character.
class Line {
  public:
    Line() { Grow(2048); }
    ~Line() { std::free(m_text); }
    Line(const Line&) = delete;
    Line& operator=(const Line&) = delete;
    const char* Text() const { return m_text; }  // null when memory ran out

    // False at the end of the file and when memory runs out.
    bool Read(std::FILE* stream) {
        std::size_t length = 0;
        while (m_text) {
            if (!std::fgets(m_text + length, static_cast<int>(m_size - length), stream))
                return length > 0;
            length += std::strlen(m_text + length);
            if (length + 1 < m_size || m_text[length - 1] == '\n') return true;
            Grow(2 * m_size);
        }
        return false;
    }

  private:
    void Grow(std::size_t size) {
        char* grown = static_cast<char*>(std::realloc(m_text, size));
        if (!grown) std::free(m_text);
        m_text = grown;
        m_size = size;
    }
    char* m_text = nullptr;
    std::size_t m_size = 0;
};

bool WriteConverted(const char* line, std::FILE* out, int from, int to) {
    const Scratch converted(3 * std::strlen(line) + 1);
    if (!converted.Bytes()) return false;
    std::fputs(convertStrExt(line, from, converted.Bytes(), to), out);
    return true;
}

// Line by line up to the end or a line that begins with NUL. A single-byte current code set copies.
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

// All bytes of a file in a new buffer; null when it cannot be read or memory runs out.
char* ReadAll(const char* path, std::size_t* length) {
    const File in(path, "rb");
    if (!in.Stream()) return nullptr;
    std::size_t size = 1 << 16;
    char* bytes = static_cast<char*>(std::malloc(size));
    *length = 0;
    while (bytes) {
        *length += std::fread(bytes + *length, 1, size - *length, in.Stream());
        if (*length < size) break;
        char* grown = static_cast<char*>(std::realloc(bytes, size *= 2));
        if (!grown) std::free(bytes);
        bytes = grown;
    }
    if (bytes && std::ferror(in.Stream())) {
        std::free(bytes);
        bytes = nullptr;
    }
    return bytes;
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
    std::size_t length;
    char* text = ReadAll(inPath, &length);
    char* converted = nullptr;
    const int good =
        text && mbConvertAlloc(text, length, fromCodeSet, &converted, toCodeSet, conversion);
    std::free(text);
    if (!good) return 0;
    File out(outPath, append ? "ab" : "wb");
    const bool written =
        out.Stream() &&
        std::fwrite(converted, 1, conversion->produced, out.Stream()) == conversion->produced &&
        out.Close();
    std::free(converted);
    return written;
}
