// An automation server for the tests, with members that the servers of the system lack. Its first
// argument is "register" or "unregister" (for the user), "-Embedding" (as COM starts it) or
// "active", which makes one object known to all programs.
#include <windows.h>
// These need it.
#include <objbase.h>
#include <oleauto.h>

#include <cstdio>
#include <cstring>
#include <cwchar>
#include <iterator>

namespace {

constexpr wchar_t kName[] = L"Genutil.TestServer";
constexpr wchar_t kClass[] = L"{6B1F6C52-5D0E-4B4B-9C39-2F3D1A7E0A11}";
constexpr CLSID kClassId = {
    0x6B1F6C52, 0x5D0E, 0x4B4B, {0x9C, 0x39, 0x2F, 0x3D, 0x1A, 0x7E, 0x0A, 0x11}};
constexpr IID kInterfaceId = {
    0x6B1F6C53, 0x5D0E, 0x4B4B, {0x9C, 0x39, 0x2F, 0x3D, 0x1A, 0x7E, 0x0A, 0x11}};

long g_objects = 0;  // live ones, places in collections included
int g_rejections = 0;
DWORD g_rejection = SERVERCALL_RETRYLATER;
ITypeInfo* g_types = nullptr;

enum Member : DISPID {
    kNewEnum = DISPID_NEWENUM,
    kValue = DISPID_VALUE,
    kEcho,
    kChange,
    kFail,
    kPoint,
    kPicky,
    kBusy,
    kDie,
    kChild,
    kObjects,
    kTypeOf,
    kFill,
    kTarget,
    kUnsigned,
    kGrid,
    kPlain,
    kTenth
};

constexpr UINT kAnyCount = ~0u;

// By identifier, from DISPID_VALUE, which is 0.
constexpr struct {
    const wchar_t* name;
    UINT count;  // of arguments
} kMembers[] = {
    {L"Value", kAnyCount},  {L"Echo", 1},     {L"Change", 2}, {L"Fail", 2},
    {L"Point", kAnyCount},  {L"Picky", 1},    {L"Busy", 2},   {L"Die", 0},
    {L"Child", 0},          {L"Objects", 0},  {L"TypeOf", 1}, {L"Fill", 1},
    {L"Target", kAnyCount}, {L"Unsigned", 0}, {L"Grid", 0},   {L"Plain", 0},
    {L"Tenth", 1},
};
// Counts references to an object, and the objects unless they only serve the program.
template <class Interface, bool kServes = false>
class Counted : public Interface {
  public:
    Counted() { g_objects += !kServes; }
    virtual ~Counted() { g_objects -= !kServes; }
    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID asked, void** out) override {
        const bool known =
            IsEqualGUID(asked, __uuidof(Interface)) || IsEqualGUID(asked, IID_IUnknown);
        *out = known ? this : nullptr;
        if (known) AddRef();
        return known ? S_OK : E_NOINTERFACE;
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return static_cast<ULONG>(++m_references); }
    ULONG STDMETHODCALLTYPE Release() override {
        const long left = --m_references;
        if (left == 0) delete this;
        return static_cast<ULONG>(left);
    }

  private:
    long m_references = 1;
};

// The numbers 1, 2, 3.
class Numbers : public Counted<IEnumVARIANT> {
  public:
    HRESULT STDMETHODCALLTYPE Next(ULONG count, VARIANT* items, ULONG* got) override {
        ULONG taken = 0;
        for (; taken < count && m_next <= 3; ++taken) {
            V_VT(&items[taken]) = VT_I4;
            V_I4(&items[taken]) = m_next++;
        }
        if (got) *got = taken;
        return taken == count ? S_OK : S_FALSE;
    }
    HRESULT STDMETHODCALLTYPE Skip(ULONG) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE Reset() override {
        m_next = 1;
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE Clone(IEnumVARIANT**) override { return E_NOTIMPL; }

  private:
    int m_next = 1;
};

class Server : public Counted<IDispatch> {
  public:
    ~Server() override {
        VariantClear(&m_value);
        if (m_target) m_target->Release();
    }
    HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override {
        *count = g_types ? 1 : 0;
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo** out) override {
        *out = g_types;
        if (!g_types) return E_NOTIMPL;
        g_types->AddRef();
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR* names, UINT count, LCID,
                                            DISPID* ids) override {
        HRESULT result = S_OK;
        for (UINT i = 0; i < count; ++i) {
            ids[i] = DISPID_UNKNOWN;
            if (i == 0) {
                for (UINT id = 0; id < std::size(kMembers); ++id)
                    if (_wcsicmp(names[0], kMembers[id].name) == 0)
                        ids[0] = static_cast<DISPID>(id);
            } else if (ids[0] == kPoint && _wcsicmp(names[i], L"x") == 0) {
                ids[i] = 0;
            } else if (ids[0] == kPoint && _wcsicmp(names[i], L"y") == 0) {
                ids[i] = 1;
            }
            if (ids[i] == DISPID_UNKNOWN) result = DISP_E_UNKNOWNNAME;
        }
        return result;
    }
    HRESULT STDMETHODCALLTYPE Invoke(DISPID member, REFIID, LCID, WORD use, DISPPARAMS* given,
                                     VARIANT* result, EXCEPINFO* thrown, UINT* fault) override;

  private:
    HRESULT Point(DISPPARAMS* given, VARIANT* result, UINT* fault);
    HRESULT Change(VARIANT* number, VARIANT* text, UINT* fault);
    HRESULT Put(DISPPARAMS* given, WORD use, UINT* fault);

    VARIANT m_value = {};
    IDispatch* m_target = nullptr;
};

HRESULT SetLong(VARIANT* out, long value) {
    V_VT(out) = VT_I4;
    V_I4(out) = value;
    return S_OK;
}

HRESULT SetObject(VARIANT* out, IDispatch* object) {
    V_VT(out) = VT_DISPATCH;
    V_DISPATCH(out) = object;
    return S_OK;
}

// Returns the argument of a position, given by position or by name, or null.
VARIANT* FindArgument(const DISPPARAMS& given, UINT parameter) {
    const UINT positions = given.cArgs - given.cNamedArgs;
    if (parameter < positions) {
        VARIANT* const found = &given.rgvarg[given.cArgs - 1 - parameter];
        return V_VT(found) == VT_ERROR ? nullptr : found;
    }
    for (UINT i = 0; i < given.cNamedArgs; ++i)
        if (given.rgdispidNamedArgs[i] == static_cast<DISPID>(parameter)) return &given.rgvarg[i];
    return nullptr;
}

HRESULT Server::Point(DISPPARAMS* given, VARIANT* result, UINT* fault) {
    long values[2] = {0, 7};
    if (given->cArgs > 2) return DISP_E_BADPARAMCOUNT;
    for (UINT i = 0; i < 2; ++i) {
        VARIANT number = {};
        VARIANT* const found = FindArgument(*given, i);
        if (!found && i == 0) return DISP_E_PARAMNOTOPTIONAL;
        if (!found) continue;
        *fault = static_cast<UINT>(found - given->rgvarg);
        if (FAILED(VariantChangeType(&number, found, 0, VT_I4))) return DISP_E_TYPEMISMATCH;
        values[i] = V_I4(&number);
    }
    return SetLong(result, values[0] * 100 + values[1]);
}

HRESULT Server::Change(VARIANT* number, VARIANT* text, UINT* fault) {
    *fault = 1;
    if (V_VT(number) != (VT_BYREF | VT_I4)) return DISP_E_TYPEMISMATCH;
    *fault = 0;
    if (V_VT(text) != (VT_BYREF | VT_BSTR)) return DISP_E_TYPEMISMATCH;
    ++*V_I4REF(number);
    wchar_t changed[64] = L"";
    _snwprintf(changed, 63, L"<%ls>", *V_BSTRREF(text) ? *V_BSTRREF(text) : L"");
    SysFreeString(*V_BSTRREF(text));
    *V_BSTRREF(text) = SysAllocString(changed);
    return S_OK;
}

HRESULT Server::Put(DISPPARAMS* given, WORD use, UINT* fault) {
    *fault = 0;
    if (given->cNamedArgs != 1 || given->rgdispidNamedArgs[0] != DISPID_PROPERTYPUT)
        return DISP_E_PARAMNOTFOUND;
    if (use & DISPATCH_PROPERTYPUT) return VariantCopy(&m_value, &given->rgvarg[0]);
    if (V_VT(&given->rgvarg[0]) != VT_DISPATCH) return DISP_E_TYPEMISMATCH;
    if (m_target) m_target->Release();
    m_target = V_DISPATCH(&given->rgvarg[0]);
    if (m_target) m_target->AddRef();
    return S_OK;
}

HRESULT MakeGrid(VARIANT* out) {
    SAFEARRAYBOUND bounds[2] = {{2, 1}, {3, -1}};
    SAFEARRAY* const grid = SafeArrayCreate(VT_I2, 2, bounds);
    for (LONG row = 1; row <= 2; ++row)
        for (LONG column = -1; column <= 1; ++column) {
            LONG place[2] = {row, column};
            SHORT item = static_cast<SHORT>(10 * row + column);
            SafeArrayPutElement(grid, place, &item);
        }
    V_VT(out) = VT_ARRAY | VT_I2;
    V_ARRAY(out) = grid;
    return S_OK;
}

HRESULT Throw(DISPPARAMS* given, EXCEPINFO* thrown) {
    memset(thrown, 0, sizeof *thrown);
    VARIANT text = {};
    VariantChangeType(&text, &given->rgvarg[0], 0, VT_BSTR);
    thrown->scode = V_I4(&given->rgvarg[1]);
    thrown->bstrSource = SysAllocString(kName);
    thrown->bstrDescription = V_BSTR(&text);
    thrown->bstrHelpFile = SysAllocString(L"test.hlp");
    thrown->dwHelpContext = 42;
    return DISP_E_EXCEPTION;
}

HRESULT Server::Invoke(DISPID member, REFIID, LCID, WORD use, DISPPARAMS* given, VARIANT* result,
                       EXCEPINFO* thrown, UINT* fault) {
    VARIANT unwanted = {};
    UINT noFault = 0;
    if (!result) {
        const HRESULT code = Invoke(member, IID_NULL, 0, use, given, &unwanted, thrown, fault);
        VariantClear(&unwanted);
        return code;
    }
    if (!fault) fault = &noFault;
    if (member != kValue && member != kTarget && !(use & (DISPATCH_METHOD | DISPATCH_PROPERTYGET)))
        return DISP_E_MEMBERNOTFOUND;
    const bool get = use & DISPATCH_PROPERTYGET;
    const UINT count = member >= 0 ? kMembers[member].count : kAnyCount;
    if (count != kAnyCount && given->cArgs != count) return DISP_E_BADPARAMCOUNT;
    switch (member) {
        case kValue:
            return get ? VariantCopy(result, &m_value) : Put(given, use, fault);
        case kTarget:
            if (!get) return Put(given, use, fault);
            if (m_target) m_target->AddRef();
            return SetObject(result, m_target);
        case kNewEnum:
            V_VT(result) = VT_UNKNOWN;
            V_UNKNOWN(result) = new Numbers;
            return S_OK;
        case kEcho:
            return VariantCopyInd(result, &given->rgvarg[0]);
        case kChange:
            return Change(&given->rgvarg[1], &given->rgvarg[0], fault);
        case kFail:
            return Throw(given, thrown);
        case kPoint:
            return Point(given, result, fault);
        case kPicky:
            *fault = 0;
            return V_VT(&given->rgvarg[0]) == VT_I4 ? S_OK : DISP_E_TYPEMISMATCH;
        case kBusy:
            g_rejections = V_I4(&given->rgvarg[1]);
            g_rejection = static_cast<DWORD>(V_I4(&given->rgvarg[0]));
            return S_OK;
        case kDie:
            TerminateProcess(GetCurrentProcess(), 1);
            return S_OK;
        case kChild:
            return SetObject(result, new Server);
        case kObjects:
            return SetLong(result, g_objects);
        case kTypeOf:
            return SetLong(result, V_VT(&given->rgvarg[0]));
        case kFill: {
            VARIANT* const out = &given->rgvarg[0];
            if (V_VT(out) != (VT_BYREF | VT_VARIANT)) return DISP_E_TYPEMISMATCH;
            VariantClear(V_VARIANTREF(out));
            V_VT(V_VARIANTREF(out)) = VT_BSTR;
            V_BSTR(V_VARIANTREF(out)) = SysAllocString(L"\u6771 filled");
            return S_OK;
        }
        case kUnsigned:
            V_VT(result) = VT_UI8;
            V_UI8(result) = ~0ull;
            return S_OK;
        case kGrid:
            return MakeGrid(result);
        case kTenth:
            if (V_VT(&given->rgvarg[0]) != (VT_BYREF | VT_DECIMAL)) return DISP_E_TYPEMISMATCH;
            ++V_DECIMALREF(&given->rgvarg[0])->scale;
            V_DECIMALREF(&given->rgvarg[0])->wReserved = 0;  // where a value has its type
            return S_OK;
        case kPlain:
            return E_ACCESSDENIED;
        default:
            return DISP_E_MEMBERNOTFOUND;
    }
}

// Rejects the number of calls that a client has asked for.
class Filter : public Counted<IMessageFilter, true> {
  public:
    DWORD STDMETHODCALLTYPE HandleInComingCall(DWORD, HTASK, DWORD, LPINTERFACEINFO) override {
        if (g_rejections <= 0) return SERVERCALL_ISHANDLED;
        --g_rejections;
        return g_rejection;
    }
    DWORD STDMETHODCALLTYPE RetryRejectedCall(HTASK, DWORD, DWORD) override { return ~0u; }
    DWORD STDMETHODCALLTYPE MessagePending(HTASK, DWORD, DWORD) override {
        return PENDINGMSG_WAITDEFPROCESS;
    }
};

class Factory : public Counted<IClassFactory, true> {
  public:
    HRESULT STDMETHODCALLTYPE CreateInstance(IUnknown*, REFIID asked, void** out) override {
        Server* const server = new Server;
        const HRESULT result = server->QueryInterface(asked, out);
        server->Release();
        return result;
    }
    HRESULT STDMETHODCALLTYPE LockServer(BOOL) override { return S_OK; }
};

// -- Type information -------------------------------------------------------------------------

struct ParameterRow {
    const wchar_t* name;
    VARTYPE type;
    USHORT flags;
};

void AddMember(ICreateTypeInfo* types, UINT index, DISPID id, INVOKEKIND kind, VARTYPE result,
               const wchar_t* name, const wchar_t* help, const ParameterRow* rows, SHORT count) {
    TYPEDESC referred[4] = {};
    PARAMDESCEX standing = {};
    standing.cBytes = sizeof standing;
    SetLong(&standing.varDefaultValue, 7);
    ELEMDESC parameters[4] = {};
    LPOLESTR names[5] = {const_cast<LPOLESTR>(name)};
    const bool put = kind & (INVOKE_PROPERTYPUT | INVOKE_PROPERTYPUTREF);
    for (SHORT i = 0; i < count; ++i) {
        ELEMDESC& parameter = parameters[i];
        const bool reference = rows[i].type & VT_BYREF;
        referred[i].vt = rows[i].type & VT_TYPEMASK;
        parameter.tdesc.vt = reference ? VARTYPE{VT_PTR} : rows[i].type;
        if (reference) parameter.tdesc.lptdesc = &referred[i];
        parameter.paramdesc.wParamFlags = rows[i].flags;
        if (rows[i].flags & PARAMFLAG_FHASDEFAULT) parameter.paramdesc.pparamdescex = &standing;
        names[i + 1] = const_cast<LPOLESTR>(rows[i].name);
    }
    FUNCDESC function = {};
    function.memid = id;
    function.lprgelemdescParam = parameters;
    function.funckind = FUNC_DISPATCH;
    function.invkind = kind;
    function.callconv = CC_STDCALL;
    function.cParams = count;
    function.elemdescFunc.tdesc.vt = result;
    types->AddFuncDesc(index, &function);
    types->SetFuncAndParamNames(index, names, static_cast<UINT>(count + (put ? 0 : 1)));
    if (*help) types->SetFuncDocString(index, const_cast<LPOLESTR>(help));
}

void MakeTypes() {
    wchar_t folder[MAX_PATH] = L"", file[MAX_PATH + 16] = L"", name[] = L"ITestServer";
    GetTempPathW(MAX_PATH, folder);
    _snwprintf(file, MAX_PATH + 15, L"%lsgenutil-test.tlb", folder);
    ICreateTypeLib2* library = nullptr;
    ICreateTypeInfo* types = nullptr;
    if (FAILED(CreateTypeLib2(sizeof(void*) == 8 ? SYS_WIN64 : SYS_WIN32, file, &library))) return;
    if (SUCCEEDED(library->CreateTypeInfo(name, TKIND_DISPATCH, &types))) {
        constexpr USHORT kIn = PARAMFLAG_FIN, kBoth = PARAMFLAG_FIN | PARAMFLAG_FOUT;
        const ParameterRow change[] = {{L"number", VT_BYREF | VT_I4, kBoth},
                                       {L"text", VT_BYREF | VT_BSTR, kBoth}};
        const ParameterRow point[] = {{L"x", VT_I4, kIn},
                                      {L"y", VT_I4, kIn | PARAMFLAG_FOPT | PARAMFLAG_FHASDEFAULT}};
        const ParameterRow fill[] = {{L"out", VT_BYREF | VT_VARIANT, PARAMFLAG_FOUT}};
        const ParameterRow value[] = {{L"rhs", VT_VARIANT, kIn}};
        types->SetGuid(kInterfaceId);
        AddMember(types, 0, kPoint, INVOKE_FUNC, VT_I4, L"Point", L"A place on the grid", point, 2);
        AddMember(types, 1, kChange, INVOKE_FUNC, VT_VOID, L"Change", L"", change, 2);
        AddMember(types, 2, kFill, INVOKE_FUNC, VT_VOID, L"Fill", L"", fill, 1);
        AddMember(types, 3, kValue, INVOKE_PROPERTYGET, VT_VARIANT, L"Value", L"", value, 0);
        AddMember(types, 4, kValue, INVOKE_PROPERTYPUT, VT_VOID, L"Value", L"", value, 1);
        const ParameterRow tenth[] = {{L"number", VT_BYREF | VT_DECIMAL, kBoth}};
        AddMember(types, 5, kTenth, INVOKE_FUNC, VT_VOID, L"Tenth", L"", tenth, 1);
        types->LayOut();
        types->QueryInterface(IID_ITypeInfo, reinterpret_cast<void**>(&g_types));
        types->Release();
    }
    library->Release();
}

// -- The program ------------------------------------------------------------------------------

constexpr const wchar_t* kKeys[][2] = {
    {L"Genutil.TestServer", L"genutil's test server"},
    {L"Genutil.TestServer\\CLSID", kClass},
    {L"CLSID\\{6B1F6C52-5D0E-4B4B-9C39-2F3D1A7E0A11}", L"genutil's test server"},
    {L"CLSID\\{6B1F6C52-5D0E-4B4B-9C39-2F3D1A7E0A11}\\ProgID", kName},
    {L"CLSID\\{6B1F6C52-5D0E-4B4B-9C39-2F3D1A7E0A11}\\LocalServer32", nullptr},  // the program
};

void RegisterIn(HKEY root) {
    wchar_t program[MAX_PATH + 2] = L"\"", key[200];
    GetModuleFileNameW(nullptr, program + 1, MAX_PATH);
    std::wcscat(program, L"\"");
    for (const auto& row : kKeys) {
        _snwprintf(key, 199, L"Software\\Classes\\%ls", row[0]);
        RegSetValueW(root, key, REG_SZ, row[1] ? row[1] : program, 0);
    }
}

void RemoveFrom(HKEY root) {
    wchar_t key[200];
    for (auto row = std::rbegin(kKeys); row != std::rend(kKeys); ++row) {
        _snwprintf(key, 199, L"Software\\Classes\\%ls", (*row)[0]);
        RegDeleteKeyW(root, key);
    }
}

// Registers for the user if the system looks there, as Windows does, otherwise for all users.
int Register() {
    CLSID found;
    RegisterIn(HKEY_CURRENT_USER);
    if (SUCCEEDED(CLSIDFromProgID(kName, &found))) return 0;
    RegisterIn(HKEY_LOCAL_MACHINE);
    return FAILED(CLSIDFromProgID(kName, &found));
}

int Unregister() {
    RemoveFrom(HKEY_CURRENT_USER);
    RemoveFrom(HKEY_LOCAL_MACHINE);
    return 0;
}

void Serve(bool active) {
    DWORD registered = 0, known = 0;
    IMessageFilter* before = nullptr;
    CoInitialize(nullptr);
    MakeTypes();
    CoRegisterMessageFilter(new Filter, &before);
    // Each client gets a process of its own, so that one that dies does not disturb others.
    if (!active)
        CoRegisterClassObject(kClassId, new Factory, CLSCTX_LOCAL_SERVER, REGCLS_SINGLEUSE,
                              &registered);
    if (active) RegisterActiveObject(new Server, kClassId, ACTIVEOBJECT_STRONG, &known);
    // Ends with its last object, or after 30 seconds.
    const UINT_PTR timer = SetTimer(nullptr, 0, 100, nullptr);
    bool used = false;
    int tick = 0;
    for (MSG message; GetMessageW(&message, nullptr, 0, 0) > 0; DispatchMessageW(&message)) {
        used = used || g_objects > 0;
        if (message.message == WM_TIMER && (++tick > 300 || (used && g_objects == 0))) break;
    }
    KillTimer(nullptr, timer);
    if (known) RevokeActiveObject(known, nullptr);
    if (registered) CoRevokeClassObject(registered);
    CoUninitialize();
}

}  // namespace

int main(int count, char** arguments) {
    const char* const what = count > 1 ? arguments[1] : "";
    if (std::strcmp(what, "register") == 0) return Register();
    if (std::strcmp(what, "unregister") == 0) return Unregister();
    Serve(std::strcmp(what, "active") == 0);
    return 0;
}
