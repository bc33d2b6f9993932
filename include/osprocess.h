/* Other programs.

   OSRunSyncProcess runs a program and catches what it prints, OSRunAsyncProcess starts one and goes
   on, OSOpenFile opens a document with the program of its kind, and OSExpandEnvironmentVariables
   puts values for the "%NAME%" of a text.

       CGNString output;
       if (OSRunSyncProcess("report.exe /month:3 \"/title:The sales\"", output) == 0) ...

   Command lines, paths and texts are in the current code set. No shell is involved: the system
   takes the command line apart (on Windows), or the library does by the same rules (on Linux):

       program   = '"' any but '"' ... '"'  |  up to the first blank
       argument  = up to a blank outside of quotes; 2n backslashes before a quote are n of them, one
                   more makes the quote a character; two quotes within quotes are one

   Any thread may call any of these. */
#ifndef GENUTIL_OSPROCESS_H
#define GENUTIL_OSPROCESS_H

#include "genexport.h"
#include "genstr.h"

/** What OSRunSyncProcess returns for a program that closed its output and goes on running. */
#define OS_STILL_ACTIVE 259

/** Runs a program without a window, in a console (on Linux a session) of its own, until it closes
    its output: standard output and standard error. Its standard input is that of the caller.
    @param commandLine the program, which is looked for as the system does, and its arguments.
    @param output gets what the program prints appended, byte by byte as it comes.
    @return the program's exit code; OS_STILL_ACTIVE when it closed its output and goes on (on Linux
    after a quarter of a second in which it may end); 1 when the run was cut short, the program then
    being ended: reading failed or memory ran out; the system's error code when it could not be
    started: 2 for a program that is not found. On Linux a program that a signal ended has the code
    128 + signal, and the error codes are those of errno. */
GENUTIL_API long OSRunSyncProcess(const CGNString& commandLine, CGNString& output);

/** Starts a program and does not wait for it. It has the caller's environment and directory, and
    of the caller's handles the standard ones at most.
    @param commandLine as above.
    @param error receives the system's text when the program does not start.
    @return 1 when it was started, else 0. */
GENUTIL_API long OSRunAsyncProcess(const CGNString& commandLine, CGNString& error);

/** Opens a document with the program of its kind, which runs in the system's temporary directory;
    on Linux through xdg-open.
    @param path a file, or an address such as "https://...".
    @return 0 when it cannot be opened, else another number. */
GENUTIL_API long OSOpenFile(const CGNString& path);

/** Replaces "%NAME%" by the value of the variable of the process; an unknown name stays as it is,
    on Linux one in another letter case too. Of a name and of a value the first 255 bytes count.
    After a replacement the search goes on from where the reference began, plus its length, less the
    length of the value: so a value's own references are replaced where that place is before them. A
    text that would go on forever so is left after 1,000 replacements.
    @param text is not changed. @return the new text. */
GENUTIL_API CGNString OSExpandEnvironmentVariables(const CGNString& text);

#endif
