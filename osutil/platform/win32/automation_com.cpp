#include "osutil/platform/win32/automation_com.h"

#include <atomic>

#include "genutil/allocate.h"
#include "genutil/assert_allocation.h"
#include "osutil/platform/processes.h"

namespace genutil {

// A reference in the table from which every apartment gets a pointer of its own. While there is
// one, the multi-threaded apartment stays, and with it the objects that live there.
struct OleObject {
    std::atomic<long> references{1};
    DWORD cookie = 0;
    bool isDispatch = false;
    void* apartment = nullptr;
};

namespace platform {

namespace {

// Not in systems before Windows 8, where threads stay in the apartment that they entered instead.
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

// Words for what goes wrong most, where the system has none.
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

HRESULT OpenTable(Pointer<IGlobalInterfaceTable>* table) {
    return CoCreateInstance(CLSID_StdGlobalInterfaceTable, nullptr, CLSCTX_INPROC_SERVER,
                            IID_IGlobalInterfaceTable, table->Any());
}

HRESULT Register(IUnknown* pointer, REFIID kind, bool isDispatch, OleObject** out) {
    Pointer<IGlobalInterfaceTable> table;
    HRESULT result = OpenTable(&table);
    if (FAILED(result)) return result;
    OleObject* const object = New<OleObject>();
    if (!AssertAllocation(object != nullptr, "osutil/osautomation", __LINE__)) return E_OUTOFMEMORY;
    object->isDispatch = isDispatch;
    result = table->RegisterInterfaceInGlobal(pointer, kind, &object->cookie);
    if (FAILED(result)) {
        delete object;
        return result;
    }
    if (Apartments().Known()) Apartments().increment(&object->apartment);
    *out = object;
    return S_OK;
}

void Forget(OleObject* object) {
    const ComScope com;
    Pointer<IGlobalInterfaceTable> table;
    if (SUCCEEDED(OpenTable(&table))) table->RevokeInterfaceFromGlobal(object->cookie);
    table.Reset();
    if (object->apartment) Apartments().decrement(object->apartment);
    delete object;
}

}  // namespace

ComScope::ComScope()
    : m_leave(SUCCEEDED(CoInitializeEx(nullptr, COINIT_MULTITHREADED)) && Apartments().Known()) {}

ComScope::~ComScope() {
    if (m_leave) CoUninitialize();
}

HRESULT MakeOleObject(IUnknown* object, OleObject** out) {
    *out = nullptr;
    if (!object) return S_OK;
    Pointer<IDispatch> dispatch;
    if (SUCCEEDED(object->QueryInterface(IID_IDispatch, dispatch.Any())))
        return Register(dispatch.Get(), IID_IDispatch, true, out);
    return Register(object, IID_IUnknown, false, out);
}

HRESULT MakeOlePlace(IEnumVARIANT* place, OleObject** out) {
    return Register(place, IID_IEnumVARIANT, false, out);
}

HRESULT OpenOleObject(OleObject* object, REFIID kind, void** out) {
    if (!object) return kNotConnected;
    Pointer<IGlobalInterfaceTable> table;
    const HRESULT result = OpenTable(&table);
    return FAILED(result) ? result : table->GetInterfaceFromGlobal(object->cookie, kind, out);
}

bool IsDispatch(const OleObject* object) {
    return object->isDispatch;
}

void RetainOleObject(OleObject* object) {
    if (object) object->references.fetch_add(1, std::memory_order_relaxed);
}

void ReleaseOleObject(OleObject* object) {
    if (object && object->references.fetch_sub(1, std::memory_order_acq_rel) == 1) Forget(object);
}

bool SameOleObject(OleObject* a, OleObject* b) {
    if (!a || !b) return a == b;
    const ComScope com;
    Pointer<IUnknown> first, second;
    return SUCCEEDED(OpenOleObject(a, IID_IUnknown, first.Any())) &&
           SUCCEEDED(OpenOleObject(b, IID_IUnknown, second.Any())) && first.Get() == second.Get();
}

bool IsBusy(HRESULT result) {
    return result == RPC_E_CALL_REJECTED || result == RPC_E_SERVERCALL_RETRYLATER;
}

void WaitForServer(DWORD milliseconds) {
    HANDLE never = CreateEventW(nullptr, TRUE, FALSE, nullptr);
    DWORD signalled = 0;
    if (!never ||
        CoWaitForMultipleHandles(0, milliseconds, 1, &never, &signalled) != RPC_S_CALLPENDING)
        Sleep(milliseconds);
    if (never) CloseHandle(never);
}

bool Fail(HRESULT result, const CGNString* name, AutomationError* error) {
    char text[512];
    // Codes of Windows in a result have their words under their own number.
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
