/* The catalogues that user interfaces fill their pick lists from: locales and time zones.

       for (long i = 0; i < LocaleInfo::GetLocaleInfoCount(mbSelectAll); ++i)
           add(LocaleInfo::GetLocaleInfoItem(i)->GetDescription());
       ...
       LocaleInfo::GetLocaleFromLocaleDescription(chosen, name, mbSelectAll);   // "de_DE"

   A catalogue is built by the first call that counts it, in the code set that is current then, and
   stays until its Free(). No lock guards it: build it while the process starts. Results that answer
   yes or no are an unsigned char of 1 or 0. */
#ifndef GENUTIL_GENCATALOGUE_H
#define GENUTIL_GENCATALOGUE_H

#include <cstdint>

#include "genexport.h"
#include "genstr.h"
#include "mbutil.h"

/** Which locales the catalogue lists, as mbGetNextLocaleEx has it. */
typedef mbLocaleSelection MBLocaleSelect;

/** A locale of the catalogue. */
class GENUTIL_API LocaleInfo {
  public:
    /** A row without content, added to the catalogue: a catalogue to which a program has added rows
        is not built any more. */
    LocaleInfo();
    /** A copy, which the catalogue does not list. */
    LocaleInfo(const LocaleInfo& other) = default;
    /** Takes the content; which of the two the catalogue lists stays as it is. */
    LocaleInfo& operator=(const LocaleInfo& other) = default;
    /** Leaves the catalogue, if the row is in it. */
    ~LocaleInfo();

    /** @return the locale's name, such as "en_US". */
    const CGNString& GetName() const { return m_name; }
    /** @param name the locale's name. */
    void SetName(const CGNString& name) { m_name = name; }
    /** @return what the locale is called for people: "English (United States)". */
    const CGNString& GetDescription() const { return m_description; }
    /** @param description what the locale is called for people. */
    void SetDescription(const CGNString& description) { m_description = description; }
    /** @return the Windows locale identifier. */
    unsigned long GetLocaleId() const { return m_localeId; }
    /** @param id the Windows locale identifier; its low 32 bits are kept. */
    void SetLocaleId(unsigned long id) { m_localeId = static_cast<std::uint32_t>(id); }

    /** Builds the catalogue if it is empty. Locales with a description of less than 13 bytes are
        not listed. @param select which locales; has no effect on a catalogue that is built already.
        @return the number of rows. */
    static long GetLocaleInfoCount(MBLocaleSelect select);
    /** @return a row, owned by the catalogue; null when there is none at index (from 0) or the
        catalogue is not built. */
    static LocaleInfo* GetLocaleInfoItem(long index);

    /** Finds the first locale with a Windows identifier. @param lcid the identifier.
        @param name receives the name; unchanged when there is none. @return whether there is. */
    static unsigned char GetLocale(long lcid, CGNString& name);

    /** Finds the first locale with a description, in any letter case. An empty description is found
        and gives an empty name.
        @param description the description. @param name receives the name; emptied when there is
        none. @param select for the catalogue. @return whether there is one. */
    static unsigned char GetLocaleFromLocaleDescription(CGNString& description, CGNString& name,
                                                        MBLocaleSelect select);
    /** Finds the first locale with a name, in any letter case. An empty name is found and gives an
        empty description.
        @param name the name. @param description receives the description; unlike in the reverse
        search unchanged when there is none. @param select for the catalogue.
        @return whether there is one. */
    static unsigned char GetLocaleDescriptionFromLocale(CGNString& name, CGNString& description,
                                                        MBLocaleSelect select);

    /** Deletes all rows, those that programs added included, and the list. */
    static void Free();

  private:
    CGNString m_name;
    CGNString m_description;
    std::uint32_t m_localeId;
};

/** A time zone of the catalogue. */
class GENUTIL_API CLCTimeZoneInfo {
  public:
    /** A row without content, added to the catalogue, as in LocaleInfo. */
    CLCTimeZoneInfo();
    /** A copy, which the catalogue does not list. */
    CLCTimeZoneInfo(const CLCTimeZoneInfo& other) = default;
    /** Takes the content; which of the two the catalogue lists stays as it is. */
    CLCTimeZoneInfo& operator=(const CLCTimeZoneInfo& other) = default;
    /** Leaves the catalogue, if the row is in it. */
    ~CLCTimeZoneInfo();

    /** @return the zone's name, such as "Asia/Tokyo". */
    const CGNString& GetName() const { return m_name; }
    /** @param name the zone's name. */
    void SetName(const CGNString& name) { m_name = name; }
    /** @return what the zone is called for people: "(UTC+09:00) Tokyo, Japan". */
    const CGNString& GetDisplayText() const { return m_display; }
    /** @param text what the zone is called for people. */
    void SetDisplayText(const CGNString& text) { m_display = text; }

    /** Builds the catalogue if it is empty. @return the number of rows. */
    static long GetInfoCount();
    /** @return a row, owned by the catalogue; null when there is none at index (from 0) or the
        catalogue is not built. */
    static CLCTimeZoneInfo* GetInfoItem(long index);
    /** @return the first row with a name, in its exact letters; null when there is none. Builds the
        catalogue if it is empty. */
    static CLCTimeZoneInfo* GetInfoItemFromTimeZone(const char* name);
    /** Deletes all rows, those that programs added included, and the list. */
    static void Free();

  private:
    CGNString m_name;
    CGNString m_display;
};

#endif
