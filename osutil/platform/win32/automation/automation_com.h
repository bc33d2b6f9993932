// COM for the contract of automation: the apartment, counted pointers and objects, calls made
// again, and errors.
#pragma once

#include "osutil/platform/automation/automation.h"
#include "osutil/platform/win32/windows_api.h"
// Behind it, which they need.
#include <objbase.h>
#include <oleauto.h>

namespace genutil::platform {

// Does work in the multi-threaded apartment, where all objects of this library live: on this
// thread, or on another one while this waits when the program has made it one of a single-threaded
// apartment. False when that cannot be had.
bool RunInApartment(void (*work)(void* context), void* context);

// The system's words for a result, about something with a name if that is not null; false.
bool Fail(HRESULT result, const CGNString* name, AutomationError* error);

template <class Work>
bool InApartment(AutomationError* error, Work work) {
    struct Context {
        Work& work;
        bool result;
    } context = {work, false};
    const bool ran = RunInApartment(
        [](void* given) {
            Context& own = *static_cast<Context*>(given);
            own.result = own.work();
        },
        &context);
    return ran ? context.result : Fail(E_OUTOFMEMORY, nullptr, error);
}

template <class T>
class Pointer {
  public:
    Pointer() = default;
    ~Pointer() { Reset(); }
    Pointer(const Pointer&) = delete;
    Pointer& operator=(const Pointer&) = delete;

    T* Get() const { return m_object; }
    T* operator->() const { return m_object; }
    T** Place() {
        Reset();
        return &m_object;
    }
    void** Any() { return reinterpret_cast<void**>(Place()); }
    void Reset() {
        if (m_object) m_object->Release();
        m_object = nullptr;
    }

  private:
    T* m_object = nullptr;
};

// An object with one reference more, as IDispatch if it is that; none for null.
HRESULT MakeOleObject(IUnknown* object, OleObject** out);
// A place in a collection.
HRESULT MakeOlePlace(IEnumVARIANT* place, OleObject** out);

// What is in an object, with a reference more.
HRESULT OpenDispatch(OleObject* object, Pointer<IDispatch>* out);
HRESULT OpenPlace(OleObject* object, Pointer<IEnumVARIANT>* out);
IDispatch* DispatchOf(const OleObject* object);  // as it is; null when it is not that
IUnknown* PointerOf(const OleObject* object);

bool IsBusy(HRESULT result);
// Makes a call again as long as the server is too busy for it and the time is not over.
template <class Call>
HRESULT CallPatiently(long retryTime, Call call) {
    const DWORD start = GetTickCount();
    for (DWORD pause = 10;; pause = pause < 160 ? 2 * pause : pause) {
        const HRESULT result = call();
        const DWORD passed = GetTickCount() - start, most = static_cast<DWORD>(retryTime);
        if (!IsBusy(result) || passed >= most) return result;
        Sleep(pause < most - passed ? pause : most - passed);
    }
}

}  // namespace genutil::platform
