/* Strings, lists and the checksum: genstring.h and genlist.h. */
#ifndef GENUTIL_GENSTR_H
#define GENUTIL_GENSTR_H

#include "genlist.h"
#include "genstring.h"

#endif
