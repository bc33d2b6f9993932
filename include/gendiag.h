/* Diagnostics: assertions and trace. */
#ifndef GENUTIL_GENDIAG_H
#define GENUTIL_GENDIAG_H

#include "genassert.h"
#include "gentrace.h"

#endif
