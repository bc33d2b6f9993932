/* The zone of the process, and that of each thread.

   The C library converts by one zone, that of the variable TZ. A server that has users in several
   zones keeps the zone of each thread in the thread's variable "timezone" (CGNLclSt, osthread.h);
   before every conversion the date classes make it that of the process, under their mutex:

       CGNLclSt::Instance()->Init(10);
       CGNLclSt::Instance()->SetLocalVariable("timezone", zone);     // "Asia/Tokyo", kept by you
       CGNDateTime::LocalTimeTS(now, local);                         // in Tokyo

   A zone is what TZ takes: a rule such as "CET-1CEST,M3.5.0,M10.5.0/3", or a name of the tz
   database such as "Asia/Tokyo". The conversions of this library understand both on every system;
   the C library of Windows understands rules only. A text that is neither means UTC. */
#ifndef GENUTIL_GENTIMEZONE_H
#define GENUTIL_GENTIMEZONE_H

#include <ctime>

#include "genexport.h"
#include "genstr.h"

namespace genutil {
struct ZoneAccess;
}

/** Switches the zone of the process. */
class GENUTIL_API OSTimeZone {
  public:
    /** @return the instance, made by the first call, which remembers the zone that TZ has then;
       null when memory runs out. Not synchronised: called first while the process starts. */
    static OSTimeZone* GetInstance();
    /** Destroys the instance; TZ stays as it is. */
    static void Free();

    OSTimeZone(const OSTimeZone& other);            /**< a copy of all of it */
    OSTimeZone& operator=(const OSTimeZone& other); /**< takes all of it */
    ~OSTimeZone();

    /** @return the variable TZ; empty when it is not set. */
    CGNString GetTZ() const;
    /** @return what TZ was when the instance was made; empty when it was not set. */
    CGNString GetSystemTZ() const;

    /** Sets TZ and has the C library read it, unless it has that value. Where there was no zone, a
        placeholder is set first. Does nothing in a process that is not threaded.
        @param zone at most 124 bytes; a longer one is not set. Empty or null removes TZ: the zone
       is then that of the machine. */
    void SetTZ(const char* zone);

    /** Makes the calling thread's zone that of the process; a thread without one leaves it. In a
        process that is not threaded the C library reads TZ anew, and without TZ the zone of the
        machine, once a second at most. */
    void SetThreadTZ();

  private:
    friend struct genutil::ZoneAccess;

    OSTimeZone();
    static void CheckLayout();

    char m_environment[128];
    CGNString m_systemZone;
    static OSTimeZone* m_instance;
};

/** Converts a moment by the rules that the operating system has for its own zone in this year,
    whatever TZ says on Windows.
    @param utc seconds since 1970. @return the local time in the C library's record for gmtime,
   valid until its next use; null when there is no such time. */
GENUTIL_API struct tm* GetLocalTimeFromUCT(const long* utc);

#endif
