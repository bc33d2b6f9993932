/* Catalogues of locales and time zones for the selection lists of user interfaces.

       for (long i = 0; i < LocaleInfo::GetLocaleInfoCount(mbSelectAll); ++i)
           add(LocaleInfo::GetLocaleInfoItem(i)->GetDescription());
       ...
       LocaleInfo::GetLocaleFromLocaleDescription(chosen, name, mbSelectAll);   // "de_DE"

   The first call that counts the entries builds the catalogue. Its texts are in the code set that
   is current at that time. It is kept until Free(). Nothing here is synchronised; build the
   catalogues while the process starts. Boolean results are an unsigned char, 1 or 0. */
#ifndef GENUTIL_GENCATALOGUE_H
#define GENUTIL_GENCATALOGUE_H

#include <cstdint>

#include "genexport.h"
#include "genstr.h"
#include "mbutil.h"

/** Selection of the locales in the catalogue; see mbGetNextLocaleEx(). */
typedef mbLocaleSelection MBLocaleSelect;

/** A locale in the catalogue. */
class GENUTIL_API LocaleInfo {
  public:
    /** Constructs an empty entry and adds it to the catalogue. A catalogue that already has entries
        is not built. */
    LocaleInfo();
    /** Constructs a copy that is not part of the catalogue. */
    LocaleInfo(const LocaleInfo& other) = default;
    /** Copies the content. Membership in the catalogue is unchanged for both objects. */
    LocaleInfo& operator=(const LocaleInfo& other) = default;
    /** Removes the entry from the catalogue if it is part of it. */
    ~LocaleInfo();

    /** Returns the locale's name, such as "en_US". */
    const CGNString& GetName() const { return m_name; }
    /** Sets the locale's name. */
    void SetName(const CGNString& name) { m_name = name; }
    /** Returns the description for users, such as "English (United States)". */
    const CGNString& GetDescription() const { return m_description; }
    /** Sets the description for users. */
    void SetDescription(const CGNString& description) { m_description = description; }
    /** Returns the Windows locale identifier. */
    unsigned long GetLocaleId() const { return m_localeId; }
    /** Sets the Windows locale identifier. Only the low 32 bits of id are kept. */
    void SetLocaleId(unsigned long id) { m_localeId = static_cast<std::uint32_t>(id); }

    /** Returns the number of entries. Builds the catalogue if it is empty. Locales whose
        description has fewer than 13 bytes are omitted.
        @param select the locales to list; ignored if the catalogue already exists. */
    static long GetLocaleInfoCount(MBLocaleSelect select);
    /** Returns the entry at index, counted from 0. The catalogue owns it. Returns null if the index
        is out of range or the catalogue has not been built. */
    static LocaleInfo* GetLocaleInfoItem(long index);

    /** Finds the first locale with a Windows locale identifier. Returns 1 if one exists.
        @param lcid the identifier.
        @param name receives the locale's name; unchanged if none exists. */
    static unsigned char GetLocale(long lcid, CGNString& name);

    /** Finds the first locale with a description, ignoring letter case. Returns 1 if one exists. An
        empty description always succeeds and gives an empty name.
        @param description the description.
        @param name receives the locale's name; emptied if none exists.
        @param select the locales to list if the catalogue must be built. */
    static unsigned char GetLocaleFromLocaleDescription(CGNString& description, CGNString& name,
                                                        MBLocaleSelect select);
    /** Finds the first locale with a name, ignoring letter case. Returns 1 if one exists. An empty
        name always succeeds and gives an empty description.
        @param name the name.
        @param description receives the description; unchanged if none exists.
            GetLocaleFromLocaleDescription() differs here.
        @param select the locales to list if the catalogue must be built. */
    static unsigned char GetLocaleDescriptionFromLocale(CGNString& name, CGNString& description,
                                                        MBLocaleSelect select);

    /** Deletes the catalogue and all its entries, including those that programs added. */
    static void Free();

  private:
    CGNString m_name;
    CGNString m_description;
    std::uint32_t m_localeId;
};

/** A time zone in the catalogue. */
class GENUTIL_API CLCTimeZoneInfo {
  public:
    /** Constructs an empty entry and adds it to the catalogue. A catalogue that already has entries
        is not built. */
    CLCTimeZoneInfo();
    /** Constructs a copy that is not part of the catalogue. */
    CLCTimeZoneInfo(const CLCTimeZoneInfo& other) = default;
    /** Copies the content. Membership in the catalogue is unchanged for both objects. */
    CLCTimeZoneInfo& operator=(const CLCTimeZoneInfo& other) = default;
    /** Removes the entry from the catalogue if it is part of it. */
    ~CLCTimeZoneInfo();

    /** Returns the zone's name, such as "Asia/Tokyo". */
    const CGNString& GetName() const { return m_name; }
    /** Sets the zone's name. */
    void SetName(const CGNString& name) { m_name = name; }
    /** Returns the description for users, such as "(UTC+09:00) Tokyo, Japan". */
    const CGNString& GetDisplayText() const { return m_display; }
    /** Sets the description for users. */
    void SetDisplayText(const CGNString& text) { m_display = text; }

    /** Returns the number of entries. Builds the catalogue if it is empty. */
    static long GetInfoCount();
    /** Returns the entry at index, counted from 0. The catalogue owns it. Returns null if the index
        is out of range or the catalogue has not been built. */
    static CLCTimeZoneInfo* GetInfoItem(long index);
    /** Returns the first entry with exactly this name, or null if none exists. Letter case matters.
        Builds the catalogue if it is empty. */
    static CLCTimeZoneInfo* GetInfoItemFromTimeZone(const char* name);
    /** Deletes the catalogue and all its entries, including those that programs added. */
    static void Free();

  private:
    CGNString m_name;
    CGNString m_display;
};

#endif
