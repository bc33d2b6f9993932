/* The version of a program or a DLL, as its version resource has it. */
#ifndef GENUTIL_OSBUILDVERSION_H
#define GENUTIL_OSBUILDVERSION_H

#include <cstdint>

#include "genexport.h"
#include "genstr.h"

/** Reads the version of a Windows program or DLL, on Linux too.

        COSBuildVersion version("suite/app.dll");
        if (version.Init()) puts(version.GetVersionString());    // "Version 7.6.04  002 "

    Objects are not synchronised. */
class GENUTIL_API COSBuildVersion {
  public:
    /** All numbers are 0. @param file path of the file, in the current code set. */
    explicit COSBuildVersion(const char* file);

    /** Reads the file. @return 1; 0, with the numbers as they were, when it cannot be read or has
       no version resource. */
    unsigned char Init();

    /** @return the first number of the file's version. */
    short GetVersionMajorNumber() const { return m_major; }
    /** @return the second. */
    short GetVersionMinorNumber() const { return m_minor; }
    /** @return the third. */
    long GetVersionMaintenanceNumber() const { return m_maintenance; }
    /** @return the fourth; programs use it under either name. */
    long GetVersionPatchNumber() const { return m_patch; }
    /** @return the fourth. */
    long GetVersionBuildNumber() const { return m_build; }
    /** @return the language identifier of the first translation; 0 without any. */
    long GetLCID() const { return m_language; }

    /** @return "Version 7.6.04  002 ", without the number of the build where that is below 1:
        "Version 0.0.00  ". Programs store this text, blanks included. It is the object's and built
        anew by each call. */
    CGNString& GetVersionString();

  private:
    std::int16_t m_major, m_minor;
    std::int32_t m_maintenance, m_patch, m_build, m_language;
    CGNString m_file, m_text;
};

#endif
