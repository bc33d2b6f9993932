// There is no DDE or equivalent on this platform. No link is ever created.
#include "osutil/platform/dde/dde.h"

namespace genutil::platform {

bool HasDde() {
    return false;
}

DdeOutcome MakeDde(DdeLink** link) {
    *link = nullptr;
    return DdeOutcome::kUnavailable;
}

void HoldDde(DdeLink*) {}

void DropDde(DdeLink*) {}

DdeOutcome ConnectDde(DdeLink*, const unsigned short*, const unsigned short*, unsigned) {
    return DdeOutcome::kUnavailable;
}

DdeOutcome TransactDde(DdeLink*, const DdeCall&, unsigned) {
    return DdeOutcome::kUnavailable;
}

bool IsDdeOpen(DdeLink*) {
    return false;
}

void EndDde(DdeLink*) {}

void AwaitDdeEnd(DdeLink*) {}

}  // namespace genutil::platform
