// The functions that fill the tables of code_page.h. Each returns false if allocation fails or if
// the system lacks a code page.
#pragma once

#include "genutil/mbutil/code_page.h"

namespace genutil {

// Fills the tables of a Windows code page, single-byte or double-byte.
bool FillWindows(CodePage& page, unsigned codePage);
// Fills the EUC form within a double-byte code page: its two-byte codes of bytes 0xA1 to 0xFE.
bool FillCutToEuc(CodePage& page, unsigned codePage);
// Prepares an EUC form without two-byte codes.
bool BeginEuc(CodePage& page);
// Fills JIS X 0208 as in code page 932, half-width katakana and JIS X 0212.
bool FillEucJp(CodePage& page);
// Fills the characters of CNS 11643 that Big5 has (code_page_euc_tw.cpp). `big5` may be null.
bool FillEucTw(CodePage& page, const CodePage* big5);
// Fills code page 1361 with compatibility letters (code_page_johab.cpp).
bool FillJohab(CodePage& page);
// The conjoining forms of the compatibility letters from U+3131 on, in order.
constexpr unsigned kFirstKoreanLetter = 0x3131, kKoreanLetters = 94;
extern const std::uint16_t kConjoiningLetters[kKoreanLetters];
// Fills GB18030 (code_page_gb18030.cpp).
bool FillGb18030(CodePage& page);
// Fills a part of ISO 8859 that is no code page of Windows.
bool Fill8859(CodePage& page, unsigned part);

// Fills the reverse mapping from the tables above (code_page_back.cpp).
bool FillBack(CodePage& page, int codeSet);

}  // namespace genutil
