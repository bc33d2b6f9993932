// Conversion between values and those of COM.
#pragma once

#include "osutil/platform/win32/automation/automation_com.h"

namespace genutil::platform {

// A VARIANT that is cleared at the end of its scope.
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

// Converts a text of COM to the current code set, with "?" for characters that it lacks.
CGNString NarrowText(const wchar_t* text, std::size_t count);
// Converts a text and frees it. Null is an empty text.
CGNString TakeText(BSTR text);

// Returns null if the text is invalid in the current code set or if allocation fails.
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

// *out must be empty. Its owner clears it.
HRESULT ToVariant(const COSOLEValue& value, VARIANT* out);
// Converts to a simple type as COM does, except that a decimal or an amount of money that would be
// rounded is rejected.
HRESULT ChangeVariant(VARIANT* value, VARTYPE type);
// Follows references. On failure *out is empty.
HRESULT FromVariant(const VARIANT& value, COSOLEValue* out);

}  // namespace genutil::platform
