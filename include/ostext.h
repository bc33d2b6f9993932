/* Text layout of clients and servers.

   Clients end lines with CR LF and servers with LF, and the two may use different encodings. These
   functions convert line ends, count line breaks and compute how much of a text fits within a limit
   of the other side.

       CGNString text("one\ntwo");
       OSClientFormatString(text);      // 8: "one\r\ntwo"
       OSServerFormatString(text);      // 7: "one\ntwo"

   The conversions end at the first 0 byte: if they change anything, the bytes from there on are
   dropped. Otherwise the text and its length are unchanged. Line feeds are counted in all bytes. An
   allocation failure is reported to the library's assertion
   service and leaves the text unchanged. Different texts may be converted on several threads at the
   same time. */
#ifndef GENUTIL_OSTEXT_H
#define GENUTIL_OSTEXT_H

#include "genexport.h"
#include "genstring.h"

/** Converts a text to the client's layout and returns its new length in bytes. A carriage return is
    inserted before each line feed that has none. The byte 0x01, which marks a bare line feed,
    becomes a line feed. */
GENUTIL_API int OSClientFormatString(CGNString& text);

/** Converts a text to the server's layout and returns its new length in bytes. A carriage return
    before a line feed is removed. Other carriage returns are unchanged. */
GENUTIL_API int OSServerFormatString(CGNString& text);

/** Returns the number of line feeds after the first byte. A line feed at the first byte is not
    counted. */
GENUTIL_API int OSClientGetNumLines(const CGNString& text);

/** Returns the number of bytes of a text that fit on a server with a limit. The text is converted
    to the server's encoding, cut at a character boundary and converted back. If the user's default
    language is not Japanese, Korean or Chinese, always returns the limit itself. Otherwise returns
   0 for null, for a negative limit and if allocation fails.
    @param text the text, in the current code set.
    @param limit maximum number of bytes on the server. */
GENUTIL_API int OSFindPlatformStringLength(const char* text, int limit);

/** Returns the number of whole characters of a text that fit into a number of UTF-8 bytes. Returns
    0 for null and for a negative limit. The time depends on the limit, not on the length of the
    text.
    @param text the text, in the ANSI code page of the user's locale.
    @param limit maximum number of bytes in UTF-8. */
GENUTIL_API int FindUTF8StringLength(const char* text, int limit);

#endif
