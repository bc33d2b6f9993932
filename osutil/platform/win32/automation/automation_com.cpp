#include "osutil/platform/win32/automation/automation_com.h"

#include <atomic>

#include "genutil/allocate.h"
#include "genutil/assert_allocation.h"
#include "osutil/platform/process/processes.h"
#include "osutil/platform/win32/scoped_handle.h"

namespace genutil {

// While an object exists, the multi-threaded apartment and the objects in it are kept.
struct OleObject {
    enum Kind { kUnknown, kDispatch, kPlace };

    std::atomic<long> references{1};
    Kind kind = kUnknown;
    IUnknown* pointer = nullptr;
    void* apartment = nullptr;
};

namespace platform {

namespace {

// Missing in systems before Windows 8, where threads stay in the apartment that they entered.
struct ApartmentUse {
    using Increment = HRESULT(WINAPI*)(void**);
    using Decrement = HRESULT(WINAPI*)(void*);

    Increment increment;
    Decrement decrement;

    ApartmentUse() {
        const HMODULE module = GetModuleHandleW(L"ole32.dll");
        Find(module, "CoIncrementMTAUsage", &increment);
        Find(module, "CoDecrementMTAUsage", &decrement);
    }
    bool Known() const { return increment && decrement; }

  private:
    template <class Function>
    static void Find(HMODULE module, const char* name, Function* out) {
        const FARPROC found = GetProcAddress(module, name);
        static_assert(sizeof found == sizeof *out);
        memcpy(out, &found, sizeof found);
    }
};

const ApartmentUse& Apartments() {
    static const ApartmentUse use;
    return use;
}

// Texts for the most frequent errors, in case the system has none.
constexpr struct {
    unsigned code;
    const char* words;
} kWords[] = {
    {0x80004001, "Not implemented"},
    {0x80004002, "No such interface supported"},
    {0x80004005, "Unspecified error"},
    {0x8000FFFF, "Catastrophic failure"},
    {0x80010001, "Call was rejected by callee"},
    {0x80010105, "The server threw an exception"},
    {0x80010108, "The object invoked has disconnected from its clients"},
    {0x8001010A, "The message filter indicated that the application is busy"},
    {0x80010012,
     "The callee (server) is not available and disappeared; all connections are invalid"},
    {0x80020003, "Member not found"},
    {0x80020004, "Parameter not found"},
    {0x80020005, "Type mismatch"},
    {0x80020006, "Unknown name"},
    {0x80020007, "No named arguments"},
    {0x80020008, "Bad variable type"},
    {0x80020009, "Exception occurred"},
    {0x8002000A, "Out of present range"},
    {0x8002000B, "Invalid index"},
    {0x8002000E, "Invalid number of parameters"},
    {0x8002000F, "Parameter not optional"},
    {0x8002802B, "Element not found"},
    {0x80040154, "Class not registered"},
    {0x800401E3, "Operation unavailable: no such object is running"},
    {0x800401F3, "Invalid class string"},
    {0x800401FD, "Object is not connected to server"},
    {0x80080005, "Server execution failed"},
};

HRESULT Make(IUnknown* pointer, OleObject::Kind kind, OleObject** out) {
    OleObject* const object = New<OleObject>();
    *out = object;
    if (!AssertAllocation(object != nullptr, "osutil/osautomation", __LINE__)) return E_OUTOFMEMORY;
    object->kind = kind;
    object->pointer = pointer;
    pointer->AddRef();
    if (Apartments().Known()) Apartments().increment(&object->apartment);
    return S_OK;
}

struct Work {
    void (*work)(void* context);
    void* context;

    bool Do() const {
        if (FAILED(CoInitializeEx(nullptr, COINIT_MULTITHREADED))) return false;
        work(context);
        if (Apartments().Known()) CoUninitialize();
        return true;
    }
};

DWORD WINAPI DoWork(void* work) {
    return static_cast<const Work*>(work)->Do();
}

}  // namespace

bool RunInApartment(void (*work)(void* context), void* context) {
    Work own = {work, context};
    if (own.Do()) return true;
    const ScopedObject thread(CreateThread(nullptr, 0, DoWork, &own, 0, nullptr));
    if (!thread) return false;
    HANDLE handle = thread.Get();
    // Incoming calls, such as those of the server, are served meanwhile.
    DWORD signalled = 0, done = 0;
    if (FAILED(CoWaitForMultipleHandles(0, INFINITE, 1, &handle, &signalled)))
        WaitForSingleObject(handle, INFINITE);
    GetExitCodeThread(handle, &done);
    return done != 0;
}

HRESULT MakeOleObject(IUnknown* object, OleObject** out) {
    *out = nullptr;
    if (!object) return S_OK;
    Pointer<IDispatch> dispatch;
    if (SUCCEEDED(object->QueryInterface(IID_IDispatch, dispatch.Any())))
        return Make(dispatch.Get(), OleObject::kDispatch, out);
    return Make(object, OleObject::kUnknown, out);
}

HRESULT MakeOlePlace(IEnumVARIANT* place, OleObject** out) {
    return Make(place, OleObject::kPlace, out);
}

IUnknown* PointerOf(const OleObject* object) {
    return object->pointer;
}

IDispatch* DispatchOf(const OleObject* object) {
    return object->kind == OleObject::kDispatch ? static_cast<IDispatch*>(object->pointer)
                                                : nullptr;
}

HRESULT OpenDispatch(OleObject* object, Pointer<IDispatch>* out) {
    if (!object) return CO_E_OBJNOTCONNECTED;
    if (object->kind != OleObject::kDispatch) return E_NOINTERFACE;
    *out->Place() = DispatchOf(object);
    object->pointer->AddRef();
    return S_OK;
}

HRESULT OpenPlace(OleObject* object, Pointer<IEnumVARIANT>* out) {
    if (!object) return CO_E_OBJNOTCONNECTED;
    *out->Place() = static_cast<IEnumVARIANT*>(object->pointer);
    object->pointer->AddRef();
    return S_OK;
}

void RetainOleObject(OleObject* object) {
    if (object) object->references.fetch_add(1, std::memory_order_relaxed);
}

void ReleaseOleObject(OleObject* object) {
    if (!object || object->references.fetch_sub(1, std::memory_order_acq_rel) != 1) return;
    AutomationError error;
    InApartment(&error, [&] {
        object->pointer->Release();
        return true;
    });
    if (object->apartment) Apartments().decrement(object->apartment);
    delete object;
}

bool SameOleObject(OleObject* a, OleObject* b) {
    if (!a || !b) return a == b;
    AutomationError error;
    return InApartment(&error, [&] {
        Pointer<IUnknown> first, second;
        return SUCCEEDED(a->pointer->QueryInterface(IID_IUnknown, first.Any())) &&
               SUCCEEDED(b->pointer->QueryInterface(IID_IUnknown, second.Any())) &&
               first.Get() == second.Get();
    });
}

bool IsBusy(HRESULT result) {
    return result == RPC_E_CALL_REJECTED || result == RPC_E_SERVERCALL_RETRYLATER;
}

bool Fail(HRESULT result, const CGNString* name, AutomationError* error) {
    char text[512];
    // A Windows error code within a result has its text under its own number.
    const bool windows = HRESULT_FACILITY(result) == FACILITY_WIN32;
    DescribeError(windows ? HRESULT_CODE(result) : static_cast<DWORD>(result), text, sizeof text);
    std::size_t length = strlen(text);
    while (length != 0 && (text[length - 1] == '\n' || text[length - 1] == '\r' ||
                           text[length - 1] == ' ' || text[length - 1] == '.'))
        text[--length] = 0;
    error->code = result;
    error->description = text;
    for (const auto& row : kWords)
        if (length == 0 && row.code == static_cast<unsigned>(result))
            error->description = row.words;
    if (name) ((error->description += ": '") += *name) += "'";
    return false;
}

}  // namespace platform

}  // namespace genutil
