// Rows of tables: a text and the result. A failure names the row's line.
#pragma once

#include <gtest/gtest.h>

#include <initializer_list>
#include <string>

#include "tests/support/code_set_guard.h"

struct TextRow {
    int line;
    std::string text, expected;
};

template <class Function>
void ExpectTexts(Function function, std::initializer_list<TextRow> rows) {
    for (const TextRow& row : rows)
        EXPECT_EQ(function(row.text.c_str()), row.expected) << "row of line " << row.line;
}

struct CodeSetRow {
    int line, codeSet;
    std::string text, expected;
};

// The same, each row in its code set.
template <class Function>
void ExpectTextsIn(Function function, std::initializer_list<CodeSetRow> rows) {
    for (const CodeSetRow& row : rows) {
        const CodeSetGuard guard(row.codeSet);
        EXPECT_EQ(function(row.text.c_str()), row.expected) << "row of line " << row.line;
    }
}
