// Big5 and CNS 11643, the two character sets of Traditional Chinese, and their published
// correspondence.
//
// A CNS character is written plane << 16 | row << 8 | cell, with row and cell as bytes 0x21 to
// 0x7E: 0x14421 is the first hanzi of plane 1. Big5 covers planes 1 and 2 and seven hanzi of plane
// 3.
#pragma once

namespace genutil {

// Returns the CNS character of a two-byte Big5 code (lead << 8 | trail), or 0 if there is none, as
// for user-defined codes. Big5 has two codes for some characters (0xA461 and 0xC94A, 0xDCD1 and
// 0xDDFC, a few line-drawing characters). Both map to the same character.
unsigned CnsFromBig5(unsigned big5);

// Returns the Big5 code of a CNS character, or 0 if there is none.
unsigned Big5FromCns(unsigned cns);

}  // namespace genutil
