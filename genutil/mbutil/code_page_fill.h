// How the tables of code_page.h are filled. Each returns false when memory runs out or the system
// lacks a code page.
#pragma once

#include "genutil/mbutil/code_page.h"

namespace genutil {

// A Windows code page as it is, single-byte or double-byte.
bool FillWindows(CodePage& page, unsigned codePage);
// The EUC form within a double-byte code page: its two-byte codes of bytes 0xA1 to 0xFE.
bool FillCutToEuc(CodePage& page, unsigned codePage);
// An EUC form without two-byte codes yet.
bool BeginEuc(CodePage& page);
// JIS X 0208 as code page 932 has it, half-width katakana and JIS X 0212.
bool FillEucJp(CodePage& page);
// The characters of CNS 11643 that Big5 has (code_page_euc_tw.cpp). `big5` may be null.
bool FillEucTw(CodePage& page, const CodePage* big5);
bool Fill8859_10(CodePage& page);

// The way back, from the tables above (code_page_back.cpp).
bool FillBack(CodePage& page, int codeSet);

}  // namespace genutil
