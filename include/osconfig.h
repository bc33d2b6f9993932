/* Settings: named texts in initialisation (ini) files and in the registry of the current user.

       [Screen]
       ; a comment
       Title = "Kyoto "
       Width = 80

       CGNString title;
       long width;
       OSGetConfig(title, "none", "Screen", "Title", "./tour.ini");   // "Kyoto "
       OSGetConfig(width, 100, "Screen", "Width", "./tour.ini");      // 80
       OSSetConfig("Nara", "Screen", "Title", "./tour.ini");          // changes this value only

   Names of sections, keys and values ignore letter case and surrounding blanks. If a file contains
   a section or key several times, the first one counts. Surrounding blanks are not part of a value,
   and neither is one pair of quotation marks or apostrophes around the whole value. All texts are
   in the current code set. The functions for integers write decimal digits. They read as many
   digits as there are, 0 if there are none, within 32 bits.

   A text that is read has at most 1023 bytes. A longer value in a file is cut at a character
   boundary. A longer value in the registry is not read. Nothing is written if a name or value would
   corrupt the file: if it contains a line end or a 0 byte, if the section ends within a character,
   or if the key is empty, contains "=" or begins with ";" or "[".

   Differences between systems:
   - On Windows these functions use the system's own calls. A file name without a directory refers
     to the Windows directory. The default file is win.ini. Names and values are in the ANSI code
     page.
   - On Linux a file name without a directory refers to $XDG_CONFIG_HOME/genutil, or else
     ~/.config/genutil. That directory also contains the default file, default.ini, and the
     registry, the SQLite file registry.db. A file is replaced atomically, under a lock between
     processes and threads, so that readers see either the old file or the new one. Its owner,
     permissions, access list, attributes and symbolic links are preserved. Where that is not
     possible the file is written in place, and readers may see a part of the change: if it has
     several hard links, is mounted by itself, or is in a directory in which the user cannot make
     files. A file without write permission is unchanged. Writing fails if another process keeps
     the lock for 10 seconds. UTF-16 with a byte-order mark is read but not written, and so are
     lines that end in CR alone. A damaged registry is renamed to registry.db.damaged-1 and so on.

   Nothing throws. Every function may be called from any thread, but a string or list may be used by
   one thread at a time. Boolean results are an unsigned char, 1 or 0. */
#ifndef GENUTIL_OSCONFIG_H
#define GENUTIL_OSCONFIG_H

#include <charconv>
#include <cstddef>
#include <type_traits>

#include "genexport.h"
#include "genlist.h"
#include "genstr.h"

/** @cond implementation */
namespace genutil {

template <class T>
using IfWideInteger =
    std::enable_if_t<std::is_integral<T>::value &&
                     (sizeof(T) > sizeof(int) || std::is_same<T, unsigned>::value)>;

class WideInteger {
  public:
    template <class T>
    explicit WideInteger(T value) {
        *std::to_chars(m_text, m_text + sizeof m_text - 1, value).ptr = 0;
    }
    operator CGNString() const { return m_text; }

  private:
    char m_text[24];
};

}  // namespace genutil
/** @endcond */

/* -- Initialisation files ---------------------------------------------------------------------- */

/** Reads a value. If the key, the section or the file does not exist, the result is the default
    without trailing blanks. Always returns 1.
    @param result receives the value.
    @param defaultValue the default.
    @param section name of the section.
    @param key name of the key.
    @param file path of the file. */
GENUTIL_API unsigned char OSGetConfig(CGNString& result, const CGNString& defaultValue,
                                      const CGNString& section, const CGNString& key,
                                      const CGNString& file);
/** Reads an integer; see above. The default must be within 32 bits. Always returns 1. */
GENUTIL_API unsigned char OSGetConfig(long& result, long defaultValue, const CGNString& section,
                                      const CGNString& key, const CGNString& file);

/** Writes a value. A missing key is added to the end of its section, a missing section to the end
    of the file, and a missing file is created. Returns 1, even on failure. */
GENUTIL_API unsigned char OSSetConfig(const CGNString& value, const CGNString& section,
                                      const CGNString& key, const CGNString& file);
/** Writes an integer; see above. Returns 1, even on failure. */
GENUTIL_API unsigned char OSSetConfig(const int& value, const CGNString& section,
                                      const CGNString& key, const CGNString& file);

/** Writes an integer of more than 32 bits; see above. OSGetConfig() reads at most 32 bits of it;
 * read it as a text. */
template <class T, class = genutil::IfWideInteger<T>>
unsigned char OSSetConfig(const T& value, const CGNString& section, const CGNString& key,
                          const CGNString& file) {
    return OSSetConfig(genutil::WideInteger(value), section, key, file);
}
/** Not available, because a null pointer is neither a text nor a number. */
unsigned char OSSetConfig(std::nullptr_t, const CGNString& section, const CGNString& key,
                          const CGNString& file) = delete;

/** Deletes a key and its value, or the whole section if key is null. Returns 1, even if it does not
    exist or cannot be deleted. */
GENUTIL_API unsigned char OSDeleteKeyConfig(const CGNString& section, const char* key,
                                            const CGNString& file);

/** Reads a value from the system's default initialisation file; see OSGetConfig(). Always returns
    1. */
GENUTIL_API unsigned char OSGetSystemConfig(CGNString& result, const CGNString& defaultValue,
                                            const CGNString& section, const CGNString& key);
/** Writes a value to the system's default initialisation file; see OSSetConfig(). Returns 1, even
    on failure. */
GENUTIL_API unsigned char OSSetSystemConfig(const CGNString& value, const CGNString& section,
                                            const CGNString& key);

/* -- The registry ------------------------------------------------------------------------------

   A key is identified by a base key and a subkey of it. Both may have several levels, separated by
   "\". An empty subkey means the base key itself. All keys are below the root of the current
   user. */

/** Reads a value of any type as text. Returns 0 and stores the default if the key or the value does
    not exist or the text has more than 1023 bytes.
    @param result receives the text or the default.
    @param defaultValue the default.
    @param subkey the subkey.
    @param name name of the value.
    @param baseKey the base key. */
GENUTIL_API unsigned char OSGetSystemConfigReg(CGNString& result, const CGNString& defaultValue,
                                               const CGNString& subkey, const CGNString& name,
                                               const CGNString& baseKey);
/** Reads an integer stored as text; see above. */
GENUTIL_API unsigned char OSGetSystemConfigReg(long& result, long defaultValue,
                                               const CGNString& subkey, const CGNString& name,
                                               const CGNString& baseKey);
/** Appends all values of a key to two lists. Stops at a value whose name or text has more than 1023
    bytes. Always returns 0, because the end of the values is reported as an error; use the lists as
    the result.
    @param subkey the subkey.
    @param names receives the names of the values.
    @param values receives their texts in the same order.
    @param baseKey the base key. */
GENUTIL_API unsigned char OSGetSystemConfigReg(const CGNString& subkey, CGNStringList& names,
                                               CGNStringList& values, const CGNString& baseKey);

/** Stores a text. Creates the key if it does not exist. Returns 1, or 0 on failure. */
GENUTIL_API unsigned char OSSetSystemConfigReg(const CGNString& value, const CGNString& subkey,
                                               const CGNString& name, const CGNString& baseKey);
/** Stores an integer as text. Creates the key if it does not exist. Returns 1, or 0 on failure. */
GENUTIL_API unsigned char OSSetSystemConfigReg(int& value, const CGNString& subkey,
                                               const CGNString& name, const CGNString& baseKey);

/** Stores an integer as text; see above. */
GENUTIL_API unsigned char OSSetSystemConfigReg(const int& value, const CGNString& subkey,
                                               const CGNString& name, const CGNString& baseKey);
/** Stores an integer of more than 32 bits as text; see above. OSGetSystemConfigReg() reads at most
 * 32 bits of it; read it as a text. */
template <class T, class = genutil::IfWideInteger<T>>
unsigned char OSSetSystemConfigReg(const T& value, const CGNString& subkey, const CGNString& name,
                                   const CGNString& baseKey) {
    return OSSetSystemConfigReg(genutil::WideInteger(value), subkey, name, baseKey);
}
/** Not available, because a null pointer is neither a text nor a number. */
unsigned char OSSetSystemConfigReg(std::nullptr_t, const CGNString& subkey, const CGNString& name,
                                   const CGNString& baseKey) = delete;

/** Deletes a value. Returns 1, or 0 if it does not exist or cannot be deleted. */
GENUTIL_API unsigned char OSDelSystemConfigReg(const CGNString& subkey, const CGNString& name,
                                               const CGNString& baseKey);

/* -- Locale information of the system ---------------------------------------------------------- */

/** Reads one item of locale information from the system, in the ANSI code page of the locale.
    Returns the number of bytes stored, or required, including the terminator. Returns 0 if the
    locale or type is unknown or the buffer is too small.

    On Linux these information types are supported, with the numbers that Windows uses: 0x01, 0x03,
    0x04, 0x08, 0x0E to 0x12, 0x14, 0x15, 0x19, 0x1D to 0x4F, 0x51, 0x59, 0x5A, 0x1001 to 0x1003,
    0x1005, 0x1009, 0x100C and 0x100E to 0x1010.
    @param locale the locale identifier, such as 0x0411; 0x0400 is the user's locale.
    @param type the information type. Adding 0x20000000 stores a numeric item as 32 bits.
    @param buffer receives the terminated text.
    @param size size of buffer in bytes; 0 stores nothing and returns the required size. */
GENUTIL_API int OSGetLocaleInfo(unsigned long locale, unsigned long type, char* buffer, int size);

#endif
