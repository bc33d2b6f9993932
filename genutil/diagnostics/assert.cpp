// The assertion service.
#include <new>

#include "genassert.h"
#include "gentrace.h"
#include "genutil/diagnostics/position.h"
#include "genutil/diagnostics/trace_ring.h"
#include "genutil/singleton.h"
#include "osthread.h"
#include "osutil/thread/thread_flag.h"

using genutil::FreeInstance;
using genutil::InstanceOf;

// Programs access its members directly.
static_assert(sizeof(void*) != 4 || sizeof(CGNAssert) == 12);

CGNAssert* CGNAssert::m_pInstance = nullptr;

namespace {

constexpr short kMask = -255;  // 0xFF01: passes any setting made of bits within it
constexpr char kModule[] = "cgnassert";
char g_guardName[] = "recflag";

// For threads without a store for the variable of that name.
constinit genutil::ThreadFlag g_inCallback;

bool InCallback() {
    if (g_inCallback.IsSet()) return true;
    CGNLclSt* variables = CGNLclSt::Instance();
    return variables && variables->GetLocalVariable(g_guardName) != nullptr;
}

// Marks a callback for the duration of a scope, in which the store may be created and released.
class CallbackGuard {
  public:
    CallbackGuard() {
        g_inCallback.Set();
        if (CGNLclSt* variables = CGNLclSt::Instance())
            variables->SetLocalVariable(g_guardName, &m_flag);
    }
    ~CallbackGuard() {
        if (CGNLclSt* variables = CGNLclSt::Instance()) variables->UnsetLocalVariable(g_guardName);
        g_inCallback.Clear();
    }
    CallbackGuard(const CallbackGuard&) = delete;
    CallbackGuard& operator=(const CallbackGuard&) = delete;

  private:
    char m_flag = 1;
};

}  // namespace

CGNAssert* CGNAssert::Instance() {
    return InstanceOf(m_pInstance, [] { return new (std::nothrow) CGNAssert; });
}

void CGNAssert::Free() {
    FreeInstance(m_pInstance);
}

unsigned char CGNAssert::Init(Callback callback, void* argument) {
    m_callback = callback;
    m_argument = argument;
    return 1;
}

void CGNAssert::SetNativeAssert(unsigned char on) {
    m_nativeAssert = on;
}

unsigned char CGNAssert::cgnassert(unsigned char condition, const char* file, long line) {
    // Also for a condition that holds, because callers then apply an assertion of their own.
    if (m_nativeAssert) return 0;
    if (condition) return 1;
    // On the stack, because the failure may be a failed allocation.
    char position[1024];
    genutil::WritePosition(position, sizeof position, line, file);
    CGNTrace* trace = CGNGlobalTrace::Instance();
    if (trace) trace->WriteText(position, kMask, kModule, "Assertion Failure !!");
    genutil::WriteTraceRing("Last lines before a failed assertion:\n");
    if (!m_callback) return 0;
    if (InCallback()) {
        if (trace)
            trace->WriteText(
                position, kMask, kModule,
                "Recursive invocation of callback.\n      Switching to native assert.");
        return 0;
    }
    const CallbackGuard guard;
    return m_callback(m_argument);
}
