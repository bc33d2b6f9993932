#include "osutil/platform/win32/automation/automation_types.h"

#include "osutil/platform/win32/automation/automation_variant.h"

namespace genutil::platform {

namespace {

// A description that must be returned to the type information.
template <class T, void (STDMETHODCALLTYPE ITypeInfo::*release)(T*)>
class Lent {
  public:
    explicit Lent(ITypeInfo* types) : m_types(types) {}
    ~Lent() {
        if (m_lent) (m_types->*release)(m_lent);
    }
    Lent(const Lent&) = delete;
    Lent& operator=(const Lent&) = delete;
    T** Place() { return &m_lent; }
    T* Get() const { return m_lent; }
    T* operator->() const { return m_lent; }

  private:
    ITypeInfo* const m_types;
    T* m_lent = nullptr;
};
using Attributes = Lent<TYPEATTR, &ITypeInfo::ReleaseTypeAttr>;
using Function = Lent<FUNCDESC, &ITypeInfo::ReleaseFuncDesc>;
using Variable = Lent<VARDESC, &ITypeInfo::ReleaseVarDesc>;

constexpr struct {
    VARTYPE type;
    const char* name;
} kTypeNames[] = {
    {VT_I1, "byte"},         {VT_UI1, "unsigned byte"},
    {VT_I2, "short"},        {VT_UI2, "unsigned short"},
    {VT_I4, "long"},         {VT_UI4, "unsigned long"},
    {VT_INT, "long"},        {VT_UINT, "unsigned long"},
    {VT_I8, "hyper"},        {VT_UI8, "unsigned hyper"},
    {VT_R4, "single"},       {VT_R8, "real"},
    {VT_BOOL, "boolean"},    {VT_BSTR, "text"},
    {VT_LPSTR, "text"},      {VT_LPWSTR, "text"},
    {VT_DATE, "date"},       {VT_CY, "currency"},
    {VT_DECIMAL, "decimal"}, {VT_ERROR, "error"},
    {VT_HRESULT, "error"},   {VT_VARIANT, "value"},
    {VT_DISPATCH, "object"}, {VT_UNKNOWN, "unknown"},
    {VT_VOID, "void"},
};

CGNString NameOf(ITypeInfo* types, HREFTYPE reference) {
    Pointer<ITypeInfo> referred;
    BSTR name = nullptr;
    if (FAILED(types->GetRefTypeInfo(reference, referred.Place())) ||
        FAILED(referred->GetDocumentation(MEMBERID_NIL, &name, nullptr, nullptr, nullptr)))
        return CGNString("unknown");
    return TakeText(name);
}

CGNString TypeName(ITypeInfo* types, const TYPEDESC& type) {
    CGNString name;
    switch (type.vt) {
        case VT_PTR:
            return TypeName(types, *type.lptdesc);
        case VT_SAFEARRAY:
            name = "array of ";
            return name += TypeName(types, *type.lptdesc);
        case VT_CARRAY:
            name = "array of ";
            return name += TypeName(types, type.lpadesc->tdescElem);
        case VT_USERDEFINED:
            return NameOf(types, type.hreftype);
    }
    for (const auto& row : kTypeNames)
        if (row.type == type.vt) return CGNString(row.name);
    return CGNString("unknown");
}

// Returns the type that a user-defined type of the server represents. An object is a pointer to
// such a type.
VARTYPE Defined(ITypeInfo* types, HREFTYPE reference) {
    Pointer<ITypeInfo> referred;
    if (FAILED(types->GetRefTypeInfo(reference, referred.Place()))) return VT_VARIANT;
    Attributes attributes(referred.Get());
    if (FAILED(referred->GetTypeAttr(attributes.Place()))) return VT_VARIANT;
    switch (attributes->typekind) {
        case TKIND_ENUM:
            return VT_I4;
        case TKIND_INTERFACE:
        case TKIND_DISPATCH:
        case TKIND_COCLASS:
            return VT_DISPATCH;
        case TKIND_ALIAS:
            return attributes->tdescAlias.vt == VT_USERDEFINED
                       ? Defined(referred.Get(), attributes->tdescAlias.hreftype)
                       : attributes->tdescAlias.vt;
        default:
            return VT_VARIANT;
    }
}

// Returns the type to which a reference refers, or 0 if the type is not a reference.
VARTYPE Referred(ITypeInfo* types, const TYPEDESC& type) {
    if (type.vt != VT_PTR) return 0;
    const TYPEDESC& inner = *type.lptdesc;
    if (inner.vt == VT_SAFEARRAY)
        return inner.lptdesc->vt == VT_USERDEFINED
                   ? VARTYPE{VT_VARIANT}
                   : static_cast<VARTYPE>(VT_ARRAY | inner.lptdesc->vt);
    if (inner.vt == VT_USERDEFINED) {
        const VARTYPE defined = Defined(types, inner.hreftype);
        return defined == VT_DISPATCH ? 0 : defined;
    }
    if (inner.vt == VT_PTR) return inner.lptdesc->vt == VT_USERDEFINED ? VT_DISPATCH : VT_VARIANT;
    return inner.vt;
}

void AddParameter(ITypeInfo* types, const FUNCDESC& function, int index, const CGNString& name,
                  COSOLEMember* member) {
    const ELEMDESC& element = function.lprgelemdescParam[index];
    const USHORT flags = element.paramdesc.wParamFlags;
    const bool array = function.cParamsOpt == -1 && index == function.cParams - 1;
    COSOLEParameter parameter;
    parameter.m_name = name;
    parameter.m_type = TypeName(types, element.tdesc);
    parameter.m_byReference = Referred(types, element.tdesc) != 0;
    parameter.m_output = (flags & PARAMFLAG_FOUT) && !(flags & PARAMFLAG_FIN);
    parameter.m_hasDefault = (flags & PARAMFLAG_FHASDEFAULT) != 0;
    parameter.m_optional =
        (flags & PARAMFLAG_FOPT) || parameter.m_hasDefault || array ||
        (function.cParamsOpt > 0 && index >= function.cParams - function.cParamsOpt);
    if (parameter.m_hasDefault && element.paramdesc.pparamdescex)
        FromVariant(element.paramdesc.pparamdescex->varDefaultValue, &parameter.m_default);
    member->m_parameters.AddItem(parameter);
}

void AddParameters(ITypeInfo* types, const FUNCDESC& function, COSOLEMember* member) {
    constexpr UINT kMostNames = 256;
    BSTR names[kMostNames] = {};
    UINT count = 0;
    types->GetNames(function.memid, names, kMostNames, &count);
    const bool put = function.invkind & (INVOKE_PROPERTYPUT | INVOKE_PROPERTYPUTREF);
    for (int i = 0; i < function.cParams; ++i) {
        const UINT place = static_cast<UINT>(i) + 1;
        const CGNString name(place < count ? TakeText(names[place]) : CGNString());
        if (place < count) names[place] = nullptr;
        const ELEMDESC& element = function.lprgelemdescParam[i];
        // In an interface that is called through a function table, one parameter may be the result.
        if ((put && i == function.cParams - 1) ||
            (element.paramdesc.wParamFlags & PARAMFLAG_FRETVAL))
            member->m_type = TypeName(types, element.tdesc);
        else if (!(element.paramdesc.wParamFlags & PARAMFLAG_FLCID))
            AddParameter(types, function, i, name, member);
    }
    for (BSTR name : names) SysFreeString(name);
}

bool Describe(ITypeInfo* types, MEMBERID id, COSOLEMember* member) {
    BSTR name = nullptr, help = nullptr;
    if (FAILED(types->GetDocumentation(id, &name, &help, nullptr, nullptr))) return false;
    member->m_name = TakeText(name);
    member->m_help = TakeText(help);
    member->m_id = id;
    return true;
}

COSOLEMember::Use UseOf(INVOKEKIND kind) {
    switch (kind) {
        case INVOKE_PROPERTYGET:
            return COSOLEMember::kGet;
        case INVOKE_PROPERTYPUT:
            return COSOLEMember::kPut;
        case INVOKE_PROPERTYPUTREF:
            return COSOLEMember::kPutReference;
        default:
            return COSOLEMember::kMethod;
    }
}

bool AddFunction(ITypeInfo* types, UINT index, bool table, COSOLEList<COSOLEMember>* out) {
    Function function(types);
    if (FAILED(types->GetFuncDesc(index, function.Place()))) return true;
    if (function->wFuncFlags & FUNCFLAG_FRESTRICTED) return true;
    COSOLEMember member;
    if (!Describe(types, function->memid, &member)) return true;
    member.m_use = UseOf(function->invkind);
    member.m_hidden = (function->wFuncFlags & (FUNCFLAG_FHIDDEN | FUNCFLAG_FNONBROWSABLE)) != 0;
    member.m_type = table ? CGNString("void") : TypeName(types, function->elemdescFunc.tdesc);
    AddParameters(types, *function.Get(), &member);
    return out->AddItem(member);
}

bool AddVariable(ITypeInfo* types, UINT index, COSOLEList<COSOLEMember>* out) {
    Variable variable(types);
    if (FAILED(types->GetVarDesc(index, variable.Place()))) return true;
    if (variable->varkind != VAR_DISPATCH || (variable->wVarFlags & VARFLAG_FRESTRICTED))
        return true;
    COSOLEMember member;
    if (!Describe(types, variable->memid, &member)) return true;
    member.m_use = COSOLEMember::kGet;
    member.m_hidden = (variable->wVarFlags & (VARFLAG_FHIDDEN | VARFLAG_FNONBROWSABLE)) != 0;
    member.m_type = TypeName(types, variable->elemdescVar.tdesc);
    if (!out->AddItem(member)) return false;
    if (variable->wVarFlags & VARFLAG_FREADONLY) return true;
    member.m_use = COSOLEMember::kPut;
    return out->AddItem(member);
}

bool IsRoot(REFGUID guid) {
    return IsEqualGUID(guid, IID_IDispatch) || IsEqualGUID(guid, IID_IUnknown);
}

HRESULT AddMembers(ITypeInfo* types, COSOLEList<COSOLEMember>* out) {
    Attributes attributes(types);
    HRESULT result = types->GetTypeAttr(attributes.Place());
    if (FAILED(result) || IsRoot(attributes->guid)) return result;
    const bool table = attributes->typekind == TKIND_INTERFACE;
    // A dispatch interface lists the members of its base itself.
    for (UINT i = 0; table && i < attributes->cImplTypes; ++i) {
        HREFTYPE reference = 0;
        Pointer<ITypeInfo> base;
        if (FAILED(types->GetRefTypeOfImplType(i, &reference)) ||
            FAILED(types->GetRefTypeInfo(reference, base.Place())))
            continue;
        result = AddMembers(base.Get(), out);
        if (FAILED(result)) return result;
    }
    for (UINT i = 0; i < attributes->cFuncs; ++i)
        if (!AddFunction(types, i, table, out)) return E_OUTOFMEMORY;
    for (UINT i = 0; i < attributes->cVars; ++i)
        if (!AddVariable(types, i, out)) return E_OUTOFMEMORY;
    return S_OK;
}

}  // namespace

HRESULT OpenTypes(IDispatch* dispatch, long retryTime, Pointer<ITypeInfo>* out) {
    UINT count = 0;
    HRESULT result = CallPatiently(retryTime, [&] { return dispatch->GetTypeInfoCount(&count); });
    if (SUCCEEDED(result) && count == 0) result = TYPE_E_ELEMENTNOTFOUND;
    if (SUCCEEDED(result))
        result = CallPatiently(
            retryTime, [&] { return dispatch->GetTypeInfo(0, LOCALE_USER_DEFAULT, out->Place()); });
    return SUCCEEDED(result) && !out->Get() ? TYPE_E_ELEMENTNOTFOUND : result;
}

VARTYPE ReferredType(ITypeInfo* types, DISPID member, WORD use, UINT parameter) {
    Attributes attributes(types);
    if (FAILED(types->GetTypeAttr(attributes.Place()))) return VT_VARIANT;
    for (UINT i = 0; i < attributes->cFuncs; ++i) {
        Function function(types);
        if (FAILED(types->GetFuncDesc(i, function.Place()))) continue;
        if (function->memid != member || !(function->invkind & use)) continue;
        if (parameter >= static_cast<UINT>(function->cParams)) return VT_VARIANT;
        const VARTYPE type = Referred(types, function->lprgelemdescParam[parameter].tdesc);
        return type ? type : static_cast<VARTYPE>(VT_VARIANT);
    }
    return VT_VARIANT;
}

bool ListMembers(OleObject* object, long retryTime, COSOLEList<COSOLEMember>* out,
                 AutomationError* error) {
    return InApartment(error, [&] {
        Pointer<IDispatch> dispatch;
        Pointer<ITypeInfo> types;
        HRESULT result = OpenDispatch(object, &dispatch);
        if (SUCCEEDED(result)) result = OpenTypes(dispatch.Get(), retryTime, &types);
        if (SUCCEEDED(result)) result = AddMembers(types.Get(), out);
        return SUCCEEDED(result) || Fail(result, nullptr, error);
    });
}

}  // namespace genutil::platform
