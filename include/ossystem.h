/* The machine: its processor, system and memory, its name, and whether it may sleep.

       CGNString system;
       OSInfo::GetOS(system);                // "Debian GNU/Linux 12 (bookworm)"
       char host[64];
       OSGetHostnameNoDomain(host);
       {
           OSKeepAwake awake;                // the machine does not sleep while this lives
           WriteBackup();
       }

   Texts are in the current code set. Any thread may call any of these; objects of OSKeepAwake may
   come and go in several threads, but for the first one, whose construction and destruction must
   not overlap with those of others. */
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

/** What the machine is. */
class GENUTIL_API OSInfo {
  public:
    /** @param name receives "PC 80386", "PC i486", "PC Pentium", "MIPS R4000", "Alpha 21064", or
        "Unknown" for every other processor. */
    static void GetHardware(CGNString& name);
    /** @param name receives "Windows 95", "Win32s", "Windows 2000", "Windows XP", and "Windows NT
       or NT Server" for all later ones; on Linux the name of the distribution. */
    static void GetOS(CGNString& name);

    static unsigned char OSisWin95();    /**< @return 1 on the consumer line of Windows */
    static unsigned char OSisWin32s();   /**< @return 1 on Win32s */
    static unsigned char OSisWin2000();  /**< @return 1 on version 5.0 */
    static unsigned char OSisWinXP();    /**< @return 1 on version 5.1 */
    static unsigned char OSisWinVista(); /**< @return 1 on version 6.0 */
};

/** How much memory is in use. On Linux the paging file is memory and swap space together, as it is
    on Windows. */
struct OSMemoryStatus {
    std::uint32_t memoryLoad;        /**< percent of the memory in use */
    std::uint64_t totalPageFile;     /**< bytes */
    std::uint64_t availablePageFile; /**< bytes */
};

/** @param status receives the present figures; all 0 when the system does not tell. */
GENUTIL_API void OSGetMemoryStatus(OSMemoryStatus& status);

/** How much of the memory that this process can use is in use: of the smaller one of the machine's
    memory and the process's address space, as it was at the first call. @return 0 to 100; -1 when
    the system's figures make no sense. */
GENUTIL_API long OSUtilPercentMemoryUsed();

/** The name of this host, as the system has it. @param name holds at least 64 bytes, of which at
    most 63 are written and a terminator; empty on failure. */
GENUTIL_API void OSGetHostnameNoDomain(char* name);

/** Keeps the machine from going to sleep while an object lives that asks for it. On Linux the
    session's manager is asked through libsystemd, if that is there; else nothing happens. */
class GENUTIL_API OSKeepAwake {
  public:
    /** @param keep 1 asks to stay awake, 0 does not. */
    explicit OSKeepAwake(unsigned char keep = 1);
    /** Takes what the other does at its end, which must then not come: programs that keep an object
        by value rely on the two bytes being all there is. */
    OSKeepAwake& operator=(const OSKeepAwake& other);
    OSKeepAwake(const OSKeepAwake&) = delete;
    /** The machine may sleep when this was the last one to ask. The first object of all has the
        service, so that it should live longest: at its end the service ends, and the next object
        made starts it again. */
    ~OSKeepAwake();

  private:
    friend struct genutil::KeepAwakeService;

    unsigned char m_loader;
    unsigned char m_keep;

    static void* m_hDLL;          // the system's library
    static void* m_lpfnDllFunc1;  // what it keeps awake by; null when it has none
    static unsigned char m_bLibraryLoaded;
    static _osthread* m_thread;
    static genutil::AwakeEvent* m_threadAwakeEvent;
    static genutil::AwakeEvent* m_threadTerminateEvent;
    static genutil::AwakeLock* m_awakeCritSect;
    static long m_awakeCtr;  // objects that ask
};

#endif
