// The DDE client: texts, errors, and the list of conversations.
#include "osutil/platform/dde/dde.h"

#include <atomic>
#include <chrono>
#include <cstring>
#include <iterator>
#include <mutex>

#include "genutil/allocate.h"
#include "genutil/assert_allocation.h"
#include "genutil/mbutil/wide_convert.h"
#include "genutil/string/storage.h"
#include "osdde.h"

using namespace genutil;
using platform::DdeCall;
using platform::DdeLink;
using platform::DdeOutcome;

namespace genutil {

// The implementation of an OSDDEConversation. `link` and the list are guarded by g_lock, which is
// never held during a call to the partner.
struct DdeConversation {
    DdeLink* link = nullptr;
    std::atomic<int> error = osDDENone;
    DdeConversation *next = nullptr, *previous = nullptr;  // in the list of conversations with a
                                                           // link
};

}  // namespace genutil

namespace {

std::mutex g_lock;
unsigned g_initialized;    // number of calls of OSDDEInit() without OSDDEUnInit()
DdeConversation* g_first;  // the first conversation with a link

// Indexed by DdeOutcome.
constexpr int kCodes[] = {osDDENone,    osDDENotAvailable, osDDENoServer, osDDENotConnected,
                          osDDERefused, osDDEBusy,         osDDETimedOut, osDDEPartnerGone,
                          osDDEEnded,   osDDEFailed};
static_assert(std::size(kCodes) == static_cast<std::size_t>(DdeOutcome::kFailed) + 1);

// Indexed from osDDENone downwards.
constexpr const char* kTexts[] = {
    "",
    "DDE is not available on this system",
    "DDE is not initialized",
    "a name or text for DDE is missing, too long or not valid",
    "no program answers for this DDE service and topic",
    "there is no DDE conversation",
    "the DDE partner refused",
    "the DDE partner is busy",
    "the DDE partner did not answer in time",
    "the DDE partner ended the conversation",
    "the DDE conversation was ended by this program",
    "DDE failed for lack of memory or resources",
};
constexpr int kLast = 1 - static_cast<int>(std::size(kTexts));
static_assert(kLast == osDDEFailed);

int ErrorOf(DdeOutcome outcome) {
    return kCodes[static_cast<int>(outcome)];
}

const char* TextOf(int code) {
    return kTexts[code <= 0 && code >= kLast ? -code : 0];
}

unsigned char Tell(CGNString* text, int code) {
    if (text && code != osDDENone) *text = TextOf(code);
    return code == osDDENone;
}

// A text of the caller as UTF-16.
class WideText {
  public:
    explicit WideText(const char* text) {
        if (!text) return;
        const std::size_t bytes = std::strlen(text);
        m_units.Reset(NewText<unsigned short>(bytes));
        if (!m_units.Get()) {
            m_error = osDDEFailed;
            return;
        }
        const long count = ToWide(m_units.Get(), bytes, text, bytes);
        if (count < 0) return;
        m_count = static_cast<std::size_t>(count);
        m_units.Get()[m_count] = 0;
        m_error = osDDENone;
    }

    int Error() const { return m_error; }
    int NameError() const {
        if (m_error != osDDENone) return m_error;
        return m_count >= 1 && m_count <= platform::kLongestDdeName ? osDDENone : osDDEBadText;
    }
    const unsigned short* Get() const { return m_units.Get(); }
    std::size_t Count() const { return m_count; }

  private:
    Owned<unsigned short> m_units{nullptr};
    std::size_t m_count = 0;
    int m_error = osDDEBadText;
};

unsigned TimeoutOf(long timeout) {
    return timeout < 1 ? 1 : static_cast<unsigned>(timeout);
}

// Removes the link from the conversation. The caller takes over its reference. g_lock must be held.
DdeLink* Unlink(DdeConversation& self) {
    DdeLink* const link = self.link;
    if (!link) return nullptr;
    (self.previous ? self.previous->next : g_first) = self.next;
    if (self.next) self.next->previous = self.previous;
    self.next = self.previous = nullptr;
    self.link = nullptr;
    return link;
}

// Removes the first link remaining after the last OSDDEUnInit(), or returns null if there is none.
DdeLink* UnlinkFirst() {
    const std::lock_guard<std::mutex> lock(g_lock);
    return g_initialized == 0 && g_first ? Unlink(*g_first) : nullptr;
}

void EndAndDrop(DdeLink* link) {
    if (!link) return;
    platform::EndDde(link);
    platform::AwaitDdeEnd(link);
    platform::DropDde(link);
}

// Gives the conversation a link, to which the caller also has a reference. From now on
// OSDDEUnInit() finds it.
int Link(DdeConversation& self, DdeLink** link) {
    const DdeOutcome made = platform::MakeDde(link);
    if (made != DdeOutcome::kDone) return ErrorOf(made);
    DdeLink* previous;
    {
        const std::lock_guard<std::mutex> lock(g_lock);
        if (g_initialized == 0) {
            previous = *link;
        } else {
            previous = Unlink(self);
            platform::HoldDde(*link);
            self.link = *link;
            self.next = g_first;
            if (g_first) g_first->previous = &self;
            g_first = &self;
        }
    }
    const bool refused = previous == *link;
    EndAndDrop(previous);
    return refused ? osDDENotInitialized : osDDENone;
}

int Connect(DdeConversation& self, const char* service, const char* topic, long timeout) {
    if (!platform::HasDde()) return osDDENotAvailable;
    const WideText wideService(service), wideTopic(topic);
    if (const int error = wideService.NameError()) return error;
    if (const int error = wideTopic.NameError()) return error;
    DdeLink* link;
    if (const int error = Link(self, &link)) return error;
    const DdeOutcome outcome =
        platform::ConnectDde(link, wideService.Get(), wideTopic.Get(), TimeoutOf(timeout));
    platform::DropDde(link);
    return ErrorOf(outcome);
}

int Transact(DdeConversation& self, const DdeCall& call, long timeout) {
    DdeLink* link;
    {
        const std::lock_guard<std::mutex> lock(g_lock);
        if (g_initialized == 0) return osDDENotInitialized;
        link = self.link;
        if (!link) return osDDENotConnected;
        platform::HoldDde(link);
    }
    const DdeOutcome outcome = platform::TransactDde(link, call, TimeoutOf(timeout));
    platform::DropDde(link);
    return ErrorOf(outcome);
}

int Execute(DdeConversation& self, const char* command, long timeout) {
    if (!platform::HasDde()) return osDDENotAvailable;
    const WideText text(command);
    if (const int error = text.Error()) return error;
    return Transact(self, {DdeCall::kExecute, nullptr, text.Get(), text.Count(), nullptr, nullptr},
                    timeout);
}

int Poke(DdeConversation& self, const char* item, const char* value, long timeout) {
    if (!platform::HasDde()) return osDDENotAvailable;
    const WideText name(item), text(value);
    if (const int error = name.NameError()) return error;
    if (const int error = text.Error()) return error;
    return Transact(self, {DdeCall::kPoke, name.Get(), text.Get(), text.Count(), nullptr, nullptr},
                    timeout);
}

struct Answer {
    CGNString* text;
    bool stored;
};

void TakeAnswer(void* context, const unsigned short* text, std::size_t count) {
    Answer& answer = *static_cast<Answer*>(context);
    const std::uint64_t room = kMostNarrowBytes * std::uint64_t{count};
    Owned<char> narrow(NewText<char>(room));
    if (!narrow.Get()) return;
    const long length = ToNarrowLossy(narrow.Get(), static_cast<std::size_t>(room), text, count);
    answer.stored = length >= 0 && StringStorage::Put(*answer.text, narrow.Get(),
                                                      static_cast<std::uint64_t>(length));
}

int Request(DdeConversation& self, const char* item, CGNString& text, long timeout) {
    if (!platform::HasDde()) return osDDENotAvailable;
    const WideText name(item);
    if (const int error = name.NameError()) return error;
    Answer answer = {&text, false};
    const int error =
        Transact(self, {DdeCall::kRequest, name.Get(), nullptr, 0, TakeAnswer, &answer}, timeout);
    return error == osDDENone && !answer.stored ? osDDEFailed : error;
}

unsigned char Note(DdeConversation* self, int error) {
    if (self) self->error = error;
    return error == osDDENone;
}

}  // namespace

unsigned char OSDDESupported() {
    return platform::HasDde();
}

unsigned char OSDDEInit(CGNString* error) {
    if (!platform::HasDde()) return Tell(error, osDDENotAvailable);
    const std::lock_guard<std::mutex> lock(g_lock);
    ++g_initialized;
    return 1;
}

void OSDDEUnInit() {
    {
        const std::lock_guard<std::mutex> lock(g_lock);
        if (g_initialized == 0 || --g_initialized > 0) return;
        // All at once, so that their partners end concurrently.
        for (const DdeConversation* one = g_first; one; one = one->next)
            platform::EndDde(one->link);
    }
    while (DdeLink* const link = UnlinkFirst()) EndAndDrop(link);
}

unsigned char OSDDESend(const char* service, const char* topic, const char* command, long timeout,
                        CGNString* error) {
    using Clock = std::chrono::steady_clock;
    const Clock::time_point start = Clock::now();
    OSDDEConversation conversation;
    if (conversation.Connect(service, topic, timeout)) {
        const auto passed =
            std::chrono::duration_cast<std::chrono::milliseconds>(Clock::now() - start);
        conversation.Execute(command, timeout - static_cast<long>(passed.count()));
    }
    return Tell(error, conversation.GetError());
}

void OSDDEErrorText(int code, CGNString& text) {
    text = TextOf(code);
}

OSDDEConversation::OSDDEConversation() : m_self(New<DdeConversation>()) {
    AssertAllocation(m_self != nullptr, "osutil/osdde", __LINE__);
}

OSDDEConversation::~OSDDEConversation() {
    Disconnect();
    delete m_self;
}

unsigned char OSDDEConversation::Connect(const char* service, const char* topic, long timeout) {
    return Note(m_self, m_self ? ::Connect(*m_self, service, topic, timeout) : osDDEFailed);
}

unsigned char OSDDEConversation::IsConnected() const {
    if (!m_self) return 0;
    const std::lock_guard<std::mutex> lock(g_lock);
    return m_self->link && platform::IsDdeOpen(m_self->link);
}

unsigned char OSDDEConversation::Execute(const char* command, long timeout) {
    return Note(m_self, m_self ? ::Execute(*m_self, command, timeout) : osDDEFailed);
}

unsigned char OSDDEConversation::Poke(const char* item, const char* text, long timeout) {
    return Note(m_self, m_self ? ::Poke(*m_self, item, text, timeout) : osDDEFailed);
}

unsigned char OSDDEConversation::Request(const char* item, CGNString& text, long timeout) {
    return Note(m_self, m_self ? ::Request(*m_self, item, text, timeout) : osDDEFailed);
}

void OSDDEConversation::Disconnect() {
    if (!m_self) return;
    DdeLink* link;
    {
        const std::lock_guard<std::mutex> lock(g_lock);
        link = Unlink(*m_self);
    }
    EndAndDrop(link);
}

int OSDDEConversation::GetError() const {
    return m_self ? m_self->error.load() : static_cast<int>(osDDEFailed);
}

void OSDDEConversation::GetErrorText(CGNString& text) const {
    OSDDEErrorText(GetError(), text);
}
