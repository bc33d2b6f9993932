/* Diagnostics: assertions, trace and performance timing. */
#ifndef GENUTIL_GENDIAG_H
#define GENUTIL_GENDIAG_H

#include "genassert.h"
#include "genperf.h"
#include "gentrace.h"

#endif
