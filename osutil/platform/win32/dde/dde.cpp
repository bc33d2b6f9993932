// Conversations through the system's DDE library, which is bound to the thread that initialised it.
// Each link therefore has a thread with its own instance.
#include "osutil/platform/dde/dde.h"

#include <atomic>
#include <cstring>
#include <cwchar>

#include "genutil/allocate.h"
#include "osutil/platform/win32/dde/dde_text.h"
#include "osutil/platform/win32/scoped_handle.h"

namespace genutil::platform {

namespace {

constexpr DWORD kGrace = 1000;  // for a thread that is ending

class Event {
  public:
    Event(bool manual, bool set) : m_handle(CreateEventW(nullptr, manual, set, nullptr)) {}

    HANDLE Get() const { return m_handle.Get(); }
    void Set() const { SetEvent(Get()); }
    bool IsSet() const { return WaitForSingleObject(Get(), 0) == WAIT_OBJECT_0; }

  private:
    ScopedObject m_handle;
};

class Deadline {
  public:
    explicit Deadline(unsigned timeout) : m_start(GetTickCount()), m_timeout(timeout) {}
    DWORD Left() const {
        const DWORD passed = GetTickCount() - m_start;
        return passed < m_timeout ? m_timeout - passed : 0;
    }

  private:
    DWORD m_start, m_timeout;
};

// Waits for one of the handles and meanwhile answers messages sent to windows of the calling
// thread. A search for servers sends messages to all windows and must not wait for those of the
// thread that started it.
DWORD WaitServing(const HANDLE* handles, DWORD count, const Deadline& deadline) {
    for (;;) {
        const DWORD got =
            MsgWaitForMultipleObjects(count, handles, FALSE, deadline.Left(), QS_SENDMESSAGE);
        if (got != WAIT_OBJECT_0 + count) return got;
        MSG message;
        PeekMessageW(&message, nullptr, 0, 0, PM_NOREMOVE | PM_QS_SENDMESSAGE);
    }
}

}  // namespace

struct DdeLink {
    std::atomic<int> holders{1};  // the thread is one of them
    std::atomic<bool> open{false};
    std::atomic<bool> gone{false};  // the partner ended the conversation
    Event turn{false, true};        // acquired by one call at a time
    Event request{false, false};    // signalled when there is a call for the thread
    Event done{false, false};       // signalled when the call has been performed
    Event end{true, false};         // signalled by EndDde()
    std::atomic<DWORD> endTime{0};
    std::atomic<HANDLE> thread{nullptr};
    HANDLE partner = nullptr;  // its process; null if the system denies access
    HWND window = nullptr, partnerWindow = nullptr;

    wchar_t service[kLongestDdeName + 1] = {}, topic[kLongestDdeName + 1] = {};
    // A copy of the call, because its caller may have given up while the thread performs it.
    DdeCall call = {};
    wchar_t item[kLongestDdeName + 1] = {};
    Owned<wchar_t> text{nullptr};
    DWORD timeout = 0;
    // The result of the call.
    DdeOutcome outcome = DdeOutcome::kFailed;
    DdeAnswer answer;

    bool HasEvents() const { return turn.Get() && request.Get() && done.Get() && end.Get(); }
    ~DdeLink() { const ScopedObject ofThread(thread), ofPartner(partner); }
};

namespace {

// -- The thread ----------------------------------------------------------------------------------

thread_local DdeLink* t_link;  // the link of this thread

HDDEDATA CALLBACK OnDde(UINT type, UINT, HCONV, HSZ, HSZ, HDDEDATA, ULONG_PTR, ULONG_PTR) {
    if (type == XTYP_DISCONNECT && !t_link->end.IsSet()) {
        t_link->gone = true;
        t_link->open = false;
    }
    return nullptr;
}

class Instance {
  public:
    Instance() {
        m_made = DdeInitializeW(&m_id, OnDde,
                                APPCMD_CLIENTONLY | CBF_SKIP_REGISTRATIONS |
                                    CBF_SKIP_UNREGISTRATIONS | CBF_SKIP_CONNECT_CONFIRMS,
                                0) == DMLERR_NO_ERROR;
    }
    ~Instance() {
        if (m_made) DdeUninitialize(m_id);
    }
    Instance(const Instance&) = delete;
    Instance& operator=(const Instance&) = delete;

    bool IsMade() const { return m_made; }
    DWORD Id() const { return m_id; }

  private:
    DWORD m_id = 0;
    bool m_made;
};

class Name {
  public:
    Name(const Instance& instance, const wchar_t* text)
        : m_instance(instance),
          m_handle(DdeCreateStringHandleW(instance.Id(), text, CP_WINUNICODE)) {}
    ~Name() {
        if (m_handle) DdeFreeStringHandle(m_instance.Id(), m_handle);
    }
    Name(const Name&) = delete;
    Name& operator=(const Name&) = delete;
    HSZ Get() const { return m_handle; }

  private:
    const Instance& m_instance;
    HSZ m_handle;
};

const wchar_t* Wide(const unsigned short* text) {
    return reinterpret_cast<const wchar_t*>(text);
}

bool TakeAnswer(DdeLink& link, HDDEDATA data, UINT format) {
    DWORD size = 0;
    const BYTE* const bytes = DdeAccessData(data, &size);
    if (!bytes) return false;
    const bool taken = format == CF_UNICODETEXT ? link.answer.TakeUnits(bytes, size / 2)
                                                : link.answer.TakeSystemText(bytes, size);
    DdeUnaccessData(data);
    return taken;
}

DdeOutcome OutcomeOf(UINT error) {
    switch (error) {
        case DMLERR_EXECACKTIMEOUT:
        case DMLERR_POKEACKTIMEOUT:
        case DMLERR_DATAACKTIMEOUT:
            return DdeOutcome::kTimedOut;
        case DMLERR_BUSY:
            return DdeOutcome::kBusy;
        case DMLERR_NOTPROCESSED:
            return DdeOutcome::kRefused;
        case DMLERR_NO_CONV_ESTABLISHED:
        case DMLERR_POSTMSG_FAILED:
        case DMLERR_SERVER_DIED:
            return DdeOutcome::kGone;
        default:
            return DdeOutcome::kFailed;
    }
}

void PumpMessages() {
    MSG message;
    while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) DispatchMessageW(&message);
}

class Conversation {
  public:
    Conversation(DdeLink& link, const Instance& instance) : m_link(link), m_instance(instance) {
        const Name service(instance, link.service), topic(instance, link.topic);
        m_handle = DdeConnect(instance.Id(), service.Get(), topic.Get(), nullptr);
        if (m_handle) FindPartner();
    }
    ~Conversation() {
        if (m_handle) DdeDisconnect(m_handle);
    }
    Conversation(const Conversation&) = delete;
    Conversation& operator=(const Conversation&) = delete;

    bool IsMade() const { return m_handle != nullptr; }

    // Queried explicitly, because a partner that ends a conversation during a call may seem to have
    // refused the call.
    bool HasEnded() const {
        CONVINFO info = {};
        info.cb = sizeof info;
        return !DdeQueryConvInfo(m_handle, static_cast<DWORD>(QID_SYNC), &info) ||
               !(info.wStatus & ST_CONNECTED);
    }

    // Performs the link's call.
    DdeOutcome Transact() {
        const Deadline deadline(m_link.timeout);
        const DWORD size = static_cast<DWORD>((m_link.call.count + 1) * 2);
        if (m_link.call.kind == DdeCall::kExecute)
            return Send(nullptr, m_link.text.Get(), size, 0, deadline);
        const Name item(m_instance, m_link.item);
        if (!item.Get()) return DdeOutcome::kFailed;
        const bool poke = m_link.call.kind == DdeCall::kPoke;
        const DdeOutcome outcome =
            Send(item.Get(), m_link.text.Get(), poke ? size : 0, CF_UNICODETEXT, deadline);
        if (outcome != DdeOutcome::kRefused || m_link.end.IsSet()) return outcome;
        // For a partner that supports only text in the system's code page.
        DdeSystemText text;
        if (poke && !text.Make(m_link.text.Get(), m_link.call.count)) return DdeOutcome::kFailed;
        return Send(item.Get(), text.Get(), text.Size(), CF_TEXT, deadline);
    }

  private:
    void FindPartner() {
        CONVINFO info = {};
        info.cb = sizeof info;
        if (!DdeQueryConvInfo(m_handle, static_cast<DWORD>(QID_SYNC), &info)) return;
        m_link.window = info.hwnd;
        m_link.partnerWindow = info.hwndPartner;
        DWORD process = 0;
        GetWindowThreadProcessId(info.hwndPartner, &process);
        m_link.partner = OpenProcess(SYNCHRONIZE, FALSE, process);
    }

    // A partner may acknowledge the data that it sent, as Wine's DDE library does, and the next
    // call would take that for its own answer. After the partner has received a message sent to it
    // now, everything that it posted before is in the queue of this thread, and is processed while
    // no call is in progress.
    void TakeLateAnswers(const Deadline& deadline) {
        if (!m_hadData) return;
        m_hadData = false;
        DWORD_PTR ignored = 0;
        SendMessageTimeoutW(m_link.partnerWindow, WM_NULL, 0, 0, SMTO_NORMAL, deadline.Left(),
                            &ignored);
        PumpMessages();
    }

    DdeOutcome Send(HSZ item, const void* text, DWORD size, UINT format, const Deadline& deadline) {
        const DdeCall::Kind kind = m_link.call.kind;
        static constexpr UINT kTypes[] = {XTYP_EXECUTE, XTYP_POKE, XTYP_REQUEST};
        TakeLateAnswers(deadline);
        const DWORD left = deadline.Left();
        if (left == 0) return DdeOutcome::kTimedOut;
        DWORD flags = 0;
        // The system does not change the text.
        const auto bytes = static_cast<BYTE*>(const_cast<void*>(text));
        const HDDEDATA data =
            DdeClientTransaction(bytes, size, m_handle, item, format, kTypes[kind], left, &flags);
        if (!data && HasEnded()) m_link.gone = true;
        if (m_link.gone) return DdeOutcome::kGone;
        if (kind != DdeCall::kRequest && (flags & DDE_FBUSY)) return DdeOutcome::kBusy;
        if (!data) {
            const UINT error = DdeGetLastError(m_instance.Id());
            return flags & DDE_FBUSY ? DdeOutcome::kBusy : OutcomeOf(error);
        }
        if (kind == DdeCall::kRequest) {
            m_hadData = true;
            const bool taken = TakeAnswer(m_link, data, format);
            DdeFreeDataHandle(data);
            return taken ? DdeOutcome::kDone : DdeOutcome::kFailed;
        }
        // A refused text may be reported as a success, with the partner's own answer in the flags.
        return kind == DdeCall::kExecute || (flags & DDE_FACK) ? DdeOutcome::kDone
                                                               : DdeOutcome::kRefused;
    }

    DdeLink& m_link;
    const Instance& m_instance;
    HCONV m_handle = nullptr;
    bool m_hadData = false;  // the latest call was answered with data
};

// Performs calls until the link or the partner ends, or until an answer is not received in time.
// Returns the result for the call in progress then.
DdeOutcome Serve(DdeLink& link, Conversation& conversation) {
    const HANDLE handles[] = {link.end.Get(), link.request.Get(), link.partner};
    const DWORD count = link.partner ? 3 : 2;
    while (!link.gone) {
        const DWORD got = MsgWaitForMultipleObjects(count, handles, FALSE, INFINITE, QS_ALLINPUT);
        PumpMessages();
        if (got == WAIT_OBJECT_0 || got == WAIT_FAILED) return DdeOutcome::kEnded;
        if (got == WAIT_OBJECT_0 + 2 || conversation.HasEnded()) link.gone = true;
        if (got != WAIT_OBJECT_0 + 1) continue;
        const DdeOutcome outcome = link.gone ? DdeOutcome::kGone : conversation.Transact();
        if (link.gone || outcome == DdeOutcome::kTimedOut) return outcome;
        link.outcome = outcome;
        link.done.Set();
    }
    return DdeOutcome::kGone;
}

DdeOutcome Converse(DdeLink& link) {
    const Instance instance;
    if (!instance.IsMade()) return DdeOutcome::kFailed;
    Conversation conversation(link, instance);
    if (!conversation.IsMade()) return DdeOutcome::kNoServer;
    link.open = true;
    link.outcome = DdeOutcome::kDone;
    link.done.Set();
    const DdeOutcome last = Serve(link, conversation);
    link.open = false;
    return last;
}

// Returns this library. The flags determine whether its reference count is incremented.
HMODULE ThisModule(DWORD flags) {
    HMODULE module = nullptr;
    GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | flags,
                       reinterpret_cast<const wchar_t*>(&ThisModule), &module);
    return module;
}

// The thread may still run after its caller has given up, and therefore keeps the library loaded.
DWORD WINAPI RunThread(void* context) {
    DdeLink* const link = static_cast<DdeLink*>(context);
    t_link = link;
    link->outcome = Converse(*link);
    t_link = nullptr;
    link->done.Set();
    DropDde(link);
    FreeLibraryAndExitThread(ThisModule(GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT), 0);
}

// -- Callers -------------------------------------------------------------------------------------

bool StartThread(DdeLink* link) {
    HoldDde(link);
    const HMODULE module = ThisModule(0);
    link->thread = CreateThread(nullptr, 0, RunThread, link, 0, nullptr);
    if (link->thread) return true;
    FreeLibrary(module);
    DropDde(link);
    return false;
}

DdeOutcome WaitForAnswer(DdeLink& link, const Deadline& deadline, HANDLE partner) {
    const HANDLE handles[] = {link.done.Get(), link.end.Get(), partner};
    switch (WaitServing(handles, partner ? 3 : 2, deadline)) {
        case WAIT_OBJECT_0:
            return link.outcome;
        case WAIT_OBJECT_0 + 1:
            return DdeOutcome::kEnded;
        case WAIT_OBJECT_0 + 2:
            return DdeOutcome::kGone;
        case WAIT_TIMEOUT:
            return DdeOutcome::kTimedOut;
        default:
            return DdeOutcome::kFailed;
    }
}

// Ends the conversation on behalf of a partner that cannot do so, so that the system's library
// stops waiting for an answer. Failure is ignored.
void BreakOff(DdeLink& link) {
    link.end.Set();
    PostMessageW(link.window, WM_DDE_TERMINATE, reinterpret_cast<WPARAM>(link.partnerWindow), 0);
    const HANDLE thread = link.thread;
    WaitServing(&thread, 1, Deadline(kGrace));
}

bool EndsLink(DdeOutcome outcome) {
    return outcome == DdeOutcome::kTimedOut || outcome == DdeOutcome::kGone ||
           outcome == DdeOutcome::kEnded;
}

bool Store(DdeLink& link, const DdeCall& call) {
    link.call = call;
    if (call.item) std::wcscpy(link.item, Wide(call.item));
    link.text.Reset(nullptr);
    if (!call.text) return true;
    const std::uint64_t size = (std::uint64_t{call.count} + 1) * 2;
    link.text.Reset(static_cast<wchar_t*>(Allocate(size)));
    if (link.text.Get()) std::memcpy(link.text.Get(), call.text, static_cast<std::size_t>(size));
    return link.text.Get() != nullptr;
}

// Performs a call; the caller has the turn.
DdeOutcome TakeTurn(DdeLink& link, const DdeCall& call, const Deadline& deadline) {
    if (link.gone) return DdeOutcome::kGone;
    if (!link.open || link.end.IsSet()) return DdeOutcome::kEnded;
    if (!Store(link, call)) return DdeOutcome::kFailed;
    link.timeout = deadline.Left();
    link.request.Set();
    const DdeOutcome outcome = WaitForAnswer(link, Deadline(link.timeout + kGrace), link.partner);
    if (EndsLink(outcome)) {
        BreakOff(link);
        return outcome;
    }
    if (outcome == DdeOutcome::kDone && call.take)
        call.take(call.context, link.answer.Get(), link.answer.Count());
    link.answer.Clear();
    return outcome;
}

}  // namespace

bool HasDde() {
    return true;
}

DdeOutcome MakeDde(DdeLink** link) {
    *link = New<DdeLink>();
    if (*link && (*link)->HasEvents()) return DdeOutcome::kDone;
    delete *link;
    *link = nullptr;
    return DdeOutcome::kFailed;
}

void HoldDde(DdeLink* link) {
    ++link->holders;
}

void DropDde(DdeLink* link) {
    if (link && --link->holders == 0) delete link;
}

DdeOutcome ConnectDde(DdeLink* link, const unsigned short* service, const unsigned short* topic,
                      unsigned timeout) {
    const Deadline deadline(timeout);
    std::wcscpy(link->service, Wide(service));
    std::wcscpy(link->topic, Wide(topic));
    if (!StartThread(link)) return DdeOutcome::kFailed;
    // The search itself cannot be interrupted. It ends by itself, and the thread after it.
    const DdeOutcome outcome = WaitForAnswer(*link, deadline, nullptr);
    if (outcome != DdeOutcome::kDone) link->end.Set();
    return outcome;
}

DdeOutcome TransactDde(DdeLink* link, const DdeCall& call, unsigned timeout) {
    const Deadline deadline(timeout);
    if (!link->gone && (!link->open || link->end.IsSet())) return DdeOutcome::kNotConnected;
    const HANDLE handles[] = {link->turn.Get(), link->end.Get()};
    switch (WaitServing(handles, 2, deadline)) {
        case WAIT_OBJECT_0:
            break;
        case WAIT_OBJECT_0 + 1:
            return link->gone ? DdeOutcome::kGone : DdeOutcome::kEnded;
        case WAIT_TIMEOUT:
            return DdeOutcome::kTimedOut;
        default:
            return DdeOutcome::kFailed;
    }
    const DdeOutcome outcome = TakeTurn(*link, call, deadline);
    link->turn.Set();
    return outcome;
}

bool IsDdeOpen(DdeLink* link) {
    return link->open && !link->end.IsSet() &&
           !(link->partner && WaitForSingleObject(link->partner, 0) == WAIT_OBJECT_0);
}

void EndDde(DdeLink* link) {
    if (!link->end.IsSet()) link->endTime = GetTickCount();
    link->end.Set();
}

void AwaitDdeEnd(DdeLink* link) {
    const HANDLE thread = link->thread;
    const DWORD passed = GetTickCount() - link->endTime;
    if (thread) WaitServing(&thread, 1, Deadline(passed < kGrace ? kGrace - passed : 0));
}

}  // namespace genutil::platform
