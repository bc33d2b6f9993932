// Code sets with tables to UTF-8 and back in one pass: the conversions that are asked for most.
#pragma once

#include "genutil/mbutil/pivot.h"

namespace genutil {

// Advance src and dst until all is done, the next character has no room, or it is bad: invalid, or
// unknown to the target.
Stop TablesToUtf8(const CodePage& page, Source& src, Sink& dst);
Stop Utf8ToTables(const CodePage& page, Source& src, Sink& dst);

}  // namespace genutil
