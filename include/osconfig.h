/* Settings: named texts in initialisation (ini) files and in the registry of the current user.

       [Screen]
       ; a comment
       Title = "Kyoto "
       Width = 80

       CGNString title;
       long width;
       OSGetConfig(title, "none", "Screen", "Title", "./tour.ini");   // "Kyoto "
       OSGetConfig(width, 100, "Screen", "Width", "./tour.ini");      // 80
       OSSetConfig("Nara", "Screen", "Title", "./tour.ini");          // the rest stays as it is

   Names of sections, keys and values are found in any letter case and with blanks around them. In a
   file the value of the first such key in the first such section counts; blanks around it are no
   part of it, nor is one pair of quotation marks or apostrophes that encloses all of it. Everything
   is text in the current code set; the forms for integers write decimal digits and read as many as
   there are, 0 when there are none, within 32 bits.

   A text that is read has at most 1023 bytes: in a file what is longer is cut behind its last whole
   character, in the registry it is not read at all. Nothing is written when a name or value cannot
   stand in a file without changing the rest of it: with a line end or 0 byte in it, a section that
   ends within a character, a key that is empty, has "=" in it or begins with ";" or "[".

   Where the targets differ: on Windows these are the system's own calls, a file that is named
   without a folder lies in the Windows folder, the default file is win.ini, and names and values
   are in the ANSI code page. On Linux such a file lies in $XDG_CONFIG_HOME/genutil (else
   ~/.config/genutil), where the default file is default.ini and the registry is the SQLite file
   registry.db. There a file is replaced by a new one in a single step, under a lock that holds
   between processes and threads, with its permissions and through symbolic links: whoever reads
   meets the old file or the new one. A file that must not be written, or whose folder must not,
   stays as it is. A damaged registry is set aside as registry.db.damaged-1 and so on.

   Nothing throws. Everything may be called from any thread, but a string or list is for one at a
   time. Results that answer yes or no are an unsigned char of 1 or 0. */
#ifndef GENUTIL_OSCONFIG_H
#define GENUTIL_OSCONFIG_H

#include "genexport.h"
#include "genlist.h"
#include "genstr.h"

/* -- Initialisation files ---------------------------------------------------------------------- */

/** Reads a value. @param result receives it, or the default where there is none, be it the key, the
    section or the file, less the blanks at its end. @param file its path. @return 1. */
GENUTIL_API unsigned char OSGetConfig(CGNString& result, const CGNString& defaultValue,
                                      const CGNString& section, const CGNString& key,
                                      const CGNString& file);
/** The same for an integer. @param defaultValue within 32 bits. @return 1. */
GENUTIL_API unsigned char OSGetConfig(long& result, long defaultValue, const CGNString& section,
                                      const CGNString& key, const CGNString& file);

/** Writes a value, adding what there is not yet: the key, at the end of its section, the section,
    at the end of the file, and the file. @return 1, even when that fails. */
GENUTIL_API unsigned char OSSetConfig(const CGNString& value, const CGNString& section,
                                      const CGNString& key, const CGNString& file);
/** The same for an integer. @return 1. */
GENUTIL_API unsigned char OSSetConfig(const int& value, const CGNString& section,
                                      const CGNString& key, const CGNString& file);

/** Deletes a key with its value. @param key null deletes the whole section. @return 1, even when
    there is none or it cannot be deleted. */
GENUTIL_API unsigned char OSDeleteKeyConfig(const CGNString& section, const char* key,
                                            const CGNString& file);

/** OSGetConfig from the system's default initialisation file. @return 1. */
GENUTIL_API unsigned char OSGetSystemConfig(CGNString& result, const CGNString& defaultValue,
                                            const CGNString& section, const CGNString& key);
/** OSSetConfig in the system's default initialisation file. @return 1, even when that fails. */
GENUTIL_API unsigned char OSSetSystemConfig(const CGNString& value, const CGNString& section,
                                            const CGNString& key);

/* -- The registry ------------------------------------------------------------------------------

   A key is named by a base key and a subkey below it, either of which may have several levels with
   "\" between them; an empty subkey means the base key. All of it is below the root of the current
   user. */

/** Reads a value, whatever its type. @param result receives it as text, or else the default.
    @return 0 with the default, when there is no such key or value or it has more than 1023 bytes.
 */
GENUTIL_API unsigned char OSGetSystemConfigReg(CGNString& result, const CGNString& defaultValue,
                                               const CGNString& subkey, const CGNString& name,
                                               const CGNString& baseKey);
/** The same for an integer that is stored as text. */
GENUTIL_API unsigned char OSGetSystemConfigReg(long& result, long defaultValue,
                                               const CGNString& subkey, const CGNString& name,
                                               const CGNString& baseKey);
/** Appends all values of a key to two lists, up to one whose name or text has more than 1023 bytes.
    @param names receives their names. @param values receives their texts, in the same order.
    @return 0 always: the end of the values is told as an error. The lists are the result. */
GENUTIL_API unsigned char OSGetSystemConfigReg(const CGNString& subkey, CGNStringList& names,
                                               CGNStringList& values, const CGNString& baseKey);

/** Stores a text, and creates the key if there is none. @return 1; 0 when it is not stored. */
GENUTIL_API unsigned char OSSetSystemConfigReg(const CGNString& value, const CGNString& subkey,
                                               const CGNString& name, const CGNString& baseKey);
/** Stores an integer as text. */
GENUTIL_API unsigned char OSSetSystemConfigReg(int& value, const CGNString& subkey,
                                               const CGNString& name, const CGNString& baseKey);

/** Deletes a value. @return 1; 0 when there is none or it cannot be deleted. */
GENUTIL_API unsigned char OSDelSystemConfigReg(const CGNString& subkey, const CGNString& name,
                                               const CGNString& baseKey);

/* -- The system's conventions ------------------------------------------------------------------ */

/** Asks the system for one fact about a locale, in the ANSI code page of that locale.

    On Linux these information types are known, by the numbers that Windows gives them: 0x01, 0x03,
    0x04, 0x08, 0x0E to 0x12, 0x14, 0x15, 0x19, 0x1D to 0x4F, 0x51, 0x59, 0x5A, 0x1001 to
    0x1003, 0x1005, 0x1009, 0x100C and 0x100E to 0x1010.
    @param locale an identifier, such as 0x0411; 0x0400 is the user's. @param type which fact; with
    0x20000000 added, a numeric one is stored as 32 bits. @param buffer receives the terminated
    text. @param size of the buffer in bytes; with 0 nothing is stored.
    @return the bytes stored, or needed, with the terminator; 0 for an unknown locale or type, or
    too small a buffer. */
GENUTIL_API int OSGetLocaleInfo(unsigned long locale, unsigned long type, char* buffer, int size);

#endif
