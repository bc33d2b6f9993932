/* Performance timing: a stopwatch that logs lines, a stopwatch that writes to a file, and totals of
   the time spent in a scope. All of them cost almost nothing while they are disabled.

       OSTime::EnableLog(1);
       {
           OSTime watch("load");            // prints at the end of the scope:
       }                                    //     load : time 3 : elapsed ms 12

       OSSetPerf(1);
       static long total = 0;
       { CGNCummPerf scope(&total); ... }   // adds to total, once for nested scopes

   The switches, the file and the callback belong to the process. Nothing here is synchronised; set
   them while the process starts. */
#ifndef GENUTIL_GENPERF_H
#define GENUTIL_GENPERF_H

#include <cstdint>
#include <cstdio>

#include "genexport.h"
#include "genstr.h"

/* -- Time ------------------------------------------------------------------------------------- */

/** Reads the clock.
    @param seconds receives seconds since 1970.
    @param micro receives the microseconds within that second, with millisecond resolution. */
GENUTIL_API void OSGetTime(long& seconds, long& micro);

/** Returns the milliseconds from (s0, u0) to (s1, u1), each in seconds and microseconds.
    Differences are computed in 32 bits, so values that wrapped around in between still give the
    correct result. */
GENUTIL_API long OSGetMsTimeDiff(long s0, long u0, long s1, long u1);
/** Returns the milliseconds from (s0, u0), in seconds and microseconds, to now. */
GENUTIL_API long OSGetMsTimeDiff(long s0, long u0);

/** Enables OSPerfTime() and CGNCummPerf if on is nonzero. Otherwise disables them. */
GENUTIL_API void OSSetPerf(unsigned char on);
/** Returns 1 if OSPerfTime() and CGNCummPerf are enabled. */
GENUTIL_API unsigned char OSGetPerf();

/** Reads a monotonic clock. While timing is disabled, both outputs are unchanged. The difference of
    two readings counts the elapsed time about twice, because value also includes the whole seconds.
    Stored totals depend on this.
    @param seconds receives seconds since an arbitrary start.
    @param value receives the same time in milliseconds times 1000, as a signed 32-bit number
        that wraps around. */
GENUTIL_API void OSPerfTime(long& seconds, long& value);

/* -- Stopwatch -------------------------------------------------------------------------------- */

/** A stopwatch. It logs the elapsed time on request and when it is destroyed. While logging is
    disabled, it stores nothing and logs nothing. A stopwatch constructed meanwhile starts with its
    first line after logging is enabled, which reports 0 ms, or with Reset(). */
class GENUTIL_API OSTime {
  public:
    /** Receives a log line, which ends with a line feed. */
    using Handler = void (*)(const char* line);

    /** Starts the stopwatch without a label. */
    OSTime();
    /** Starts the stopwatch with a label. */
    OSTime(const char* label);
    /** Starts the stopwatch with a label. */
    OSTime(const CGNString& label);
    OSTime(const OSTime&) = delete;
    OSTime& operator=(const OSTime&) = delete;
    /** Logs the elapsed time. */
    ~OSTime();

    /** Enables logging if on is nonzero. Otherwise disables it. A change restarts the count of
        seconds in the log lines. */
    static void EnableLog(unsigned char on);
    /** Returns 1 if logging is enabled. */
    static unsigned char LogEnabled();

    /** Restarts the stopwatch and removes the label. */
    void Reset();
    /** Sets the label. */
    void SetTraceMsg(const char* label);
    /** Sets the label. */
    void SetTraceMsg(const CGNString& label);
    /** Sets the label to formatted text. The text is cut after the last whole character within 1023
        bytes. An empty text leaves the label unchanged.
        @param format a printf format. */
    void SetVaTraceMsg(const char* format, ...);

    /** Logs "LABEL : time S : elapsed ms M". S is the number of seconds since logging was enabled.
        M is the number of milliseconds since the start. The stopwatch continues to run. */
    void Log();
    /** Sets the label and logs the elapsed time. */
    void Log(const char* label);
    /** Sets the label and logs the elapsed time. */
    void Log(const CGNString& label);
    /** Sets the label to formatted text and logs the elapsed time.
        @param format a printf format. */
    void VaLog(const char* format, ...);

    /** Sets the function that receives the log lines. Null selects standard output. */
    void SetLogHandler(Handler handler);

  protected:
    static unsigned char m_logEnabled; /**< 1 if logging is enabled */
    static long m_startTime;           /**< seconds since 1970 of the last change of the switch */

  private:
    OSTime(CGNString* label);
    void Start();
    void SetLabel(CGNString* label);

    std::int32_t m_seconds;
    std::int32_t m_micro;
    CGNString* m_label;
    Handler m_handler;
};

/** A stopwatch that logs to the performance file of the process. */
class GENUTIL_API CGNPerf : public OSTime {
  public:
    /** Starts the stopwatch without a label. */
    CGNPerf();
    /** Starts the stopwatch with a label. */
    CGNPerf(const char* label);
    /** Starts the stopwatch with a label. */
    CGNPerf(const CGNString& label);

    /** Opens the performance file, truncates it and enables logging. Returns 1 if the file was
        opened.
        @param path path of the file, as in osfile.h. */
    static unsigned char OpenFile(const char* path);
    /** Closes the performance file. */
    static void CloseFile();
    /** Closes the performance file and opens another. Returns 1 if that file was opened. */
    static unsigned char ChangeFile(const char* path);
    /** Writes a line to the performance file. The line is discarded if no file is open. */
    static void LogHandler(const char* line);

  protected:
    static FILE* perfFile; /**< the open file, or null */
};

/* -- Totals ----------------------------------------------------------------------------------- */

/** Adds the time spent in a scope to a total owned by the caller. The total holds -1 while a scope
    is timing it. Nested scopes on the same total therefore add nothing. */
class GENUTIL_API CGNCummPerf {
  public:
    /** Is called at the start and at the end of each scope.
        @param pair the two 32-bit values of OSPerfTime(); null for a scope that times nothing.
        @param code 55 at the start, 66 at the end. */
    using Callback = void (*)(void* pair, int code);

    /** Starts timing.
        @param accumulator the total in milliseconds; must outlive the scope. Null times
            nothing. */
    explicit CGNCummPerf(long* accumulator = nullptr);
    /** Copies every field. Both scopes then add to the total when they end. */
    CGNCummPerf& operator=(const CGNCummPerf& other) = default;
    /** Copies every field. */
    CGNCummPerf(const CGNCummPerf& other) = default;
    /** Adds the time since the start to the total. */
    ~CGNCummPerf();

    /** Installs the callback of the process. Null removes it. */
    static void SetPerfCallBack(Callback callback);

  protected:
    static Callback m_pcb; /**< the callback, or null */

  private:
    std::int32_t m_total;
    long* m_accumulator;
    std::int32_t m_active;
    std::int32_t m_start[2];
};

#endif
