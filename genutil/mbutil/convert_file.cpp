// Conversion of whole text files.
#include <cstddef>
#include <cstdio>
#include <cstring>

#include "genutil/allocate.h"
#include "genutil/mbutil/code_set.h"
#include "genutil/mbutil/converter.h"
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

// Converts pieces and writes them to a file.
class Writer {
  public:
    Writer(PieceConverter& converter, std::FILE* out, Losses losses)
        : m_converter(converter), m_out(out), m_losses(losses) {}

    // Returns false if the file cannot be written or allocation fails.
    bool Write(const char* text, std::size_t length, bool last) {
        const auto begin = reinterpret_cast<const unsigned char*>(text);
        unsigned char block[16384];
        Transfer piece{begin, begin + length, block, block, m_losses};
        Stop stop;
        do {
            piece.dst = block;
            piece.dstEnd = block + sizeof block;
            stop = m_converter.Next(piece, last);
            const auto n = static_cast<std::size_t>(piece.dst - block);
            if (stop == Stop::kUnknown || std::fwrite(block, 1, n, m_out) != n) return false;
            m_written += n;
        } while (stop == Stop::kFull);
        m_losses = piece.losses;
        return true;
    }

    std::size_t Written() const { return m_written; }
    std::size_t Lost() const { return m_losses.Count(); }

  private:
    PieceConverter& m_converter;
    std::FILE* m_out;
    Losses m_losses;
    std::size_t m_written = 0;
};

// The bytes of a file in blocks. A file that is also the one to be written is read whole.
class Input {
  public:
    Input(const char* path, const char* mode) : m_file(path, mode) {}
    bool IsOpen() const { return m_file.Stream() != nullptr; }

    // Reads all bytes if `outPath` is the same file. Returns false if that fails.
    bool PrepareFor(const char* outPath) {
        m_bytes.Reset(static_cast<char*>(Allocate(m_size)));
        if (!m_bytes.Get() || !platform::IsOpenIn(m_file.Stream(), outPath))
            return m_bytes.Get() != nullptr;
        m_whole = true;
        for (std::size_t all = 0;; GrowBuffer(&m_bytes, m_size *= 2)) {
            if (!m_bytes.Get()) return false;
            const auto room = static_cast<std::size_t>(m_size - all);
            const std::size_t read = std::fread(m_bytes.Get() + all, 1, room, m_file.Stream());
            all += read;
            if (read < room) {
                m_ready = all;
                return !std::ferror(m_file.Stream());
            }
        }
    }

    // Returns the number of bytes of the next block, or 0 at the end.
    std::size_t Next() {
        const std::size_t ready = m_ready;
        m_ready = 0;
        if (m_whole) return ready;
        return std::fread(m_bytes.Get(), 1, static_cast<std::size_t>(m_size), m_file.Stream());
    }
    const char* Block() const { return m_bytes.Get(); }
    bool Failed() const { return std::ferror(m_file.Stream()) != 0; }

  private:
    File m_file;
    Owned<char> m_bytes;
    std::uint64_t m_size = 1 << 16;
    std::size_t m_ready = 0;
    bool m_whole = false;
};

// The text of lines: of each line, the part before its first NUL. A line that begins with NUL ends
// the text.
class LineFilter {
  public:
    explicit LineFilter(Writer& writer) : m_writer(writer) {}

    // Returns false if the file cannot be written.
    bool Take(const char* block, std::size_t length) {
        while (length > 0 && !m_ended) {
            const void* const feed = std::memchr(block, '\n', length);
            const std::size_t line =
                feed ? static_cast<std::size_t>(static_cast<const char*>(feed) - block) + 1
                     : length;
            if (!TakePart(block, line)) return false;
            if (feed) m_inLine = m_skipping = false;
            block += line;
            length -= line;
        }
        return true;
    }
    bool Ended() const { return m_ended; }

  private:
    bool TakePart(const char* part, std::size_t length) {
        if (m_skipping) return true;
        const void* const zero = std::memchr(part, 0, length);
        const std::size_t kept =
            zero ? static_cast<std::size_t>(static_cast<const char*>(zero) - part) : length;
        m_ended = zero && kept == 0 && !m_inLine;
        m_skipping = zero != nullptr;
        m_inLine = true;
        return m_writer.Write(part, kept, false);
    }

    Writer& m_writer;
    bool m_inLine = false, m_skipping = false, m_ended = false;
};

// Converts line by line up to the end or to a line that begins with NUL. With a single-byte current
// code set, lines are copied.
int ConvertLines(const char* inPath, const char* outPath, int append, int from, int to) {
    if (!g_codeSetState.multiByte) to = from;
    Input in(inPath, "rt");
    if (!in.IsOpen() || !in.PrepareFor(outPath)) return 0;
    File out(outPath, append ? "at" : "wt");
    if (!out.Stream()) return 0;
    PieceConverter converter;
    converter.OpenRelated(from, to);
    Writer writer(converter, out.Stream(), {});
    LineFilter lines(writer);
    while (!lines.Ended())
        if (const std::size_t length = in.Next()) {
            if (!lines.Take(in.Block(), length)) return 0;
        } else {
            break;
        }
    return !in.Failed() && writer.Write("", 0, true) && out.Close();
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
    conversion->consumed = conversion->produced = conversion->lost = 0;
    PieceConverter converter;
    Input in(inPath, "rb");
    if (!in.IsOpen() || !converter.Open(fromCodeSet, toCodeSet, 0) || !in.PrepareFor(outPath))
        return 0;
    File out(outPath, append ? "ab" : "wb");
    if (!out.Stream()) return 0;
    Writer writer(
        converter, out.Stream(),
        Losses(nullptr, conversion->lostAt, conversion->lostAt ? conversion->lostAtSize : 0));
    bool good = true;
    while (const std::size_t length = in.Next())
        if (!(good = writer.Write(in.Block(), length, false))) break;
    good = good && !in.Failed() && writer.Write("", 0, true);
    conversion->consumed = converter.Consumed();
    conversion->produced = writer.Written();
    conversion->lost = writer.Lost();
    return good && out.Close();
}
