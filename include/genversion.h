/* The version of the library. Versions follow semantic versioning: a program built with version
   1.x runs with any later 1.y.

       if (genversion() < GENUTIL_VERSION) puts("the library is older than its headers"); */
#ifndef GENUTIL_GENVERSION_H
#define GENUTIL_GENVERSION_H

#include "genexport.h"

#define GENUTIL_VERSION_MAJOR 1
#define GENUTIL_VERSION_MINOR 0
#define GENUTIL_VERSION_PATCH 0

/** The version of these headers as one number: 10203 is 1.2.3. */
#define GENUTIL_VERSION \
    (GENUTIL_VERSION_MAJOR * 10000 + GENUTIL_VERSION_MINOR * 100 + GENUTIL_VERSION_PATCH)

#define GENUTIL_JOIN_VERSION_(major, minor, patch) #major "." #minor "." #patch
#define GENUTIL_JOIN_VERSION(major, minor, patch) GENUTIL_JOIN_VERSION_(major, minor, patch)
/** The version of these headers as a text: "1.2.3". */
#define GENUTIL_VERSION_STRING \
    GENUTIL_JOIN_VERSION(GENUTIL_VERSION_MAJOR, GENUTIL_VERSION_MINOR, GENUTIL_VERSION_PATCH)

/** Returns the version of the library that is loaded, in the form of GENUTIL_VERSION. May be called
    from any thread. */
GENUTIL_C GENUTIL_API long genversion(void);

#endif
