// Conversion between code sets with tables and UTF-8 in one pass. These conversions are requested
// most often.
#pragma once

#include "genutil/mbutil/pivot.h"

namespace genutil {

// Advance src and dst until everything is done, there is no room for the next character, or the
// next character is bad: invalid, or unknown to the target.
Stop TablesToUtf8(const CodePage& page, Source& src, Sink& dst);
Stop Utf8ToTables(const CodePage& page, Source& src, Sink& dst);

}  // namespace genutil
