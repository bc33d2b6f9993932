#include "genversion.h"

long genversion() {
    return GENUTIL_VERSION;
}
