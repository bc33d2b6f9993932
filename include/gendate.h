/* Calendar dates, times of day and moments, written and read as the user's locale does.

   CGNDate is a day of the calendar, CGNTime a time of day without a date, CGNDateTime a moment in
   seconds since 1970 with its local date and time. OSTimeZone is the zone that they convert in.

       CGNDateTime::ModuleInit();                   // once, in a threaded process
       CGNDateTime moment(1269093600L);
       moment.FormatForDisplay(2);                  // in the long date format
       CGNString text;
       moment.GetDisplayBuffer(text);               // "Saturday, March 20, 2010 2:00:00 PM"

       CGNDate date;
       date.FromString("3/20/10");                  // as the user typed it
       date.GetDateValue();                         // 2455276, its Julian day number

   Formats and names come from the global locale (genlocale.h), which is asked anew each time: a
   change in the control panel, or by CLCLocale's functions, counts at once. Results that answer yes
   or no are an unsigned char of 1 or 0. Nothing throws. An object belongs to one thread at a time;
   the conversions with a clock or a zone may be called by any number of threads. */
#ifndef GENUTIL_GENDATE_H
#define GENUTIL_GENDATE_H

#include <ctime>

#include "genexport.h"
#include "gencalendar.h"
#include "genmoment.h"
#include "gentimeofday.h"
#include "gentimezone.h"

#endif
