/* Files and directories: whole files in memory, directories made, listed and cleared, names.

       char* text;
       if (OSGetFileContents(text, "notes.txt")) {       // lines end in "\n"
           puts(text);
           free(text);
       }
       CGNStringList reports(10, 10);
       OSGetFileList("reports", "*.rpt", reports, 1, 1);   // those below too, with their paths

   Paths are texts in the current code set (mbutil.h) on every system. Between names stands "\" or
   "/"; paths that functions return have the "\" of CGNString::MakeFilePath. A byte 0x5C that is the
   second of a character is no separator. Where the system's names are coded otherwise they are
   converted; bytes that do not convert pass as they are, and a file that exists only under the
   bytes of its name is found by them. A null path is one of a file that cannot be reached.

   Results differ by family:
   - functions that read return bytes, or 1 where they read text, and 0 for any failure;
   - functions that make and remove return 0 or one of the codes of osFileError;
   - functions that derive a name return it, empty when there is none.

   A buffer that a reader hands out is the caller's, to be released with free; on failure it is
   null. Memory that runs out is reported to the library's assertion and is a failure of the call.
   Nothing throws, and nothing is logged. Any thread may call these functions at any time. */
#ifndef GENUTIL_OSFILE_H
#define GENUTIL_OSFILE_H

#include <sys/stat.h>

#include "genexport.h"
#include "genlist.h"
#include "genstr.h"

#ifndef _WIN32
/** The record of a file's status: st_size, st_mode, st_mtime and the other members of stat. */
struct _stat : stat {};
#endif

/** What functions that make and remove return when they fail. */
enum osFileError {
    osFileFailed = -1,       /**< anything else */
    osFileExists = -2,       /**< it is there already */
    osFileNotFound = -3,     /**< it is not there, or a directory of its path is not */
    osFileAccessDenied = -4, /**< the system does not allow it; what a file's function answers for a
                                  directory, and for what is in use */
    osDirectoryNotEmpty = -5 /**< there are entries in the directory */
};

/** What to do about a file that exists. */
enum osFileActionIfExists {
    osFailIfExists = 0,      /**< leave it alone and return osFileExists */
    osOverwriteIfExists = 1, /**< empty it first */
    osAppendIfExists = 2     /**< write behind its end */
};

/* -- Status and places ------------------------------------------------------------------------- */

/** The system's query of a file's status; a link answers for what it leads to.
    @param path the file. @param status receives it.
    @return 0; another number when it fails, and on 32-bit Windows for a file of 2 GB or more, whose
    size the record has no room for. */
GENUTIL_API int OSFileStat(char const* path, struct _stat& status);
#ifdef _WIN32
#ifdef _USE_32BIT_TIME_T
/** The same for programs whose times have 64 bits. */
GENUTIL_API int OSFileStat(char const* path, struct _stat64i32& status);
#else
/** The same for programs whose times have 32 bits. */
GENUTIL_API int OSFileStat(char const* path, struct _stat32& status);
#endif
#endif

/** The directory for temporary files (on Linux TMPDIR, or else /tmp).
    @param result receives it with a separator behind it; empty when that is over 511 bytes.
    @return 1. */
GENUTIL_API int OSGetTempDir(CGNString& result);

/* -- Whole files ------------------------------------------------------------------------------- */

/** Reads a file. @param buffer receives its bytes with a 0 behind them; to be released with free.
    @param path an ordinary file of less than 2 GB.
    @return bytes; 0, with buffer null, for an empty file, for one whose length changes
    meanwhile and when it cannot be read. */
GENUTIL_API int OSGetBinaryFileContents(char*& buffer, char const* path);

/** Reads a text, each "\r\n" in it as "\n" (OSDosToUnix).
    @param buffer receives it with a 0 behind it; to be released with free. @param path the file.
    @return 1; 0, with buffer null, where OSGetBinaryFileContents returns 0. */
GENUTIL_API int OSGetFileContents(char*& buffer, char const* path);

/** Reads the part of a file that its trailer tells: the last strlen(marker) + 16 bytes have the
    marker in them, and behind their first ":" the number of bytes to read. A file without the
    marker there, or without a ":", is read whole.
    @param buffer receives the bytes with a 0 behind them; to be released with free.
    @param path the file. @param marker what the trailer begins with; not null.
    @return bytes; 0, with buffer null, when the number is 0 or negative, when there are less bytes
    than that, and where OSGetBinaryFileContents returns 0. */
GENUTIL_API int OSGetBinaryFileContentsWithFieldOffset(char*& buffer, char const* path,
                                                       char const* marker);

/** The same with each "\r\n" as "\n". @param buffer receives the text with a 0 behind it; to be
    released with free. @param path the file. @param marker what the trailer begins with.
    @return 1; 0, with buffer null, when nothing was read. */
GENUTIL_API int OSGetFileContentsWithFieldOffset(char*& buffer, char const* path,
                                                 char const* marker);

/** Appends a trailer, such as "DATA:100" for a file of 100 bytes, to an existing file.
    @param path the file. @param trailer its text, which is written as it is.
    @return the bytes written; 0 when the file cannot be opened or written, or one of the two is
    null. */
GENUTIL_API int OSWriteFieldOffset(char const* path, char const* trailer);

/** Writes a buffer to a file. @param buffer the bytes. @param size their number. @param path the
    file. @param action what to do when it exists.
    @return the bytes written; osFileExists, with the file untouched, when it exists and must not; 0
    when it cannot be opened or not all was written, and for a null buffer with a size. */
GENUTIL_API long OSWriteBinaryFileContents(char* buffer, unsigned int size, CGNString path,
                                           osFileActionIfExists action);

/** Removes, in place, every carriage return that stands directly before a line feed.
    @param text the text. @return 1; 0 for null. */
GENUTIL_API int OSDosToUnix(char* text);

/* -- Making and removing ----------------------------------------------------------------------- */

/* No function that removes follows a symbolic link: the link is what goes. Only the directory whose
   entries are looked through one by one, by a predicate or by age, may be named by a link to it. */

/** Makes a directory in one that exists. @return 0 or the code. */
GENUTIL_API int OSCreateDirectory(CGNString const& path);

/** Removes an empty directory, or a link to any directory. @return 0 or the code. */
GENUTIL_API int OSRemoveDirectory(CGNString const& path);

/** Removes a file or a link. @return 0 or the code. */
GENUTIL_API int OSRemoveFile(CGNString const& path);

/** Removes the files directly in a directory, then the directory. Directories in it stay, and with
    it them. @return that of OSRemoveDirectory, also when the directory could not be read. */
GENUTIL_API int OSRemoveDirectoryAndContents(CGNString const& path);

/** Removes a directory with all that is in it, read-only entries included; or a file. The root
    stays. On Windows the shell does it, which takes no path of 260 characters or more.
    @return 0, for an empty path too; 1 when it failed, which may be half way. */
GENUTIL_API int OSDeleteDirectoryTree(CGNString const& path);

/** Removes the entries of a directory that a predicate selects: directories as by
    OSRemoveDirectoryAndContents, what that does not remove as by OSRemoveFile.

    The predicate is asked about "." and ".." too, and selecting one of them removes the files of
    the directory itself or, mind, of the one above it.
    @param path the directory. @param predicate is given each entry's name, and returns whether to
    remove it; null selects none. @return 0. */
GENUTIL_API int OSRemovePatternFromDirectory(CGNString const& path,
                                             unsigned char (*predicate)(CGNString& name));

/** Removes the files in a directory that were last modified more than so many seconds ago.
    @param path the directory. @param seconds the greatest age that stays. @return 0. */
GENUTIL_API int OSRemoveOldFilesFromDirectory(CGNString const& path, long seconds);

/* -- Listing ----------------------------------------------------------------------------------- */

/* Patterns are those of Windows on every system: "*" for any characters, "?" for one or, before a
   dot or the end, none; letters match in either case, and "*.*" matches every name. */

/** Appends the paths of the entries of a directory that match, directories as well, "." and ".."
    among them. @param path the directory. @param pattern the pattern. @param list gets them, in
    the order of the system. @return 0; -1 when there is no such directory. */
GENUTIL_API int OSGetFileList(CGNString const& path, CGNString const& pattern, CGNStringList& list);

/** Appends the files of a directory that match; directories are left out. @param path the
    directory. @param pattern the pattern. @param list gets them: the files of the directory in the
    order of the system, then those of the directories in it. @param recurse whether to list these
    too, and those in them; links to directories are left out.
    @param fullPaths whether to append paths that begin with that of the directory, or names alone.
    @return 0; -1 when there is no such directory. */
GENUTIL_API int OSGetFileList(CGNString const& path, CGNString const& pattern, CGNStringList& list,
                              unsigned char recurse, unsigned char fullPaths);

/* -- Names ------------------------------------------------------------------------------------- */

/** @return what stands behind the last "." of the whole path, which may be that of a directory:
    "d\file" for "dir.d\file". Empty for null and for a path without one. */
GENUTIL_API CGNString OSGetFileExtension(char* path);

/** Ends a path before its last ".", in place. @return the path up to there; empty, with the path
    as it was, when there is no "." (it is not the whole path then) and for null. */
GENUTIL_API CGNString OSGetFileNoExtension(char* path);

/** @return what stands behind the last separator (CGNString::SplitFilePath). */
GENUTIL_API CGNString OSGetFileFromPath(CGNString const& path);

/** Makes a path in the directory for temporary files that nothing has, of the name
    "prefix(qualifier)", or with ".001", ".002" and so on behind it when that is taken. No file is
    made. Characters that names cannot have, and dots, become "_".
    @param prefix begins the name; null is an empty one. @param qualifier stands in the brackets.
    @param result receives the path, cut at 256 characters before the number; empty on failure.
    @return 1; 0 when there is no directory for temporary files and none can be made. */
GENUTIL_API unsigned char OSGetReportTempFileName(char const* prefix, char const* qualifier,
                                                  CGNString& result);

/** The name in the network of a path on a connected drive: "\\server\share\dir" for "X:\dir". The
    drive's letter must be in upper case. There are no drives on Linux.
    @param result receives it; unchanged when there is none. @param path begins with a letter, and
    has ":" behind it or "\" as its third character. @return whether there is one. */
GENUTIL_API unsigned char OSGetUniversalName(CGNString& result, CGNString& path);

#endif
