// COM for the contract of automation: a thread's initialisation, counted pointers, objects that any
// thread can use, calls made again, and errors.
#pragma once

#include "osutil/platform/automation.h"
#include "osutil/platform/win32/windows_api.h"
// Behind it, which they need.
#include <objbase.h>
#include <oleauto.h>

namespace genutil::platform {

// COM on this thread for the length of a scope. A thread that the program has not initialised is in
// the multi-threaded apartment meanwhile; what the others have is left as it is.
class ComScope {
  public:
    ComScope();
    ~ComScope();
    ComScope(const ComScope&) = delete;
    ComScope& operator=(const ComScope&) = delete;

  private:
    bool m_leave;
};

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

// An object with one reference more, as IDispatch if it is that; null when it cannot be made known
// to all threads. For null there is none.
HRESULT MakeOleObject(IUnknown* object, OleObject** out);
HRESULT MakeOlePlace(IEnumVARIANT* place, OleObject** out);

// The object as this thread is to call it.
HRESULT OpenOleObject(OleObject* object, REFIID kind, void** out);
bool IsDispatch(const OleObject* object);

constexpr HRESULT kNotConnected = CO_E_OBJNOTCONNECTED;

bool IsBusy(HRESULT result);
// Lets time pass, in which an apartment of this thread serves its calls.
void WaitForServer(DWORD milliseconds);

// Makes a call again as long as the server is too busy for it and the time is not over.
template <class Call>
HRESULT CallPatiently(long retryTime, Call call) {
    const DWORD start = GetTickCount();
    for (DWORD pause = 10;; pause = pause < 160 ? 2 * pause : pause) {
        const HRESULT result = call();
        const DWORD passed = GetTickCount() - start, most = static_cast<DWORD>(retryTime);
        if (!IsBusy(result) || passed >= most) return result;
        WaitForServer(pause < most - passed ? pause : most - passed);
    }
}

// The system's words for a result, about something with a name if that is not null; false.
bool Fail(HRESULT result, const CGNString* name, AutomationError* error);

}  // namespace genutil::platform
