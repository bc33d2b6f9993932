// Trace channels: the choice of lines and outputs, and the size limit of files.
#include <atomic>
#include <cstddef>
#include <new>

#include "gentrace.h"
#include "genutil/allocate.h"
#include "genutil/atomic_ref.h"
#include "genutil/diagnostics/message_format.h"
#include "genutil/diagnostics/position.h"
#include "genutil/diagnostics/trace_line.h"
#include "genutil/nearest.h"
#include "genutil/singleton.h"
#include "osresource.h"
#include "osutil/platform/file/streams.h"
#include "osutil/platform/thread/last_error.h"
#include "osutil/thread/mutex_holder.h"

using namespace genutil;

namespace {

constexpr char kToFile = 1, kToStandardOutput = 2;

// Access to members that threads read without the lock.
template <class Member>
AtomicRef<Member> Shared(const Member& member) {
    return AtomicRef<Member>(const_cast<Member&>(member));
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
    CloseFile();
    if (m_mutex) OSMutexDestroy(m_mutex);
}

// A mutex created before the process was threaded gets its system object now.
unsigned char CGNTrace::Init() {
    if (!m_mutex)
        m_mutex = OSMutexCreate();
    else
        MakeMutexUsable(m_mutex);
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
    const MutexHolder lock(m_mutex);
    if (output == 0 || output == kToStandardOutput) {
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
    const MutexHolder lock(m_mutex);
    if (name.IsEmpty()) return 0;
    Shared(m_output).store(static_cast<signed char>(output), std::memory_order_relaxed);
    m_maxSize = NearestInt32(maxSize);
    const bool isSame = name == m_fileName;
    if (!isSame) {
        CloseFile();
        m_fileName = name;
    }
    if (!m_traceFile) m_traceFile = OpenTraceFile(m_fileName, "a");
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
    DoWriteMsg(fileLine, module, format, arguments);
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
        DoWriteMsg(fileLine, module, format, arguments);
    else  // literally
        WriteText(fileLine, mask, module, "%s", static_cast<const char*>(format));
}

void CGNTrace::WriteText(const char* fileLine, short mask, const char* module, const char* format,
                         ...) {
    if (!IsEnabled(mask)) return;
    va_list arguments;
    va_start(arguments, format);
    DoWriteMsg(fileLine, module, format, arguments);
    va_end(arguments);
}

void CGNTrace::CloseFile() {
    if (m_traceFile) std::fclose(m_traceFile);
    m_traceFile = nullptr;
}

void CGNTrace::StartOverWhenFull() {
    if (!(m_output & kToFile)) return;
    // A file that could not be opened is tried again with each line.
    if (!m_traceFile && !m_fileName.IsEmpty()) m_traceFile = OpenTraceFile(m_fileName, "a");
    if (m_maxSize == 0 || !m_traceFile) return;
    if (platform::PlaceIn(m_traceFile) < m_maxSize) return;
    CloseFile();
    m_traceFile = OpenTraceFile(m_fileName, "w");
}

void CGNTrace::DoWriteMsg(const char* fileLine, const char* module, const char* format,
                          va_list arguments) {
    // Logging must not change the error code that a program examines after a call.
    const platform::KeepLastError keep;
    TraceLine line;
    // Before the lock, because the date has a mutex of its own, whose holder may report a failure
    // here.
    if (m_dateTime) line.AppendDateTime();
    const MutexHolder lock(m_mutex);
    StartOverWhenFull();
    if (OSIsThreaded()) line.AppendThread(OSGetCurrentThreadID());
    const std::size_t prefix = line.Length();
    if (*module) line.AppendModule(module);
    line.AppendMessage(format, arguments);
    if (m_fileLine && fileLine) line.AppendPosition(fileLine);
    line.End();
    if ((m_output & kToFile) && m_traceFile) line.WriteTo(m_traceFile);
    if (!(m_output & kToStandardOutput)) return;
    // Standard output has the separator even without a module, because programs parse it.
    if (!*module) line.InsertSeparator(prefix);
    line.WriteTo(stdout);
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
