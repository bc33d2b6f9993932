// Values from and to those of COM.
#pragma once

#include "osutil/platform/win32/automation/automation_com.h"

namespace genutil::platform {

// A VARIANT that is cleared when it goes out of scope.
class Variant {
  public:
    Variant() { VariantInit(&m_value); }
    ~Variant() { VariantClear(&m_value); }
    Variant(const Variant&) = delete;
    Variant& operator=(const Variant&) = delete;

    VARIANT* Get() { return &m_value; }
    const VARIANT& Value() const { return m_value; }

  private:
    VARIANT m_value;
};

// A text of COM in the current code set, with "?" for what that lacks.
CGNString NarrowText(const wchar_t* text, std::size_t count);
// Takes the text, which is freed; null is an empty one.
CGNString TakeText(BSTR text);

// Null when the text is invalid in the current code set or memory ran out.
BSTR WideText(const CGNString& text);

class WideName {
  public:
    explicit WideName(const CGNString& name) : m_text(WideText(name)) {}
    ~WideName() { SysFreeString(m_text); }
    WideName(const WideName&) = delete;
    WideName& operator=(const WideName&) = delete;
    BSTR Get() const { return m_text; }

  private:
    const BSTR m_text;
};

// *out is empty before; its owner clears it.
HRESULT ToVariant(const COSOLEValue& value, VARIANT* out);
// To a simple type, as COM does; but a decimal or an amount of money that would be rounded is
// refused.
HRESULT ChangeVariant(VARIANT* value, VARTYPE type);
// Follows references. On failure *out is empty.
HRESULT FromVariant(const VARIANT& value, COSOLEValue* out);

}  // namespace genutil::platform
