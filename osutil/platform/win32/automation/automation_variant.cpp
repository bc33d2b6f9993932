#include "osutil/platform/win32/automation/automation_variant.h"

#include <cstdint>
#include <cstring>
#include <string_view>

#include "osutil/automation/ole_access.h"
#include "osutil/automation/ole_number.h"

namespace genutil::platform {

namespace {

// The types of array items in both representations. For a kind with several rows, the first is used
// for sending.
constexpr struct {
    COSOLEValue::Kind kind;
    VARTYPE type;
} kElements[] = {
    {COSOLEValue::kEmpty, VT_VARIANT},   {COSOLEValue::kBoolean, VT_BOOL},
    {COSOLEValue::kInteger, VT_I4},      {COSOLEValue::kInteger, VT_I8},
    {COSOLEValue::kInteger, VT_I2},      {COSOLEValue::kInteger, VT_I1},
    {COSOLEValue::kInteger, VT_UI1},     {COSOLEValue::kInteger, VT_UI2},
    {COSOLEValue::kInteger, VT_UI4},     {COSOLEValue::kInteger, VT_INT},
    {COSOLEValue::kInteger, VT_UINT},    {COSOLEValue::kReal, VT_R8},
    {COSOLEValue::kReal, VT_R4},         {COSOLEValue::kText, VT_BSTR},
    {COSOLEValue::kDate, VT_DATE},       {COSOLEValue::kCurrency, VT_CY},
    {COSOLEValue::kDecimal, VT_DECIMAL}, {COSOLEValue::kObject, VT_DISPATCH},
};

bool FitsLong(long long value) {
    return value >= INT32_MIN && value <= INT32_MAX;
}

VARTYPE ElementType(const COSOLEValue& array) {
    const COSOLEValue::Kind kind = array.GetElementKind();
    if (kind == COSOLEValue::kInteger)
        for (long i = 0; i < array.GetCount(); ++i) {
            long long item = 0;
            if (array.GetItem(i)->GetInteger(item) && !FitsLong(item)) return VT_I8;
        }
    for (const auto& element : kElements)
        if (element.kind == kind) return element.type;
    return VT_VARIANT;
}

COSOLEValue::Kind ElementKind(VARTYPE type) {
    for (const auto& element : kElements)
        if (element.type == type) return element.kind;
    return COSOLEValue::kEmpty;  // unsigned 64-bit integers, unknown objects
}

// Returns the position of a simple value in a VARIANT.
void* Payload(VARIANT* value) {
    return V_VT(value) == VT_DECIMAL ? static_cast<void*>(&value->decVal) : &value->llVal;
}

void PutDecimal(const COSOLEValue& value, VARIANT* out) {
    OleDecimal number;
    const CGNString& text = OleAccess::DecimalText(value);
    ReadOleDecimal({static_cast<const char*>(text), text.GetLength()}, &number);
    out->decVal = {};
    out->decVal.Lo64 = std::uint64_t{number.parts[1]} << 32 | number.parts[0];
    out->decVal.Hi32 = number.parts[2];
    out->decVal.scale = static_cast<BYTE>(number.scale);
    out->decVal.sign = number.negative ? DECIMAL_NEG : 0;
    V_VT(out) = VT_DECIMAL;  // shares its bytes with the decimal
}

HRESULT GetDecimal(const DECIMAL& from, COSOLEValue* out) {
    if (from.scale > kMostOleDecimals) return DISP_E_OVERFLOW;
    OleDecimal number;
    number.parts[0] = static_cast<std::uint32_t>(from.Lo64);
    number.parts[1] = static_cast<std::uint32_t>(from.Lo64 >> 32);
    number.parts[2] = from.Hi32;
    number.scale = from.scale;
    number.negative = from.sign & DECIMAL_NEG;
    char text[kOleNumberSize + 1];
    text[WriteOleDecimal(number, text)] = 0;
    return out->SetDecimal(CGNDecimal(CGNString(text))) ? S_OK : E_OUTOFMEMORY;
}

// A number above the signed 64-bit range is a decimal.
HRESULT GetUnsigned(std::uint64_t number, COSOLEValue* out) {
    if (number <= INT64_MAX) {
        out->SetInteger(static_cast<long long>(number));
        return S_OK;
    }
    DECIMAL decimal = {};
    decimal.Lo64 = number;
    return GetDecimal(decimal, out);
}

HRESULT PutText(const COSOLEValue& value, VARIANT* out) {
    CGNString text;
    value.GetText(text);
    V_BSTR(out) = WideText(text);
    if (!V_BSTR(out)) return HRESULT_FROM_WIN32(ERROR_NO_UNICODE_TRANSLATION);
    V_VT(out) = VT_BSTR;
    return S_OK;
}

HRESULT PutObject(const COSOLEValue& value, VARIANT* out) {
    OleObject* const object = OleAccess::Object(value);
    IUnknown* const pointer = object ? PointerOf(object) : nullptr;
    V_VT(out) = !object || DispatchOf(object) ? VT_DISPATCH : VT_UNKNOWN;
    V_UNKNOWN(out) = pointer;
    if (pointer) pointer->AddRef();
    return S_OK;
}

HRESULT GetObject(IUnknown* pointer, COSOLEValue* out) {
    OleObject* object = nullptr;
    const HRESULT result = MakeOleObject(pointer, &object);
    if (FAILED(result)) return result;
    OleAccess::SetObject(out, object);
    ReleaseOleObject(object);
    return S_OK;
}

HRESULT PutBytes(const COSOLEValue& value, VARIANT* out) {
    SAFEARRAY* const array = SafeArrayCreateVector(VT_UI1, 0, static_cast<ULONG>(value.GetCount()));
    if (!array) return E_OUTOFMEMORY;
    if (value.GetCount() != 0)
        memcpy(array->pvData, value.GetBytes(), static_cast<std::size_t>(value.GetCount()));
    V_VT(out) = VT_ARRAY | VT_UI1;
    V_ARRAY(out) = array;
    return S_OK;
}

// Stores one item of an array, which takes ownership of it.
HRESULT PutItem(const COSOLEValue& item, VARTYPE type, char* place, std::size_t size) {
    Variant value;
    HRESULT result = ToVariant(item, value.Get());
    if (SUCCEEDED(result) && type != VT_VARIANT && V_VT(value.Get()) != type)
        result = item.GetKind() == COSOLEValue::kEmpty ? S_FALSE  // an empty item: 0 or nothing, as
                                                                  // the array is initialised
                                                       : ChangeVariant(value.Get(), type);
    if (result != S_OK) return result;
    memcpy(place, type == VT_VARIANT ? value.Get() : Payload(value.Get()), size);
    V_VT(value.Get()) = VT_EMPTY;
    return S_OK;
}

HRESULT PutArray(const COSOLEValue& value, VARIANT* out) {
    SAFEARRAYBOUND bounds[60];
    const int dimensions = value.GetDimensions();
    for (int i = 0; i < dimensions; ++i) {
        const COSOLEBound bound = value.GetBound(i);
        bounds[i] = {static_cast<ULONG>(bound.m_count), bound.m_lower};
    }
    const VARTYPE type = ElementType(value);
    SAFEARRAY* const array = SafeArrayCreate(type, static_cast<UINT>(dimensions), bounds);
    if (!array) return E_OUTOFMEMORY;
    V_VT(out) = static_cast<VARTYPE>(VT_ARRAY | type);
    V_ARRAY(out) = array;
    const std::size_t size = SafeArrayGetElemsize(array);
    for (long i = 0; i < value.GetCount(); ++i) {
        char* const place = static_cast<char*>(array->pvData) + static_cast<std::size_t>(i) * size;
        const HRESULT result = PutItem(*value.GetItem(i), type, place, size);
        if (FAILED(result)) return result;
    }
    return S_OK;
}

HRESULT GetBounds(SAFEARRAY* array, COSOLEBound* bounds, UINT dimensions) {
    for (UINT i = 0; i < dimensions; ++i) {
        LONG lower = 0, upper = 0;
        HRESULT result = SafeArrayGetLBound(array, i + 1, &lower);
        if (SUCCEEDED(result)) result = SafeArrayGetUBound(array, i + 1, &upper);
        if (FAILED(result)) return result;
        bounds[i].m_lower = lower;
        bounds[i].m_count =
            static_cast<long>(static_cast<ULONG>(upper) - static_cast<ULONG>(lower) + 1);
    }
    return S_OK;
}

HRESULT GetItems(SAFEARRAY* array, VARTYPE type, COSOLEValue* out) {
    void* data = nullptr;
    HRESULT result = SafeArrayAccessData(array, &data);
    if (FAILED(result)) return result;
    const std::size_t size = SafeArrayGetElemsize(array);
    const char* place = static_cast<const char*>(data);
    for (long i = 0; SUCCEEDED(result) && i < out->GetCount(); ++i, place += size) {
        VARIANT item;  // its content is owned by the array
        VariantInit(&item);
        V_VT(&item) = type;
        memcpy(type == VT_VARIANT ? &item : Payload(&item), place, size);
        if (type != VT_VARIANT) V_VT(&item) = type;
        result = FromVariant(item, out->GetItem(i));
    }
    SafeArrayUnaccessData(array);
    return result;
}

HRESULT GetArray(SAFEARRAY* array, VARTYPE type, COSOLEValue* out) {
    constexpr UINT kMostDimensions = 60;
    if (!array) return out->SetArray(0) ? S_OK : E_OUTOFMEMORY;
    COSOLEBound bounds[kMostDimensions];
    const UINT dimensions = SafeArrayGetDim(array);
    if (dimensions < 1 || dimensions > kMostDimensions) return DISP_E_BADINDEX;
    const HRESULT result = GetBounds(array, bounds, dimensions);
    if (FAILED(result)) return result;
    if (type == VT_UI1 && dimensions == 1 && bounds[0].m_lower == 0)
        return out->SetBytes(array->pvData, static_cast<unsigned long>(bounds[0].m_count))
                   ? S_OK
                   : E_OUTOFMEMORY;
    if (type == VT_RECORD) return DISP_E_BADVARTYPE;
    if (!out->SetArray(bounds, static_cast<int>(dimensions), ElementKind(type)))
        return E_OUTOFMEMORY;
    return GetItems(array, type, out);
}

HRESULT GetInteger(long long number, COSOLEValue* out) {
    out->SetInteger(number);
    return S_OK;
}

// Converts an integer of any width. Fails for other types.
HRESULT GetWholeNumber(const VARIANT& value, COSOLEValue* out) {
    switch (V_VT(&value)) {
        case VT_I1:
            return GetInteger(static_cast<signed char>(V_I1(&value)), out);
        case VT_UI1:
            return GetInteger(V_UI1(&value), out);
        case VT_I2:
            return GetInteger(V_I2(&value), out);
        case VT_UI2:
            return GetInteger(V_UI2(&value), out);
        case VT_I4:
        case VT_INT:
            return GetInteger(V_I4(&value), out);
        case VT_UI4:
        case VT_UINT:
            return GetInteger(V_UI4(&value), out);
        case VT_I8:
            return GetInteger(V_I8(&value), out);
        case VT_UI8:
            return GetUnsigned(V_UI8(&value), out);
        default:
            return DISP_E_BADVARTYPE;
    }
}

HRESULT GetScalar(const VARIANT& value, COSOLEValue* out) {
    switch (V_VT(&value)) {
        case VT_EMPTY:
            return S_OK;
        case VT_NULL:
            out->SetNull();
            return S_OK;
        case VT_ERROR:
            if (V_ERROR(&value) == DISP_E_PARAMNOTFOUND)
                out->SetMissing();
            else
                out->SetError(V_ERROR(&value));
            return S_OK;
        case VT_BOOL:
            out->SetBoolean(V_BOOL(&value) != VARIANT_FALSE);
            return S_OK;
        case VT_R4:
            out->SetReal(static_cast<double>(V_R4(&value)));
            return S_OK;
        case VT_R8:
            out->SetReal(V_R8(&value));
            return S_OK;
        case VT_BSTR:
            out->SetText(NarrowText(V_BSTR(&value), SysStringLen(V_BSTR(&value))));
            return S_OK;
        case VT_DATE:
            return out->SetOleDate(V_DATE(&value)) ? S_OK : DISP_E_OVERFLOW;
        case VT_CY:
            OleAccess::SetScaled(out, V_CY(&value).int64);
            return S_OK;
        case VT_DECIMAL:
            return GetDecimal(value.decVal, out);
        case VT_DISPATCH:
        case VT_UNKNOWN:
            return GetObject(V_UNKNOWN(&value), out);
        default:
            return GetWholeNumber(value, out);
    }
}

}  // namespace

HRESULT ToVariant(const COSOLEValue& value, VARIANT* out) {
    long long integer = 0;
    value.GetInteger(integer);
    unsigned char truth = 0;
    long code = DISP_E_PARAMNOTFOUND;
    switch (value.GetKind()) {
        case COSOLEValue::kEmpty:
            return S_OK;
        case COSOLEValue::kNull:
            V_VT(out) = VT_NULL;
            return S_OK;
        case COSOLEValue::kMissing:
        case COSOLEValue::kError:
            value.GetError(code);
            V_VT(out) = VT_ERROR;
            V_ERROR(out) = code;
            return S_OK;
        case COSOLEValue::kBoolean:
            value.GetBoolean(truth);
            V_VT(out) = VT_BOOL;
            V_BOOL(out) = truth ? VARIANT_TRUE : VARIANT_FALSE;
            return S_OK;
        case COSOLEValue::kInteger:
            V_VT(out) = FitsLong(integer) ? VT_I4 : VT_I8;
            V_I8(out) = integer;  // its lower half is first
            return S_OK;
        case COSOLEValue::kReal:
            V_VT(out) = VT_R8;
            value.GetReal(V_R8(out));
            return S_OK;
        case COSOLEValue::kText:
            return PutText(value, out);
        case COSOLEValue::kDate:
            V_VT(out) = VT_DATE;
            value.GetOleDate(V_DATE(out));
            return S_OK;
        case COSOLEValue::kCurrency:
            V_VT(out) = VT_CY;
            V_CY(out).int64 = OleAccess::Scaled(value);
            return S_OK;
        case COSOLEValue::kDecimal:
            PutDecimal(value, out);
            return S_OK;
        case COSOLEValue::kObject:
            return PutObject(value, out);
        case COSOLEValue::kArray:
            return PutArray(value, out);
        case COSOLEValue::kBytes:
            return PutBytes(value, out);
    }
    return DISP_E_BADVARTYPE;
}

HRESULT ChangeVariant(VARIANT* value, VARTYPE type) {
    Variant before, after;
    const bool exactly = V_VT(value) == VT_DECIMAL || V_VT(value) == VT_CY;
    HRESULT result = S_OK;
    if (exactly) result = VariantChangeType(before.Get(), value, 0, VT_DECIMAL);
    if (SUCCEEDED(result)) result = VariantChangeType(value, value, 0, type);
    if (FAILED(result) || !exactly) return result;
    result = VariantChangeType(after.Get(), value, 0, VT_DECIMAL);
    if (FAILED(result)) return result;
    return VarDecCmp(&before.Get()->decVal, &after.Get()->decVal) == VARCMP_EQ ? S_OK
                                                                               : DISP_E_OVERFLOW;
}

HRESULT FromVariant(const VARIANT& value, COSOLEValue* out) {
    Variant direct;
    const VARIANT* from = &value;
    out->SetEmpty();
    if (V_VT(from) & VT_BYREF) {
        VARIANT reference = value;  // only read, although the parameter type is not constant
        const HRESULT result = VariantCopyInd(direct.Get(), &reference);
        if (FAILED(result)) return result;
        from = direct.Get();
    }
    const HRESULT result =
        V_VT(from) & VT_ARRAY
            ? GetArray(V_ARRAY(from), static_cast<VARTYPE>(V_VT(from) & VT_TYPEMASK), out)
            : GetScalar(*from, out);
    if (FAILED(result)) out->SetEmpty();
    return result;
}

}  // namespace genutil::platform
