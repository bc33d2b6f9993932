// Lines of a stream in any code set, by a converter.
#include <cstdio>

#include "genutil/allocate.h"
#include "genutil/mbutil/ascii_units.h"
#include "genutil/mbutil/converter.h"

using namespace genutil;

namespace {

constexpr std::size_t kTerminator = 4, kRoomForOne = 32;

// Reads bytes of a stream up to the end of a line or of the block.
class LineBytes {
  public:
    // Returns false at the end of the stream.
    bool Read(std::FILE* stream, const PieceConverter& converter) {
        const CodePage* const form = converter.Form();
        const std::size_t unit = form ? UnitSize(form->form) : 1;
        // The first unit may be a byte-order mark, which determines where a line ends.
        const std::size_t limit = unit > 1 && !converter.HasBegun() ? unit : sizeof m_bytes;
        m_length = 0;
        m_endsLine = false;
        while (m_length < limit && !m_endsLine) {
            const int c = std::getc(stream);
            if (c == EOF) return false;
            m_bytes[m_length++] = static_cast<char>(c);
            m_endsLine = m_length % unit == 0 && IsLineFeed(form, unit);
        }
        return true;
    }
    const char* Bytes() const { return m_bytes; }
    std::size_t Length() const { return m_length; }
    bool EndsLine() const { return m_endsLine; }

  private:
    // A line feed is a character by itself in every code set of bytes.
    bool IsLineFeed(const CodePage* form, std::size_t unit) const {
        const char* const last = m_bytes + m_length - unit;
        if (unit == 1) return *last == '\n';
        const bool little = form->form == CodeForm::kUtf16 || form->form == CodeForm::kUtf32;
        const std::size_t low = little ? 0 : unit - 1;
        for (std::size_t i = 0; i < unit; ++i)
            if (last[i] != (i == low ? '\n' : 0)) return false;
        return true;
    }

    char m_bytes[4096];
    std::size_t m_length = 0;
    bool m_endsLine = false;
};

// A buffer of malloc that grows.
class Line {
  public:
    Line(char** text, std::size_t* size) : m_text(text), m_size(size) {
        if (!*text) *size = 0;
    }
    bool Reserve(std::size_t room) {
        if (*m_size >= m_used + room + kTerminator) return true;
        const std::size_t size = m_used * 2 + room + kTerminator;
        char* const grown = static_cast<char*>(Reallocate(*m_text, size));
        if (!grown) return false;
        *m_text = grown;
        *m_size = size;
        return true;
    }
    // Appends the conversion of a piece. Returns false if allocation fails.
    bool Add(mbConverter* converter, const char* src, std::size_t length, bool last) {
        for (;;) {
            if (!Reserve(length * 2 + kRoomForOne)) return false;
            char* dst = *m_text + m_used;
            std::size_t room = *m_size - m_used - kTerminator;
            const int result = mbConvertNext(converter, &src, &length, &dst, &room, last, nullptr);
            m_used = static_cast<std::size_t>(dst - *m_text);
            if (result != mbNextFull) return result != mbNextFailed;
        }
    }
    void Terminate() {
        for (std::size_t i = 0; i < kTerminator; ++i) (*m_text)[m_used + i] = 0;
    }
    std::size_t Length() const { return m_used; }

  private:
    char** m_text;
    std::size_t* m_size;
    std::size_t m_used = 0;
};

}  // namespace

int mbReadLine(mbConverter* converter, FILE* stream, char** line, size_t* size, size_t* length) {
    Line text(line, size);
    if (!text.Reserve(0)) return -1;
    LineBytes bytes;
    bool more = true;
    while (more && !bytes.EndsLine()) {
        more = bytes.Read(stream, converter->pieces);
        if (!text.Add(converter, bytes.Bytes(), bytes.Length(), !more)) return -1;
    }
    text.Terminate();
    if (length) *length = text.Length();
    return more || text.Length() > 0;
}
