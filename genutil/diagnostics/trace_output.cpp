// The way of a trace line to its destinations, and the files of a log.
#include "genutil/diagnostics/trace_output.h"

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <limits>

#include "gentrace.h"
#include "genutil/diagnostics/trace_date.h"
#include "genutil/diagnostics/trace_layout.h"
#include "genutil/diagnostics/trace_ring.h"
#include "genutil/diagnostics/trace_settings.h"
#include "osutil/platform/file/streams.h"
#include "osutil/platform/thread/last_error.h"
#include "osutil/thread/mutex_holder.h"

using namespace genutil;

// -- Lines ---------------------------------------------------------------------------------------

namespace {

// Forms a line. Returns the place where standard output has a separator that files do not have, or
// 0.
std::size_t FormLine(TraceLine* line, const TraceSettings* settings, bool hasDate,
                     const TraceMessage& message) {
    if (settings && (settings->isJson || !settings->format.IsEmpty())) {
        if (settings->isJson)
            WriteJson(line, settings->isUtc, message);
        else
            WriteFormatted(line, settings->format, settings->isUtc, message);
        line->End();
        return 0;
    }
    if (hasDate) line->AppendDateTime();
    if (OSIsThreaded()) line->AppendThread(message.thread);
    const std::size_t prefix = line->Length();
    if (*message.module) line->AppendModule(message.module);
    line->AppendMessage(message.format, *message.arguments);
    if (message.position) line->AppendPosition(message.position);
    line->End();
    return prefix;
}

}  // namespace

TraceMutex* CGNTrace::Extra() const {
    return static_cast<TraceMutex*>(m_mutex);
}

void CGNTrace::DoWriteMsg(const char* fileLine, short mask, const char* module, const char* format,
                          va_list arguments) {
    // Logging must not change the error code that a program examines after a call.
    const platform::KeepLastError keep;
    const TraceSettings* settings = SettingsOf(m_mutex);
    if (settings && !AdmitsModule(settings->modules, module)) return;
    va_list own;
    va_copy(own, arguments);
    const bool isDefault = !settings || (!settings->isJson && settings->format.IsEmpty());
    const char* position = m_fileLine || !isDefault ? fileLine : nullptr;
    const TraceMessage message = {position, mask, module, format, &own, OSGetCurrentThreadID()};
    // The line is formed before the lock, because its date has a mutex of its own, whose holder may
    // report a failure here.
    TraceLine line;
    const std::size_t prefix = FormLine(&line, settings, m_dateTime, message);
    va_end(own);
    WriteLine(line, settings, isDefault && !*module, prefix);
}

void CGNTrace::WriteLine(TraceLine& line, const TraceSettings* settings, bool needsSeparator,
                         std::size_t prefix) {
    const int output = Shared(m_output).load(std::memory_order_relaxed);
    if (output & kToRing) AddToTraceRing(line.Bytes(), line.Length());
    TraceQueue* queue = m_mutex ? Extra()->queue.load(std::memory_order_acquire) : nullptr;
    const bool isQueued = (output & kToFile) && queue && queue->Append(line.Bytes(), line.Length());
    if ((output & (kToFile | kToStandardOutput | kToSink)) == (isQueued ? kToFile : 0)) return;

    if (!isQueued && (output & kToFile)) {
        const MutexHolder lock(m_mutex);
        MakeRoom(settings);
        if (m_traceFile && (m_output & kToFile)) line.WriteTo(m_traceFile);
    }
    if ((output & kToSink) && m_mutex) WriteToSink(Extra(), line.Bytes(), line.Length());
    if (!(output & kToStandardOutput)) return;
    const MutexHolder lock(m_mutex);
    // Standard output has the separator even without a module, because programs parse it.
    if (needsSeparator) line.InsertSeparator(prefix);
    line.WriteTo(stdout);
}

void CGNTrace::DrainQueue() {
    if (TraceQueue* queue = m_mutex ? Extra()->queue.load() : nullptr) queue->Drain();
}

void CGNTrace::WriteBatch(void* object, TraceBatch& batch) {
    auto* trace = static_cast<CGNTrace*>(object);
    const MutexHolder lock(trace->m_mutex);
    while (!batch.IsEmpty()) {
        trace->MakeRoom(SettingsOf(trace->m_mutex));
        std::size_t length;
        std::FILE* file = trace->m_traceFile;
        const char* lines = batch.Take(trace->Room(), &length);
        if (file) {
            std::fwrite(lines, 1, length, file);
            std::fflush(file);
        }
        batch.Finish();
    }
}

// -- Files ---------------------------------------------------------------------------------------

namespace {

// The name of an older log file.
class NumberedName {
  public:
    NumberedName(const CGNString& name, long number) : m_name(name) {
        char suffix[24] = "";
        if (number > 0) std::snprintf(suffix, sizeof suffix, ".%ld", number);
        m_name += suffix;
    }
    const char* Get() const { return m_name; }

  private:
    CGNString m_name;
};

// Renames name.1 to name.2 and so on, then the log to name.1. Stops at a file that cannot be
// renamed, which the next one would replace.
void ShiftFiles(const CGNString& name, long kept) {
    long free = 1;  // the first number without a file, or the last one, whose file is replaced
    while (free < kept) {
        std::FILE* older = platform::OpenStream(NumberedName(name, free).Get(), "r");
        if (!older) break;
        std::fclose(older);
        ++free;
    }
    for (; free > 1; --free)
        if (!platform::RenameFile(NumberedName(name, free - 1).Get(),
                                  NumberedName(name, free).Get()))
            return;
    platform::RenameFile(name, NumberedName(name, 1).Get());
}

}  // namespace

void CGNTrace::CloseFile() {
    if (m_traceFile) std::fclose(m_traceFile);
    m_traceFile = nullptr;
}

void CGNTrace::OpenFile(const char* mode) {
    m_traceFile = OpenTraceFile(m_fileName, mode);
    if (m_mutex) Extra()->fileDay = 0;
}

// Returns the number of bytes after which the file is full.
std::int64_t CGNTrace::Room() const {
    if (m_maxSize == 0 || !m_traceFile) return std::numeric_limits<std::int64_t>::max();
    return m_maxSize - platform::PlaceIn(m_traceFile);
}

// Returns true if the day has changed since the first line of the file, as far as that is known.
bool CGNTrace::IsOfAnotherDay(const TraceSettings* settings) {
    if (!settings || !settings->isDaily) return false;
    std::int32_t& day = Extra()->fileDay;
    const std::int32_t today = TraceDayNow(settings->isUtc);
    if (day == 0) {
        const bool isNew = platform::PlaceIn(m_traceFile) <= 0;
        const std::int64_t changed = isNew ? -1 : platform::ChangeTimeOf(m_traceFile);
        day = changed < 0 ? today : TraceDayOf(settings->isUtc, changed);
    }
    return day != today;
}

// Starts another file if the present one is full.
void CGNTrace::MakeRoom(const TraceSettings* settings) {
    // A file that could not be opened is tried again with each line.
    if (!m_traceFile && !m_fileName.IsEmpty()) OpenFile("a");
    if (!m_traceFile || (Room() > 0 && !IsOfAnotherDay(settings))) return;
    const long kept = settings ? settings->keptFiles : 0;
    const bool mayStayOpen = kept > 0 && platform::LockForRenaming(m_traceFile);
    // If another process has renamed the file, there is a new one.
    const bool isRenamed = kept > 0 && !platform::IsFileAt(m_traceFile, m_fileName);
    if (!mayStayOpen) CloseFile();
    // A file that cannot be renamed continues to grow.
    if (kept > 0 && !isRenamed) ShiftFiles(m_fileName, kept);
    CloseFile();
    OpenFile(kept > 0 ? "a" : "w");
}
