// Disks of other machines.
#pragma once

namespace genutil::platform {

// Tells of each disk resource that this machine is connected to. `local` is what it is known as
// here ("X:"), or null. False when they cannot be enumerated.
using ResourceVisitor = void (*)(void* context, const char* local, const char* remote);
bool VisitConnectedDisks(ResourceVisitor visitor, void* context);

}  // namespace genutil::platform
