// One line of a trace, assembled in memory so that it can be written in one piece.
#pragma once

#include <cstdarg>
#include <cstddef>
#include <cstdio>

namespace genutil {

class TraceLine {
  public:
    TraceLine() = default;
    ~TraceLine();
    TraceLine(const TraceLine&) = delete;
    TraceLine& operator=(const TraceLine&) = delete;

    void AppendDateTime();  // the present local time: "11/21/26 09:30:12 :: "
    void AppendThread(unsigned long id);
    void AppendModule(const char* module);
    void AppendMessage(const char* format, va_list arguments);
    void AppendPosition(const char* fileLine);
    void End();
    void InsertSeparator(std::size_t at);

    void Append(const char* text, std::size_t length);

    std::size_t Length() const { return m_length; }
    const char* Bytes() const { return m_text; }
    const char* Text();  // the line as a terminated text, without an end
    void WriteTo(std::FILE* stream) const;

  private:
    std::size_t Grow(std::size_t extra);

    static constexpr std::size_t kOnStack = 1024;
    char m_stack[kOnStack];
    char* m_text = m_stack;
    std::size_t m_capacity = kOnStack;
    std::size_t m_length = 0;
};

// Opens a log file, unbuffered, at its end. Returns null if it cannot be opened.
std::FILE* OpenTraceFile(const char* name, const char* mode);

}  // namespace genutil
