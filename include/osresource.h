/* Resource libraries: the texts of a program, in one library per language.

   A resource library is a Windows DLL that contains only resources. The same file is used on
   Windows and on Linux, where this library parses it. There is one file for each language, in a
   directory next to the module to which the texts belong:

       suite/app.exe                       (or a library, such as libgenutil.so.1)
       suite/ResDLLs/0411/apptext.dll      a full language identifier, lower-case hexadecimal
       suite/ResDLLs/0011/apptext.dll      a primary language
       suite/ResDLLs/0009/apptext.dll      English, used for all other languages

   A program attaches a library when it starts and loads texts by number:

       CGNString path, text;
       if (OSAttachLocaleResDLL(0, "apptext.dll", path, 0)) OSLoadString(text, 1200);

   Threads that serve users of different languages use the functions whose names end with TS. These
   functions share the loaded libraries, count their users and attach a library to the calling
   thread only.

   The texts of this library are in genmsg.dll. Messages 25048 to 25053 mark a year before Christ;
   the first is used for formatting and all of them for parsing. Without genmsg.dll these texts are
   in English.

   A handle is a pointer stored in a GNItem; 0 means none. On Windows it is the handle of the
   module. There, 0 means the program and its texts. On Linux, 0 and handles that were not returned
   by these functions have no texts. Paths are in the current code set. Directories are separated by
   \ or, on Linux, also by /. A path without a directory is searched for in the directory of the
   program and in the current directory. ".dll" is appended to a name without a dot. Nothing throws.
 */
#ifndef GENUTIL_OSRESOURCE_H
#define GENUTIL_OSRESOURCE_H

#include "genexport.h"
#include "genstr.h"

/* -- Libraries of the process ------------------------------------------------------------------

   The process has a table of ten libraries. Slot 0 contains the library attached last. The table is
   not synchronised; change it on one thread while the program starts. */

/** Loads a resource library into slot 0. The library that was in slot 0 is removed from the table
    but remains loaded, because its texts may still be in use. Returns the handle. Returns 0 and
    leaves the table unchanged on failure.
    @param file path of the library. */
GENUTIL_API GNItem OSAttachLocaleResDLL(const char* file);

/** Loads the resource library of a language into slot 0. Searches the directory of the language,
    then that of its primary language (the low 10 bits), then that of English, "0009". Returns the
    handle. Returns 0 and leaves the table unchanged on failure.
    @param module the module next to which "ResDLLs" is located: 0 for the program, or the
        handle of a library. On Linux it may also be any address in a library, such as that of one
        of its functions. Only the first 200 bytes of the module's path are used.
    @param file name of the library.
    @param path receives the path in the directory of the language, even if another directory
        was used; unchanged on failure.
    @param language the language identifier; 0 for the user's language. */
GENUTIL_API GNItem OSAttachLocaleResDLL(GNItem module, const char* file, CGNString& path,
                                        unsigned int language);

/** Frees a library that occupies two adjacent slots, removes it from the second of them and closes
    the gap. Does nothing if the slot after the library's first slot contains another library;
    existing programs depend on this.
    @param handle handle of the library. */
GENUTIL_API void OSDetachLocaleResDLL(GNItem handle);

/** Replaces the library in slot 0. Returns the previous handle.
    @param handle handle of a library, which remains owned by the caller; 0 empties the table. */
GENUTIL_API GNItem OSSetResourceHandle(GNItem handle);

/* -- Libraries of a thread --------------------------------------------------------------------- */

/** Attaches a resource library to the calling thread. The library is loaded once for all threads,
    and every call increments its count. The handle is stored in the thread's variable
    "MsgResourceHandle" (CGNLclSt; a thread without variables receives 256 slots). A library that
    the thread had before is not released. Returns the handle. On failure, or if no slot is free,
    returns 0, and the thread has no library.
    @param file path of the library. A library loaded through two different paths counts as two
        libraries. */
GENUTIL_API GNItem OSAttachLocaleResDLLTS(const char* file);

/** Detaches the library of the calling thread and decrements its count. The last call frees the
    library. */
GENUTIL_API void OSDetachLocaleResDLLTS();

/* -- Texts ------------------------------------------------------------------------------------- */

/** Loads a text. If the calling thread has a library, only that library is searched. Otherwise the
    first library of the table that contains the text is used. If the library has the text in
    several languages, the order of preference is: neutral, the user's language, its primary
    language without a country, English (0x0409), the first one. Returns the length in bytes, or 0
    if the text does not exist. May be called from any thread.
    @param text receives the text in the current code set, with "?" for missing characters, cut
        at a character boundary to 2047 bytes; unchanged if the text does not exist.
    @param id number of the text, modulo 65536. */
GENUTIL_API int OSLoadString(CGNString& text, long id);

/** Returns the character set of fonts for a language: 204 Cyrillic, 134 simplified Chinese, 136
    traditional Chinese, 238 Eastern European, 161 Greek, 128 Shift-JIS, 129 Hangul, 162 Turkish, or
    0 (ANSI) for all others.
    @param language the language identifier; only its low 16 bits are used. */
GENUTIL_API int OSLangIDToFontCharSet(long language);

#endif
