// One call of a server: conversion of names to numbers, of arguments to the server's order, and of
// the results.
#include <utility>

#include "genutil/allocate.h"
#include "osutil/automation/ole_access.h"
#include "osutil/platform/win32/automation/automation_types.h"
#include "osutil/platform/win32/automation/automation_variant.h"

namespace genutil::platform {

namespace {

constexpr WORD kUses[] = {DISPATCH_METHOD, DISPATCH_METHOD | DISPATCH_PROPERTYGET,
                          DISPATCH_PROPERTYGET, DISPATCH_PROPERTYPUT, DISPATCH_PROPERTYPUTREF};

// An argument in the server's order: the value to put first, then named arguments, then positional
// ones from last to first.
struct Slot {
    COSOLEValue value;     // the returned value
    Variant holder;        // the target of a reference
    VARTYPE referred = 0;  // type of the reference's target; VT_VARIANT for any; 0 if it is not a
                           // reference
    int argument = 0;      // its index among the caller's arguments, from 0
    const COSOLEValue* from = nullptr;
    UINT parameter = 0;  // its index in the type information
};

template <class T>
class Array {
  public:
    explicit Array(std::size_t count)
        : m_items(AllocationPasses(count * sizeof(T)) ? new (std::nothrow) T[count]() : nullptr) {}
    ~Array() { delete[] m_items; }
    Array(const Array&) = delete;
    Array& operator=(const Array&) = delete;
    T* Get() const { return m_items; }
    T& operator[](UINT index) const { return m_items[index]; }

  private:
    T* const m_items;
};

HRESULT FindName(IDispatch* dispatch, const CGNString& name, long retryTime, DISPID* id) {
    const WideName wide(name);
    BSTR text = wide.Get();
    if (!text) return DISP_E_UNKNOWNNAME;
    return CallPatiently(retryTime, [&] {
        return dispatch->GetIDsOfNames(IID_NULL, &text, 1, LOCALE_USER_DEFAULT, id);
    });
}

class Invocation {
  public:
    Invocation(const AutomationCall& call, long retryTime, AutomationError* error)
        : m_call(call),
          m_retryTime(retryTime),
          m_error(error),
          m_given(static_cast<UINT>(call.arguments->GetCount())),
          m_count(m_given + (call.put ? 1 : 0)),
          m_slots(m_count),
          m_arguments(m_count),
          m_ids(m_count),
          m_use(kUses[static_cast<int>(call.use)]) {}

    // Performs the call. On success, arguments passed by reference have been changed.
    bool Run(OleObject* object) {
        HRESULT result = OpenDispatch(object, &m_dispatch);
        if (FAILED(result)) return Fail(result, m_call.name, m_error);
        if (!m_slots.Get() || !m_arguments.Get() || !m_ids.Get())
            return Fail(E_OUTOFMEMORY, nullptr, m_error);
        return FindMember() && Order() && FindArguments() && Convert() && Invoke() && Return();
    }

  private:
    bool FailArgument(HRESULT result, const Slot& slot, const CGNString* name) {
        m_error->argument = slot.argument + 1;
        return Fail(result, name, m_error);
    }

    bool FindMember() {
        m_member = DISPID_VALUE;
        if (m_call.name->IsEmpty()) return true;
        const HRESULT result = FindName(m_dispatch.Get(), *m_call.name, m_retryTime, &m_member);
        return SUCCEEDED(result) || Fail(result, m_call.name, m_error);
    }

    bool Named(UINT argument) const {
        return !m_call.arguments->GetName(static_cast<int>(argument)).IsEmpty();
    }

    void Place(UINT slot, UINT argument) {
        m_slots[slot].argument = static_cast<int>(argument);
        m_slots[slot].from = argument == m_given ? m_call.put
                                                 : &OleAccess::Argument(*m_call.arguments,
                                                                        static_cast<int>(argument));
    }

    bool Order() {
        UINT slot = 0, position = m_count;
        if (m_call.put) {
            m_ids[slot] = DISPID_PROPERTYPUT;
            Place(slot++, m_given);
        }
        for (UINT i = 0; i < m_given; ++i) {
            if (Named(i)) {
                Place(slot++, i);
            } else {
                Place(--position, i);
                m_slots[position].parameter = m_count - 1 - position;
            }
        }
        m_named = slot;
        return true;
    }

    // The names of arguments belong to the name of the member and are looked up together with it.
    bool FindArguments() {
        const UINT first = m_call.put ? 1 : 0;
        if (m_named == first) return true;
        const UINT count = m_named - first + 1;
        Array<BSTR> names(count);
        Array<DISPID> ids(count);
        if (!names.Get() || !ids.Get()) return Fail(E_OUTOFMEMORY, nullptr, m_error);
        names[0] = WideText(*m_call.name);
        for (UINT i = 1; i < count; ++i)
            names[i] = WideText(m_call.arguments->GetName(m_slots[first + i - 1].argument));
        HRESULT result = S_OK;
        for (UINT i = 0; i < count; ++i)
            if (!names[i]) result = DISP_E_UNKNOWNNAME;
        for (UINT i = 0; i < count; ++i) ids[i] = DISPID_UNKNOWN;
        if (SUCCEEDED(result))
            result = CallPatiently(m_retryTime, [&] {
                return m_dispatch->GetIDsOfNames(IID_NULL, names.Get(), count, LOCALE_USER_DEFAULT,
                                                 ids.Get());
            });
        for (UINT i = 0; i < count; ++i) SysFreeString(names[i]);
        for (UINT i = 1; i < count; ++i) {
            Slot& slot = m_slots[first + i - 1];
            if (FAILED(result) && ids[i] == DISPID_UNKNOWN) {
                const CGNString name(m_call.arguments->GetName(slot.argument));
                return FailArgument(result, slot, &name);
            }
            m_ids[first + i - 1] = ids[i];
            slot.parameter = static_cast<UINT>(ids[i]);
        }
        return SUCCEEDED(result) || Fail(result, m_call.name, m_error);
    }

    bool Convert() {
        for (UINT i = 0; i < m_count; ++i) {
            Slot& slot = m_slots[i];
            const bool reference = m_call.arguments->IsByReference(slot.argument);
            const HRESULT result = reference ? ConvertReference(&slot, &m_arguments[i])
                                             : ConvertValue(&slot, &m_arguments[i]);
            if (FAILED(result)) return FailArgument(result, slot, nullptr);
        }
        return true;
    }

    // The holder owns the content to which the argument refers.
    HRESULT ConvertValue(Slot* slot, VARIANT* argument) {
        const HRESULT result = ToVariant(*slot->from, slot->holder.Get());
        *argument = slot->holder.Value();
        return result;
    }

    HRESULT ConvertReference(Slot* slot, VARIANT* argument) {
        VARIANT* const holder = slot->holder.Get();
        HRESULT result = ToVariant(*slot->from, holder);
        if (FAILED(result)) return result;
        slot->referred = VT_VARIANT;
        if (Types()) slot->referred = ReferredType(Types(), m_member, m_use, slot->parameter);
        if (slot->referred == VT_VARIANT) {
            V_VT(argument) = VT_BYREF | VT_VARIANT;
            V_VARIANTREF(argument) = holder;
            return S_OK;
        }
        if (V_VT(holder) == VT_EMPTY) {
            memset(holder, 0, sizeof *holder);
            V_VT(holder) = slot->referred;
        } else if (V_VT(holder) != slot->referred) {
            result = ChangeVariant(holder, slot->referred);
        }
        V_VT(argument) = static_cast<VARTYPE>(VT_BYREF | slot->referred);
        V_BYREF(argument) =
            slot->referred == VT_DECIMAL ? static_cast<void*>(&holder->decVal) : &holder->llVal;
        return result;
    }

    ITypeInfo* Types() {
        if (!m_types.Get() && !m_askedForTypes) OpenTypes(m_dispatch.Get(), m_retryTime, &m_types);
        m_askedForTypes = true;
        return m_types.Get();
    }

    bool Invoke() {
        DISPPARAMS parameters = {m_arguments.Get(), m_ids.Get(), m_count, m_named};
        // A result is requested even if it is not used, because some proxies from other processes
        // do not return an object in it otherwise.
        VARIANT* const wanted = m_call.put ? nullptr : m_result.Get();
        EXCEPINFO thrown = {};
        UINT fault = m_count;
        SetErrorInfo(0, nullptr);
        const HRESULT result = CallPatiently(m_retryTime, [&] {
            return m_dispatch->Invoke(m_member, IID_NULL, LOCALE_USER_DEFAULT, m_use, &parameters,
                                      wanted, &thrown, &fault);
        });
        // A type that shares its bytes with the value may have been overwritten.
        for (UINT i = 0; i < m_count; ++i)
            if (m_slots[i].referred == VT_DECIMAL) V_VT(m_slots[i].holder.Get()) = VT_DECIMAL;
        if (SUCCEEDED(result)) return true;
        if (result == DISP_E_EXCEPTION) return FailThrown(&thrown);
        if ((result == DISP_E_TYPEMISMATCH || result == DISP_E_PARAMNOTFOUND ||
             result == DISP_E_OVERFLOW || result == DISP_E_BADVARTYPE) &&
            fault < m_count)
            return FailArgument(result, m_slots[fault], m_call.name);
        Fail(result, m_call.name, m_error);
        return TakeErrorInfo();
    }

    bool FailThrown(EXCEPINFO* thrown) {
        if (thrown->pfnDeferredFillIn) thrown->pfnDeferredFillIn(thrown);
        const HRESULT code = thrown->scode ? thrown->scode : thrown->wCode;
        Fail(code ? code : DISP_E_EXCEPTION, m_call.name, m_error);
        m_error->source = TakeText(thrown->bstrSource);
        m_error->helpFile = TakeText(thrown->bstrHelpFile);
        m_error->helpContext = static_cast<long>(thrown->dwHelpContext);
        const CGNString description(TakeText(thrown->bstrDescription));
        if (!description.IsEmpty()) m_error->description = description;
        return false;
    }

    // Reads the additional error information that a server may provide on the thread.
    bool TakeErrorInfo() {
        Pointer<IErrorInfo> info;
        if (GetErrorInfo(0, info.Place()) != S_OK || !info.Get()) return false;
        BSTR description = nullptr, source = nullptr;
        info->GetDescription(&description);
        info->GetSource(&source);
        const CGNString words(TakeText(description));
        if (!words.IsEmpty()) m_error->description = words;
        m_error->source = TakeText(source);
        return false;
    }

    // Returns all results or none.
    bool Return() {
        COSOLEValue value;
        HRESULT result = m_call.result ? FromVariant(m_result.Value(), &value) : S_OK;
        if (FAILED(result)) return Fail(result, m_call.name, m_error);
        for (UINT i = 0; i < m_count; ++i) {
            Slot& slot = m_slots[i];
            if (slot.referred == 0) continue;
            result = FromVariant(slot.holder.Value(), &slot.value);
            if (FAILED(result)) return FailArgument(result, slot, nullptr);
        }
        for (UINT i = 0; i < m_count; ++i)
            if (m_slots[i].referred != 0)
                OleAccess::Argument(*m_call.arguments, m_slots[i].argument) = m_slots[i].value;
        if (m_call.result) *m_call.result = value;
        return true;
    }

    const AutomationCall& m_call;
    const long m_retryTime;
    AutomationError* const m_error;
    const UINT m_given, m_count;
    Pointer<IDispatch> m_dispatch;
    Pointer<ITypeInfo> m_types;
    bool m_askedForTypes = false;
    Array<Slot> m_slots;
    Array<VARIANT> m_arguments;  // their content is owned by the slots
    Array<DISPID> m_ids;
    const WORD m_use;
    UINT m_named = 0;
    DISPID m_member = DISPID_VALUE;
    Variant m_result;
};

}  // namespace

bool InvokeAutomation(OleObject* object, const AutomationCall& call, long retryTime,
                      AutomationError* error) {
    return InApartment(error, [&] { return Invocation(call, retryTime, error).Run(object); });
}

bool KnowsMember(OleObject* object, const CGNString& name, long retryTime, AutomationError* error) {
    return InApartment(error, [&] {
        Pointer<IDispatch> dispatch;
        DISPID id = 0;
        HRESULT result = OpenDispatch(object, &dispatch);
        if (SUCCEEDED(result)) result = FindName(dispatch.Get(), name, retryTime, &id);
        return SUCCEEDED(result) || Fail(result, &name, error);
    });
}

}  // namespace genutil::platform
