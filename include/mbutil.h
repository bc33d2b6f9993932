/* Multibyte text: the current code set, iteration over characters, string functions that never
   split a character, and conversion between code sets. Usable from C and C++.

   A text is a NUL-terminated string of bytes in a code set. A code set is a byte encoding
   identified by a small number (enum mbCodeSet). One code set is current for the whole process, and
   functions without a code set parameter use it. The first call that needs the current code set
   derives it from the user's locale. Only InitMbutil and InitMbutilExt change it afterwards.

       InitMbutil();                      follow the user's locale
       InitMbutilExt(mbShiftJis);         or choose one
       for (i = 0;;) {                    visit each character
           use(text + i, mbbytesinchar((const unsigned char *)text + i));
           if ((i = mbnextidx(text, i)) == 0) break;
       }

   Unless stated otherwise, lengths and indexes are in bytes and count from 0. A sequence that is
   invalid in the code set is treated as characters of one byte. Functions neither allocate nor
   throw, and they do not retain pointers to buffers. The first use of the characters of a code set
   is an exception: it allocates their tables, which remain for the life of the process. The current
   code set is not synchronised; set it before other threads start. With that condition, every
   function except mbstrtok, mbSetCurrentLocale and mbSetTZone may be called from any thread. */
#ifndef GENUTIL_MBUTIL_H
#define GENUTIL_MBUTIL_H

#include <stddef.h>
#include <stdio.h>

#include "genexport.h"

#if defined(__cplusplus)
extern "C" {
#else
#include <stdbool.h>
#endif

/* -- Code sets ------------------------------------------------------------------------------- */

/** Code set numbers. A number that is not listed is treated as a single-byte code set. */
enum mbCodeSet {
    mbWestern = 0, /**< Windows-1252, the default */
    mb8859_1 = 1,
    mb8859_15 = 2,
    mbJis = 3, /**< ISO-2022-JP; one byte per character outside conversions */
    mbEucJp = 4,
    mbShiftJis = 5, /**< converted as Windows code page 932 */
    mbReserved6 = 6,
    mbGb2312 = 7, /**< converted as code page 936 */
    mbEucCn = 8,
    mbBig5 = 9, /**< converted as code page 950 */
    mbEucTw = 10,
    mbKorean = 11, /**< unified Korean, code page 949 */
    mbJohab = 12,
    mbEucKr = 13,
    mb8859_2 = 14,
    mb8859_3 = 15,
    mb8859_4 = 16,
    mb8859_5 = 17,
    mb8859_6 = 18,
    mb8859_7 = 19,
    mb8859_8 = 20,
    mb8859_9 = 21,
    mb8859_10 = 22,
    mbWindows1250 = 23,
    mbWindows1251 = 24,
    mbWindows1253 = 25,
    mbWindows1254 = 26,
    mbWindows1255 = 27,
    mbWindows1256 = 28,
    mbWindows1257 = 29,
    mbWindows1258 = 30,
    mbWindows874 = 40,
    mbIso2022Cn = 41,
    mbIso2022Kr = 42,
    mbUtf16 = 64, /**< converted as little-endian units; a byte-order mark is respected */
    mbUtf8 = 65,  /**< characters are recognised by conversions only; one byte each elsewhere */

    /* Code sets of conversions only. As the current code set, each of them behaves like an unlisted
       number. */
    mbGb18030 = 100, /**< the edition of 2005 */
    mb8859_11 = 101,
    mb8859_13 = 102,
    mb8859_14 = 103,
    mb8859_16 = 104,
    mbKoi8R = 105,
    mbKoi8U = 106,
    mbDos437 = 107,
    mbDos850 = 108,
    mbDos852 = 109,
    mbDos866 = 110,
    mbUtf16Be = 111, /**< big-endian units */
    mbUtf32 = 112,   /**< converted as little-endian units; a byte-order mark is respected */
    mbUtf32Be = 113  /**< big-endian units */
};

/** Derives the current code set from the user's locale on every call. Returns the previous code
    set. */
GENUTIL_API int InitMbutil(void);

/** Sets the current code set, unchecked. Returns the previous code set. Call InitMbutil first;
    otherwise the first function that needs the current code set initialises it and overrides this
    choice. */
GENUTIL_API int InitMbutilExt(int codeSet);

/** Returns the current code set. Never initialises it. */
GENUTIL_API int mbGetLocaleCodeSet(void);

/** Returns true if the current code set has characters of more than one byte (3 to 5, 7 to 13). */
GENUTIL_API bool mbIsMultiByte(void);

/** Returns 1 if the current code set is Japanese (3, 4 or 5), or else 0. */
GENUTIL_API unsigned char mbIsJapanese(void);

/** Writes the name of the current code set, such as "SJIS", or an empty text for an unlisted
    number. Returns dst. Never initialises the current code set.
    @param ignored has no effect; existing programs pass a number and expect the current name.
    @param dst receives at most 11 characters and a terminator. */
GENUTIL_API char* SetCodePage(int ignored, char* dst);

/** Returns the code set of a free-form name such as "Shift-JIS", "cp1250" or "ISO-8859-15". The
    first known keyword in the name decides. Letter case is ignored and "-" equals "_". Returns 0
    for null, empty and unknown names. */
GENUTIL_API int mbGetCodeSet(const char* name);

/** Returns the code set of a MIME character set name such as "shift_jis" or "euc-kr" or of another
    common name such as "latin1", "windows-31j" or "koi8-r", ignoring letter case. Any other name is
    passed to mbGetCodeSet. Returns 0 for null and empty names. */
GENUTIL_API int mbGetCodeSetFromCharset(const char* name);

/** Writes the MIME character set name of a code set. The name is empty if the code set has none,
    such as 6 and 12.
    @param dst receives at most 21 characters and a terminator.
    @param codeSet the code set. */
GENUTIL_API void SetCharset(char* dst, int codeSet);

/** Replaces the MIME name of an ISO 8859 character set with that of the corresponding Windows code
    page. Returns null if name does not contain "8859". Otherwise returns name.
    @param name buffer of at least 13 bytes; modified only for ISO 8859-1, -2, -4 to -9 and -15. */
GENUTIL_API char* MapToWindowsCharsetName(char* name);

/* -- Locales ----------------------------------------------------------------------------------

   A locale is identified by its name: language, "_" and country ("ja_JP"), in a few cases followed
   by a variant ("es_ES_T"). The library has a table of locale names with their Windows locale
   identifiers. Its names are case-sensitive. The part of a name after the first "." or "@" is
   ignored there.

   A handle represents a locale that has been looked up. Opening, selecting and closing handles
   never changes the current code set. Handles may be queried from any thread. The current handle
   belongs to the whole process and is not synchronised.

       mbLocale locale = mbOpenLocale("ja_JP.eucJP", mbOpenBest, NULL);
       mbLocaleLCID(locale);                                              0x0411
       mbLocaleCodeSet(locale);                                           mbEucJp
       mbGetLocalePart(locale, mbPartCountry, name, sizeof name);         "JP"
       mbCloseLocale(locale); */

/** A locale handle. Null means the user's locale in every function with a handle parameter. */
typedef struct mbLocaleRecord* mbLocale;

/** Receives the result of a lookup as a line of text without a line end. */
typedef void (*mbLocaleTrace)(const char* line);

/** Accepted deviation of a locale name from the names in the table. */
enum mbLocaleKind {
    mbOpenExact = 0,   /**< a name in the table, optionally with a "." or "@" part */
    mbOpenSpelled = 1, /**< also any letter case, "-" for "_", or an identifier ("0x0411") */
    mbOpenBest = 2     /**< also a language alone or with an unknown country */
};

/** Opens a locale by name. With mbOpenBest, "de" and "de_XX" open "de_DE", the usual country of the
    language. Returns the handle, to be closed with mbCloseLocale. Returns null if the locale is
    unknown or allocation fails.
    @param name the name, such as "ja_JP.SJIS" or "de_DE@euro"; null or empty for the user's
        locale.
    @param kind one of mbLocaleKind; any other number is treated as mbOpenBest.
    @param trace called once with the result of the lookup; may be null. */
GENUTIL_API mbLocale mbOpenLocale(const char* name, int kind, mbLocaleTrace trace);

/** Closes a handle; null is ignored. If the handle was current, the user's locale becomes
    current. */
GENUTIL_API void mbCloseLocale(mbLocale locale);

/** Returns the handle last set by mbSetCurrentLocale; null initially. */
GENUTIL_API mbLocale mbGetCurrentLocale(void);

/** Sets the current handle. mbGetLCID and mbConvertToUTF8 use its locale if they are given no name.
    The handle must remain open while it is current. Returns the previous one. */
GENUTIL_API mbLocale mbSetCurrentLocale(mbLocale locale);

/** Returns the Windows locale identifier of a handle. */
GENUTIL_API unsigned long mbLocaleLCID(mbLocale locale);

/** Returns the code set in the name with which the handle was opened ("ja_JP.eucJP"). If the name
    contains no known code set, returns the code set of the locale's texts. */
GENUTIL_API int mbLocaleCodeSet(mbLocale locale);

/** The parts of a locale's name. */
enum mbLocalePart {
    mbPartName = 0,     /**< the name in the table: "es_ES_T" */
    mbPartLanguage = 1, /**< "es" */
    mbPartCountry = 2,  /**< "ES"; empty if the name has none */
    mbPartVariant = 3,  /**< "T"; empty for most locales */
    mbPartCharset = 4   /**< the part after "." when the locale was opened: "SJIS" */
};

/** Writes a part of a handle's name. Returns its length in bytes, or 0 if the part is empty or does
    not fit.
    @param locale the handle.
    @param part one of mbLocalePart.
    @param out receives the part; empty if it does not fit.
    @param size size of out in bytes. */
GENUTIL_API int mbGetLocalePart(mbLocale locale, int part, char* out, int size);

/** Returns the Windows locale identifier of a locale name such as "ja_JP". The name ends at the
    first "." or "@", as in "en_US.UTF-8". Null or empty means the locale of the current handle, or
    the user's locale if there is none. Returns 0 if the name is unknown. If the table lists a name
    several times, the first entry with an identifier of its own counts. */
GENUTIL_API unsigned long mbGetLCID(const char* localeName);

/** Writes the MIME name of the code set of a locale's texts: "shift_jis" for "ja_JP",
    "windows-1252" for "en_US.UTF-8", because the part after "." is ignored. Returns the length of
    the name in bytes, or 0 if it does not fit.
    @param dst receives the name; empty if it does not fit.
    @param size size of dst in bytes.
    @param localeName the locale; null or empty for the user's locale. An unknown name is
        treated as Western. */
GENUTIL_API int mbDefaultCodePageForLocale(char* dst, int size, const char* localeName);

/** The locales that an enumeration lists. */
enum mbLocaleSelection {
    mbSelectCodeSet = 0, /**< locales whose texts are in the current code set */
    mbSelectSystem = 1,  /**< locales that the operating system supports */
    mbSelectAll = 2      /**< all locales of the table */
};

/** Enumerates the names in the table, each one once. Returns the length of the name in bytes even
    if it does not fit. Returns 0 and leaves name unchanged after the last one.
    @param name receives the next name; empty if it does not fit (16 bytes always suffice).
    @param size size of name in bytes.
    @param cursor1 position of the enumeration; -1 starts it.
    @param cursor2 number of names listed before this one; -1 starts the enumeration.
    @param select one of mbLocaleSelection; any other number lists all names. */
GENUTIL_API int mbGetNextLocaleEx(char* name, int size, int* cursor1, int* cursor2, int select);

/** Styles of a locale's description. */
enum mbLocaleStyle {
    mbStyleNative = 0,   /**< in its own language, if the current code set has the characters */
    mbStyleLanguage = 1, /**< its language in English */
    mbStyleEnglish = 2   /**< "English (United States)" */
};

/** Writes a description of a locale for users, in the current code set. English descriptions come
    from the library and are the same on every system. Returns 1 on success. Returns 0 and empties
    out if the name is unknown.
    @param out receives the text, cut at a character boundary if it does not fit (128 bytes
        always suffice).
    @param size size of out in bytes.
    @param name a name in the table; null or empty for the user's locale.
    @param style one of mbLocaleStyle; any other number is treated as mbStyleEnglish. */
GENUTIL_API int mbDisplayLocale(char* out, int size, const char* name, int style);

/* -- Time zones -------------------------------------------------------------------------------

   A time zone is identified by its name in the tz database ("Asia/Tokyo"). Every function also
   accepts the Windows name of the zone ("Tokyo Standard Time"). A zone of the system without a name
   in the database keeps its system name. Names are case-sensitive.

       mbTZoneCursor cursor = mbFirstTZone;
       while (mbGetNextTZone(name, sizeof name, &cursor)) {
           mbDisplayTZone(text, sizeof text, name);      "(UTC+09:00) Tokyo, Japan"
       }

   The first call that needs the zones reads them from the system, once per process. After that,
   every function except mbSetTZone may be called from any thread. */

/** Position of an enumeration of time zones. Setting all bytes to 0xFF, as in mbFirstTZone, starts
    a new enumeration. */
typedef struct mbTZoneCursor {
    int position[4]; /**< for use by the library; copy the array as a whole */
} mbTZoneCursor;
/** The cursor value before the first zone. */
#define mbFirstTZone       \
    {                      \
        { -1, -1, -1, -1 } \
    }

/** Enumerates the time zones of the system from west to east. Returns the length of the name in
    bytes even if it does not fit. Returns 0 and leaves name unchanged after the last zone.
    @param name receives the name of the next zone; empty if it does not fit (48 bytes always
        suffice).
    @param size size of name in bytes.
    @param cursor position of the enumeration. */
GENUTIL_API int mbGetNextTZone(char* name, int size, mbTZoneCursor* cursor);

/** Writes a description of a zone for users: its offset in standard time and its place in English,
    in the current code set. Returns 1 on success. Returns 0 and empties out if the system does not
    know the zone.
    @param out receives the text, cut at a character boundary if it does not fit (128 bytes
        always suffice).
    @param size size of out in bytes.
    @param name the zone. */
GENUTIL_API int mbDisplayTZone(char* out, int size, const char* name);

/** Writes the current rule of a zone in the syntax that TZ has on every system: "JST-9",
    "CET-1CEST,M3.5.0,M10.5.0/3". The abbreviations in it may differ between systems. Returns the
    length in bytes, or 0 if the rule does not fit or the zone is unknown.
    @param out receives the rule; empty if it does not fit (64 bytes always suffice).
    @param size size of out in bytes.
    @param name the zone. */
GENUTIL_API int mbGetTZoneRule(char* out, int size, const char* name);

/** Writes the Windows name of a zone of the tz database. Older names in the database are accepted.
    The name comes from a table in the library and is the same on every system. Returns the length
    in bytes, or 0 if the name does not fit or Windows has no such zone.
    @param out receives the name; empty if it does not fit.
    @param size size of out in bytes.
    @param name the zone's name in the tz database. */
GENUTIL_API int mbGetWindowsTZone(char* out, int size, const char* name);

/** Writes the tz database name of a Windows zone, which is that of its best-known place. Returns
    the length in bytes, or 0 if the name does not fit or the zone is unknown.
    @param out receives the name; empty if it does not fit.
    @param size size of out in bytes.
    @param windowsName the Windows name, such as "Tokyo Standard Time". */
GENUTIL_API int mbGetTZoneOfWindows(char* out, int size, const char* windowsName);

/** Sets the zone of the process through the environment variable TZ. TZ receives the name of the
    zone, or its rule on Windows, where the C library does not know names. Call it while no other
    thread reads the environment. Returns 1 on success. Returns 0 and changes nothing if the zone is
    unknown.
    @param name the zone, or a rule in the syntax of TZ; null or empty for the zone of the
        machine. */
GENUTIL_API int mbSetTZone(const char* name);

/** Writes the name of the zone of the process: the name passed to mbSetTZone while it is in force,
    or else the value of TZ, or else the zone of the machine. Returns the length in bytes, or 0 if
    the name does not fit or is unknown.
    @param out receives the name; empty if it does not fit.
    @param size size of out in bytes. */
GENUTIL_API int mbGetTZone(char* out, int size);

/* -- Characters ------------------------------------------------------------------------------ */

/** Returns the length in bytes, 1 to 4, of the character at p. At most n bytes are read. Returns 0
    at a terminator, for null and for n = 0. Returns -1 for an invalid sequence. If n ends within
    the character, returns the length that its lead byte requires. In a single-byte code set and in
    code set 3, always returns 1 without reading p. */
GENUTIL_API int mblenExt(const unsigned char* p, unsigned n, int codeSet);
/** Same as mblenExt in the current code set. */
GENUTIL_API int mb_mblen(const unsigned char* p, unsigned n);

/** Returns 1 if byte value c (0 to 255) is the lead byte of a multibyte character, or else 0. */
GENUTIL_API int isleadbyteExt(int c, int codeSet);
/** Same as isleadbyteExt in the current code set. */
GENUTIL_API int mb_isleadbyte(int c);

/** Returns the maximum length in bytes, 1 to 4, of a character in codeSet. */
GENUTIL_API int mbmaxcharlenExt(int codeSet);
/** Same as mbmaxcharlenExt in the current code set. */
GENUTIL_API int mbmaxcharlen(void);

/** Returns the distance in bytes, 1 to 4, from the character at p to the next one. Returns 1 at a
    terminator and at an invalid sequence. */
GENUTIL_API int mbbytesinchartype(const unsigned char* p, int codeSet);
/** Same as mbbytesinchartype in the current code set. */
GENUTIL_API int mbbytesinchar(const unsigned char* p);

/** Returns the index of the first byte of the character that contains byte idx. Returns strlen(s)
    if idx is at or after the end. While the current code set is single-byte, returns idx whatever
    codeSet is. */
GENUTIL_API unsigned mbidxtype(const char* s, unsigned idx, int codeSet);
/** Same as mbidxtype in the current code set. */
GENUTIL_API unsigned mbidx(const char* s, unsigned idx);

/** Returns the index of the first byte of the character after the one that contains byte idx.
    Returns 0 if there is none. Takes constant time, except within a run of double-byte characters,
    which is scanned backwards.
    @param s the text.
    @param idx at most strlen(s). */
GENUTIL_API unsigned mbnextidx(const char* s, unsigned idx);

/** Same as mbnextidx, but returns a pointer, or null if there is no further character. */
GENUTIL_API char* mbnextchar(const char* s, unsigned idx);

/** Returns the number of characters in the first n bytes of s or up to its terminator. In an
    invalid sequence, and in a character that n cuts, every byte counts as a character. */
GENUTIL_API unsigned mbcharcount(const char* s, unsigned n);

/** Compares character by character over at most n bytes. Returns a negative number, 0 or a positive
    number. In a single-byte code set only the first bytes are compared, as signed chars, and n is
    ignored; existing programs depend on it. */
GENUTIL_API int mbcharcmp(const unsigned char* a, const unsigned char* b, unsigned n);

/** Returns 1 if byte value c is a complete character in the current code set: 0 to 0x7F, and the
    half-width katakana 0xA1 to 0xDF in Shift-JIS. Control characters are included. */
GENUTIL_API int ismbcprint(int c);

/* -- Strings --------------------------------------------------------------------------------- */

/** Copies a string as strncpy does, without splitting a character. If byte n is within a character,
    the copy ends before that character and is terminated. Otherwise, a source of n or more bytes is
    not terminated and a shorter one is padded with 0. Returns dst. Copies nothing if either pointer
    is null; in a single-byte code set neither may be null. */
GENUTIL_API char* mbstrncpy(char* dst, const char* src, unsigned n);

/** Same as mbstrncpy, but returns the number of bytes copied, or 0 if either pointer is null. */
GENUTIL_API unsigned mbstrncpyi(char* dst, const char* src, unsigned n);

/** Compares two strings, ignoring the case of single-byte characters. A character with more bytes
    sorts after one with fewer. Returns -1, 0 or 1; 0 if either pointer is null. */
GENUTIL_API int mbstricmp(const char* a, const char* b);

/** Compares as mbstricmp over at most n bytes of a. A character that n cuts is compared whole.
    Returns a negative number, 0 or a positive number; -1 if a ends, also at n, before b does. */
GENUTIL_API int mbstrnicmp(const char* a, const char* b, unsigned n);

/** Converts single-byte characters to upper case in place by the rules of the current code set
    (0xE9 becomes 0xC9 in Windows-1252). A character without an upper-case form in the code set is
    unchanged. Returns the length in bytes; 0 for null. */
GENUTIL_API unsigned mbstrtoupper(char* s);
/** Converts single-byte characters to lower case in place; see mbstrtoupper. */
GENUTIL_API unsigned mbstrtolower(char* s);

/** Finds the first character whose first byte is c. Trail bytes are never matched. In a multi-byte
    code set, a byte of 0x80 or above matches only if c is negative, as a promoted plain char is.
    The terminator matches c = 0. Returns a pointer into s, or null if there is no match. */
GENUTIL_API char* mbstrchr(const char* s, int c);

/** Same as mbstrchr, for text whose bytes are not ordinary characters. In a multi-byte code set the
    terminator never matches. */
GENUTIL_API char* mbstrchrEncr(const char* s, int c);

/** Finds the last character whose first byte, as a signed char, is c. Returns a pointer into s, or
    null if there is no match. */
GENUTIL_API char* mbstrrchr(const char* s, int c);

/** Finds the first occurrence of needle at character boundaries of hay. Returns a pointer into hay.
    Returns hay for a null or empty needle, and null for a null hay or no match. */
GENUTIL_API char* mbstrstr(const char* hay, const char* needle);

/** Finds the last occurrence of needle; see mbstrstr. For an empty needle, returns the terminator
    of hay. */
GENUTIL_API char* mbstrrstr(const char* hay, const char* needle);

/** Finds the first character of s that is contained in accept. Returns a pointer into s, or null if
    there is none. */
GENUTIL_API char* mbstrpbrk(const char* s, const char* accept);

/** Returns the offset in bytes of mbstrpbrk(s, reject), or strlen(s) if there is none. */
GENUTIL_API unsigned mbstrcspn(const char* s, const char* reject);

/** Compares by the collation of the user's locale. In the C and POSIX locales, and without a
   locale, texts are ordered by their bytes. In invalid text, each invalid byte counts as a
   character of its own. If allocation fails, an assertion is reported and bytes are compared.
   Returns a negative number, 0 or a positive number. */
GENUTIL_API int mbstrcoll(const char* a, const char* b);

/** Splits a text at any of the characters of delim, as strtok does, and writes to s. Returns the
    next token, or null if there is none. The whole process has a single continuation, so calls for
    two texts or from two threads must not interleave.
    @param s the text, or null to continue.
    @param delim the delimiters. */
GENUTIL_API char* mbstrtok(char* s, const char* delim);

/** Checks that s contains only valid characters of codeSet. Returns 1 if it does, and always while
    the current code set is single-byte. Returns 0 if it does not or if either pointer is null.
    @param s the text.
    @param badIndex receives the index of the first invalid byte; unchanged if the text is
        valid.
    @param codeSet the code set. */
GENUTIL_API int mbvalidatestring(const char* s, unsigned* badIndex, int codeSet);

/* -- Streams --------------------------------------------------------------------------------- */

/** Reads a line as fgets does, at most n - 1 bytes of it, and converts them from fileCodeSet to the
    current code set as convertStrExt does. In a single-byte code set it is the same as fgets. If
   the result is longer than n - 1 bytes, it is cut at a character boundary and the rest is lost; a
    character that the n - 1 bytes cut is lost too. mbReadLine reads lines without loss. Allocates
    temporary memory. Returns buf, or null at the end of the stream or if allocation fails.
    @param buf receives at most n - 1 bytes and a terminator.
    @param n size of buf in bytes.
    @param stream an open stream.
    @param fileCodeSet the code set of the stream. */
GENUTIL_API char* mbfgets(char* buf, int n, FILE* stream, int fileCodeSet);

/** Writes a text as fputs does, converted from the current code set to fileCodeSet (0 means no
    conversion) as convertStrExt does. Text in JIS ends in ASCII, so that texts may be written one
    after the other. In a single-byte code set it is the same as fputs. Allocates temporary memory.
    Returns the result of fputs; 0 for a null s; -1 if allocation fails. */
GENUTIL_API int mbfputs(const char* s, FILE* stream, int fileCodeSet);

/** Reads up to n bytes that end at a character boundary. The stream is moved back over a partial
    character. Returns the number of bytes kept; 0 only at the end of the stream.
    @param buf buffer of n + 1 bytes; terminated in a multi-byte code set.
    @param n number of bytes requested.
    @param stream an open stream that can seek. */
GENUTIL_API unsigned mbfreadstring(char* buf, unsigned n, FILE* stream);

/* -- Conversion ------------------------------------------------------------------------------ */

/** Report of a conversion. Counts are in bytes, except lost, which counts characters. The caller
    sets lostAt and lostAtSize, or zeroes both, before the call. The conversion sets the other
    fields. */
typedef struct mbConversion {
    /** the caller's array for the source indexes of lost characters, or null */
    size_t* lostAt;
    size_t lostAtSize; /**< number of elements of lostAt; further losses are only counted */
    size_t consumed;   /**< source bytes converted */
    size_t produced;   /**< bytes written, without the terminator */
    size_t lost;       /**< characters replaced because they are invalid or missing in the target */
} mbConversion;

/** Converts between any two code sets. There is no limit on the length, and characters that cannot
    be converted are reported. Each of them is replaced with one visible substitute: the geta mark
    in Japanese code sets, U+FFFD in UTF-8, UTF-16 and UTF-32, "?" elsewhere. Text that remains in
   its code set keeps its characters as they are, and its invalid bytes are replaced. Returns 1 if
   all of src was converted. Returns 0 if dst was too small, in which case it contains the
   characters that fitted, or if a code set is unknown, in which case nothing is consumed.
    @param src the source text of srcLength bytes; NUL is an ordinary character.
    @param srcLength length of src in bytes.
    @param fromCodeSet the code set of src.
    @param dst receives at most dstSize - 1 bytes and one NUL (UTF-16: dstSize - 2 and two, UTF-32:
        dstSize - 4 and four).
    @param dstSize size of dst in bytes; mbConvertBound returns a sufficient size.
    @param toCodeSet the code set of dst.
    @param conversion receives the report; may be null. */
GENUTIL_API int mbConvert(const char* src, size_t srcLength, int fromCodeSet, char* dst,
                          size_t dstSize, int toCodeSet, mbConversion* conversion);

/** Returns a size in bytes that is sufficient for mbConvert of srcLength bytes. */
GENUTIL_API size_t mbConvertBound(size_t srcLength, int fromCodeSet, int toCodeSet);

/** Converts to a newly allocated buffer; see mbConvert. Returns 1 on success. Returns 0 if
    allocation fails or a code set is unknown.
    @param src the source text.
    @param srcLength length of src in bytes.
    @param fromCodeSet the code set of src.
    @param out receives the buffer, to be released with free; unchanged on failure.
    @param toCodeSet the code set of the result.
    @param conversion receives the report; may be null. */
GENUTIL_API int mbConvertAlloc(const char* src, size_t srcLength, int fromCodeSet, char** out,
                               int toCodeSet, mbConversion* conversion);

/* A converter converts a text in pieces of any size, such as the blocks of a file or of a
   connection. Its result does not depend on where the pieces are cut. It never moves a stream and
   holds no more than one character between two calls.

       mbConverter* converter = mbOpenConverter(mbShiftJis, mbUtf8, 0);
       do {
           length = fread(block, 1, sizeof block, in);
           last = length < sizeof block;
           for (src = block, more = 1; more;) {
               dst = out;
               room = sizeof out;
               more = mbConvertNext(converter, &src, &length, &dst, &room, last, NULL) ==
   mbNextFull; fwrite(out, 1, dst - out, stdout);
           }
       } while (!last);
       mbCloseConverter(converter); */

/** A conversion in pieces. One thread at a time may use it. */
typedef struct mbConverter mbConverter;

/** Options of a converter. */
enum mbConverterFlags {
    mbConvertStop = 1,           /**< stop at the first lost character */
    mbConvertBestFit = 2,        /**< replace a lost character with a similar one of ASCII, "e" for
                                      an e with an accent, if there is one */
    mbConvertUnicodeEscapes = 4, /**< write a lost character as \\uXXXX, twice above U+FFFF */
    mbConvertHtmlEscapes = 8,    /**< write a lost character as &#NNNN; */
    mbConvertMark = 16,          /**< begin a text in UTF-8, UTF-16 or UTF-32 with a byte-order
                                      mark */
    mbConvertNoMark = 32         /**< drop a leading byte-order mark also if the text remains in its
                                      code set */
};

/** Opens a converter, which converts as mbConvert does. A leading byte-order mark determines the
    byte order and is dropped, except from text that remains in its code set. Returns null if a code
    set is unknown or allocation fails.
    @param fromCodeSet the code set of the source.
    @param toCodeSet the code set of the result.
    @param flags bits of mbConverterFlags, or 0. Of the replacements, a similar character comes
   first and a substitute last. Bytes that form no character are always replaced with the
   substitute. Characters that are replaced count as lost. */
GENUTIL_API mbConverter* mbOpenConverter(int fromCodeSet, int toCodeSet, unsigned flags);

/** Results of mbConvertNext. */
enum mbNext {
    mbNextFull = 0,   /**< dst has no room for the next character; call again with more room */
    mbNextDone = 1,   /**< the piece is consumed */
    mbNextLost = 2,   /**< mbConvertStop: the next character would be lost */
    mbNextFailed = -1 /**< allocation failed; nothing was consumed */
};

/** Converts a piece of a text. Bytes at its end that begin a character are consumed and completed
   by the next piece. Returns a value of mbNext. Room for 32 bytes is always sufficient for the next
    character.
    @param converter the converter.
    @param src the piece; advanced to the first byte that is not consumed.
    @param srcLength length of the piece in bytes; reduced by the bytes consumed. May be 0.
    @param dst receives the converted text without a terminator; advanced by the bytes written.
    @param dstRoom size of dst in bytes; reduced by the bytes written.
    @param last nonzero if no further piece follows: a character that is cut is lost, and the text
        ends in ASCII. After mbNextDone, the converter is ready for another text.
    @param report receives the counts of the text so far; the indexes of lost characters are those
   in the text. The array lostAt must be the same for all pieces. May be null. */
GENUTIL_API int mbConvertNext(mbConverter* converter, const char** src, size_t* srcLength,
                              char** dst, size_t* dstRoom, int last, mbConversion* report);

/** Closes a converter; null is ignored. */
GENUTIL_API void mbCloseConverter(mbConverter* converter);

/** Reads a line of any length from a stream and converts it. Nothing is lost, whatever the code set
    of the stream. NUL is an ordinary character. Returns 1 for a line, 0 at the end of the stream,
   or -1 if allocation fails, after which the rest of the line is read by the next call.
    @param converter an open converter, used for all lines of the stream and for nothing else.
    @param stream an open stream; it need not be able to seek.
    @param line buffer allocated with malloc, or null before the first call; enlarged as necessary
        and to be released with free. Receives the line, its line end if it has one, and a
   terminator of 4 bytes.
    @param size size of the buffer in bytes.
    @param length receives the length of the line in bytes; may be null. */
GENUTIL_API int mbReadLine(mbConverter* converter, FILE* stream, char** line, size_t* size,
                           size_t* length);

/** Converts between the code sets of one language: among 3, 4 and 5, between 9 and 10, 14 and 23,
    17 and 24. Any other pair is copied unchanged, except 9 and 10 to 24, which map bytes as 17 to
    24 does; existing programs depend on it. Returns dst.
    @param src the text.
    @param fromCodeSet the code set of src.
    @param dst buffer of at least 3 times the length of src plus 1; may overlap src, in which case
        temporary memory is allocated and the text is copied unchanged if that fails. Some texts in
        JIS need more: the final escape sequence is then omitted and half-width katakana remain
        8-bit. Use mbConvert to avoid this.
    @param toCodeSet the code set of dst. */
GENUTIL_API char* convertStrExt(const char* src, int fromCodeSet, char* dst, int toCodeSet);

/** Converts EUC-JP to Shift-JIS in code set 4 or 5; copies in any other. Returns dst, or null if
    either pointer is null. */
GENUTIL_API char* UnixCodingToWindowsCodingExt(const char* src, char* dst);
/** Converts Shift-JIS to EUC-JP in code set 4 or 5; copies in any other. Returns dst, or null if
    either pointer is null. */
GENUTIL_API char* WindowsCodingToUnixCodingExt(const char* src, char* dst);

/** Converts from the current code set to toCodeSet as convertStrExt does. Copies in a single-byte
    code set. Returns 1, or 0 if either pointer is null.
    @param dst buffer of at least 3 times the length of src plus 1.
    @param src the text.
    @param toCodeSet the code set of dst. */
GENUTIL_API int mbconvertnativestring(char* dst, const char* src, int toCodeSet);

/** Converts a text file from the current code set to toCodeSet, line by line. A line that begins
    with NUL ends the text. In a single-byte code set the lines are copied. The paths may name the
    same file, which is then read whole first. Returns 1, or 0 if a file cannot be opened, read or
    written or allocation fails.
    @param inPath path of the file to read, as in osfile.h.
    @param outPath path of the file to write.
    @param append nonzero appends to outPath; zero replaces it.
    @param toCodeSet the code set of outPath. */
GENUTIL_API int mbconvertnativefile(const char* inPath, const char* outPath, int append,
                                    int toCodeSet);

/** Converts a text file from fromCodeSet to the current code set; see mbconvertnativefile. */
GENUTIL_API int mbconvertfile2native(const char* inPath, const char* outPath, int append,
                                     int fromCodeSet);

/** Converts a text file between any pair of code sets, independently of the current one. Unlike
    mbconvertfile2native, it reports lost characters and write failures. Returns 1, or 0 if a file
    cannot be opened, read or written or allocation fails.
    @param inPath path of the file to read, as in osfile.h.
    @param outPath path of the file to write.
    @param append nonzero appends to outPath; zero replaces it.
    @param fromCodeSet the code set of inPath.
    @param toCodeSet the code set of outPath.
    @param conversion receives the report; may be null. */
GENUTIL_API int mbconvertfile2native_ex(const char* inPath, const char* outPath, int append,
                                        int fromCodeSet, int toCodeSet, mbConversion* conversion);

/** Converts from the ANSI code page of a locale to UTF-8. Returns 1, or 0 on failure.
    @param src the text.
    @param out receives a new buffer, to be released with free; unchanged on failure.
    @param localeName a name that mbGetLCID accepts; null or empty for the locale of the current
        handle, or the user's locale if there is none. */
GENUTIL_API int mbConvertToUTF8(const char* src, char** out, const char* localeName);

/** Converts from UTF-8 to the user's ANSI code page. A character that the code page lacks becomes
    "?", never a similar character, which could change the meaning of a path or a command. Returns
   1, or 0 on failure.
    @param src the text.
    @param out receives a new buffer, to be released with free; unchanged on failure. */
GENUTIL_API int mbConvertFromUTF8(const char* src, char** out);

/** Returns the largest number of bytes, at most maxBytes, that ends at a UTF-8 character boundary;
    0 for null. A byte that starts no valid sequence counts as a character. */
GENUTIL_API unsigned UTF8Limit(const char* s, unsigned maxBytes);

/** Decodes "%" followed by two upper-case hexadecimal digits. Everything else is copied, including
    "+". Returns the decoded length in bytes, or 0 if allocation fails.
    @param src the text.
    @param out receives a new buffer, to be released with free; unchanged if allocation fails. */
GENUTIL_API unsigned mbUrlDecode(const char* src, char** out);

/** Returns the number of bytes that s, in the current code set, needs in the longer of its Windows
    and Unix encodings. Allocates temporary memory in code sets 9 and 10 and returns 0 if that
    fails. */
GENUTIL_API unsigned MaxStringLengthOnWinAndUnix(const char* s);

/** Returns the sum of the byte values of s, modulo 2 to the power of 32; 0 for null. */
GENUTIL_API unsigned AccumulateAsciiForStr(const char* s);

/* -- Japanese -------------------------------------------------------------------------------- */

/** Detects the Japanese encoding of a text file. Reads from the current position of the stream as
    far as necessary. The stream is neither rewound nor closed. Returns 0 if undecided (ASCII only),
    3 for JIS, 4 for EUC-JP, 5 for Shift-JIS, 6 for EUC-JP or Shift-JIS. */
GENUTIL_API int DetectJPCodeType(FILE* stream);

/** Detects the Japanese encoding of a text in memory; see DetectJPCodeType.
    @param bytes the text.
    @param n length of the text in bytes.
    @param consumed receives the number of bytes examined; may be null. */
GENUTIL_API int mbDetectJapanese(const char* bytes, size_t n, size_t* consumed);

/** Converts half-width ASCII to full width in the multibyte Japanese, Chinese and Korean code sets
    with characters of two bytes (4, 5 and 7 to 13). In code sets 4 and 5 it also converts katakana
    and joins them with their sound marks. A character without a full-width form of two bytes is
    copied, as is the text in any other code set. Returns dst, or null if either pointer is null.
    @param src the text.
    @param dst buffer of at least twice the length of src plus 1. */
GENUTIL_API char* mbHanToZenStr(const char* src, char* dst);

/** Converts full-width digits, signs, points and commas to half width in code sets 4, 5, 7 to 11
    and 13. Copies in any other code set. Returns dst, or null if either pointer is null.
    @param src the text.
    @param dst buffer of at least strlen(src) + 1 bytes; may be src. */
GENUTIL_API char* ConvertMBNumberToSBNumber(const char* src, char* dst);

/** Converts half-width digits, signs, points and commas to full width; see
    ConvertMBNumberToSBNumber. Returns dst, or null if either pointer is null.
    @param src the text.
    @param dst buffer of at least twice the length of src plus 1. */
GENUTIL_API char* ConvertSBNumberToMBNumber(const char* src, char* dst);

#if defined(__cplusplus)
}
#endif

#endif
