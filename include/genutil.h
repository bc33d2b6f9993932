/* The whole library: includes every exported header except genstringio.h. */
#ifndef GENUTIL_GENUTIL_H
#define GENUTIL_GENUTIL_H

#include "gendate.h"
#include "gendiag.h"
#include "genlocale.h"
#include "gennum.h"
#include "genstr.h"
#include "genversion.h"
#include "mbdetect.h"
#include "mbutil.h"
#include "osutil.h"

#endif
