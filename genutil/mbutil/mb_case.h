// Letter case of single-byte characters, by the rules of each code set.
#pragma once

namespace genutil {

struct CaseTable {
    unsigned char upper[256];
    unsigned char lower[256];
};

// Of the current code set. A byte that is no letter, that is part of a longer character, or whose
// counterpart the code set lacks, maps to itself.
const CaseTable& CurrentCaseTable();

}  // namespace genutil
