#include "genutil/mbutil/step.h"

namespace genutil {

unsigned StepLengthOfShift(const StepTable& table, const unsigned char* p) {
    const unsigned rule = table.first[*p];
    if (!(table.later[p[1]] & rule)) return 1;
    const unsigned length = rule & StepTable::kLength;
    for (unsigned i = 2; i < length; ++i)
        if (!(table.later[p[i]] & StepTable::kSecond)) return 1;
    return length;
}

}  // namespace genutil
