/* Text layout of client and server.

   Texts travel between clients, whose lines end in CR LF, and servers, where they end in LF, and
   the two may code them differently. These functions change a text's line ends from one form to the
   other, count its line breaks, and tell how much of it fits where the other side has a limit.

       CGNString text("one\ntwo");
       OSClientFormatString(text);      // 8: "one\r\ntwo"
       OSServerFormatString(text);      // 7: "one\ntwo"

   A text ends at its first 0 byte. When memory runs out, the failure is reported to the library's
   assertion and the text stays as it was. Different texts may be changed by several threads at a
   time. */
#ifndef GENUTIL_OSTEXT_H
#define GENUTIL_OSTEXT_H

#include "genexport.h"
#include "genstr.h"

/** Changes a text to the client's form: a line feed without a carriage return before it is given
    one, and the byte 0x01, which marks a break that stays bare, becomes a line feed.
    @return the new length in bytes. */
GENUTIL_API int OSClientFormatString(CGNString& text);

/** Changes a text to the server's form: a carriage return before a line feed is dropped; others
    stay. @return the new length in bytes. */
GENUTIL_API int OSServerFormatString(CGNString& text);

/** @return the number of line feeds behind the first byte: one there is not counted, and neither is
    a last line without one. */
GENUTIL_API int OSClientGetNumLines(const CGNString& text);

/** How much of a text survives a server that stores no more bytes than a limit: it is coded for
    the server, cut there at the last whole character, and coded back.
    @param text in the current code set. @param limit bytes at the server.
    @return bytes of text; for a user whose language is not Japanese, Korean or Chinese the limit
    itself, whatever the text. 0 for null, for a negative limit and when memory runs out. */
GENUTIL_API int OSFindPlatformStringLength(const char* text, int limit);

/** How much of a text fits into a limit as UTF-8.
    @param text in the ANSI code page of the user's locale. @param limit bytes of UTF-8.
    @return characters of text, whole ones only; 0 for null and for a negative limit. */
GENUTIL_API int FindUTF8StringLength(const char* text, int limit);

#endif
