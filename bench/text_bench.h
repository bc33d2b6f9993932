// What the peers on each system share with text_bench.cpp.
#pragma once

#include <cstddef>
#include <string>

// One code set, its name in iconv and ICU, and its lead bytes as a hand-written loop tests them.
struct CodeSet {
    const char* name;
    const char* iconvName;
    const char* icuName;
    int number;
    bool (*isLead)(unsigned char);
};

// The pages in a code set.
struct Text {
    explicit Text(const CodeSet& codeSet);
    const char* begin() const { return bytes.c_str(); }
    const CodeSet& set;
    std::string bytes;
};

// A case for each code set, named WHAT-SET/WHO; count is asked for all of a text.
void RegisterText(const char* what, const char* who, std::size_t (*count)(const Text&));
