/* Calendar dates, times of day and moments, formatted and parsed in the user's locale.

   CGNDate is a calendar date. CGNTime is a time of day without a date. CGNDateTime is a moment:
   seconds since 1970 with the corresponding local date and time. OSTimeZone is the time zone used
   by all conversions.

       CGNDateTime::ModuleInit();                   // once, in a threaded process
       CGNDateTime moment(1269093600L);
       moment.FormatForDisplay(2);                  // in the long date format
       CGNString text;
       moment.GetDisplayBuffer(text);               // "Saturday, March 20, 2010 2:00:00 PM"

       CGNDate date;
       date.FromString("3/20/10");                  // as the user typed it
       date.GetDateValue();                         // 2455276, its Julian day number

   Formats and names are read from the global locale (genlocale.h) on every call. A change in the
   control panel or through CLCLocale therefore takes effect immediately. Boolean results are an
   unsigned char, 1 or 0. Nothing throws. An object may be used by one thread at a time. The clock
   and time zone conversions may be called from any thread. */
#ifndef GENUTIL_GENDATE_H
#define GENUTIL_GENDATE_H

#include <ctime>

#include "gencalendar.h"
#include "genexport.h"
#include "genmoment.h"
#include "gentimeofday.h"
#include "gentimezone.h"

#endif
