// There is no automation on this platform. Every function fails.
#include "osutil/platform/automation/automation.h"

namespace genutil::platform {

namespace {

bool Unavailable(AutomationError* error) {
    constexpr unsigned long kNotImplemented = 0x80004001;  // the code in COM
    error->code = static_cast<std::int32_t>(kNotImplemented);
    error->description = "OLE automation is not available on this system";
    return false;
}

}  // namespace

bool AutomationAvailable() {
    return false;
}

// Never called with an object, because none is ever created.
void RetainOleObject(OleObject*) {}
void ReleaseOleObject(OleObject*) {}

bool SameOleObject(OleObject*, OleObject*) {
    return false;
}

OleObject* ConnectAutomation(const CGNString&, bool, bool, long, AutomationError* error) {
    Unavailable(error);
    return nullptr;
}

bool ListMembers(OleObject*, long, COSOLEList<COSOLEMember>*, AutomationError* error) {
    return Unavailable(error);
}

bool KnowsMember(OleObject*, const CGNString&, long, AutomationError* error) {
    return Unavailable(error);
}

bool InvokeAutomation(OleObject*, const AutomationCall&, long, AutomationError* error) {
    return Unavailable(error);
}

OleObject* EnumerateAutomation(OleObject*, long, AutomationError* error) {
    Unavailable(error);
    return nullptr;
}

bool NextInCollection(OleObject*, long, COSOLEValue*, AutomationError* error) {
    return Unavailable(error);
}

bool ResetCollection(OleObject*, long, AutomationError* error) {
    return Unavailable(error);
}

}  // namespace genutil::platform
