/* Services of the operating system. */
#ifndef GENUTIL_OSUTIL_H
#define GENUTIL_OSUTIL_H

#include "osautomation.h"
#include "osfile.h"
#include "osprocess.h"
#include "ossystem.h"
#include "ostext.h"
#include "osthread.h"

#endif
