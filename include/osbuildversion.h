/* The version of a program or DLL, from its version resource. */
#ifndef GENUTIL_OSBUILDVERSION_H
#define GENUTIL_OSBUILDVERSION_H

#include <cstdint>

#include "genexport.h"
#include "genstr.h"

/** Reads the version of a Windows program or DLL, also on Linux.

        COSBuildVersion version("suite/app.dll");
        if (version.Init()) puts(version.GetVersionString());    // "Version 7.6.04  002 "

    Objects are not synchronised. */
class GENUTIL_API COSBuildVersion {
  public:
    /** Constructs an object whose numbers are all 0.
        @param file path of the file, in the current code set. */
    explicit COSBuildVersion(const char* file);

    /** Reads the file. Returns 1 on success. Returns 0 and leaves all numbers unchanged if the file
        cannot be read or has no version resource. */
    unsigned char Init();

    /** Returns the first number of the file version. */
    short GetVersionMajorNumber() const { return m_major; }
    /** Returns the second number of the file version. */
    short GetVersionMinorNumber() const { return m_minor; }
    /** Returns the third number of the file version. */
    long GetVersionMaintenanceNumber() const { return m_maintenance; }
    /** Returns the fourth number of the file version; same as GetVersionBuildNumber(). */
    long GetVersionPatchNumber() const { return m_patch; }
    /** Returns the fourth number of the file version. */
    long GetVersionBuildNumber() const { return m_build; }
    /** Returns the language identifier of the first translation; 0 if there is none. */
    long GetLCID() const { return m_language; }

    /** Returns the version as text: "Version 7.6.04  002 ", or "Version 0.0.00  " without the build
        number if that is below 1. Programs store this text including its blanks. The object owns
        the string, and every call rebuilds it. */
    CGNString& GetVersionString();

  private:
    std::int16_t m_major, m_minor;
    std::int32_t m_maintenance, m_patch, m_build, m_language;
    CGNString m_file, m_text;
};

#endif
