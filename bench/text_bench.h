// Declarations shared by text_bench.cpp and the peers on each system.
#pragma once

#include <cstddef>
#include <string>

// A code set, its name in iconv and ICU, and the test for lead bytes in a hand-written loop.
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

// Registers a case for each code set, named WHAT-SET/WHO. count is called with the whole text.
void RegisterText(const char* what, const char* who, std::size_t (*count)(const Text&));
