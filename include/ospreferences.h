/* Preference sets: an interface to settings that is independent of their storage. The local set
   stores them in an initialisation file (osconfig.h).

       OSLocalPreferenceSet preferences;
       CGNString value;
       preferences.GetPreferenceValue("Width", value, "80", "Screen", "./tour.ini");

   A set may be used by one thread at a time. Different sets may be used concurrently. Nothing
   throws. Texts are in the current code set. A null text is treated as an empty one. */
#ifndef GENUTIL_OSPREFERENCES_H
#define GENUTIL_OSPREFERENCES_H

#include <cstdint>

#include "genexport.h"
#include "genstr.h"

/** The status list of programs that implement their own sets; passed through unchanged. */
class QVStatusList;

namespace genutil {
struct PreferenceLayout;
}

/** The interface of all preference sets. The order of its virtual functions is part of the
    interface: destructor, GetPreferenceValue, SetPreferenceValue, LoadPreferenceValues,
    SavePreferenceValues, Reload, GetPreferenceType. Results of type long are 1 on success and 0 on
    failure. A context is defined by the caller. */
class GENUTIL_API IQVPreferenceSet {
  public:
    /** Storage of a set. Other implementations may use other values. */
    enum PreferenceType : std::int32_t {
        localPreferences = 0 /**< initialisation files */
    };

    /** Constructs a set with the given type of storage. */
    explicit IQVPreferenceSet(PreferenceType type) : m_type(type) {}
    /** Copies the type. */
    IQVPreferenceSet(const IQVPreferenceSet&) = default;
    /** Copies the type. */
    IQVPreferenceSet& operator=(const IQVPreferenceSet&) = default;
    virtual ~IQVPreferenceSet();

    /** Reads a value. Returns 1 on success.
        @param key name of the value.
        @param value receives the value, or the default if it does not exist.
        @param defaultValue the default.
        @param section section that contains the value.
        @param file file that contains the section. */
    virtual long GetPreferenceValue(const char* key, CGNString& value, const char* defaultValue,
                                    const char* section, const char* file) = 0;
    /** Writes a value. Returns 1 on success.
        @param key name of the value.
        @param value the value; not modified.
        @param section section that contains the value.
        @param file file that contains the section. */
    virtual long SetPreferenceValue(const char* key, CGNString& value, const char* section,
                                    const char* file) = 0;
    /** Loads the values that the set keeps in memory. The base class does nothing and returns 1. */
    virtual long LoadPreferenceValues(void* context, QVStatusList& status);
    /** Saves the values that the set keeps in memory. The base class does nothing and returns 1. */
    virtual long SavePreferenceValues(void* context, QVStatusList& status);
    /** Reloads the values that the set keeps in memory. The base class does nothing and returns
        1. */
    virtual long Reload(void* context, unsigned char force, QVStatusList& status);
    /** Returns the type of storage. */
    virtual PreferenceType GetPreferenceType();

  protected:
    PreferenceType m_type; /**< copied with the set */

  private:
    friend struct genutil::PreferenceLayout;
};

/** Preferences in initialisation files. If the defaults-only flag is set, files are not accessed:
    reading returns the defaults, and writing does nothing and succeeds. */
class GENUTIL_API OSLocalPreferenceSet : public IQVPreferenceSet {
  public:
    /** Constructs a set without the defaults-only flag. */
    OSLocalPreferenceSet();
    /** Constructs a set.
        @param defaultsOnly nonzero sets the defaults-only flag. */
    explicit OSLocalPreferenceSet(unsigned char defaultsOnly);
    /** Copies the type and the flag. */
    OSLocalPreferenceSet(const OSLocalPreferenceSet&) = default;
    /** Copies the type and the flag. */
    OSLocalPreferenceSet& operator=(const OSLocalPreferenceSet&) = default;
    ~OSLocalPreferenceSet() override;

    /** Reads a value with OSGetConfig(). If key is empty, reads a whole section with
        GetPreferenceSectionValueFromIni(); the default is then used only if the defaults-only flag
        is set. */
    long GetPreferenceValue(const char* key, CGNString& value, const char* defaultValue,
                            const char* section, const char* file) override;
    /** Writes a value with OSSetConfig(). Always returns 1. */
    long SetPreferenceValue(const char* key, CGNString& value, const char* section,
                            const char* file) override;
    /** Does nothing, because every call reads the file again. Always returns 1. */
    long Reload(void* context, unsigned char force, QVStatusList& status) override;

    /** Reads the lines of a section unchanged, including comments, with LF as line ends. The
        section starts after the first line that begins with "[section]", in this letter case. It
        ends before the line end preceding the next line that begins with "[", or at the end of the
        file. A line "[" directly after the section header does not end the section; existing
        programs depend on this. Returns 1, or 0 if the file is empty or cannot be read.
        @param section name of the section.
        @param value receives the lines; unchanged if the section does not exist.
        @param file path of the file; a name without a directory refers to the current
            directory. */
    long GetPreferenceSectionValueFromIni(const char* section, CGNString& value, const char* file);

  private:
    friend struct genutil::PreferenceLayout;

    unsigned char m_defaultsOnly;
};

#endif
