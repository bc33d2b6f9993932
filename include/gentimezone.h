/* The time zone of the process and of each thread.

   The C library converts times in a single zone, which the environment variable TZ names. A server
   with users in several time zones stores the zone of each thread in its thread-local variable
   "timezone" (CGNLclSt, osthread.h). Before each conversion, the date classes make that zone the
   zone of the process while they hold their mutex:

       CGNLclSt::Instance()->Init(10);
       CGNLclSt::Instance()->SetLocalVariable("timezone", zone);     // "Asia/Tokyo", owned by you
       CGNDateTime::LocalTimeTS(now, local);                         // in Tokyo

   A zone is given in the syntax of TZ: a rule such as "CET-1CEST,M3.5.0,M10.5.0/3" or a name of the
   tz database such as "Asia/Tokyo". This library understands both on every system. The C library of
   Windows understands rules only. Any other text means UTC. */
#ifndef GENUTIL_GENTIMEZONE_H
#define GENUTIL_GENTIMEZONE_H

#include <ctime>

#include "genexport.h"
#include "genstr.h"

namespace genutil {
struct ZoneAccess;
}

/** Switches the time zone of the process. */
class GENUTIL_API OSTimeZone {
  public:
    /** Returns the instance. The first call creates it and records the current value of TZ. Returns
        null if allocation fails. Not synchronised; make the first call while the process starts. */
    static OSTimeZone* GetInstance();
    /** Destroys the instance. TZ is unchanged. */
    static void Free();

    OSTimeZone(const OSTimeZone& other);            /**< Copies every field. */
    OSTimeZone& operator=(const OSTimeZone& other); /**< Copies every field. */
    ~OSTimeZone();

    /** Returns the value of TZ, or an empty string if TZ is not set. */
    CGNString GetTZ() const;
    /** Returns the value of TZ when the instance was created, or an empty string if TZ was not
        set. */
    CGNString GetSystemTZ() const;

    /** Sets TZ and makes the C library read it, unless TZ already has that value. If TZ was unset
        or empty, a placeholder is set first. Does nothing in a process that is not threaded.
        @param zone at most 124 bytes; a longer zone is ignored. Empty or null removes TZ, so
            that the zone of the machine applies. */
    void SetTZ(const char* zone);

    /** Makes the zone of the calling thread the zone of the process. If the thread has no zone, the
        zone of the process is unchanged. In a process that is not threaded, makes the C library
        read TZ again. If TZ is not set there, reads the zone of the machine again at most once per
        second. */
    void SetThreadTZ();

  private:
    friend struct genutil::ZoneAccess;

    OSTimeZone();

    char m_environment[128];
    CGNString m_systemZone;
    static OSTimeZone* m_instance;
};

/** Converts a moment to local time with this year's time zone rules of the operating system. On
    Windows the result does not depend on TZ. Returns the C library's record for gmtime, valid until
    its next use, or null if the moment cannot be converted.
    @param utc seconds since 1970. */
GENUTIL_API struct tm* GetLocalTimeFromUCT(const long* utc);

#endif
