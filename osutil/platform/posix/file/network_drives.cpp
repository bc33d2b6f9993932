#include "osutil/platform/file/network_drives.h"

namespace genutil::platform {

// Mounted network directories have no local name other than their path.
bool VisitConnectedDisks(ResourceVisitor, void*) {
    return true;
}

}  // namespace genutil::platform
