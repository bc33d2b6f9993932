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
// CNS 11643 as far as Big5 has it (code_page_euc_tw.cpp).
bool FillEucTw(CodePage& page);
bool Fill8859_10(CodePage& page);

// The way back, from the tables above (code_page_back.cpp).
bool FillBack(CodePage& page, int codeSet);

}  // namespace genutil
