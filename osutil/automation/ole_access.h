// The objects inside of values and of COSOLEAutomation, and arguments in place.
#pragma once

#include "osautomation.h"

namespace genutil {

namespace platform {
struct AutomationError;
}

struct OleAccess {
    static OleObject* Object(const COSOLEValue& value) { return value.m_object; }
    static OleObject* Object(const COSOLEAutomation& automation) { return automation.m_object; }
    // The value shares the object, null for none.
    static void SetObject(COSOLEValue* value, OleObject* object);
    static void SetObject(COSOLEAutomation* automation, OleObject* object);
    // The outcome of an operation; whether it went well.
    static bool Conclude(COSOLEAutomation* automation, const platform::AutomationError& error);
    static COSOLEValue& Argument(COSOLEArguments& arguments, int index) {
        return arguments.m_items.GetItem(index)->value;
    }
    static std::int64_t Scaled(const COSOLEValue& currency) { return currency.m_integer; }
    static void SetScaled(COSOLEValue* value, std::int64_t tenThousandths);
    // Decimals cross as their text in the C spelling.
    static const CGNString& DecimalText(const COSOLEValue& decimal) { return decimal.m_text; }
};

}  // namespace genutil
