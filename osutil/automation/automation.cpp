// An object of a server and its collections, on the platform layer.
#include "osutil/platform/automation/automation.h"

#include <cstdint>
#include <cstdio>
#include <utility>

#include "osutil/automation/ole_access.h"

using namespace genutil;
using platform::AutomationError;
using platform::AutomationUse;

namespace {

constexpr long kRetryTime = 10000;
constexpr long kMemberNotFound = static_cast<std::int32_t>(0x80020003);  // the value in COM

// Describes an error in one line.
CGNString Describe(const AutomationError& error) {
    CGNString text;
    if (error.code == 0) return text;
    if (!error.source.IsEmpty()) (text += error.source) += ": ";
    text += error.description.IsEmpty() ? CGNString("the operation failed") : error.description;
    char number[64];
    std::snprintf(number, sizeof number, " (0x%08X)", static_cast<unsigned>(error.code));
    text += number;
    if (error.argument != 0) {
        std::snprintf(number, sizeof number, ", argument %d", error.argument);
        text += number;
    }
    return text;
}

}  // namespace

void OleAccess::SetObject(COSOLEAutomation* automation, OleObject* object) {
    platform::RetainOleObject(object);  // first, because it may be the same object
    platform::ReleaseOleObject(std::exchange(automation->m_object, object));
}

bool OleAccess::Conclude(COSOLEAutomation* automation, const AutomationError& error) {
    automation->m_code = error.code;
    automation->m_description = error.description;
    automation->m_source = error.source;
    automation->m_helpFile = error.helpFile;
    automation->m_helpContext = error.helpContext;
    automation->m_argument = error.argument;
    return error.code == 0;
}

COSOLEAutomation::COSOLEAutomation()
    : m_object(nullptr), m_retryTime(kRetryTime), m_code(0), m_helpContext(0), m_argument(0) {}

COSOLEAutomation::COSOLEAutomation(const COSOLEAutomation& other)
    : m_object(other.m_object),
      m_retryTime(other.m_retryTime),
      m_code(other.m_code),
      m_helpContext(other.m_helpContext),
      m_argument(other.m_argument),
      m_description(other.m_description),
      m_source(other.m_source),
      m_helpFile(other.m_helpFile) {
    platform::RetainOleObject(m_object);
}

COSOLEAutomation& COSOLEAutomation::operator=(const COSOLEAutomation& other) {
    OleAccess::SetObject(this, other.m_object);
    m_retryTime = other.m_retryTime;
    m_code = other.m_code;
    m_helpContext = other.m_helpContext;
    m_argument = other.m_argument;
    m_description = other.m_description;
    m_source = other.m_source;
    m_helpFile = other.m_helpFile;
    return *this;
}

COSOLEAutomation::~COSOLEAutomation() {
    platform::ReleaseOleObject(m_object);
}

unsigned char COSOLEAutomation::IsAvailable() {
    return platform::AutomationAvailable();
}

unsigned char COSOLEAutomation::ConnectBy(const CGNString& identifier, bool attach, bool start) {
    Disconnect();
    AutomationError error;
    m_object = platform::ConnectAutomation(identifier, attach, start, m_retryTime, &error);
    return OleAccess::Conclude(this, error);
}

unsigned char COSOLEAutomation::Connect(const CGNString& identifier) {
    return ConnectBy(identifier, false, true);
}

unsigned char COSOLEAutomation::Attach(const CGNString& identifier) {
    return ConnectBy(identifier, true, false);
}

unsigned char COSOLEAutomation::AttachOrConnect(const CGNString& identifier) {
    return ConnectBy(identifier, true, true);
}

void COSOLEAutomation::Disconnect() {
    OleAccess::SetObject(this, nullptr);
}

unsigned char COSOLEAutomation::IsSame(const COSOLEAutomation& other) const {
    return m_object == other.m_object || platform::SameOleObject(m_object, other.m_object);
}

void COSOLEAutomation::SetRetryTime(long milliseconds) {
    m_retryTime = milliseconds < 0 ? 0 : milliseconds;
}

unsigned char COSOLEAutomation::GetMembers(COSOLEList<COSOLEMember>& out) {
    out.Free();
    AutomationError error;
    if (!platform::ListMembers(m_object, m_retryTime, &out, &error)) out.Free();
    return OleAccess::Conclude(this, error);
}

unsigned char COSOLEAutomation::FindMembers(const CGNString& name, COSOLEList<COSOLEMember>& out) {
    COSOLEList<COSOLEMember> all, found;
    const bool listed = GetMembers(all);
    for (int i = 0; i < all.GetCount(); ++i)
        if (all.GetItem(i)->m_name.IsEqualNoCase(name)) found.AddItem(*all.GetItem(i));
    if (listed && found.GetCount() == 0) {
        AutomationError error;
        error.code = kMemberNotFound;
        ((error.description = "Member not found: '") += name) += "'";
        OleAccess::Conclude(this, error);
    }
    out = found;  // last, because the name may be in one of its items
    return out.GetCount() != 0;
}

unsigned char COSOLEAutomation::HasMember(const CGNString& name) {
    AutomationError error;
    platform::KnowsMember(m_object, name, m_retryTime, &error);
    return OleAccess::Conclude(this, error);
}

unsigned char COSOLEAutomation::Invoke(int use, const CGNString& name, COSOLEArguments& arguments,
                                       const COSOLEValue* put, COSOLEValue* result) {
    AutomationError error;
    const platform::AutomationCall call = {static_cast<AutomationUse>(use), &name, &arguments, put,
                                           result};
    platform::InvokeAutomation(m_object, call, m_retryTime, &error);
    return OleAccess::Conclude(this, error);
}

unsigned char COSOLEAutomation::Call(const CGNString& method) {
    COSOLEArguments none;
    return Call(method, none);
}

unsigned char COSOLEAutomation::Call(const CGNString& method, COSOLEArguments& arguments) {
    return Invoke(static_cast<int>(AutomationUse::kCall), method, arguments, nullptr, nullptr);
}

unsigned char COSOLEAutomation::Call(const CGNString& method, COSOLEArguments& arguments,
                                     COSOLEValue& result) {
    return Invoke(static_cast<int>(AutomationUse::kCall), method, arguments, nullptr, &result);
}

unsigned char COSOLEAutomation::CallOrGet(const CGNString& name, COSOLEArguments& arguments,
                                          COSOLEValue& result) {
    return Invoke(static_cast<int>(AutomationUse::kCallOrGet), name, arguments, nullptr, &result);
}

unsigned char COSOLEAutomation::GetProperty(const CGNString& name, COSOLEValue& value) {
    COSOLEArguments none;
    return GetProperty(name, none, value);
}

unsigned char COSOLEAutomation::GetProperty(const CGNString& name, COSOLEArguments& index,
                                            COSOLEValue& value) {
    return Invoke(static_cast<int>(AutomationUse::kGet), name, index, nullptr, &value);
}

unsigned char COSOLEAutomation::PutProperty(const CGNString& name, const COSOLEValue& value) {
    COSOLEArguments none;
    return PutProperty(name, none, value);
}

unsigned char COSOLEAutomation::PutProperty(const CGNString& name, COSOLEArguments& index,
                                            const COSOLEValue& value) {
    return Invoke(static_cast<int>(AutomationUse::kPut), name, index, &value, nullptr);
}

unsigned char COSOLEAutomation::PutPropertyReference(const CGNString& name,
                                                     const COSOLEValue& object) {
    COSOLEArguments none;
    return PutPropertyReference(name, none, object);
}

unsigned char COSOLEAutomation::PutPropertyReference(const CGNString& name, COSOLEArguments& index,
                                                     const COSOLEValue& object) {
    return Invoke(static_cast<int>(AutomationUse::kPutReference), name, index, &object, nullptr);
}

CGNString COSOLEAutomation::GetErrorText() const {
    AutomationError error;
    error.code = m_code;
    error.description = m_description;
    error.source = m_source;
    error.argument = m_argument;
    return Describe(error);
}

unsigned char COSOLEAutomation::Enumerate(COSOLEEnumerator& out) {
    AutomationError error;
    OleObject* const place = platform::EnumerateAutomation(m_object, m_retryTime, &error);
    platform::ReleaseOleObject(std::exchange(out.m_object, place));
    out.m_retryTime = m_retryTime;
    out.m_code = error.code;
    out.m_text = Describe(error);
    return OleAccess::Conclude(this, error);
}

COSOLEEnumerator::COSOLEEnumerator() : m_object(nullptr), m_retryTime(kRetryTime), m_code(0) {}

COSOLEEnumerator::COSOLEEnumerator(const COSOLEEnumerator& other)
    : m_object(other.m_object),
      m_retryTime(other.m_retryTime),
      m_code(other.m_code),
      m_text(other.m_text) {
    platform::RetainOleObject(m_object);
}

COSOLEEnumerator& COSOLEEnumerator::operator=(const COSOLEEnumerator& other) {
    platform::RetainOleObject(other.m_object);
    platform::ReleaseOleObject(std::exchange(m_object, other.m_object));
    m_retryTime = other.m_retryTime;
    m_code = other.m_code;
    m_text = other.m_text;
    return *this;
}

COSOLEEnumerator::~COSOLEEnumerator() {
    platform::ReleaseOleObject(m_object);
}

unsigned char COSOLEEnumerator::Next(COSOLEValue& item) {
    AutomationError error;
    const bool got = platform::NextInCollection(m_object, m_retryTime, &item, &error);
    m_code = error.code;
    m_text = Describe(error);
    return got;
}

unsigned char COSOLEEnumerator::Reset() {
    AutomationError error;
    const bool done = platform::ResetCollection(m_object, m_retryTime, &error);
    m_code = error.code;
    m_text = Describe(error);
    return done;
}
