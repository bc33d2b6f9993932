// What the library asks of an operating system about automation servers. Texts are in the current
// code set, times in milliseconds; where the system has no automation everything fails.
#pragma once

#include "osautomation.h"

namespace genutil::platform {

// Why an operation failed.
struct AutomationError {
    long code = 0;
    CGNString description, source, helpFile;
    long helpContext = 0;
    int argument = 0;  // from 1, named ones behind those by position, what is put behind all
};

bool AutomationAvailable();

// A server's object, or a place in a collection: usable in any thread, counted. Null is allowed.
void RetainOleObject(OleObject* object);
void ReleaseOleObject(OleObject* object);
bool SameOleObject(OleObject* a, OleObject* b);

// A running server's object, a new one, or the first of the two that there is. Null on failure.
OleObject* ConnectAutomation(const CGNString& identifier, bool attach, bool start, long retryTime,
                             AutomationError* error);

bool ListMembers(OleObject* object, long retryTime, COSOLEList<COSOLEMember>* out,
                 AutomationError* error);

// Whether the server knows a name; *error tells why not.
bool KnowsMember(OleObject* object, const CGNString& name, long retryTime, AutomationError* error);

enum class AutomationUse { kCall, kCallOrGet, kGet, kPut, kPutReference };

struct AutomationCall {
    AutomationUse use;
    const CGNString* name;
    COSOLEArguments* arguments;  // those by reference change on success
    const COSOLEValue* put;      // null unless something is put
    COSOLEValue* result;         // null where none is wanted
};
bool InvokeAutomation(OleObject* object, const AutomationCall& call, long retryTime,
                      AutomationError* error);

// A place at the beginning of a collection; null on failure.
OleObject* EnumerateAutomation(OleObject* object, long retryTime, AutomationError* error);
// False at the end, then with no code in *error, and on failure.
bool NextInCollection(OleObject* place, long retryTime, COSOLEValue* item, AutomationError* error);
bool ResetCollection(OleObject* place, long retryTime, AutomationError* error);

}  // namespace genutil::platform
