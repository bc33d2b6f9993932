// Letter case of single-byte characters according to the rules of each code set.
#pragma once

namespace genutil {

struct CaseTable {
    unsigned char upper[256];
    unsigned char lower[256];
};

// Returns the table of the current code set. A byte maps to itself if it is not a letter, if it is
// part of a longer character, or if the code set lacks its counterpart.
const CaseTable& CurrentCaseTable();

}  // namespace genutil
