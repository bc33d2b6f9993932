// What a server's type information says.
#pragma once

#include "osutil/platform/win32/automation/automation_com.h"

namespace genutil::platform {

HRESULT OpenTypes(IDispatch* dispatch, long retryTime, Pointer<ITypeInfo>* out);

// What a parameter of a member refers to; VT_VARIANT when it is no reference, or to what a VARIANT
// must hold.
VARTYPE ReferredType(ITypeInfo* types, DISPID member, WORD use, UINT parameter);

}  // namespace genutil::platform
