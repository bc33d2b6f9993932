// Platform layer: disks of other machines.
#pragma once

namespace genutil::platform {

// Calls the visitor for each disk resource to which this machine is connected. Returns false if
// they cannot be enumerated.
// @param local the name of the resource on this machine ("X:"), or null.
using ResourceVisitor = void (*)(void* context, const char* local, const char* remote);
bool VisitConnectedDisks(ResourceVisitor visitor, void* context);

}  // namespace genutil::platform
