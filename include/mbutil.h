/* Multibyte text: the current code set, stepping through text one character at a time, string
   functions that never split a character, and conversion between code sets. Usable from C and C++.

   A text is a NUL-terminated string of bytes in a code set, a small number that names a byte
   encoding (enum mbCodeSet). One code set is current for the whole process; the functions without
   a code-set argument work in it. It is chosen from the user's locale by the first call that needs
   it and changes only through InitMbutil and InitMbutilExt.

       InitMbutil();                      follow the user's locale
       InitMbutilExt(mbShiftJis);         or choose one
       for (i = 0;;) {                    visit each character
           use(text + i, mbbytesinchar((const unsigned char *)text + i));
           if ((i = mbnextidx(text, i)) == 0) break;
       }

   Unless a function says otherwise: lengths and indexes are bytes and count from 0; a sequence that
   is invalid in the code set is stepped as characters of one byte; nothing allocates, nothing
   throws, no buffer is kept. The current code set is unprotected: set it before threads run. With
   that, every function but mbstrtok may be called from any thread at any time. */
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

/** The numbers that name code sets. Numbers that are not listed count as single-byte. */
enum mbCodeSet {
    mbWestern = 0, /**< Windows-1252, the default */
    mb8859_1 = 1,
    mb8859_15 = 2,
    mbJis = 3, /**< ISO-2022-JP; its escape sequences are never stepped as characters */
    mbEucJp = 4,
    mbShiftJis = 5, /**< conversions take the Windows form, code page 932 */
    mbReserved6 = 6,
    mbGb2312 = 7, /**< conversions take code page 936 */
    mbEucCn = 8,
    mbBig5 = 9, /**< conversions take code page 950 */
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
    mbUtf16 = 64, /**< conversions take little-endian units; a byte-order mark is honoured */
    mbUtf8 = 65   /**< stepped byte by byte; only the conversions know its characters */
};

/** Derives the current code set from the user's locale, each time it is called.
    @return the code set that was current before. */
GENUTIL_API int InitMbutil(void);

/** Makes codeSet current, unchecked. It does not count as the initialisation that other functions
    wait for: call InitMbutil first, or the first of them overrides the choice.
    @return the code set that was current before. */
GENUTIL_API int InitMbutilExt(int codeSet);

/** @return the current code set; never initialises. */
GENUTIL_API int mbGetLocaleCodeSet(void);

/** @return whether the current code set has characters of more than one byte (3 to 5, 7 to 13). */
GENUTIL_API bool mbIsMultiByte(void);

/** @return 1 when the current code set is Japanese (3, 4 or 5), else 0. */
GENUTIL_API unsigned char mbIsJapanese(void);

/** Writes the name of the current code set, such as "SJIS" (empty for an unlisted number).
    @param ignored has no effect: programs pass a number and expect the current name.
    @param dst receives at most 11 characters and a terminator.
    @return dst. Never initialises. */
GENUTIL_API char* SetCodePage(int ignored, char* dst);

/** @return the code set that a free-form name denotes ("Shift-JIS", "cp1250", "ISO-8859-15"); the
    first known keyword in it decides, in any letter case, with "-" as "_". 0 for null, empty and
    unknown names. */
GENUTIL_API int mbGetCodeSet(const char* name);

/** @return the code set of a MIME character-set name ("shift_jis", "euc-kr"), in any letter case;
    for any other name what mbGetCodeSet gives. 0 for null and empty. */
GENUTIL_API int mbGetCodeSetFromCharset(const char* name);

/** Writes the MIME character-set name of a code set (empty when it has none, as 6 and 12).
    @param dst receives at most 21 characters and a terminator.
    @param codeSet the code set to name. */
GENUTIL_API void SetCharset(char* dst, int codeSet);

/** Rewrites an ISO 8859 MIME name into that of the Windows code page used for the same text.
    @param name at least 13 bytes; changed only for ISO 8859-1, -2, -4 to -9 and -15.
    @return null when name has no "8859" in it; name otherwise, changed or not. */
GENUTIL_API char* MapToWindowsCharsetName(char* name);

/* -- Locales ---------------------------------------------------------------------------------

   A locale goes by its name: language, "_" and country ("ja_JP"), for a few with a variant behind
   ("es_ES_T"). The library has a table of them with their Windows identifiers; names in it are
   case-sensitive. What a name has behind the first "." or "@" is no part of it there.

   A handle is a locale that was found once and can be asked about. Opening, choosing and closing
   handles never changes the current code set. Handles may be asked by any thread at any time; the
   choice of the current one is a plain switch for the whole process.

       mbLocale locale = mbOpenLocale("ja_JP.eucJP", mbOpenBest, NULL);
       mbLocaleLCID(locale);                                              0x0411
       mbLocaleCodeSet(locale);                                           mbEucJp
       mbGetLocalePart(locale, mbPartCountry, name, sizeof name);         "JP"
       mbCloseLocale(locale); */

/** A locale that was opened; null, wherever one is taken, is the user's. */
typedef struct mbLocaleRecord* mbLocale;

/** Receives a line about what an opening found, without a line end. */
typedef void (*mbLocaleTrace)(const char* line);

/** How far a name may be from those in the table. */
enum mbLocaleKind {
    mbOpenExact = 0,   /**< one of the table, and what may stand behind it */
    mbOpenSpelled = 1, /**< also in any letter case, with "-", or an identifier ("0x0411") */
    mbOpenBest = 2     /**< also a language without a country, or with one that the table lacks */
};

/** Opens a locale by its name. With mbOpenBest "de" and "de_XX" open "de_DE", the usual country of
    the language.
    @param name the name, may be "ja_JP.SJIS" or "de_DE@euro"; null or empty for the user's locale.
    @param kind one of mbLocaleKind; any other number counts as mbOpenBest.
    @param trace is called once with what was found or that nothing was; may be null.
    @return the handle, to be closed; null when the locale is not known or memory runs out. */
GENUTIL_API mbLocale mbOpenLocale(const char* name, int kind, mbLocaleTrace trace);

/** Closes a handle; null is allowed. When it was the current one, that is the user's again. */
GENUTIL_API void mbCloseLocale(mbLocale locale);

/** @return the handle that mbSetCurrentLocale last made current; null at first. */
GENUTIL_API mbLocale mbGetCurrentLocale(void);

/** Makes a handle current, for the application's own use. @return the one that was. */
GENUTIL_API mbLocale mbSetCurrentLocale(mbLocale locale);

/** @return the Windows locale identifier of a handle. */
GENUTIL_API unsigned long mbLocaleLCID(mbLocale locale);

/** @return the code set that the handle's name was opened with ("ja_JP.eucJP"); when it named none
    that is known, the one that the locale's texts come in. */
GENUTIL_API int mbLocaleCodeSet(mbLocale locale);

/** The parts of a locale's name. */
enum mbLocalePart {
    mbPartName = 0,     /**< as the table has it: "es_ES_T" */
    mbPartLanguage = 1, /**< "es" */
    mbPartCountry = 2,  /**< "ES"; empty where the name has none */
    mbPartVariant = 3,  /**< "T"; empty for most */
    mbPartCharset = 4   /**< what stood behind "." when it was opened: "SJIS" */
};

/** Writes a part of a handle's name. @param locale the handle. @param part one of mbLocalePart.
    @param out receives the part; empty when it does not fit. @param size bytes of out.
    @return its length; 0 when it is empty or does not fit. */
GENUTIL_API int mbGetLocalePart(mbLocale locale, int part, char* out, int size);

/** @return the Windows locale identifier of a locale name such as "ja_JP" ("en_US.UTF-8" and the
    like are cut at the first "." or "@"); for null or empty that of the user's locale; 0 when the
    name is not known. Of names that stand several times the first with an identifier of its own. */
GENUTIL_API unsigned long mbGetLCID(const char* localeName);

/** Writes the MIME name of the code set that the texts of a locale come in ("shift_jis" for
    "ja_JP", "windows-1252" for "en_US.UTF-8": what follows a "." does not count).
    @param dst receives the name; empty when it does not fit. @param size bytes of dst.
    @param localeName null or empty for the user's locale; an unknown one counts as Western.
    @return the length of the name, 0 when it does not fit. */
GENUTIL_API int mbDefaultCodePageForLocale(char* dst, int size, const char* localeName);

/** Which locales an enumeration lists. */
enum mbLocaleSelection {
    mbSelectCodeSet = 0, /**< those whose texts come in the current code set */
    mbSelectSystem = 1,  /**< those that the operating system has settings for */
    mbSelectAll = 2      /**< all of the table */
};

/** Steps through the names of the table, each listed once.
    @param name receives the next name; empty when it does not fit (16 bytes always do).
    @param size bytes of name. @param cursor1 -1 begins; then where the enumeration stands.
    @param cursor2 -1 begins; then the number of names listed before this one.
    @param select one of mbLocaleSelection; any other number lists all.
    @return the length of the name, fitting or not; 0, with name as it was, behind the last one. */
GENUTIL_API int mbGetNextLocaleEx(char* name, int size, int* cursor1, int* cursor2, int select);

/** How a locale is called. */
enum mbLocaleStyle {
    mbStyleNative = 0,   /**< in its own language, where the current code set has the letters */
    mbStyleLanguage = 1, /**< its language in English */
    mbStyleEnglish = 2   /**< "English (United States)" */
};

/** Writes a description of a locale for people to read, in the current code set. The English ones
    are the library's own, the same on every system.
    @param out receives the text, cut at a whole character when it does not fit (128 bytes always
    do). @param size bytes of out. @param name a name of the table; null or empty for the user's.
    @param style one of mbLocaleStyle; any other number counts as mbStyleEnglish.
    @return 1; 0, with out empty, when the name is not known. */
GENUTIL_API int mbDisplayLocale(char* out, int size, const char* name, int style);

/* -- Time zones ------------------------------------------------------------------------------

   A time zone goes by its name in the tz database ("Asia/Tokyo"); wherever one is taken, the name
   that Windows has for it ("Tokyo Standard Time") does as well. A zone that is the system's own
   and has no name in the database keeps the system's. Names are case-sensitive.

       mbTZoneCursor cursor = mbFirstTZone;
       while (mbGetNextTZone(name, sizeof name, &cursor)) {
           mbDisplayTZone(text, sizeof text, name);      "(UTC+09:00) Tokyo, Japan"
       }

   The zones are gathered from the system by the first call that needs them, once for the process;
   from then on any thread may call every function but mbSetTZone. */

/** Where an enumeration of zones stands. All bytes 0xFF, as in mbFirstTZone, begin a new one. */
typedef struct mbTZoneCursor {
    int position[4]; /**< the library's; copied as a whole */
} mbTZoneCursor;
/** The cursor in front of the first zone. */
#define mbFirstTZone       \
    {                      \
        { -1, -1, -1, -1 } \
    }

/** Steps through the time zones that the system knows, from west to east.
    @param name receives the next zone's name; empty when it does not fit (48 bytes always do).
    @param size bytes of name. @param cursor where the enumeration stands.
    @return the length of the name, fitting or not; 0, with name as it was, behind the last zone. */
GENUTIL_API int mbGetNextTZone(char* name, int size, mbTZoneCursor* cursor);

/** Writes what a zone is called for a user to choose it: its offset in standard time and its place
    in English, in the current code set.
    @param out receives the text, cut at a whole character when it does not fit (128 bytes always
    do). @param size bytes of out. @param name the zone. @return 1; 0, with out empty, when the
    system does not know the zone. */
GENUTIL_API int mbDisplayTZone(char* out, int size, const char* name);

/** Writes the rule of a zone that is in force today as the variable TZ takes it on every system:
    "JST-9", "CET-1CEST,M3.5.0,M10.5.0/3". The names in it may differ between systems.
    @param out receives the rule; empty when it does not fit (64 bytes always do). @param size bytes
    of out. @param name the zone. @return its length; 0 when it does not fit or is not known. */
GENUTIL_API int mbGetTZoneRule(char* out, int size, const char* name);

/** Writes the name that Windows has for a zone of the tz database, older names of it included, as
    a table in the library has it, whichever system this is.
    @param out receives the name; empty when it does not fit. @param size bytes of out. @param name
    the zone's name in the tz database.
    @return its length; 0 when it does not fit or Windows has no such zone. */
GENUTIL_API int mbGetWindowsTZone(char* out, int size, const char* name);

/** The reverse: the name in the tz database for a zone of Windows, that of its best-known place.
    @param out receives the name; empty when it does not fit. @param size bytes of out.
    @param windowsName such as "Tokyo Standard Time". @return as mbGetWindowsTZone. */
GENUTIL_API int mbGetTZoneOfWindows(char* out, int size, const char* windowsName);

/** Makes a zone that of the process, through the variable TZ: by its name where the C library knows
    names, by its rule on Windows. Call it while no other thread reads the environment.
    @param name the zone, or a rule as TZ takes it; null or empty for that of the machine.
    @return 1; 0, with nothing changed, when the zone is not known. */
GENUTIL_API int mbSetTZone(const char* name);

/** Writes the name of the zone of the process: what mbSetTZone was given while that is in force,
    else the content of TZ, else the zone that the machine is set to.
    @param out receives the name; empty when it does not fit. @param size bytes of out.
    @return its length; 0 when it does not fit or cannot be told. */
GENUTIL_API int mbGetTZone(char* out, int size);

/* -- Stepping -------------------------------------------------------------------------------- */

/** @return length in bytes of the character at p, looking at no more than n bytes: 0 at a
    terminator, for null and for n = 0; 1 to 4; -1 for an invalid sequence. When n cuts the
    character, the length that its lead byte promises. In a code set without characters of several
    bytes, and in 3, always 1, without looking at p. */
GENUTIL_API int mblenExt(const unsigned char* p, unsigned n, int codeSet);
/** mblenExt in the current code set. */
GENUTIL_API int mb_mblen(const unsigned char* p, unsigned n);

/** @return 1 when byte value c (0 to 255) begins a character of several bytes, else 0. */
GENUTIL_API int isleadbyteExt(int c, int codeSet);
/** isleadbyteExt in the current code set. */
GENUTIL_API int mb_isleadbyte(int c);

/** @return the largest number of bytes in a character of codeSet, 1 to 4. */
GENUTIL_API int mbmaxcharlenExt(int codeSet);
/** mbmaxcharlenExt in the current code set. */
GENUTIL_API int mbmaxcharlen(void);

/** @return the number of bytes to step over the character at p: 1 to 4, and 1 at a terminator and
    at an invalid sequence. */
GENUTIL_API int mbbytesinchartype(const unsigned char* p, int codeSet);
/** mbbytesinchartype in the current code set. */
GENUTIL_API int mbbytesinchar(const unsigned char* p);

/** @return byte index idx moved back to the start of the character that contains it; strlen(s) for
    an idx at or past the end. While the *current* code set is single-byte, idx unchanged, whatever
    codeSet is. */
GENUTIL_API unsigned mbidxtype(const char* s, unsigned idx, int codeSet);
/** mbidxtype in the current code set. */
GENUTIL_API unsigned mbidx(const char* s, unsigned idx);

/** @return byte index of the character behind the one that contains byte idx; 0 when there is none.
    @param s the text. @param idx at most strlen(s). Takes constant time but inside a run of
    double-byte characters, which it looks back over. */
GENUTIL_API unsigned mbnextidx(const char* s, unsigned idx);

/** @return pointer form of mbnextidx: null when there is no further character. */
GENUTIL_API char* mbnextchar(const char* s, unsigned idx);

/** @return the number of characters in the first n bytes of s, or up to its terminator. Of an
    invalid sequence, and of a character that n cuts, every byte counts as one. */
GENUTIL_API unsigned mbcharcount(const char* s, unsigned n);

/** Compares character by character over at most n bytes. In a single-byte code set only the first
    byte is compared, as a signed char, and n is not looked at: programs depend on it.
    @return negative, 0 or positive. */
GENUTIL_API int mbcharcmp(const unsigned char* a, const unsigned char* b, unsigned n);

/** @return 1 when byte value c is a whole character by itself in the current code set: 0 to 0x7F,
    and the half-width katakana 0xA1 to 0xDF in Shift-JIS. Control characters count. */
GENUTIL_API int ismbcprint(int c);

/* -- Strings --------------------------------------------------------------------------------- */

/** strncpy that never splits a character: when byte n lies inside one, the copy ends before it and
    is terminated. Otherwise no terminator is added to n or more bytes, and less is padded with 0.
    @return dst; nothing is copied when either is null (in a single-byte code set neither may be).
 */
GENUTIL_API char* mbstrncpy(char* dst, const char* src, unsigned n);

/** mbstrncpy that counts. @return the number of bytes copied; 0 when either is null. */
GENUTIL_API unsigned mbstrncpyi(char* dst, const char* src, unsigned n);

/** Compares without regard to the case of single-byte characters. A character of more bytes sorts
    behind one of fewer. @return -1, 0 or 1; 0 when either is null. */
GENUTIL_API int mbstricmp(const char* a, const char* b);

/** Compares as mbstricmp over at most n bytes of a; a character that n cuts is compared whole.
    @return negative, 0 or positive; -1 when a ends, at n too, where b goes on. */
GENUTIL_API int mbstrnicmp(const char* a, const char* b, unsigned n);

/** Maps single-byte characters to upper case in place, by the rules of the current code set (0xE9
    becomes 0xC9 in Windows-1252); a capital that the code set lacks leaves the character.
    @return the length in bytes; 0 for null. */
GENUTIL_API unsigned mbstrtoupper(char* s);
/** mbstrtoupper to lower case. */
GENUTIL_API unsigned mbstrtolower(char* s);

/** Finds the first character whose first byte is c; never a trail byte. In a multi-byte code set a
    byte of 0x80 or more is found only when c is negative, as a plain char promotes. The terminator
    is found for c = 0. @return pointer into s, or null. */
GENUTIL_API char* mbstrchr(const char* s, int c);

/** mbstrchr for text whose bytes are not ordinary characters: in a multi-byte code set the
    terminator is never found. */
GENUTIL_API char* mbstrchrEncr(const char* s, int c);

/** Finds the last character whose first byte, as a signed char, is c. @return pointer or null. */
GENUTIL_API char* mbstrrchr(const char* s, int c);

/** Finds the first occurrence of needle that consists of whole characters of hay.
    @return pointer into hay; hay for a null or empty needle; null for a null hay or no match. */
GENUTIL_API char* mbstrstr(const char* hay, const char* needle);

/** Finds the last occurrence. @return as mbstrstr; for an empty needle the terminator of hay. */
GENUTIL_API char* mbstrrstr(const char* hay, const char* needle);

/** Finds the first character of s that is one of the characters of accept. @return pointer, null.
 */
GENUTIL_API char* mbstrpbrk(const char* s, const char* accept);

/** @return the byte offset of mbstrpbrk(s, reject), or strlen(s) when there is none. */
GENUTIL_API unsigned mbstrcspn(const char* s, const char* reject);

/** Compares by the collation of the user's locale; by bytes what does not convert and, with a
   failed assertion, when memory runs out. @return negative, 0 or positive. */
GENUTIL_API int mbstrcoll(const char* a, const char* b);

/** Splits at any of the characters of delim, as strtok does, and writes into s.
    One continuation serves the whole process: neither two threads nor two texts may interleave.
    @param s the text, or null to go on. @param delim the delimiters.
    @return the next token, or null when there is none. */
GENUTIL_API char* mbstrtok(char* s, const char* delim);

/** Checks that s holds valid characters of codeSet only.
    @param s the text. @param badIndex receives the index of the first invalid byte; kept when
   valid.
    @param codeSet the code set to check against.
    @return 1 when valid, and always while the current code set is single-byte; 0 when invalid and
    when either pointer is null. */
GENUTIL_API int mbvalidatestring(const char* s, unsigned* badIndex, int codeSet);

/* -- Streams --------------------------------------------------------------------------------- */

/** fgets that converts from fileCodeSet to the current code set. In a single-byte code set it is
    plain fgets. A character is never garbled at the limit: what does not fit is read again.
    Allocates while it runs. @return buf; null at the end of the stream and when memory runs out.
    @param buf receives at most n - 1 bytes and a terminator. @param n size of buf.
    @param stream an open stream that can seek. @param fileCodeSet the stream's code set. */
GENUTIL_API char* mbfgets(char* buf, int n, FILE* stream, int fileCodeSet);

/** fputs that converts from the current code set to fileCodeSet (0: no conversion). In a
    single-byte code set it is plain fputs. Allocates while it runs.
    @return what fputs returns; 0 for a null s; -1 when memory runs out. */
GENUTIL_API int mbfputs(const char* s, FILE* stream, int fileCodeSet);

/** Reads up to n bytes that end on a character boundary; the stream is moved back over a part of a
    character. @param buf n + 1 bytes; terminated in a multi-byte code set. @param n bytes wanted.
    @param stream an open stream that can seek.
    @return the number of bytes kept; 0 only at the end of the stream. */
GENUTIL_API unsigned mbfreadstring(char* buf, unsigned n, FILE* stream);

/* -- Conversion ------------------------------------------------------------------------------ */

/** What a conversion did. Counts are bytes but lost, which is characters. Set lostAt and
    lostAtSize (or zero both) before the call; the rest is filled in. */
typedef struct mbConversion {
    size_t* lostAt;    /**< the caller's array for source indexes of lost characters, or null */
    size_t lostAtSize; /**< its number of elements; later losses are counted only */
    size_t consumed;   /**< source bytes that were converted */
    size_t produced;   /**< bytes written, without the terminator */
    size_t lost; /**< characters that became a substitute: invalid, or unknown to the target */
} mbConversion;

/** Converts between any two code sets, without a limit on length and with a report of what did not
    survive. A lost character becomes one visible substitute: the geta mark in Japanese code sets,
    U+FFFD in UTF-8 and UTF-16, "?" elsewhere.
    @param src srcLength bytes; NUL is a character like any other.
    @param srcLength bytes of src.
    @param fromCodeSet the code set of src.
    @param dst receives at most dstSize - 1 bytes and one NUL (UTF-16: dstSize - 2 and two).
    @param dstSize bytes that dst can hold; mbConvertBound gives one that is always enough.
    @param toCodeSet the code set of dst.
    @param conversion receives what was done; may be null.
    @return 1 when all of src was converted; 0 when dst was too small (it then holds the whole
    characters that fitted) or a code set is not known (nothing consumed). */
GENUTIL_API int mbConvert(const char* src, size_t srcLength, int fromCodeSet, char* dst,
                          size_t dstSize, int toCodeSet, mbConversion* conversion);

/** @return a dstSize with which mbConvert of srcLength bytes cannot run out of room. */
GENUTIL_API size_t mbConvertBound(size_t srcLength, int fromCodeSet, int toCodeSet);

/** mbConvert into a new buffer. @param out receives it, to be released with free; untouched on
    failure. @return 1, or 0 when memory runs out or a code set is not known. Others as above. */
GENUTIL_API int mbConvertAlloc(const char* src, size_t srcLength, int fromCodeSet, char** out,
                               int toCodeSet, mbConversion* conversion);

/** Converts src between the code sets of one language: 3, 4 and 5 among each other, 9 and 10, 14
    and 23, 17 and 24. Any other pair is a plain copy, but 9 and 10 to 24, which map bytes as 17 to
    24 does: programs depend on it.
    @param src the text. @param fromCodeSet its code set.
    @param dst must hold 3 times the length of src plus 1. That is too little for some texts in JIS:
    there the closing escape is left out and half-width katakana stay 8-bit; mbConvert has room.
    @param toCodeSet the code set of dst.
    @return dst. */
GENUTIL_API char* convertStrExt(const char* src, int fromCodeSet, char* dst, int toCodeSet);

/** In code set 4 or 5 converts EUC-JP to Shift-JIS, else copies. @return dst, null if either is. */
GENUTIL_API char* UnixCodingToWindowsCodingExt(const char* src, char* dst);
/** In code set 4 or 5 converts Shift-JIS to EUC-JP, else copies. @return dst, null if either is. */
GENUTIL_API char* WindowsCodingToUnixCodingExt(const char* src, char* dst);

/** In a multi-byte code set convertStrExt from it to toCodeSet, else a copy.
    @param dst must hold 3 times the length of src plus 1. @param src the text.
    @param toCodeSet the code set of dst. @return 1; 0 when either is null. */
GENUTIL_API int mbconvertnativestring(char* dst, const char* src, int toCodeSet);

/** Converts a text file from the current code set to toCodeSet, line by line, up to a line that
    begins with NUL. In a single-byte code set the lines are copied.
    @param inPath the file to read, by a path as in osfile.h. @param outPath the file to write.
    @param append non-zero to add to outPath, zero to replace it. @param toCodeSet its code set.
    @return 1; 0 when a file cannot be opened or memory runs out. */
GENUTIL_API int mbconvertnativefile(const char* inPath, const char* outPath, int append,
                                    int toCodeSet);

/** The reverse of mbconvertnativefile: from fromCodeSet to the current code set. */
GENUTIL_API int mbconvertfile2native(const char* inPath, const char* outPath, int append,
                                     int fromCodeSet);

/** mbconvertfile2native for any pair of code sets, in any current one, that also says what did not
    survive and fails when a write fails. @param conversion receives the report; may be null.
    @return 1; 0 when a file cannot be opened, read or written or memory runs out. */
GENUTIL_API int mbconvertfile2native_ex(const char* inPath, const char* outPath, int append,
                                        int fromCodeSet, int toCodeSet, mbConversion* conversion);

/** Converts from the ANSI code page of a locale to UTF-8. @param src the text.
    @param out receives a new buffer, to be released with free; untouched on failure.
    @param localeName a name that mbGetLCID knows; null or empty for the user's.
    @return 1; 0 on any failure. */
GENUTIL_API int mbConvertToUTF8(const char* src, char** out, const char* localeName);

/** Converts from UTF-8 to the user's ANSI code page. @param src the text.
    @param out receives a new buffer, to be released with free; untouched on failure.
    @return 1; 0 on any failure. */
GENUTIL_API int mbConvertFromUTF8(const char* src, char** out);

/** @return the largest byte count not above maxBytes that ends on a UTF-8 character boundary; 0 for
    null. A byte that begins no sequence counts as a character. */
GENUTIL_API unsigned UTF8Limit(const char* s, unsigned maxBytes);

/** Decodes "%" and two hexadecimal digits, upper case only; anything else stays, "+" too.
    @param src the text. @param out receives a new buffer, to be released with free.
    @return the decoded length; 0 when memory runs out, with out untouched. */
GENUTIL_API unsigned mbUrlDecode(const char* src, char** out);

/** @return the number of bytes that s, in the current code set, needs in the larger of its Windows
    and its Unix encoding. Allocates in code sets 9 and 10; 0 when memory runs out. */
GENUTIL_API unsigned MaxStringLengthOnWinAndUnix(const char* s);

/** @return the sum of the byte values of s, modulo 2 to the power of 32; 0 for null. */
GENUTIL_API unsigned AccumulateAsciiForStr(const char* s);

/* -- Japanese -------------------------------------------------------------------------------- */

/** Decides which Japanese encoding a text file uses, reading from the stream's position as far as
    it must. The stream is neither rewound nor closed.
    @return 0 nothing decisive (ASCII), 3 JIS, 4 EUC-JP, 5 Shift-JIS, 6 EUC-JP or Shift-JIS. */
GENUTIL_API int DetectJPCodeType(FILE* stream);

/** DetectJPCodeType of n bytes in memory. @param consumed receives how many decided; may be null.
 */
GENUTIL_API int mbDetectJapanese(const char* bytes, size_t n, size_t* consumed);

/** Writes half-width characters in full width (ASCII, and katakana with their sound marks joined),
    in code sets 4 and 5; copies in any other.
    @param src the text. @param dst must hold twice the length of src plus 1.
    @return dst; null when either is null. */
GENUTIL_API char* mbHanToZenStr(const char* src, char* dst);

/** Writes full-width digits, signs, points and commas in half width, in code sets 4, 5 and 7 to 11
    and 13; copies in any other. @param src the text. @param dst must hold strlen(src) + 1; may be
    src. @return dst; null when either is null. */
GENUTIL_API char* ConvertMBNumberToSBNumber(const char* src, char* dst);

/** The reverse of ConvertMBNumberToSBNumber. @param src the text.
    @param dst must hold twice the length of src plus 1.
    @return dst; null when either is null. */
GENUTIL_API char* ConvertSBNumberToMBNumber(const char* src, char* dst);

#if defined(__cplusplus)
}
#endif

#endif
