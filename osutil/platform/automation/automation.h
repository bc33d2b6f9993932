// Platform layer: automation servers. Texts are in the current code set, times are in milliseconds.
// If the system has no automation, every function fails.
#pragma once

#include "osautomation.h"

namespace genutil::platform {

// The reason for a failure.
struct AutomationError {
    long code = 0;
    CGNString description, source, helpFile;
    long helpContext = 0;
    int argument = 0;  // from 1, named arguments after the others by position, the value to put
                       // last
};

bool AutomationAvailable();

// An object of a server, or a position in a collection. It is reference-counted and may be used in
// any thread. Null is allowed.
void RetainOleObject(OleObject* object);
void ReleaseOleObject(OleObject* object);
bool SameOleObject(OleObject* a, OleObject* b);

// Returns the object of a running server, of a new server, or of the first of the two that is
// available. Returns null on failure.
OleObject* ConnectAutomation(const CGNString& identifier, bool attach, bool start, long retryTime,
                             AutomationError* error);

bool ListMembers(OleObject* object, long retryTime, COSOLEList<COSOLEMember>* out,
                 AutomationError* error);

// Returns true if the server knows a name. Otherwise *error receives the reason.
bool KnowsMember(OleObject* object, const CGNString& name, long retryTime, AutomationError* error);

enum class AutomationUse { kCall, kCallOrGet, kGet, kPut, kPutReference };

struct AutomationCall {
    AutomationUse use;
    const CGNString* name;
    COSOLEArguments* arguments;  // those passed by reference change on success
    const COSOLEValue* put;      // null unless a property is set
    COSOLEValue* result;         // null if no result is required
};
bool InvokeAutomation(OleObject* object, const AutomationCall& call, long retryTime,
                      AutomationError* error);

// Returns a position at the start of a collection, or null on failure.
OleObject* EnumerateAutomation(OleObject* object, long retryTime, AutomationError* error);
// Returns false at the end, with no code in *error, and on failure.
bool NextInCollection(OleObject* place, long retryTime, COSOLEValue* item, AutomationError* error);
bool ResetCollection(OleObject* place, long retryTime, AutomationError* error);

}  // namespace genutil::platform
