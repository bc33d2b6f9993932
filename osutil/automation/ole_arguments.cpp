// The arguments of a call to an automation server.
#include "osolevalue.h"

COSOLEArguments::COSOLEArguments() = default;
COSOLEArguments::COSOLEArguments(const COSOLEArguments& other) = default;
COSOLEArguments& COSOLEArguments::operator=(const COSOLEArguments& other) = default;
COSOLEArguments::~COSOLEArguments() = default;

COSOLEArguments& COSOLEArguments::AddOne(const COSOLEValue& value, const char* name,
                                         unsigned char byReference) {
    Item item;
    item.value = value;
    item.name = name;
    item.byReference = byReference;
    m_items.AddItem(item);
    return *this;
}

COSOLEArguments& COSOLEArguments::Add(const COSOLEValue& value) {
    return AddOne(value, "", 0);
}

COSOLEArguments& COSOLEArguments::AddByReference(const COSOLEValue& value) {
    return AddOne(value, "", 1);
}

COSOLEArguments& COSOLEArguments::AddMissing() {
    COSOLEValue missing;
    missing.SetMissing();
    return AddOne(missing, "", 0);
}

COSOLEArguments& COSOLEArguments::AddNamed(const CGNString& name, const COSOLEValue& value) {
    return AddOne(value, name, 0);
}

COSOLEArguments& COSOLEArguments::AddNamedByReference(const CGNString& name,
                                                      const COSOLEValue& value) {
    return AddOne(value, name, 1);
}

COSOLEValue COSOLEArguments::Get(int index) const {
    const Item* item = m_items.GetItem(index);
    return item ? item->value : COSOLEValue();
}

CGNString COSOLEArguments::GetName(int index) const {
    const Item* item = m_items.GetItem(index);
    return item ? item->name : CGNString();
}

unsigned char COSOLEArguments::IsByReference(int index) const {
    const Item* item = m_items.GetItem(index);
    return item ? item->byReference : 0;
}
