/* System information: processor, operating system, memory and host name. Also prevents the machine
   from going to sleep.

       CGNString system;
       OSInfo::GetSystem(system);            // "Debian GNU/Linux 12 (bookworm)"
       int threads = OSInfo::GetProcessorCount();
       char host[64];
       OSGetHostnameNoDomain(host);
       {
           OSKeepAwake awake;                // prevents sleep during its lifetime
           WriteBackup();
       }

   Texts are in the current code set. Every function may be called from any thread. Objects of
   OSKeepAwake may be created and destroyed on several threads, except that the construction and
   destruction of the first one must not overlap with those of others. */
#ifndef GENUTIL_OSSYSTEM_H
#define GENUTIL_OSSYSTEM_H

#include <cstdint>

#include "genexport.h"
#include "genstr.h"

struct _osthread;

namespace genutil {
struct AwakeEvent;
struct AwakeLock;
struct KeepAwakeService;
}  // namespace genutil

/** Processor and operating system. */
class GENUTIL_API OSInfo {
  public:
    /** Returns the type of the processor.
        @param name receives "PC 80386", "PC i486", "PC Pentium", "MIPS R4000", "Alpha 21064",
            or "Unknown" for any other processor. */
    static void GetHardware(CGNString& name);
    /** Returns the name of the operating system, as one of few names that programs can compare;
        see GetSystem().
        @param name receives "Windows 95", "Win32s", "Windows 2000", "Windows XP", or "Windows
            NT or NT Server" for all later versions and all other systems. */
    static void GetOS(CGNString& name);
    /** Returns the name and the version of the operating system for display.
        @param name receives, for example, "Debian GNU/Linux 12 (bookworm)" or "Windows
            10.0.19045". */
    static void GetSystem(CGNString& name);
    /** Returns the number of processors that the process can use at the same time, at least 1:
        those of the machine, without those that its affinity excludes, and no more than its
        container allows (on Linux). */
    static int GetProcessorCount();
    /** Returns the bytes of main memory that the process can use: those of the machine, or the
        limit of its container (on Linux) or job (on Windows) if that is lower. Returns 0 if the
        system does not provide them. */
    static std::uint64_t GetMemorySize();
    /** Returns the full path of the file of the running program. Returns 1, or 0 and an empty path
        if the system does not provide it. */
    static unsigned char GetProgramPath(CGNString& path);

    static unsigned char OSisWin95();    /**< Returns 1 on Windows 95, 98 and Me. */
    static unsigned char OSisWin32s();   /**< Returns 1 on Win32s. */
    static unsigned char OSisWin2000();  /**< Returns 1 on Windows version 5.0. */
    static unsigned char OSisWinXP();    /**< Returns 1 on Windows version 5.1. */
    static unsigned char OSisWinVista(); /**< Returns 1 on Windows version 6.0. */
};

/** Memory usage. The page file fields include main memory: on Linux they are memory plus swap
    space, as on Windows. */
struct OSMemoryStatus {
    std::uint32_t memoryLoad;        /**< percentage of memory in use */
    std::uint64_t totalPageFile;     /**< bytes */
    std::uint64_t availablePageFile; /**< bytes */
};

/** Reads the current memory usage. All fields are 0 if the system does not provide it. */
GENUTIL_API void OSGetMemoryStatus(OSMemoryStatus& status);

/** Returns the percentage, 0 to 100, of usable memory that is in use. Usable memory is the smaller
    of the machine's memory and the address space of the process at the first call. Returns -1 if
    the values from the system are inconsistent. */
GENUTIL_API long OSUtilPercentMemoryUsed();

/** Writes the host name as the system reports it.
    @param name buffer of at least 64 bytes; receives at most 63 bytes and a terminator. Empty
        on failure. */
GENUTIL_API void OSGetHostnameNoDomain(char* name);

/** Prevents the machine from going to sleep during the lifetime of an object. On Linux it asks the
    session manager through libsystemd, and does nothing if libsystemd is missing. */
class GENUTIL_API OSKeepAwake {
  public:
    /** Constructs an object.
        @param keep nonzero prevents sleep; 0 does nothing. */
    explicit OSKeepAwake(unsigned char keep = 1);
    /** Takes over the state of other, whose destructor must then not run. Programs that embed
        objects depend on their size of two bytes. */
    OSKeepAwake& operator=(const OSKeepAwake& other);
    OSKeepAwake(const OSKeepAwake&) = delete;
    /** Allows sleep again if this was the last object that prevented it. The first object created
        owns the service and should outlive the others. Its destruction ends the service, and the
        next object created starts it again. */
    ~OSKeepAwake();

  private:
    friend struct genutil::KeepAwakeService;

    unsigned char m_loader;
    unsigned char m_keep;

    static void* m_hDLL;          // the library of the system
    static void* m_lpfnDllFunc1;  // prevents sleep; null if unavailable
    static unsigned char m_bLibraryLoaded;
    static _osthread* m_thread;
    static genutil::AwakeEvent* m_threadAwakeEvent;
    static genutil::AwakeEvent* m_threadTerminateEvent;
    static genutil::AwakeLock* m_awakeCritSect;
    static long m_awakeCtr;  // number of objects that prevent sleep
};

#endif
