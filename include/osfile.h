/* Files and directories: whole files in memory, creation, listing and removal of directories, and
   file names.

       char* text;
       if (OSGetFileContents(text, "notes.txt")) {       // lines end with "\n"
           puts(text);
           free(text);
       }
       CGNStringList reports(10, 10);
       OSGetFileList("reports", "*.rpt", reports, 1, 1);   // including subdirectories, with paths

   Paths are texts in the current code set (mbutil.h) on every system. Names in a path are separated
   by "\" or "/". Returned paths contain "\", as CGNString::MakeFilePath builds them. A byte 0x5C
   that is a trail byte is not a separator. If the system uses another encoding for file names,
   paths are converted. Bytes that cannot be converted are passed unchanged. A file whose name is
   stored in unconverted bytes is found too. A null path refers to a file that cannot be accessed.

   Results depend on the group of functions:
   - Functions that read return the number of bytes, or 1 if they read text, and 0 on failure.
   - Functions that create and remove return 0 or an osFileError.
   - Functions that derive a name return it, or an empty string if there is none.

   Buffers returned by functions that read are owned by the caller and released with free. They are
   null on failure. An allocation failure is reported to the library's assertion service and makes
   the call fail. Nothing throws or is logged. Every function may be called from any thread. */
#ifndef GENUTIL_OSFILE_H
#define GENUTIL_OSFILE_H

#include <sys/stat.h>

#include <cstddef>

#include "genexport.h"
#include "genlist.h"
#include "genstr.h"

#ifndef _WIN32
/** The file status record: st_size, st_mode, st_mtime and the other members of stat. */
struct _stat : stat {};
#endif

/** Error codes of the functions that create and remove. */
enum osFileError {
    osFileFailed = -1,   /**< any other error */
    osFileExists = -2,   /**< the file exists already */
    osFileNotFound = -3, /**< the file or a directory of its path does not exist */
    /** The system denies access. Also returned by file functions for a directory, and for a file in
        use. */
    osFileAccessDenied = -4,
    osDirectoryNotEmpty = -5 /**< the directory is not empty */
};

/** Action if a file exists. */
enum osFileActionIfExists {
    osFailIfExists = 0,      /**< leave it unchanged and return osFileExists */
    osOverwriteIfExists = 1, /**< truncate it first */
    osAppendIfExists = 2     /**< append to it */
};

/* -- Status and locations ---------------------------------------------------------------------- */

/** Reads the status of a file. Symbolic links are followed. Returns 0 on success and another number
    on failure. On 32-bit Windows, a file of 2 GB or more is a failure because its size does not fit
    the record.
    @param path the file.
    @param status receives the status. */
GENUTIL_API int OSFileStat(char const* path, struct _stat& status);
#ifdef _WIN32
#ifdef _USE_32BIT_TIME_T
/** Same as above, for programs with 64-bit times. */
GENUTIL_API int OSFileStat(char const* path, struct _stat64i32& status);
#else
/** Same as above, for programs with 32-bit times. */
GENUTIL_API int OSFileStat(char const* path, struct _stat32& status);
#endif
#endif

/** Returns the directory for temporary files (on Linux TMPDIR, or else /tmp). Always returns 1.
    @param result receives the directory with a trailing separator; empty if it is longer than
        511 bytes. */
GENUTIL_API int OSGetTempDir(CGNString& result);

/* -- Whole files ------------------------------------------------------------------------------- */

/** Reads a file. Returns the number of bytes. Returns 0 and sets buffer to null if the file is
    empty, changes its length meanwhile or cannot be read.
    @param buffer receives the bytes and a terminating 0; to be released with free.
    @param path a regular file of less than 2 GB. */
GENUTIL_API int OSGetBinaryFileContents(char*& buffer, char const* path);

/** Reads a text file and replaces each "\r\n" with "\n" (OSDosToUnix). Returns 1. Returns 0 and
    sets buffer to null if OSGetBinaryFileContents() would return 0.
    @param buffer receives the text and a terminating 0; to be released with free.
    @param path the file. */
GENUTIL_API int OSGetFileContents(char*& buffer, char const* path);

/** Reads the part of a file that its trailer specifies. The trailer is within the last
    strlen(marker) + 16 bytes and contains the marker. The number after its first ":" is the number
    of bytes to read. A file without the marker or the ":" is read whole. Returns the number of
    bytes. Returns 0 and sets buffer to null if that number is 0 or negative, if the file has fewer
    bytes, or if OSGetBinaryFileContents() would return 0.
    @param buffer receives the bytes and a terminating 0; to be released with free.
    @param path the file.
    @param marker the text at the start of the trailer; not null. */
GENUTIL_API int OSGetBinaryFileContentsWithFieldOffset(char*& buffer, char const* path,
                                                       char const* marker);

/** Reads the part of a text file that its trailer specifies and replaces each "\r\n" with "\n"; see
    OSGetBinaryFileContentsWithFieldOffset(). Returns 1. Returns 0 and sets buffer to null if
    nothing was read.
    @param buffer receives the text and a terminating 0; to be released with free.
    @param path the file.
    @param marker the text at the start of the trailer. */
GENUTIL_API int OSGetFileContentsWithFieldOffset(char*& buffer, char const* path,
                                                 char const* marker);

/** Appends a trailer, such as "DATA:100" for a file of 100 bytes, to an existing file. Returns the
    number of bytes written. Returns 0 if the file cannot be opened or written, or if either pointer
    is null.
    @param path the file.
    @param trailer the text of the trailer, written unchanged. */
GENUTIL_API int OSWriteFieldOffset(char const* path, char const* trailer);

/** Writes a buffer to a file. Returns the number of bytes written. Returns osFileExists and leaves
    the file unchanged if it exists and action is osFailIfExists. Returns 0 if the file cannot be
    opened, if not everything could be written, or if buffer is null and size is not 0.
    @param buffer the bytes.
    @param size number of bytes.
    @param path the file.
    @param action the action if the file exists. */
GENUTIL_API long OSWriteBinaryFileContents(char* buffer, unsigned int size, CGNString path,
                                           osFileActionIfExists action);

/** Removes every carriage return directly before a line feed, in place. Returns 1, or 0 for
    null. */
GENUTIL_API int OSDosToUnix(char* text);

/** Gives a file new contents, or makes it. The new contents are written beside the old ones and
    flushed before they take their place, so that readers, and a machine that loses its power, find
    the old or the new contents. The file keeps its owner, permissions, access list and attributes;
    a symbolic link is followed. Where no new file can take the place of the old one, it is written
    in place: if it has several hard links or is mounted by itself, or if the user cannot make files
    beside it. Returns 0 or an osFileError.
    @param path the file.
    @param bytes the new contents; may be null if size is 0.
    @param size number of bytes. */
GENUTIL_API int OSReplaceFileContents(CGNString const& path, void const* bytes, size_t size);

/** Copies a file with its permissions. The copy appears under its name when it is complete.
    Symbolic links are followed. Returns 0 or an osFileError; osFileAccessDenied if one of them is
    not a regular file, and if both are the same file.
    @param from the file to copy.
    @param to the copy.
    @param action osFailIfExists or osOverwriteIfExists; any other fails. */
GENUTIL_API int OSCopyFile(CGNString const& from, CGNString const& to, osFileActionIfExists action);

/** Gives a file, a symbolic link or a directory another name. On another file system, only a file
    can be moved; it is copied and then removed. Returns 0 or an osFileError.
    @param from the present path.
    @param to the new path, including the name.
    @param action osFailIfExists or osOverwriteIfExists; any other fails. */
GENUTIL_API int OSMoveFile(CGNString const& from, CGNString const& to, osFileActionIfExists action);

/* -- Creation and removal ---------------------------------------------------------------------- */

/* Functions that remove do not follow symbolic links: the link itself is removed. The two functions
   that examine the entries of a directory one by one, with a predicate or by age, accept a link to
   that directory. */

/** Creates a directory. Its parent must exist. Returns 0 or an osFileError. */
GENUTIL_API int OSCreateDirectory(CGNString const& path);

/** Creates a directory and all missing directories above it. Returns 0, also if the directory
    exists, or an osFileError; osFileExists if a file has the name of one of them. */
GENUTIL_API int OSCreateDirectories(CGNString const& path);

/** Creates a new, empty file, which on Linux only the user can read and write. Returns 0 or an
    osFileError.
    @param directory where to create it; empty for the directory for temporary files.
    @param prefix the start of its name, which ends in a number; may be empty.
    @param path receives the path; empty on failure. */
GENUTIL_API int OSCreateTempFile(CGNString const& directory, CGNString const& prefix,
                                 CGNString& path);

/** Removes an empty directory, or a link to any directory. Returns 0 or an osFileError. */
GENUTIL_API int OSRemoveDirectory(CGNString const& path);

/** Removes a file or a link. Returns 0 or an osFileError. */
GENUTIL_API int OSRemoveFile(CGNString const& path);

/** Removes the files in a directory and then the directory. If the directory has subdirectories,
    they and the directory itself are kept. Returns the result of OSRemoveDirectory(), also if the
    directory could not be read. */
GENUTIL_API int OSRemoveDirectoryAndContents(CGNString const& path);

/** Removes a file, or a directory with all its content, including read-only entries. A root
    directory is not removed. On Windows the path must be shorter than 260 characters. Returns 0 on
    success and for an empty path. Returns 1 on failure, when part of the content may have been
    removed. */
GENUTIL_API int OSDeleteDirectoryTree(CGNString const& path);

/** Removes the entries of a directory that a predicate selects. Directories are removed as by
    OSRemoveDirectoryAndContents(). Other entries, and directories which that function fails to
    remove, are removed as by OSRemoveFile(). Always returns 0.

    The predicate is also called for "." and "..". Selecting "." removes the files of the directory
    itself, and selecting ".." removes those of its parent directory.
    @param path the directory.
    @param predicate receives the name of each entry and returns nonzero to remove it; null
        selects nothing. */
GENUTIL_API int OSRemovePatternFromDirectory(CGNString const& path,
                                             unsigned char (*predicate)(CGNString& name));

/** Removes the files in a directory whose last modification is too old. Always returns 0.
    @param path the directory.
    @param seconds the maximum age in seconds of files to keep. */
GENUTIL_API int OSRemoveOldFilesFromDirectory(CGNString const& path, long seconds);

/* -- Listing ----------------------------------------------------------------------------------- */

/* Patterns follow the rules of Windows on every system. "*" matches any characters. "?" matches one
   character, or none before a dot or the end. Letter case is ignored. "*.*" matches every name. */

/** Appends the paths of all matching entries of a directory, including directories, "." and "..".
    Returns 0, or -1 if the directory does not exist.
    @param path the directory.
    @param pattern the pattern.
    @param list receives the paths in the order of the system. */
GENUTIL_API int OSGetFileList(CGNString const& path, CGNString const& pattern, CGNStringList& list);

/** Appends the matching files of a directory, without directories. Returns 0, or -1 if the
    directory does not exist.
    @param path the directory.
    @param pattern the pattern.
    @param list receives the files of the directory in the order of the system, followed by
        those of its subdirectories.
    @param recurse nonzero includes subdirectories at every level, except symbolic links to
        directories.
    @param fullPaths nonzero appends paths that begin with the path of the directory, zero
        appends names only. */
GENUTIL_API int OSGetFileList(CGNString const& path, CGNString const& pattern, CGNStringList& list,
                              unsigned char recurse, unsigned char fullPaths);

/** The kind of an entry of a directory. */
enum osFileKind {
    osKindFile = 0,       /**< a regular file */
    osKindDirectory = 1,  /**< a directory */
    osKindLink = 2,       /**< a symbolic link, to anything */
    osKindOther = 3,      /**< a pipe, a device and the like */
    osKindUnreadable = 4, /**< a directory of which not all entries could be read */
};

/** An entry of a directory. Its texts are valid during the call of the visitor. */
struct OSFileEntry {
    const char* path;   /**< begins with the path of the directory that is visited */
    const char* name;   /**< the last part of the path; empty for osKindUnreadable */
    osFileKind kind;    /**< for a symbolic link, that of the link itself */
    long long size;     /**< bytes; 0 for a directory */
    long long modified; /**< time of the last modification, in seconds since 1970, UTC */
};

/** Receives an entry. Returns nonzero to continue, and zero to stop. */
typedef unsigned char (*OSFileVisitor)(void* context, OSFileEntry const& entry);

/** Result of OSVisitFiles if the visitor stopped the visit. */
#define osVisitStopped 1

/** Calls a visitor for each matching entry of a directory, except "." and "..". A directory that
    cannot be read, or not to its end, is reported to the visitor with the kind osKindUnreadable,
    and the visit continues. The visitor may remove the entry. Returns 0 if all entries were
    visited, osVisitStopped if the visitor stopped, and osFileFailed if a directory could not be
    read or visitor is null.
    @param path the directory.
    @param pattern the pattern.
    @param visitor called for each entry, on the calling thread.
    @param context passed to the visitor.
    @param recurse nonzero also visits the directories below, whatever their names, except symbolic
        links to directories. */
GENUTIL_API int OSVisitFiles(CGNString const& path, CGNString const& pattern, OSFileVisitor visitor,
                             void* context, unsigned char recurse);

/* -- Names ------------------------------------------------------------------------------------- */

/** Returns the text after the last "." of the whole path. That "." may be in the name of a
    directory: "d\file" for "dir.d\file". Returns an empty string for null and for a path without
    ".". */
GENUTIL_API CGNString OSGetFileExtension(char* path);

/** Truncates a path before its last "." and returns it. Returns an empty string and leaves the path
    unchanged if it has no ".". Returns an empty string for null. */
GENUTIL_API CGNString OSGetFileNoExtension(char* path);

/** Returns the text after the last separator (CGNString::SplitFilePath). */
GENUTIL_API CGNString OSGetFileFromPath(CGNString const& path);

/** Returns an unused path in the directory for temporary files. The name is "prefix(qualifier)",
    followed by ".001", ".002" and so on if that name is in use. The file is not created. Dots and
    characters that are not allowed in file names become "_". Returns 1. Returns 0 if there is no
    directory for temporary files and none can be created.
    @param prefix the start of the name; null is an empty text.
    @param qualifier the text in parentheses.
    @param result receives the path, cut at 256 characters before the number; empty on failure. */
GENUTIL_API unsigned char OSGetReportTempFileName(char const* prefix, char const* qualifier,
                                                  CGNString& result);

/** Returns the network name of a path on a connected drive: "\\server\share\dir" for "X:\dir". The
    drive letter must be in upper case. Linux has no drives. Returns 1 if there is a network name.
    @param result receives the network name; unchanged if there is none.
    @param path begins with a drive letter, and has ":" as its second character or "\" as its
        third. */
GENUTIL_API unsigned char OSGetUniversalName(CGNString& result, CGNString& path);

#endif
