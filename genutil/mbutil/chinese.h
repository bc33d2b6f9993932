// Big5 and CNS 11643, the two character sets of Traditional Chinese, by their published
// correspondence.
//
// A CNS character is written plane << 16 | row << 8 | cell, with row and cell as bytes 0x21 to
// 0x7E: 0x14421 is the first hanzi of plane 1. Big5 reaches planes 1 and 2 and seven hanzi of
// plane 3.
#pragma once

namespace genutil {

// The CNS character of a two-byte Big5 code (lead << 8 | trail); 0 when there is none, as for the
// user-defined codes. Big5 has some characters twice (0xA461 and 0xC94A, 0xDCD1 and 0xDDFC, a few
// line-drawing characters): both become the same.
unsigned CnsFromBig5(unsigned big5);

// The Big5 code of a CNS character; 0 when there is none.
unsigned Big5FromCns(unsigned cns);

}  // namespace genutil
