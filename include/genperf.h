/* Performance timing: a stopwatch that logs a line, the same into a file, and totals of the time
   spent in a scope. All of them cost next to nothing while they are switched off.

       OSTime::EnableLog(1);
       {
           OSTime watch("load");            // prints on leaving:
       }                                    //     load : time 3 : elapsed ms 12

       OSSetPerf(1);
       static long total = 0;
       { CGNCummPerf scope(&total); ... }   // adds to total, once for nested scopes

   The switches, the file and the callback are the process's and belong to its start; nothing here
   is synchronised. */
#ifndef GENUTIL_GENPERF_H
#define GENUTIL_GENPERF_H

#include <cstdint>
#include <cstdio>

#include "genexport.h"
#include "genstr.h"

/* -- Time ------------------------------------------------------------------------------------- */

/** Reads the clock. @param seconds receives seconds since 1970. @param micro receives the
    microseconds within that second, in whole milliseconds. */
GENUTIL_API void OSGetTime(long& seconds, long& micro);

/** @return the milliseconds from (s0, u0) to (s1, u1), in seconds and microseconds each. Either
    difference is taken of 32 bits, so that values that wrapped around in between do no harm. */
GENUTIL_API long OSGetMsTimeDiff(long s0, long u0, long s1, long u1);
/** @return the milliseconds from (s0, u0) to now. */
GENUTIL_API long OSGetMsTimeDiff(long s0, long u0);

/** Switches the measuring of OSPerfTime and CGNCummPerf. */
GENUTIL_API void OSSetPerf(unsigned char on);
/** @return whether it is switched on. */
GENUTIL_API unsigned char OSGetPerf();

/** Reads a clock that is never set; while measuring is off both outputs are left alone.
    @param seconds receives seconds since some start. @param value receives all its milliseconds
   times 1000, as a signed number of 32 bits that wraps around. It is not the rest within the
   second: differences of two readings count the time about twice, which stored totals depend on. */
GENUTIL_API void OSPerfTime(long& seconds, long& value);

/* -- A stopwatch ------------------------------------------------------------------------------ */

/** Logs the time since its start when asked, and when it goes out of scope. While logging is off it
    keeps nothing and logs nothing. */
class GENUTIL_API OSTime {
  public:
    /** What takes a line; it ends in a line feed. */
    using Handler = void (*)(const char* line);

    /** Starts without a label. */
    OSTime();
    /** Starts with a label. */
    OSTime(const char* label);
    /** Starts with a label. */
    OSTime(const CGNString& label);
    OSTime(const OSTime&) = delete;
    OSTime& operator=(const OSTime&) = delete;
    /** Logs. */
    ~OSTime();

    /** Switches logging, and starts the seconds that lines tell when that is a change. */
    static void EnableLog(unsigned char on);
    /** @return whether logging is on. */
    static unsigned char LogEnabled();

    /** Starts again, without a label. */
    void Reset();
    /** Sets the label. */
    void SetTraceMsg(const char* label);
    /** Sets the label. */
    void SetTraceMsg(const CGNString& label);
    /** Sets the label to formatted text, of which the whole characters within 1023 bytes are kept;
        an empty one is not set.
        @param format as printf takes it. */
    void SetVaTraceMsg(const char* format, ...);

    /** Logs "LABEL : time S : elapsed ms M": the seconds since logging was switched on, and the
        milliseconds since the start, which is not changed. */
    void Log();
    /** Sets the label, then logs. */
    void Log(const char* label);
    /** Sets the label, then logs. */
    void Log(const CGNString& label);
    /** Sets the label to formatted text, then logs. @param format as printf takes it. */
    void VaLog(const char* format, ...);

    /** Chooses what takes the lines; null for standard output. */
    void SetLogHandler(Handler handler);

  protected:
    static unsigned char m_logEnabled; /**< whether logging is on */
    static long m_startTime;           /**< seconds since 1970 when it was last switched */

  private:
    OSTime(CGNString* label);
    void SetLabel(CGNString* label);

    std::int32_t m_seconds;
    std::int32_t m_micro;
    CGNString* m_label;
    Handler m_handler;
};

/** A stopwatch whose lines go to the performance file of the process. */
class GENUTIL_API CGNPerf : public OSTime {
  public:
    /** Starts without a label. */
    CGNPerf();
    /** Starts with a label. */
    CGNPerf(const char* label);
    /** Starts with a label. */
    CGNPerf(const CGNString& label);

    /** Opens the file anew, empty, and switches logging on. @param path as in osfile.h.
        @return whether it opened. */
    static unsigned char OpenFile(const char* path);
    /** Closes the file. */
    static void CloseFile();
    /** Closes the file and opens another. @return whether it opened. */
    static unsigned char ChangeFile(const char* path);
    /** Writes a line to the file; it is dropped when none is open. */
    static void LogHandler(const char* line);

  protected:
    static FILE* perfFile; /**< the open file, or null */
};

/* -- Totals ----------------------------------------------------------------------------------- */

/** Adds the time spent in a scope to a total of the caller's. While a scope times a total it holds
   -1, so that scopes nested in it on the same total add nothing. */
class GENUTIL_API CGNCummPerf {
  public:
    /** Told of each scope's start and end. @param pair the two 32-bit values of OSPerfTime, null
       from a scope that times nothing. @param code 55 at the start, 66 at the end. */
    using Callback = void (*)(void* pair, int code);

    /** Starts. @param accumulator the total in milliseconds; null for none. It must outlive the
     * scope. */
    explicit CGNCummPerf(long* accumulator = nullptr);
    /** Copies all members; the total is then added to at the end of both. */
    CGNCummPerf& operator=(const CGNCummPerf& other) = default;
    /** Copies all members. */
    CGNCummPerf(const CGNCummPerf& other) = default;
    /** Adds the time since the start to the total. */
    ~CGNCummPerf();

    /** Installs the callback of the process; null for none. */
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
