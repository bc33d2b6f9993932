// Trace channels: the choice of lines, outputs and settings.
#include <algorithm>
#include <atomic>
#include <limits>
#include <new>

#include "gentrace.h"
#include "genutil/allocate.h"
#include "genutil/diagnostics/message_format.h"
#include "genutil/diagnostics/position.h"
#include "genutil/diagnostics/trace_date.h"
#include "genutil/diagnostics/trace_layout.h"
#include "genutil/diagnostics/trace_output.h"
#include "genutil/diagnostics/trace_ring.h"
#include "genutil/diagnostics/trace_settings.h"
#include "genutil/nearest.h"
#include "genutil/singleton.h"
#include "osresource.h"
#include "osutil/platform/process/crash.h"
#include "osutil/thread/mutex_holder.h"

using namespace genutil;

namespace {

// Publishes changed settings. Returns false if allocation fails.
template <class Change>
bool ChangeUnder(_osmutex* mutex, Change change) {
    const MutexHolder lock(mutex);
    return ChangeSettings(static_cast<TraceMutex*>(mutex), change);
}

}  // namespace

// Programs hold traces by value.
static_assert(sizeof(void*) != 4 || sizeof(CGNTrace) == 60);

CGNTrace::CGNTrace()
    : m_output(0),
      m_traceSetting(0),
      m_traceFile(nullptr),
      m_maxSize(0),
      m_dateTime(1),
      m_fileLine(1),
      m_mutex(nullptr) {}

CGNTrace::~CGNTrace() {
    if (m_mutex) TraceQueue::Destroy(Extra()->queue.load());
    CloseFile();
    DestroyTraceMutex(m_mutex);
}

// A mutex created before the process was threaded gets its system object now.
unsigned char CGNTrace::Init() {
    if (!m_mutex)
        m_mutex = NewTraceMutex();
    else
        MakeTraceMutexUsable(Extra());
    // Creates the objects that give lines their time, before several threads need them.
    TraceDayNow(false);
    return m_mutex != nullptr;
}

unsigned char CGNTrace::IsEnabled(short mask) const {
    const int output = Shared(m_output).load(std::memory_order_relaxed);
    const int setting = Shared(m_traceSetting).load(std::memory_order_relaxed);
    if (output == 0 || setting == 0 || mask == 0) return 0;
    const int common = mask & setting;
    return common == mask || common == setting;
}

void CGNTrace::ResetMask(short mask) {
    const MutexHolder lock(m_mutex);
    Shared(m_traceSetting).store(mask, std::memory_order_relaxed);
}

short CGNTrace::GetTraceSetting() const {
    return Shared(m_traceSetting).load(std::memory_order_relaxed);
}

unsigned char CGNTrace::ResetOutput(char output) {
    DrainQueue();
    const MutexHolder lock(m_mutex);
    if (!(output & kToFile)) {
        CloseFile();
        m_fileName.Empty();
        m_maxSize = 0;
    }
    if ((output & kToFile) && !m_traceFile) return 0;
    Shared(m_output).store(static_cast<signed char>(output), std::memory_order_relaxed);
    return 1;
}

unsigned char CGNTrace::ResetOutput(char output, CGNString& name, long maxSize) {
    if (!(output & kToFile)) return ResetOutput(output);
    DrainQueue();
    const MutexHolder lock(m_mutex);
    if (name.IsEmpty()) return 0;
    Shared(m_output).store(static_cast<signed char>(output), std::memory_order_relaxed);
    m_maxSize = NearestInt32(maxSize);
    const bool isSame = name == m_fileName;
    if (!isSame) {
        CloseFile();
        m_fileName = name;
    }
    if (!m_traceFile) OpenFile("a");
    // The same name is accepted whether its file opens now or with a later line.
    return isSame || m_traceFile != nullptr;
}

void CGNTrace::ResetSize(long size) {
    m_maxSize = NearestInt32(size);
}
void CGNTrace::ResetFileLine(char on) {
    m_fileLine = static_cast<unsigned char>(on);
}
void CGNTrace::EnableFileLine() {
    m_fileLine = 1;
}
void CGNTrace::DisableFileLine() {
    m_fileLine = 0;
}
void CGNTrace::EnableDateTime() {
    m_dateTime = 1;
}
void CGNTrace::DisableDateTime() {
    m_dateTime = 0;
}

void CGNTrace::GetOutput(char* output, CGNString* name, long* size) const {
    if (output) *output = static_cast<char>(m_output);
    if (name) *name = m_fileName;
    if (size) *size = m_maxSize;
}

FILE* CGNTrace::GetTraceFile() {
    return m_traceFile;
}

void CGNTrace::WriteMsg(const char* fileLine, short mask, const CGNString& module,
                        const char* format, ...) {
    if (!IsEnabled(mask)) return;
    va_list arguments;
    va_start(arguments, format);
    DoWriteMsg(fileLine, mask, module, format, arguments);
    va_end(arguments);
}

void CGNTrace::WriteMsg(const char* fileLine, short mask, const CGNString& module, long messageId,
                        ...) {
    if (!IsEnabled(mask)) return;
    va_list arguments;
    va_start(arguments, messageId);
    DoWriteResource(fileLine, mask, module, messageId, arguments);
    va_end(arguments);
}

void CGNTrace::WriteMsg(const char* fileLine, short mask, const CGNString& module, int messageId,
                        ...) {
    if (!IsEnabled(mask)) return;
    va_list arguments;
    va_start(arguments, messageId);
    DoWriteResource(fileLine, mask, module, messageId, arguments);
    va_end(arguments);
}

void CGNTrace::DoWriteResource(const char* fileLine, short mask, const char* module, long messageId,
                               va_list arguments) {
    CGNString format;
    OSLoadString(format, messageId);
    if (IsMessageFormat(format))
        DoWriteMsg(fileLine, mask, module, format, arguments);
    else  // literally
        WriteText(fileLine, mask, module, "%s", static_cast<const char*>(format));
}

void CGNTrace::WriteText(const char* fileLine, short mask, const char* module, const char* format,
                         ...) {
    if (!IsEnabled(mask)) return;
    va_list arguments;
    va_start(arguments, format);
    DoWriteMsg(fileLine, mask, module, format, arguments);
    va_end(arguments);
}

// -- Settings ------------------------------------------------------------------------------------

unsigned char CGNTrace::ResetRotation(long count, char daily) {
    if (count < 0) return 0;
    return Init() && ChangeUnder(m_mutex, [=](TraceSettings& settings) {
               settings.keptFiles = NearestInt32(count);
               settings.isDaily = daily != 0;
               return true;
           });
}

unsigned char CGNTrace::ResetSink(Sink sink, void* argument) {
    if (!Init()) return 0;
    // No call of the earlier function continues after this one.
    const MutexHolder lock(&Extra()->sinkMutex);
    return ChangeUnder(m_mutex, [=](TraceSettings& settings) {
        settings.sink = sink;
        settings.sinkArgument = argument;
        return true;
    });
}

unsigned char CGNTrace::ResetFormat(const char* format, char utc) {
    const char* text = format ? format : "";
    if (!IsTraceFormat(text)) return 0;
    return Init() && ChangeUnder(m_mutex, [=](TraceSettings& settings) {
               settings.format = text;
               settings.isJson = false;
               settings.isUtc = utc != 0;
               return settings.format == text;
           });
}

unsigned char CGNTrace::ResetJson(char utc) {
    return Init() && ChangeUnder(m_mutex, [=](TraceSettings& settings) {
               settings.isJson = true;
               settings.isUtc = utc != 0;
               return true;
           });
}

unsigned char CGNTrace::ResetModules(const char* modules) {
    const char* list = modules ? modules : "";
    return Init() && ChangeUnder(m_mutex, [=](TraceSettings& settings) {
               settings.modules = list;
               return settings.modules == list;
           });
}

unsigned char CGNTrace::SwitchQueue(char on) {
    if (!Init()) return 0;
    TraceQueue* queue;
    {
        const MutexHolder lock(m_mutex);
        queue = Extra()->queue.load();
        if (!queue && on && OSIsThreaded()) {
            queue = TraceQueue::Make(this, WriteBatch);
            Extra()->queue.store(queue);
        }
    }
    if (!on && queue) queue->Stop();
    return !on || (queue && queue->Start());
}

void CGNTrace::StopQueues() {
    TraceQueue::StopAll();
}

void CGNTrace::Flush() {
    DrainQueue();
}

unsigned char CGNTrace::KeepLastLines(long count, const char* path) {
    return StartTraceRing(count, path);
}

unsigned char CGNTrace::CatchCrashes() {
    return platform::CatchCrashes([] { WriteTraceRing("Last lines before a crash:\n"); });
}

void CGNTrace::WriteLastLines() {
    WriteTraceRing("Last lines:\n");
}

void CGNTrace::WriteWhole(const char* fileLine, short mask, const CGNString& module,
                          const char* text, std::size_t length) {
    constexpr std::size_t kMost = std::numeric_limits<int>::max();
    WriteText(fileLine, mask, module, "%.*s", static_cast<int>(std::min(length, kMost)), text);
}

CGNTraceFileLine::CGNTraceFileLine(long line, const char* file) {
    char number[40];
    WritePosition(number, sizeof number, line, nullptr);
    *this += number;
    *this += file;
}

CGNGlobalTrace* CGNGlobalTrace::m_pInstance = nullptr;

CGNGlobalTrace* CGNGlobalTrace::Instance() {
    return InstanceOf(m_pInstance, [] { return new (std::nothrow) CGNGlobalTrace; });
}

void CGNGlobalTrace::Free() {
    FreeInstance(m_pInstance);
}
