// The collation of the user's locale.
#pragma once

#include <unicode/ucol.h>

namespace genutil::platform {

// Opened once and kept for the life of the process: a collator may compare from several threads at
// a time as long as none changes it. Null when ICU has no data.
const UCollator* UserCollator();

// Another one, for texts in which marks may follow what they belong to; it may read digits as
// numbers.
const UCollator* OpenUserCollator(bool digitsAsNumbers);

}  // namespace genutil::platform
