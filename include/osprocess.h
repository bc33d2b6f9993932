/* Running other programs.

   OSRunSyncProcess runs a program and captures its output. OSRunAsyncProcess starts a program
   without waiting. OSOpenFile opens a document with its associated program.
   OSExpandEnvironmentVariables replaces "%NAME%" in a text with the values of environment
   variables.

       CGNString output;
       if (OSRunSyncProcess("report.exe /month:3 \"/title:The sales\"", output) == 0) ...

   Command lines, paths and texts are in the current code set. Command lines are not passed to a
   shell. They are split by the system (on Windows) or by the library with the same rules (on
   Linux):

       program   = '"' any but '"' ... '"'  |  up to the first blank
       argument  = up to a blank outside quotes; 2n backslashes before a quote give n backslashes,
                   one more makes the quote an ordinary character; two quotes within quotes give one

   Every function may be called from any thread. */
#ifndef GENUTIL_OSPROCESS_H
#define GENUTIL_OSPROCESS_H

#include "genexport.h"
#include "genstr.h"

/** Result of OSRunSyncProcess for a program that closed its output and is still running. */
#define OS_STILL_ACTIVE 259
/** Result of OSRunSyncProcess on Linux for a program whose exit code is unknown, because the
   calling process ignores SIGCHLD or waits for all of its children itself. */
#define OS_EXIT_CODE_UNKNOWN 260

/** Runs a program until it closes its standard output and standard error. The program has no window
    and runs in its own console (on Linux, in its own session). It inherits the standard input of
    the caller.

    Returns the exit code of the program, or one of these:
    - OS_STILL_ACTIVE: the program closed its output and is still running. On Linux the program
      has a quarter of a second to end before this is returned.
    - OS_EXIT_CODE_UNKNOWN: the program has ended, and the system does not tell how.
    - 1: reading the output or an allocation failed, and the program was terminated.
    - An error code of the system: the program could not be started, such as 2 if it was not
      found. On Linux this is an errno value.
    - On Linux, 128 + signal: a signal terminated the program.
    @param commandLine the program, found by the search rules of the system, and its arguments.
    @param output the bytes that the program prints are appended to it. */
GENUTIL_API long OSRunSyncProcess(const CGNString& commandLine, CGNString& output);

/** Starts a program and returns without waiting. The program inherits the environment, the current
    directory and at most the standard handles of the caller. On Linux it is not a child of the
    caller, and no signal is ignored in it. Returns 1 if the program was started,
    or else 0.
    @param commandLine as above.
    @param error receives the system's error text if the program was not started. */
GENUTIL_API long OSRunAsyncProcess(const CGNString& commandLine, CGNString& error);

/** Opens a document with its associated program; on Linux through xdg-open. The program runs in the
    system's temporary directory. A name that is neither a file nor an address is not passed on,
    because a file of that name in the temporary directory would be opened. Returns 0 on failure and
    another number on success. On Linux, failure of xdg-open is noticed within one second.
    @param path a file, or an address such as "https://...". */
GENUTIL_API long OSOpenFile(const CGNString& path);

/** Replaces each "%NAME%" in a text with the value of an environment variable of the process. An
    unknown name is unchanged; on Linux this includes a name in different letter case. Only the
    first 255 bytes of a name and of a value are used.

    After a replacement, the search continues at the start of the reference, plus the length of the
    reference, minus the length of the value. References within a value are therefore replaced if
    they start at or after that place. At most 1,000 replacements are made.
    @param text the text; not modified.
    @return the new text. */
GENUTIL_API CGNString OSExpandEnvironmentVariables(const CGNString& text);

#endif
