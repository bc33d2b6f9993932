/* Trace: messages for a log file and for standard output, selected by category.

       CGNGlobalTrace* trace = CGNGlobalTrace::Instance();
       trace->Init();
       trace->ResetMask(0x0003);                       // categories 1 and 2
       CGNString name("suite.log");
       trace->ResetOutput(1, name, 1000000);           // a file that starts over at 1 MB
       GENUTIL_TRACE(trace, 0x0001, "reader", "%d rows", rows);

   writes

       11/21/26 09:30:12 :: TID 4711 :: reader : 12 rows : Line    42 in reader.cpp

   The thread identifier is included once the process is threaded (OSSetThreaded). Each message is
   written in one piece, whatever its length and however many threads write.

   The lines can have another form, and a full file can be kept:

       trace->ResetFormat("%F %T.%L [{thread}] {module}: {message}");
       trace->ResetRotation(5, 0);                     // suite.log.1 to suite.log.5

   Settings may be changed while other threads write, unless stated otherwise. */
#ifndef GENUTIL_GENTRACE_H
#define GENUTIL_GENTRACE_H

#include <cstdarg>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#if __has_include(<version>)
#include <version>
#endif
#if defined(__cpp_lib_format)
#include <format>
#endif

#include "genexport.h"
#include "genstr.h"

struct _osmutex;

namespace genutil {
class TraceLine;
class TraceBatch;
struct TraceMutex;
struct TraceSettings;
}  // namespace genutil

/** The text "Line %5d in %s" of a source position. */
class GENUTIL_API CGNTraceFileLine : public CGNString {
  public:
    /** Formats a source position.
        @param line the line number.
        @param file name of the source file; null for none. */
    CGNTraceFileLine(long line, const char* file);
};

/** A message channel. A copy shares the stream and the mutex of its source, so destroying one of
    the two makes the other unusable. */
class GENUTIL_API CGNTrace {
  public:
    /** Constructs a disabled trace: no output, no categories, no mutex. Date and source position
        are enabled. */
    CGNTrace();
    /** Copies every field. The stream and the mutex are shared. */
    CGNTrace(const CGNTrace& other) = default;
    /** Copies every field. The stream and the mutex are shared; those that this trace had are not
        released. */
    CGNTrace& operator=(const CGNTrace& other) = default;
    /** Closes the file and destroys the mutex. */
    virtual ~CGNTrace();

    /** Creates the mutex. Call it before the first message. Returns 1 if the mutex exists. */
    unsigned char Init();

    /** Returns 1 if a message with these categories is written. This is the case if all bits of
        mask are enabled or if mask contains all enabled bits. Returns 0 if there is no output, no
        category is enabled, or mask is 0. */
    unsigned char IsEnabled(short mask) const;

    /** Same as IsEnabled(), inline: less than a nanosecond. GENUTIL_TRACE uses it. */
    bool Admits(short mask) const {
        const int output = Read(m_output), setting = Read(m_traceSetting), common = mask & setting;
        return output != 0 && setting != 0 && mask != 0 && (common == mask || common == setting);
    }

    /** Enables the categories whose bits are set and disables all others. */
    void ResetMask(short mask);
    /** Returns the enabled categories. */
    short GetTraceSetting() const;

    /** Selects the destinations of messages: bit 0 is the log file, bit 1 is standard output, bit 2
        is the sink (ResetSink), bit 3 is the memory of KeepLastLines(). A value without bit 0 also
        closes the file and discards its name and size. Returns 0 and changes nothing if bit 0 is
        set and no file is open. */
    unsigned char ResetOutput(char output);

    /** Selects the destinations of messages and opens the log file for appending. A file that is
        already open under the same name is kept open. If bit 0 of output is clear, this is
        ResetOutput(output). Returns 0 and changes nothing if name is empty. Returns 0 if the file
        cannot be opened; output and size are then stored, and messages for the file are discarded.
        @param output the destinations, as above.
        @param name path of the file, as in osfile.h. A relative path is resolved again when the
            file starts over.
        @param maxSize size in bytes at which the file starts over, or is kept under another name
            (ResetRotation); 0 for never. */
    unsigned char ResetOutput(char output, CGNString& name, long maxSize);

    /** Sets the size in bytes at which the file starts over; 0 for never. Not synchronised. */
    void ResetSize(long size);

    /** Enables the source position at the end of messages if on is nonzero. Otherwise disables it.
        Not synchronised. */
    void ResetFileLine(char on);
    /** Calls ResetFileLine(1). */
    void EnableFileLine();
    /** Calls ResetFileLine(0). */
    void DisableFileLine();
    /** Enables the local date and time at the start of messages. Not synchronised. */
    void EnableDateTime();
    /** Disables the date and time at the start of messages. Not synchronised. */
    void DisableDateTime();

    /** Receives a line.
        @param line the line in the current code set (in UTF-8 if it is JSON), ending with a line
            feed, and followed by no terminator.
        @param length number of bytes.
        @param argument as passed to ResetSink(). */
    using Sink = void (*)(const char* line, long length, void* argument);

    /** Keeps full log files. A file that has reached its maximum size is renamed to name.1, after
        name.1 was renamed to name.2 and so on, and a new file is started. A file that cannot be
        renamed, for example because another program has it open on Windows, continues to grow; each
        message tries again. Returns 0, and changes nothing, if count is negative or allocation
        fails.
        @param count number of files that are kept; 0 starts the file over, which is the default.
        @param daily nonzero if a new file is also started with the first message of a day, in the
            time zone of the writing thread, or in UTC if ResetFormat() or ResetJson() selected it.
       A file that existed before has the day of its last change. */
    unsigned char ResetRotation(long count, char daily = 0);

    /** Sets the function that receives messages if bit 2 of the output is set. It is called by the
        thread that writes, for one message at a time, and must not write to this trace. The
        earlier function is not running, and is not called any more, when this function returns,
        unless the earlier function itself has called it. Returns 0 if allocation fails.
        @param sink the function; null for none.
        @param argument passed to the function. */
    unsigned char ResetSink(Sink sink, void* argument);

    /** Sets the form of lines. Returns 0, and changes nothing, if the format contains an unknown
        directive or field, contains {message} twice, or if allocation fails. The switches of the
        date and of the source position have no effect on this form.
        @param format text with directives of the date and fields. Null or an empty text selects the
            default form. Directives, as in strftime: %Y %y (year), %m %d (month, day), %H %M %S,
            %F (%Y-%m-%d), %T (%H:%M:%S), %D (%m/%d/%y), %R (%H:%M), %s (seconds since 1970), %z
            (+0900), %%; and %L (milliseconds, three digits). Fields: {message}, {module}, {thread},
            {mask} (the categories as a decimal number), {position}; and {{ for a brace.
        @param utc nonzero for dates in UTC instead of the time zone of the thread. */
    unsigned char ResetFormat(const char* format, char utc = 0);

    /** Selects lines that are JSON objects in UTF-8, with the members time (ISO 8601 with
        milliseconds), thread, mask, module, message and, if there is one, position. Characters that
        are invalid in the current code set become U+FFFD. Returns 0 if allocation fails.
        @param utc nonzero for times in UTC. */
    unsigned char ResetJson(char utc = 0);

    /** Limits the messages to those of some modules. Returns 0 if allocation fails.
        @param modules names separated by commas: "reader,parser". With a leading "-", the messages
            of all other modules are written: "-reader,parser". Null or an empty text admits all
            modules. */
    unsigned char ResetModules(const char* modules);

    /** Starts or stops writing the file on a thread of its own. While it is started, a message for
        the file only waits if a megabyte of messages is waiting to be written. No message is lost
        when the process ends by returning from main() or by exit(): they are written then, and
       later messages are written at once. After _exit(), abort(), exec() or a crash up to a few
       milliseconds of messages are missing. Standard output and the sink are not affected. In the
       child of a fork, messages are written at once. Returns 0 if the process is not threaded or
       the thread cannot be started.
        @param on nonzero to start; 0 to stop when all messages are written. */
    unsigned char ResetAsync(char on) {
        // Registered by the calling module, because Windows ends threads before it unloads this
        // library.
        static const bool s_isRegistered = std::atexit(StopQueues) == 0;
        return s_isRegistered && SwitchQueue(on);
    }
    /** Waits until all messages so far have been written. */
    void Flush();

    /** Keeps the last messages of the process in memory: those of all traces whose output has
       bit 3. They are appended to a file, after a heading, when an assertion fails (CGNAssert), by
        WriteLastLines(), and after CatchCrashes() when the process crashes; then they are
       discarded. Returns 0, and changes nothing, if count is out of range or allocation fails.
        @param count number of messages, at most 1000000; 0 for none. Of each, 500 bytes are kept.
        @param path path of the file, as in osfile.h, which is created when it is needed. A relative
            path is resolved then. */
    static unsigned char KeepLastLines(long count, const char* path);
    /** Writes the messages that KeepLastLines() has kept. */
    static void WriteLastLines();
    /** Writes the messages that KeepLastLines() has kept when the process crashes: by an invalid
        access to memory, an invalid instruction, a division by zero, or abort(). Whatever the
        process had arranged before happens afterwards. It allocates nothing and waits for no lock.
        On Linux it also works after a stack overflow of the thread that made this call. Returns 0
       if the system refuses. */
    static unsigned char CatchCrashes();

    /** Returns the destinations, the name of the file and its maximum size through the pointers. A
        null pointer is skipped. */
    void GetOutput(char* output, CGNString* name, long* size) const;
    /** Returns the stream of the log file, owned by the trace, or null if no file is open. */
    FILE* GetTraceFile();

    /** Writes a message if its categories are enabled.
        @param fileLine the source position; null for none.
        @param mask categories of the message.
        @param module name of the reporting module; may be empty.
        @param format a printf format. */
    void WriteMsg(const char* fileLine, short mask, const CGNString& module, const char* format,
                  ...) GENUTIL_PRINTF(5, 6);

    /** Writes a message whose printf format is a string resource. An unknown resource is treated as
        an empty format.
        @param fileLine the source position; null for none.
        @param mask categories of the message.
        @param module name of the reporting module; may be empty.
        @param messageId number of the resource. */
    void WriteMsg(const char* fileLine, short mask, const CGNString& module, long messageId, ...);
    /** Writes a message whose printf format is a string resource, as above. */
    void WriteMsg(const char* fileLine, short mask, const CGNString& module, int messageId, ...);

#if defined(__cpp_lib_format)
    /** Writes a message if its categories are enabled. Available where the standard library has
        std::format. If formatting throws, the format itself is written.
        @param fileLine the source position; null for none.
        @param mask categories of the message.
        @param module name of the reporting module; may be empty.
        @param format a format of std::format.
        @param arguments its arguments. */
    template <class... Arguments>
    void WriteFormat(const char* fileLine, short mask, const CGNString& module,
                     std::format_string<Arguments...> format, Arguments&&... arguments) {
        if (!IsEnabled(mask)) return;
        try {
            const std::string text = std::format(format, std::forward<Arguments>(arguments)...);
            WriteWhole(fileLine, mask, module, text.data(), text.size());
        } catch (...) {
            WriteWhole(fileLine, mask, module, format.get().data(), format.get().size());
        }
    }
#endif
    /** Writes a message without formatting it, if its categories are enabled.
        @param fileLine the source position; null for none.
        @param mask categories of the message.
        @param module name of the reporting module; may be empty.
        @param text the message, which ends at its first zero byte.
        @param length number of bytes. */
    void WriteWhole(const char* fileLine, short mask, const CGNString& module, const char* text,
                    std::size_t length);

  private:
    void DoWriteResource(const char* fileLine, short mask, const char* module, long messageId,
                         va_list arguments);
    void DoWriteMsg(const char* fileLine, short mask, const char* module, const char* format,
                    va_list arguments);
    void WriteLine(genutil::TraceLine& line, const genutil::TraceSettings* settings,
                   bool needsSeparator, std::size_t prefix);
    // WriteMsg without a string object, for reporting allocation failures.
    void WriteText(const char* fileLine, short mask, const char* module, const char* format, ...)
        GENUTIL_PRINTF(5, 6);
    friend class CGNAssert;
    // Other threads may change the member meanwhile.
    template <class Member>
    static int Read(const Member& member) {
#if defined(__GNUC__)
        return __atomic_load_n(&member, __ATOMIC_RELAXED);
#else
        return *static_cast<const volatile Member*>(&member);
#endif
    }
    void CloseFile();
    void OpenFile(const char* mode);
    void MakeRoom(const genutil::TraceSettings* settings);
    bool IsOfAnotherDay(const genutil::TraceSettings* settings);
    std::int64_t Room() const;
    genutil::TraceMutex* Extra() const;
    unsigned char SwitchQueue(char on);
    void DrainQueue();
    static void StopQueues();
    static void WriteBatch(void* trace, genutil::TraceBatch& batch);

    signed char m_output;
    CGNString m_fileName;
    short m_traceSetting;
    FILE* m_traceFile;
    std::int32_t m_maxSize;
    unsigned char m_dateTime;
    unsigned char m_fileLine;
    _osmutex* m_mutex;
};

/** Writes a message with the source position of the call, as CGNTrace::WriteMsg() with the mask,
   the module, the format and its arguments. If the categories are not enabled, nothing is evaluated
    except the trace and the mask, and the call takes less than a nanosecond.
    @param trace a pointer to a CGNTrace, which may be null.
    @param mask categories of the message. */
#define GENUTIL_TRACE(trace, mask, ...)                                                 \
    do {                                                                                \
        CGNTrace* const genutil_trace = (trace);                                        \
        const short genutil_mask = (mask);                                              \
        if (genutil_trace && genutil_trace->Admits(genutil_mask))                       \
            genutil_trace->WriteMsg(CGNTraceFileLine(__LINE__, __FILE__), genutil_mask, \
                                    __VA_ARGS__);                                       \
    } while (false)

/** The trace of the process. */
class GENUTIL_API CGNGlobalTrace : public CGNTrace {
  public:
    /** Returns the instance. The first call creates it; Init() is a separate call. Not
        synchronised; make the first call while the process starts. */
    static CGNGlobalTrace* Instance();
    /** Destroys the instance. The next call of Instance() creates a new one. */
    static void Free();

  private:
    CGNGlobalTrace() = default;
    static CGNGlobalTrace* m_pInstance;
};

#endif
