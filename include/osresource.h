/* Resource libraries: the texts of a program, one library for each language.

   A resource library is a Windows DLL that holds nothing but resources. The same file serves
   programs on Windows and on Linux, where the library reads it itself. For each language there is
   one, in a folder beside the module whose texts it has:

       suite/app.exe                       (or a library, such as libgenutil.so.1)
       suite/ResDLLs/0411/apptext.dll      a full language identifier, lower-case hexadecimal
       suite/ResDLLs/0011/apptext.dll      a primary language
       suite/ResDLLs/0009/apptext.dll      English, which stands in for every other

   A program attaches one when it starts and loads texts by their numbers:

       CGNString path, text;
       if (OSAttachLocaleResDLL(0, "apptext.dll", path, 0)) OSLoadString(text, 1200);

   Threads with users of different languages attach with the functions that end in TS: these share
   what is loaded, count who uses it, and make it the library of the calling thread alone.

   This library's own texts are in genmsg.dll: messages 25048 to 25053 mark a year before Christ,
   the first when dates are written, all of them when dates are read. Without it they are English.

   A handle is a pointer in a long, 0 for none. On Windows it is the module's handle. On Linux a
   handle that was not given by these functions has no texts, and 0, which on Windows stands for
   the program and its texts, has none either. Paths are in the current code set, with \ or, on
   Linux, / between folders; one without a folder is looked for where the program lies and in the
   current folder, and ".dll" is added to a name without a dot. Nothing throws. */
#ifndef GENUTIL_OSRESOURCE_H
#define GENUTIL_OSRESOURCE_H

#include "genexport.h"
#include "genstr.h"

/* -- Libraries of the process ------------------------------------------------------------------

   A table of ten, of which slot 0 has the library that was attached last. It is not synchronised:
   for one thread, while the program starts. */

/** Loads a resource library into slot 0. The one that was there is dropped from the table and stays
    loaded, for whoever holds texts of it.
    @param file its path. @return its handle; 0, with the table as it was, when there is none. */
GENUTIL_API long OSAttachLocaleResDLL(const char* file);

/** Loads the resource library of a language into slot 0: from the folder of the language, else from
    that of its primary language (the low 10 bits), else from that of English, "0009".
    @param module whose folder holds "ResDLLs": 0 for the program, or the handle of a library; on
    Linux also any address in a library, such as that of one of its functions. No more than 200
    bytes of its path are looked at. @param file name of the library.
    @param path receives the path in the folder of the language, even where the library came from
    another one; left alone when there is none. @param language identifier; 0 for the user's own.
    @return the handle; 0, with the table as it was, when there is none. */
GENUTIL_API long OSAttachLocaleResDLL(long module, const char* file, CGNString& path,
                                      unsigned int language);

/** Frees a library that stands in the slot behind its first one too, and closes the gap. Programs
    rely on it that a library which stands once stays as it is: nothing happens then.
    @param handle of the library. */
GENUTIL_API void OSDetachLocaleResDLL(long handle);

/** Puts a library into slot 0, in place of what is there.
    @param handle of a library that stays the caller's; 0 empties the table.
    @return the handle that was there. */
GENUTIL_API long OSSetResourceHandle(long handle);

/* -- Libraries of a thread --------------------------------------------------------------------- */

/** Attaches a resource library that threads share: it is loaded once, and counted for each call.
    It becomes the calling thread's own, as its variable "MsgResourceHandle" (CGNLclSt, for which
    the thread is given 256 slots if it has none yet); one that the thread had is not released.
    @param file path; the same library under another path is loaded by itself. @return the handle;
    0, and the thread is without a library, when there is none or no slot is free for it. */
GENUTIL_API long OSAttachLocaleResDLLTS(const char* file);

/** Undoes one OSAttachLocaleResDLLTS for the calling thread's library, which is freed by the last
    of them. The thread is without one then. */
GENUTIL_API void OSDetachLocaleResDLLTS();

/* -- Texts ------------------------------------------------------------------------------------- */

/** Loads a text: from the calling thread's library and from no other, if it has one; else from the
    first library of the table that has the text. Where a library has texts in several languages,
    the one is taken that is neutral, else the user's, his primary language without a country,
    English (0x0409) or the first.
    @param text receives it in the current code set, with "?" for what that lacks, cut at a
   character to 2047 bytes; left alone when there is none. @param id its number, modulo 65536.
    @return the length in bytes; 0 when no library has it. Any thread. */
GENUTIL_API int OSLoadString(CGNString& text, long id);

/** @return the character set of a font that shows a language: 204 Cyrillic, 134 simplified and 136
    traditional Chinese, 238 Eastern European, 161 Greek, 128 Shift-JIS, 129 Hangul, 162 Turkish,
    else 0, ANSI. @param language identifier, of which bits beyond 16 do not count. */
GENUTIL_API int OSLangIDToFontCharSet(long language);

#endif
