// Access to the objects inside values and COSOLEAutomation, and to arguments in place.
#pragma once

#include "osautomation.h"

namespace genutil {

namespace platform {
struct AutomationError;
}

struct OleAccess {
    static OleObject* Object(const COSOLEValue& value) { return value.m_object; }
    static OleObject* Object(const COSOLEAutomation& automation) { return automation.m_object; }
    // Makes the value share the object, which may be null.
    static void SetObject(COSOLEValue* value, OleObject* object);
    static void SetObject(COSOLEAutomation* automation, OleObject* object);
    // Stores the outcome of an operation. Returns true if it succeeded.
    static bool Conclude(COSOLEAutomation* automation, const platform::AutomationError& error);
    static COSOLEValue& Argument(COSOLEArguments& arguments, int index) {
        return arguments.m_items.GetItem(index)->value;
    }
    static std::int64_t Scaled(const COSOLEValue& currency) { return currency.m_integer; }
    static void SetScaled(COSOLEValue* value, std::int64_t tenThousandths);
    // Decimals are passed as text in the C spelling.
    static const CGNString& DecimalText(const COSOLEValue& decimal) { return decimal.m_text; }
};

}  // namespace genutil
