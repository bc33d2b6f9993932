// The type information of a server.
#pragma once

#include "osutil/platform/win32/automation/automation_com.h"

namespace genutil::platform {

HRESULT OpenTypes(IDispatch* dispatch, long retryTime, Pointer<ITypeInfo>* out);

// Returns the type to which a parameter of a member refers. Returns VT_VARIANT if it is not a
// reference, or is a reference to a VARIANT.
VARTYPE ReferredType(ITypeInfo* types, DISPID member, WORD use, UINT parameter);

}  // namespace genutil::platform
