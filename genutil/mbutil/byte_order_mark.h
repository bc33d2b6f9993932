// Byte-order marks of Unicode text.
#pragma once

#include <cstddef>
#include <cstring>

#include "genutil/mbutil/code_page.h"

namespace genutil {

struct ByteOrderMark {
    CodeForm form;
    unsigned char bytes[4];
    std::size_t length;
    CodeForm selects;  // the form of the text after it

    bool IsAt(const unsigned char* p, const unsigned char* end) const {
        return static_cast<std::size_t>(end - p) >= length && std::memcmp(p, bytes, length) == 0;
    }
};
constexpr ByteOrderMark kByteOrderMarks[] = {
    {CodeForm::kUtf8, {0xEF, 0xBB, 0xBF}, 3, CodeForm::kUtf8},
    {CodeForm::kUtf16, {0xFF, 0xFE}, 2, CodeForm::kUtf16},
    {CodeForm::kUtf16, {0xFE, 0xFF}, 2, CodeForm::kUtf16BigEndian},
    {CodeForm::kUtf16BigEndian, {0xFE, 0xFF}, 2, CodeForm::kUtf16BigEndian},
    {CodeForm::kUtf32, {0xFF, 0xFE, 0, 0}, 4, CodeForm::kUtf32},
    {CodeForm::kUtf32, {0, 0, 0xFE, 0xFF}, 4, CodeForm::kUtf32BigEndian},
    {CodeForm::kUtf32BigEndian, {0, 0, 0xFE, 0xFF}, 4, CodeForm::kUtf32BigEndian},
};

}  // namespace genutil
