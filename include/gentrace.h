/* Trace: lines for a log file and for standard output, chosen by category.

       CGNGlobalTrace* trace = CGNGlobalTrace::Instance();
       trace->Init();
       trace->ResetMask(0x0003);                       // categories 1 and 2
       CGNString name("suite.log");
       trace->ResetOutput(1, name, 1000000);           // a file that starts over at 1 MB
       trace->WriteMsg(CGNTraceFileLine(__LINE__, __FILE__), 0x0001, "reader", "%d rows", rows);

   writes

       11/21/26 09:30:12 :: TID 4711 :: reader : 12 rows : Line    42 in reader.cpp

   The thread is named once the process is threaded (OSSetThreaded). A line is written whole, in one
   piece, whatever its length and however many threads write. */
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
    /** @param line a line number. @param file the name of a source file; null for none. */
    CGNTraceFileLine(long line, const char* file);
};

/** A channel for messages. A copy shares the stream and the mutex of its source: only one of the
   two may be destroyed while the other is used. */
class GENUTIL_API CGNTrace {
  public:
    /** Off: no output, no category, date and source position on, no mutex. */
    CGNTrace();
    /** Shares everything. */
    CGNTrace(const CGNTrace& other) = default;
    /** Shares everything; what this trace had is not released. */
    CGNTrace& operator=(const CGNTrace& other) = default;
    /** Closes the file and destroys the mutex. */
    virtual ~CGNTrace();

    /** Creates the mutex; to be called before the first message. @return 1 when there is one. */
    unsigned char Init();

    /** @return 1 when a message of these categories is written: all bits of mask are enabled, or
       all enabled bits lie within mask. 0 while there is no output, no category, or mask is 0. */
    unsigned char IsEnabled(short mask) const;

    /** Enables the categories whose bits are set. */
    void ResetMask(short mask);
    /** @return the enabled categories. */
    short GetTraceSetting() const;

    /** Chooses where messages go: bit 0 the log file, bit 1 standard output. 0 and 2 close the file
        and forget its name and size.
        @return 0, with nothing changed, when bit 0 is set and no file is open. */
    unsigned char ResetOutput(char output);

    /** Chooses where messages go, and the log file, which is appended to. The file that is open
        stays open when it is named again. With bit 0 of output clear as ResetOutput(output).
        @param output as above. @param name path of the file, as in osfile.h, read anew when the
        file starts over. @param maxSize bytes at which it does, 0 for never.
        @return 0 for an empty name, and when the file does not open (output and size are kept then,
        and messages for the file are dropped). */
    unsigned char ResetOutput(char output, CGNString& name, long maxSize);

    /** Sets the size in bytes at which the file starts over; 0 for never. Takes no lock. */
    void ResetSize(long size);

    /** Whether lines end in their source position. Takes no lock. */
    void ResetFileLine(char on);
    /** ResetFileLine(1). */
    void EnableFileLine();
    /** ResetFileLine(0). */
    void DisableFileLine();
    /** Lines begin with the local date and time. Takes no lock. */
    void EnableDateTime();
    /** Lines do not begin with the date. Takes no lock. */
    void DisableDateTime();

    /** Copies out the output bits, the name of the file and the size. Null where not wanted. */
    void GetOutput(char* output, CGNString* name, long* size) const;
    /** @return the stream of the log file, null when none is open; owned by the trace. */
    FILE* GetTraceFile();

    /** Writes a message when its categories are enabled.
        @param fileLine the source position, null for none. @param mask categories of the message.
        @param module what speaks; may be empty. @param format as printf takes it. */
    void WriteMsg(const char* fileLine, short mask, const CGNString& module, const char* format,
                  ...) GENUTIL_PRINTF(5, 6);

    /** Writes a message whose format is a string resource; an empty one where it is not found.
        @param fileLine the source position, null for none. @param mask categories of the message.
        @param module what speaks; may be empty. @param messageId number of the resource. */
    void WriteMsg(const char* fileLine, short mask, const CGNString& module, long messageId, ...);

  private:
    void DoWriteMsg(const char* fileLine, const char* module, const char* format,
                    va_list arguments);
    // WriteMsg that needs no string object, for reports of a memory that has run out.
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
    /** @return the instance, created at first (without Init). Not synchronised: call it first while
        the process starts. */
    static CGNGlobalTrace* Instance();
    /** Destroys the instance; the next Instance() creates another. */
    static void Free();

  private:
    CGNGlobalTrace() = default;
    static CGNGlobalTrace* m_pInstance;
};

#endif
