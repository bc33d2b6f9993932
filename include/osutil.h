/* Operating-system services: files, configuration, processes, threads, resources, system
   information and automation. */
#ifndef GENUTIL_OSUTIL_H
#define GENUTIL_OSUTIL_H

#include "osautomation.h"
#include "osbuildversion.h"
#include "osconfig.h"
#include "osdde.h"
#include "osfile.h"
#include "osguard.h"
#include "ospreferences.h"
#include "osprocess.h"
#include "osresource.h"
#include "ossystem.h"
#include "ostext.h"
#include "osthread.h"

#endif
