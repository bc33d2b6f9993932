// COM for the platform layer of automation: the apartment, counted pointers and objects, repeated
// calls, and errors.
#pragma once

#include "osutil/platform/automation/automation.h"
#include "osutil/platform/win32/windows_api.h"
// After windows_api.h, which they need.
#include <objbase.h>
#include <oleauto.h>

namespace genutil::platform {

// Executes work in the multi-threaded apartment, where all objects of this library live: on this
// thread, or on another one while this one waits if the program has put it into a single-threaded
// apartment. Returns false if that is impossible.
bool RunInApartment(void (*work)(void* context), void* context);

// Stores the system's text for a result, about a name if that is not null. Returns false.
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

// Creates a reference to an object, as IDispatch if it has that interface. Creates none for null.
HRESULT MakeOleObject(IUnknown* object, OleObject** out);
// Creates a position in a collection.
HRESULT MakeOlePlace(IEnumVARIANT* place, OleObject** out);

// Return the content of an object with an additional reference.
HRESULT OpenDispatch(OleObject* object, Pointer<IDispatch>* out);
HRESULT OpenPlace(OleObject* object, Pointer<IEnumVARIANT>* out);
IDispatch* DispatchOf(const OleObject* object);  // without an additional reference; null if it is
                                                 // of another kind
IUnknown* PointerOf(const OleObject* object);

bool IsBusy(HRESULT result);
// Repeats a call while the server is too busy for it and the time has not elapsed.
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
