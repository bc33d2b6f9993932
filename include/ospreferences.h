/* Preference sets: settings behind one interface, wherever they are kept. The local set keeps them
   in an initialisation file (osconfig.h).

       OSLocalPreferenceSet preferences;
       CGNString value;
       preferences.GetPreferenceValue("Width", value, "80", "Screen", "./tour.ini");

   A set is for one thread at a time, and different sets may be used at the same time. Nothing
   throws. Texts are in the current code set; a null one counts as empty. */
#ifndef GENUTIL_OSPREFERENCES_H
#define GENUTIL_OSPREFERENCES_H

#include <cstdint>

#include "genexport.h"
#include "genstr.h"

/** The status list of the programs that implement sets of their own; passed through untouched. */
class QVStatusList;

namespace genutil {
struct PreferenceLayout;
}

/** What every set of preferences offers. The order of its virtual functions is part of the
    interface: destructor, GetPreferenceValue, SetPreferenceValue, LoadPreferenceValues,
    SavePreferenceValues, Reload, GetPreferenceType. A long that is returned is 1 for success and 0
    for failure; a context is the caller's own. */
class GENUTIL_API IQVPreferenceSet {
  public:
    /** Where a set keeps its values; other values than this are for other implementations. */
    enum PreferenceType : std::int32_t {
        localPreferences = 0 /**< in initialisation files */
    };

    /** @param type where the set keeps its values. */
    explicit IQVPreferenceSet(PreferenceType type) : m_type(type) {}
    /** Copies the type. */
    IQVPreferenceSet(const IQVPreferenceSet&) = default;
    /** Copies the type. */
    IQVPreferenceSet& operator=(const IQVPreferenceSet&) = default;
    virtual ~IQVPreferenceSet();

    /** Reads a value. @param key its name. @param value receives it, or the default where there is
        none. @param defaultValue the default. @param section the group of names. @param file where
        the groups are. @return 1 for success. */
    virtual long GetPreferenceValue(const char* key, CGNString& value, const char* defaultValue,
                                    const char* section, const char* file) = 0;
    /** Writes a value. @param key its name. @param value is not changed. @param section the group
        of names. @param file where the groups are. @return 1 for success. */
    virtual long SetPreferenceValue(const char* key, CGNString& value, const char* section,
                                    const char* file) = 0;
    /** Fetches what the set holds in memory. This one does nothing. @return 1. */
    virtual long LoadPreferenceValues(void* context, QVStatusList& status);
    /** Stores what the set holds in memory. This one does nothing. @return 1. */
    virtual long SavePreferenceValues(void* context, QVStatusList& status);
    /** Fetches it anew. This one does nothing. @return 1. */
    virtual long Reload(void* context, unsigned char force, QVStatusList& status);
    /** @return where the set keeps its values. */
    virtual PreferenceType GetPreferenceType();

  protected:
    PreferenceType m_type; /**< copied with the set */

  private:
    friend struct genutil::PreferenceLayout;
};

/** Preferences in initialisation files. With the defaults-only flag no file is touched: reading
    gives the defaults and writing is left out, with success. */
class GENUTIL_API OSLocalPreferenceSet : public IQVPreferenceSet {
  public:
    /** Reads and writes files. */
    OSLocalPreferenceSet();
    /** @param defaultsOnly the flag. */
    explicit OSLocalPreferenceSet(unsigned char defaultsOnly);
    /** Copies type and flag. */
    OSLocalPreferenceSet(const OSLocalPreferenceSet&) = default;
    /** Copies type and flag. */
    OSLocalPreferenceSet& operator=(const OSLocalPreferenceSet&) = default;
    ~OSLocalPreferenceSet() override;

    /** OSGetConfig; with an empty key GetPreferenceSectionValueFromIni, where the default has no
        say unless the flag is set. */
    long GetPreferenceValue(const char* key, CGNString& value, const char* defaultValue,
                            const char* section, const char* file) override;
    /** OSSetConfig. @return 1. */
    long SetPreferenceValue(const char* key, CGNString& value, const char* section,
                            const char* file) override;
    /** Does nothing: each call reads the file as it is. @return 1. */
    long Reload(void* context, unsigned char force, QVStatusList& status) override;

    /** Reads the lines of a section as they stand, comments included, but with LF as their ends:
        from the line behind its head up to the next line that begins with "[", whose preceding line
        end is left out, or to the end of the file. The head is the first line that begins with
        "[section]", in this letter case. A line "[" that follows the head at once ends nothing:
        programs rely on it.
        @param section its name. @param value receives the lines; without such a section it stays as
        it is. @param file its path, where a bare name is one in the current folder.
        @return 1; 0 when the file cannot be read or is empty. */
    long GetPreferenceSectionValueFromIni(const char* section, CGNString& value, const char* file);

  private:
    friend struct genutil::PreferenceLayout;

    unsigned char m_defaultsOnly;
};

#endif
