// Servers by their identifiers, and collections.
#include "osutil/platform/win32/automation/automation_variant.h"

namespace genutil::platform {

namespace {

HRESULT FindClass(const CGNString& identifier, CLSID* out) {
    const WideName name(identifier);
    if (!name.Get() || name.Get()[0] == 0) return CO_E_CLASSSTRING;
    return name.Get()[0] == L'{' ? CLSIDFromString(name.Get(), out)
                                 : CLSIDFromProgID(name.Get(), out);
}

bool IsGone(HRESULT answer) {
    return (FAILED(answer) && HRESULT_FACILITY(answer) == FACILITY_RPC) ||
           answer == HRESULT_FROM_WIN32(RPC_S_SERVER_UNAVAILABLE) ||
           answer == HRESULT_FROM_WIN32(RPC_S_CALL_FAILED) || answer == CO_E_OBJNOTCONNECTED;
}

// A server that has ended may still be registered for a while, so a request is sent to it.
HRESULT AttachTo(REFCLSID server, Pointer<IUnknown>* out) {
    const HRESULT known = GetActiveObject(server, nullptr, out->Place());
    if (FAILED(known)) return known;
    Pointer<IDispatch> dispatch;
    UINT count = 0;
    HRESULT answer = (*out)->QueryInterface(IID_IDispatch, dispatch.Any());
    if (SUCCEEDED(answer)) answer = dispatch->GetTypeInfoCount(&count);
    if (IsBusy(answer)) return answer;
    return IsGone(answer) ? MK_E_UNAVAILABLE : S_OK;
}

HRESULT Start(REFCLSID server, Pointer<IUnknown>* out) {
    return CoCreateInstance(server, nullptr, CLSCTX_INPROC_SERVER | CLSCTX_LOCAL_SERVER,
                            IID_IDispatch, out->Any());
}

// Accepts only an object with methods.
HRESULT MakeDispatch(IUnknown* object, OleObject** out) {
    Pointer<IDispatch> dispatch;
    const HRESULT result = object->QueryInterface(IID_IDispatch, dispatch.Any());
    return FAILED(result) ? result : MakeOleObject(dispatch.Get(), out);
}

HRESULT NewPlace(IDispatch* collection, long retryTime, Pointer<IEnumVARIANT>* out) {
    DISPPARAMS none = {};
    Variant place;
    const HRESULT result = CallPatiently(retryTime, [&] {
        return collection->Invoke(DISPID_NEWENUM, IID_NULL, LOCALE_USER_DEFAULT,
                                  DISPATCH_METHOD | DISPATCH_PROPERTYGET, &none, place.Get(),
                                  nullptr, nullptr);
    });
    if (FAILED(result)) return result;
    const VARTYPE type = V_VT(place.Get());
    if ((type != VT_UNKNOWN && type != VT_DISPATCH) || !V_UNKNOWN(place.Get()))
        return E_NOINTERFACE;
    return V_UNKNOWN(place.Get())->QueryInterface(IID_IEnumVARIANT, out->Any());
}

}  // namespace

bool AutomationAvailable() {
    return true;
}

OleObject* ConnectAutomation(const CGNString& identifier, bool attach, bool start, long retryTime,
                             AutomationError* error) {
    OleObject* out = nullptr;
    InApartment(error, [&] {
        CLSID server;
        Pointer<IUnknown> object;
        HRESULT result = FindClass(identifier, &server);
        if (SUCCEEDED(result))
            result = CallPatiently(retryTime, [&] {
                const HRESULT attached = attach ? AttachTo(server, &object) : MK_E_UNAVAILABLE;
                return SUCCEEDED(attached) || IsBusy(attached) || !start ? attached
                                                                         : Start(server, &object);
            });
        if (SUCCEEDED(result))
            result = CallPatiently(retryTime, [&] { return MakeDispatch(object.Get(), &out); });
        return SUCCEEDED(result) || Fail(result, &identifier, error);
    });
    return out;
}

OleObject* EnumerateAutomation(OleObject* object, long retryTime, AutomationError* error) {
    OleObject* out = nullptr;
    InApartment(error, [&] {
        Pointer<IDispatch> collection;
        Pointer<IEnumVARIANT> place;
        HRESULT result = OpenDispatch(object, &collection);
        if (SUCCEEDED(result)) result = NewPlace(collection.Get(), retryTime, &place);
        if (SUCCEEDED(result)) result = MakeOlePlace(place.Get(), &out);
        return SUCCEEDED(result) || Fail(result, nullptr, error);
    });
    return out;
}

bool NextInCollection(OleObject* object, long retryTime, COSOLEValue* item,
                      AutomationError* error) {
    return InApartment(error, [&] {
        Pointer<IEnumVARIANT> place;
        Variant next;
        ULONG count = 0;
        HRESULT result = OpenPlace(object, &place);
        if (SUCCEEDED(result))
            result = CallPatiently(retryTime, [&] { return place->Next(1, next.Get(), &count); });
        if (SUCCEEDED(result) && count != 1) return false;
        COSOLEValue value;
        if (SUCCEEDED(result)) result = FromVariant(next.Value(), &value);
        if (FAILED(result)) return Fail(result, nullptr, error);
        *item = value;
        return true;
    });
}

bool ResetCollection(OleObject* object, long retryTime, AutomationError* error) {
    return InApartment(error, [&] {
        Pointer<IEnumVARIANT> place;
        HRESULT result = OpenPlace(object, &place);
        if (SUCCEEDED(result)) result = CallPatiently(retryTime, [&] { return place->Reset(); });
        return SUCCEEDED(result) || Fail(result, nullptr, error);
    });
}

}  // namespace genutil::platform
