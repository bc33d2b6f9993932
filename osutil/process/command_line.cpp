#include "osutil/process/command_line.h"

#include <cstring>

namespace genutil {

namespace {

bool IsBlank(char c) {
    return c == ' ' || c == '\t';
}

// Moves text towards the start of the line, which never becomes longer.
struct Splitter {
    const char* from;
    char* to;

    // Backslashes represent themselves here, since paths may begin with them.
    void Program() {
        const bool quoted = *from == '"';
        from += quoted;
        while (*from && !(quoted ? *from == '"' : IsBlank(*from))) *to++ = *from++;
        if (*from) ++from;  // skips the quotation mark or the blank
    }

    void Argument() {
        for (bool quoted = false; *from && (quoted || !IsBlank(*from));) {
            std::size_t backslashes = 0;
            while (from[backslashes] == '\\') ++backslashes;
            from += backslashes;
            const bool beforeQuote = *from == '"';
            const std::size_t kept = beforeQuote ? backslashes / 2 : backslashes;
            std::memset(to, '\\', kept);
            to += kept;
            if (!beforeQuote) {
                if (*from && (quoted || !IsBlank(*from))) *to++ = *from++;
            } else if (backslashes % 2 != 0) {
                *to++ = *from++;
            } else if (quoted && from[1] == '"') {
                *to++ = '"';
                from += 2;
            } else {
                quoted = !quoted;
                ++from;
            }
        }
        if (*from) ++from;
    }
};

}  // namespace

std::size_t SplitCommandLine(char* line, char** arguments) {
    Splitter splitter{line, line};
    std::size_t count = 0;
    const auto skipBlanks = [&] {
        while (IsBlank(*splitter.from)) ++splitter.from;
        return *splitter.from != 0;
    };
    while (skipBlanks()) {
        arguments[count] = splitter.to;
        if (count == 0)
            splitter.Program();
        else
            splitter.Argument();
        ++count;
        *splitter.to++ = 0;
    }
    arguments[count] = nullptr;
    return count;
}

}  // namespace genutil
