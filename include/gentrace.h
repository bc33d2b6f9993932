/* Trace: messages for a log file and for standard output, selected by category.

       CGNGlobalTrace* trace = CGNGlobalTrace::Instance();
       trace->Init();
       trace->ResetMask(0x0003);                       // categories 1 and 2
       CGNString name("suite.log");
       trace->ResetOutput(1, name, 1000000);           // a file that starts over at 1 MB
       trace->WriteMsg(CGNTraceFileLine(__LINE__, __FILE__), 0x0001, "reader", "%d rows", rows);

   writes

       11/21/26 09:30:12 :: TID 4711 :: reader : 12 rows : Line    42 in reader.cpp

   The thread identifier is included once the process is threaded (OSSetThreaded). Each message is
   written in one piece, whatever its length and however many threads write. */
#ifndef GENUTIL_GENTRACE_H
#define GENUTIL_GENTRACE_H

#include <cstdarg>
#include <cstdint>
#include <cstdio>

#include "genexport.h"
#include "genstr.h"

struct _osmutex;

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

    /** Enables the categories whose bits are set and disables all others. */
    void ResetMask(short mask);
    /** Returns the enabled categories. */
    short GetTraceSetting() const;

    /** Selects the destinations of messages: bit 0 is the log file, bit 1 is standard output. The
        values 0 and 2 also close the file and discard its name and size. Returns 0 and changes
        nothing if bit 0 is set and no file is open. */
    unsigned char ResetOutput(char output);

    /** Selects the destinations of messages and opens the log file for appending. A file that is
        already open under the same name is kept open. If bit 0 of output is clear, this is
        ResetOutput(output). Returns 0 and changes nothing if name is empty. Returns 0 if the file
        cannot be opened; output and size are then stored, and messages for the file are discarded.
        @param output the destinations, as above.
        @param name path of the file, as in osfile.h. A relative path is resolved again when the
            file starts over.
        @param maxSize size in bytes at which the file starts over; 0 for never. */
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

  private:
    void DoWriteResource(const char* fileLine, short mask, const char* module, long messageId,
                         va_list arguments);
    void DoWriteMsg(const char* fileLine, const char* module, const char* format,
                    va_list arguments);
    // WriteMsg without a string object, for reporting allocation failures.
    void WriteText(const char* fileLine, short mask, const char* module, const char* format, ...)
        GENUTIL_PRINTF(5, 6);
    friend class CGNAssert;
    void CloseFile();
    void StartOverWhenFull();

    signed char m_output;
    CGNString m_fileName;
    short m_traceSetting;
    FILE* m_traceFile;
    std::int32_t m_maxSize;
    unsigned char m_dateTime;
    unsigned char m_fileLine;
    _osmutex* m_mutex;
};

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
