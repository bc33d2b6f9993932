#include "genutil/diagnostics/trace_line.h"

#include <cstring>

#include "genutil/allocate.h"
#include "genutil/diagnostics/trace_date.h"
#include "osutil/platform/file/streams.h"

namespace genutil {
namespace {

constexpr char kSeparator[] = " : ";

}  // namespace

TraceLine::~TraceLine() {
    if (m_text != m_stack) Release(m_text);
}

// Makes room for `extra` more bytes. Returns how many there are, which is fewer if allocation
// fails. One byte is always left for the line end.
std::size_t TraceLine::Grow(std::size_t extra) {
    if (extra >= m_capacity - m_length) {
        const std::size_t capacity = 2 * (m_length + extra) + 2;
        if (char* grown = static_cast<char*>(Allocate(capacity))) {
            std::memcpy(grown, m_text, m_length);
            if (m_text != m_stack) Release(m_text);
            m_text = grown;
            m_capacity = capacity;
        }
    }
    const std::size_t left = m_capacity - m_length;  // none after the end of a truncated line
    const std::size_t room = left == 0 ? 0 : left - 1;
    return extra < room ? extra : room;
}

void TraceLine::Append(const char* text, std::size_t length) {
    length = Grow(length);
    std::memcpy(m_text + m_length, text, length);
    m_length += length;
}

void TraceLine::AppendDateTime() {
    char date[sizeof kTraceDateForm];
    WriteTraceDate(date);
    Append(date, sizeof date - 1);
}

void TraceLine::AppendThread(unsigned long id) {
    char text[40];
    const int length = std::snprintf(text, sizeof text, "TID %d :: ", static_cast<int>(id));
    Append(text, static_cast<std::size_t>(length));
}

void TraceLine::AppendModule(const char* module) {
    Append(module, std::strlen(module));
    Append(kSeparator, sizeof kSeparator - 1);
}

void TraceLine::AppendMessage(const char* format, va_list arguments) {
    if (!format) return;
    va_list again;
    va_copy(again, arguments);
    const std::size_t room = m_capacity - m_length;
    const int wanted = std::vsnprintf(m_text + m_length, room, format, arguments);
    if (wanted > 0) {
        const auto length = static_cast<std::size_t>(wanted);
        if (length < room - 1) {
            m_length += length;
        } else {
            const std::size_t fits = Grow(length);
            std::vsnprintf(m_text + m_length, fits + 1, format, again);
            m_length += fits;
        }
    }
    va_end(again);
}

void TraceLine::AppendPosition(const char* fileLine) {
    Append(kSeparator, sizeof kSeparator - 1);
    Append(fileLine, std::strlen(fileLine));
}

void TraceLine::End() {
    m_text[m_length++] = '\n';
}

void TraceLine::InsertSeparator(std::size_t at) {
    constexpr std::size_t kSize = sizeof kSeparator - 1;
    if (Grow(kSize) < kSize) return;
    std::memmove(m_text + at + kSize, m_text + at, m_length - at);
    std::memcpy(m_text + at, kSeparator, kSize);
    m_length += kSize;
}

const char* TraceLine::Text() {
    m_text[m_length] = 0;
    return m_text;
}

void TraceLine::WriteTo(std::FILE* stream) const {
    std::fwrite(m_text, 1, m_length, stream);
    if (stream != stdout) std::fflush(stream);
}

std::FILE* OpenTraceFile(const char* name, const char* mode) {
    // The file is first truncated if requested. Writers always append, so that two writers lose
    // nothing.
    if (*mode == 'w') {
        std::FILE* emptied = platform::OpenStream(name, mode);
        if (!emptied) return nullptr;
        std::fclose(emptied);
    }
    std::FILE* file = platform::OpenStream(name, "a");
    if (!file) return nullptr;
    std::setbuf(file, nullptr);
    // Some runtimes report position 0 for a file opened for appending until the first write.
    std::fseek(file, 0, SEEK_END);
    return file;
}

}  // namespace genutil
