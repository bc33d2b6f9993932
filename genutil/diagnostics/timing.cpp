// Stopwatches and accumulated times.
#include <cstdarg>
#include <cstdio>

#include "genperf.h"
#include "genutil/allocate.h"
#include "genutil/assert_allocation.h"
#include "genutil/mbutil/cut_character.h"
#include "genutil/nearest.h"
#include "mbutil.h"
#include "osutil/platform/file/streams.h"
#include "osutil/platform/time/clock.h"

using namespace genutil;

static_assert(sizeof(void*) != 4 ||
              (sizeof(OSTime) == 16 && sizeof(CGNPerf) == 16 && sizeof(CGNCummPerf) == 20));

namespace {

unsigned char g_measuring = 0;

// Labels a stopwatch with formatted text, truncated after the last whole character that fits in the
// buffer.
void SetFormattedLabel(OSTime& watch, const char* format, va_list arguments) {
    if (!format || !OSTime::LogEnabled()) return;
    char text[1024];
    constexpr int kLongest = sizeof text - 1;
    const int length = std::vsnprintf(text, sizeof text, format, arguments);
    if (length <= 0) return;
    if (length > kLongest) text[kLongest - CutCharacter(text, kLongest, mbGetLocaleCodeSet())] = 0;
    watch.SetTraceMsg(text);
}

// Creates a label on the heap. Returns null, after reporting it, if allocation fails.
template <class Text>
CGNString* NewLabel(const Text& text) {
    auto* label = New<CGNString>(text);
    AssertAllocation(label != nullptr, "genutil/genperf", __LINE__);
    return label;
}

// Returns the difference of two 32-bit times that may have wrapped around in between, for any width
// of long.
long Difference(long later, long earlier) {
    return static_cast<std::int32_t>(static_cast<std::uint32_t>(later) -
                                     static_cast<std::uint32_t>(earlier));
}

// Passes the reading of a scope to the callback of the process, or the fact that it times nothing.
void Notify(CGNCummPerf::Callback callback, std::int32_t* pair, int code) {
    if (callback) callback(pair, code);
}

void ReadPerfTime(std::int32_t (&pair)[2]) {
    long seconds = 0, value = 0;
    OSPerfTime(seconds, value);
    pair[0] = static_cast<std::int32_t>(seconds);
    pair[1] = static_cast<std::int32_t>(value);
}

constexpr int kScopeStart = 55, kScopeEnd = 66;
constexpr long kBeingTimed = -1;

}  // namespace

void OSGetTime(long& seconds, long& micro) {
    const platform::WallClock now = platform::ReadWallClock();
    seconds = static_cast<long>(now.seconds);
    micro = now.milliseconds * 1000L;
}

long OSGetMsTimeDiff(long s0, long u0, long s1, long u1) {
    return static_cast<long>(std::int64_t{Difference(s1, s0)} * 1000 + Difference(u1, u0) / 1000);
}

long OSGetMsTimeDiff(long s0, long u0) {
    long seconds, micro;
    OSGetTime(seconds, micro);
    return OSGetMsTimeDiff(s0, u0, seconds, micro);
}

void OSSetPerf(unsigned char on) {
    g_measuring = on;
}
unsigned char OSGetPerf() {
    return g_measuring;
}

void OSPerfTime(long& seconds, long& value) {
    if (!g_measuring) return;
    const std::uint32_t ticks = platform::TickCount();
    seconds = static_cast<long>(ticks / 1000);
    // All ticks, not those within the second, because stored totals have this scale.
    value = static_cast<std::int32_t>(ticks * 1000);
}

unsigned char OSTime::m_logEnabled = 0;
long OSTime::m_startTime = 0;

OSTime::OSTime() : OSTime(static_cast<CGNString*>(nullptr)) {}

OSTime::OSTime(const char* label) : OSTime() {
    SetTraceMsg(label);
}

OSTime::OSTime(const CGNString& label) : OSTime() {
    SetTraceMsg(label);
}

OSTime::OSTime(CGNString* label) : m_seconds(0), m_micro(0), m_label(nullptr), m_handler(nullptr) {
    Reset();
    if (m_logEnabled) m_label = label;
}

OSTime::~OSTime() {
    Log();
    delete m_label;
}

void OSTime::EnableLog(unsigned char on) {
    if (!on == !m_logEnabled) return;
    m_startTime = static_cast<long>(platform::SecondsNow());
    m_logEnabled = on;
}

unsigned char OSTime::LogEnabled() {
    return m_logEnabled;
}

void OSTime::Reset() {
    if (!m_logEnabled) return;
    Start();
    SetLabel(nullptr);
}

void OSTime::Start() {
    long seconds, micro;
    OSGetTime(seconds, micro);
    m_seconds = static_cast<std::int32_t>(seconds);
    m_micro = static_cast<std::int32_t>(micro);
}

void OSTime::SetLabel(CGNString* label) {
    delete m_label;
    m_label = label;
}

void OSTime::SetTraceMsg(const char* label) {
    if (m_logEnabled) SetLabel(NewLabel(label));
}

void OSTime::SetTraceMsg(const CGNString& label) {
    if (m_logEnabled) SetLabel(NewLabel(label));
}

void OSTime::SetVaTraceMsg(const char* format, ...) {
    va_list arguments;
    va_start(arguments, format);
    SetFormattedLabel(*this, format, arguments);
    va_end(arguments);
}

void OSTime::Log(const char* label) {
    SetTraceMsg(label);
    Log();
}

void OSTime::Log(const CGNString& label) {
    SetTraceMsg(label);
    Log();
}

void OSTime::VaLog(const char* format, ...) {
    va_list arguments;
    va_start(arguments, format);
    SetFormattedLabel(*this, format, arguments);
    va_end(arguments);
    Log();
}

void OSTime::Log() {
    if (!m_logEnabled) return;
    if (m_seconds == 0 && m_micro == 0) Start();  // constructed while logging was disabled
    char times[80];
    std::snprintf(times, sizeof times, "time %ld : elapsed ms %ld\n",
                  static_cast<long>(platform::SecondsNow()) - m_startTime,
                  OSGetMsTimeDiff(m_seconds, m_micro));
    CGNString line;
    if (m_label) (line += *m_label) += " : ";
    line += times;
    if (m_handler) {
        m_handler(line);
    } else {
        std::fputs(line, stdout);
    }
}

void OSTime::SetLogHandler(Handler handler) {
    m_handler = handler;
}

FILE* CGNPerf::perfFile = nullptr;

CGNPerf::CGNPerf() {
    SetLogHandler(LogHandler);
}
CGNPerf::CGNPerf(const char* label) : OSTime(label) {
    SetLogHandler(LogHandler);
}
CGNPerf::CGNPerf(const CGNString& label) : OSTime(label) {
    SetLogHandler(LogHandler);
}

unsigned char CGNPerf::OpenFile(const char* path) {
    CloseFile();
    perfFile = platform::OpenStream(path, "w");
    if (perfFile) EnableLog(1);
    return perfFile != nullptr;
}

void CGNPerf::CloseFile() {
    if (perfFile) std::fclose(perfFile);
    perfFile = nullptr;
}

unsigned char CGNPerf::ChangeFile(const char* path) {
    CloseFile();
    return OpenFile(path);
}

void CGNPerf::LogHandler(const char* line) {
    if (perfFile) std::fputs(line, perfFile);
}

CGNCummPerf::Callback CGNCummPerf::m_pcb = nullptr;

CGNCummPerf::CGNCummPerf(long* accumulator)
    : m_total(0), m_accumulator(accumulator), m_active(0), m_start{} {
    if (!m_accumulator) return;
    if (*m_accumulator == kBeingTimed) {
        Notify(m_pcb, nullptr, kScopeStart);
        return;
    }
    m_total = genutil::NearestInt32(*m_accumulator);
    *m_accumulator = kBeingTimed;
    m_active = 1;
    ReadPerfTime(m_start);
    Notify(m_pcb, m_start, kScopeStart);
}

CGNCummPerf::~CGNCummPerf() {
    if (!m_accumulator) return;
    if (*m_accumulator != kBeingTimed || !m_active) {
        Notify(m_pcb, nullptr, kScopeEnd);
        return;
    }
    std::int32_t now[2];
    ReadPerfTime(now);
    const long elapsed = OSGetMsTimeDiff(m_start[0], m_start[1], now[0], now[1]);
    m_total = genutil::NearestInt32(std::int64_t{m_total} + elapsed);
    *m_accumulator = m_total;
    Notify(m_pcb, now, kScopeEnd);
}

void CGNCummPerf::SetPerfCallBack(Callback callback) {
    m_pcb = callback;
}
