// The content of automation values. Conversion between kinds is in ole_value_convert.cpp.
#include <utility>

#include "genutil/assert_allocation.h"
#include "genutil/string/storage.h"
#include "osutil/automation/ole_access.h"
#include "osutil/platform/automation/automation.h"

using namespace genutil;

namespace {

constexpr int kMostDimensions = 60;
constexpr std::int64_t kMostItems = 0x3FFFFFF;  // more would not fit in 32 bits of address space

bool MayBeElement(COSOLEValue::Kind kind) {
    return kind == COSOLEValue::kEmpty || kind == COSOLEValue::kObject ||
           (kind >= COSOLEValue::kBoolean && kind <= COSOLEValue::kDecimal);
}

}  // namespace

void genutil::ReportFullOleList() {
    AssertAllocation(false, "osutil/osautomation", __LINE__);
}

void OleAccess::SetObject(COSOLEValue* value, OleObject* object) {
    platform::RetainOleObject(object);  // first, because it may be the value's own
    value->Become(COSOLEValue::kObject);
    value->m_object = object;
}

void OleAccess::SetScaled(COSOLEValue* value, std::int64_t tenThousandths) {
    value->Become(COSOLEValue::kCurrency);
    value->m_integer = tenThousandths;
}

COSOLEValue::COSOLEValue()
    : m_kind(kEmpty), m_element(kEmpty), m_integer(0), m_real(0), m_object(nullptr) {}

COSOLEValue::COSOLEValue(int value) : COSOLEValue() {
    SetInteger(value);
}

COSOLEValue::COSOLEValue(long value) : COSOLEValue() {
    SetInteger(value);
}

COSOLEValue::COSOLEValue(long long value) : COSOLEValue() {
    SetInteger(value);
}

COSOLEValue::COSOLEValue(double value) : COSOLEValue() {
    SetReal(value);
}

COSOLEValue::COSOLEValue(const char* text) : COSOLEValue() {
    SetText(text);
}

COSOLEValue::COSOLEValue(const CGNString& text) : COSOLEValue() {
    SetText(text);
}

COSOLEValue::COSOLEValue(const COSOLEAutomation& object) : COSOLEValue() {
    SetObject(object);
}

COSOLEValue::COSOLEValue(const COSOLEValue& other) : COSOLEValue() {
    *this = other;
}

COSOLEValue& COSOLEValue::operator=(const COSOLEValue& other) {
    if (this == &other) return *this;
    // The other value may be an item of this array, which is about to be freed, or this value an
    // item of the other array.
    COSOLEList<COSOLEValue> items(other.m_items);
    const COSOLEList<COSOLEValue> old(std::move(m_items));
    if (other.m_kind == kObject) {
        OleAccess::SetObject(this, other.m_object);
        return *this;
    }
    Become(other.m_kind);
    m_integer = other.m_integer;
    m_real = other.m_real;
    StringStorage::Put(m_text, other.m_text, other.m_text.GetLength());
    m_element = other.m_element;
    m_bounds = other.m_bounds;
    m_items = std::move(items);
    if (m_items.GetCount() != other.m_items.GetCount() ||
        m_bounds.GetCount() != other.m_bounds.GetCount() ||
        m_text.GetLength() != other.m_text.GetLength())
        Become(kEmpty);
    return *this;
}

COSOLEValue::~COSOLEValue() {
    platform::ReleaseOleObject(m_object);
}

void COSOLEValue::Become(Kind kind) {
    platform::ReleaseOleObject(std::exchange(m_object, nullptr));
    m_text.Clear();
    m_items.Free();
    m_bounds.Free();
    m_element = kEmpty;
    m_integer = 0;
    m_real = 0;
    m_kind = kind;
}

const char* COSOLEValue::GetKindName() const {
    static constexpr const char* kNames[] = {"empty", "null",   "missing", "boolean",  "integer",
                                             "real",  "text",   "date",    "currency", "decimal",
                                             "error", "object", "array",   "bytes"};
    return kNames[m_kind];
}

void COSOLEValue::SetEmpty() {
    Become(kEmpty);
}

void COSOLEValue::SetNull() {
    Become(kNull);
}

void COSOLEValue::SetMissing() {
    Become(kMissing);
}

void COSOLEValue::SetBoolean(unsigned char value) {
    Become(kBoolean);
    m_integer = value != 0;
}

void COSOLEValue::SetInteger(long long value) {
    Become(kInteger);
    m_integer = value;
}

void COSOLEValue::SetReal(double value) {
    Become(kReal);
    m_real = value;
}

void COSOLEValue::SetText(const CGNString& text) {
    Become(kText);
    if (!StringStorage::Put(m_text, text, text.GetLength())) Become(kEmpty);
}

void COSOLEValue::SetError(long code) {
    Become(kError);
    m_integer = static_cast<std::int32_t>(code);
}

void COSOLEValue::SetObject(const COSOLEAutomation& object) {
    OleAccess::SetObject(this, OleAccess::Object(object));
}

unsigned char COSOLEValue::SetBytes(const void* bytes, unsigned long count) {
    if (m_kind != kBytes) Become(kBytes);  // otherwise the bytes may be the value's own
    if (StringStorage::Put(m_text, static_cast<const char*>(bytes), count)) return 1;
    Become(kEmpty);
    return 0;
}

const unsigned char* COSOLEValue::GetBytes() const {
    if (m_kind != kBytes) return nullptr;
    return reinterpret_cast<const unsigned char*>(static_cast<const char*>(m_text));
}

unsigned char COSOLEValue::SetArray(long count, long lower, Kind element) {
    COSOLEBound bound;
    bound.m_lower = lower;
    bound.m_count = count;
    return SetArray(&bound, 1, element);
}

unsigned char COSOLEValue::SetArray(const COSOLEBound* bounds, int dimensions, Kind element) {
    Become(kEmpty);
    if (dimensions < 1 || dimensions > kMostDimensions || !MayBeElement(element)) return 0;
    std::int64_t count = 1;
    for (int i = 0; i < dimensions; ++i) {
        if (bounds[i].m_count < 0) return 0;
        count *= bounds[i].m_count;
        if (count > kMostItems) return 0;
    }
    m_kind = kArray;
    m_element = element;
    if (m_bounds.SetCount(dimensions) && m_items.SetCount(static_cast<int>(count))) {
        for (int i = 0; i < dimensions; ++i) *m_bounds.GetItem(i) = bounds[i];
        return 1;
    }
    Become(kEmpty);
    return 0;
}

long COSOLEValue::GetCount() const {
    return m_kind == kBytes ? static_cast<long>(m_text.GetLength()) : m_items.GetCount();
}

int COSOLEValue::GetDimensions() const {
    return m_kind == kBytes ? 1 : m_bounds.GetCount();
}

COSOLEBound COSOLEValue::GetBound(int dimension) const {
    COSOLEBound bound;
    if (m_kind == kBytes && dimension == 0)
        bound.m_count = GetCount();
    else if (const COSOLEBound* own = m_bounds.GetItem(dimension))
        bound = *own;
    return bound;
}

long COSOLEValue::GetPosition(const long* indexes) const {
    std::int64_t position = 0, step = 1;
    for (int i = 0; i < GetDimensions(); ++i) {
        const COSOLEBound bound = GetBound(i);
        const std::int64_t index = std::int64_t{indexes[i]} - bound.m_lower;
        if (index < 0 || index >= bound.m_count) return -1;
        position += index * step;
        step *= bound.m_count;
    }
    return GetDimensions() == 0 ? -1 : static_cast<long>(position);
}
