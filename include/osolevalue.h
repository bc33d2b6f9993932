/* COSOLEValue: a value that goes to an automation server or comes from it, and COSOLEArguments, the
   arguments of a call (osautomation.h).

       COSOLEValue price;
       price.SetDecimal(CGNDecimal("12.50"));   // exactly, as all decimals and amounts of money
       COSOLEArguments arguments;
       arguments.Add("Tokyo").AddNamed("Price", price).AddByReference(COSOLEValue(0));

   Texts are in the current code set and become the 16-bit characters of the server and back when a
   call is made; what the code set lacks in a result becomes "?", and a text that is invalid in it
   fails the call. Numbers written as text have the C spelling (gennum.h).

   Decimals have up to 96 bits and 28 digits behind the symbol, amounts of money four such digits in
   64 bits. Neither is ever a binary fraction: what does not fit exactly is refused, in a call too
   where the server or an array wants another type.

   Dates are the server's: days since 30 December 1899 of local time, without a zone, from the year
   100 to 9999.

   Results that answer yes or no are an unsigned char of 1 or 0; a getter that answers 0 leaves its
   argument as it was. Nothing throws; without memory a value becomes empty, which is reported to
   the library's assertion. A value belongs to one thread at a time. */
#ifndef GENUTIL_OSOLEVALUE_H
#define GENUTIL_OSOLEVALUE_H

#include <cstdint>
#include <new>
#include <utility>

#include "genexport.h"
#include "gendate.h"
#include "gennum.h"
#include "genstr.h"

class COSOLEAutomation;

namespace genutil {
struct OleObject;
struct OleAccess;
/** Tells the library's assertion that memory ran out for a list. */
GENUTIL_API void ReportFullOleList();
}  // namespace genutil

/** A growable list that owns its items. */
template <class T>
class COSOLEList {
  public:
    COSOLEList() : m_items(nullptr), m_count(0), m_capacity(0) {}
    /** Copies of the other's items; none when memory runs out. */
    COSOLEList(const COSOLEList& other) : COSOLEList() { *this = other; }
    /** Takes the other's items over. */
    COSOLEList(COSOLEList&& other) : COSOLEList() {
        m_items = other.m_items;
        m_count = other.m_count;
        m_capacity = other.m_capacity;
        other.m_items = nullptr;
        other.m_count = other.m_capacity = 0;
    }
    ~COSOLEList() { delete[] m_items; }

    /** Takes copies of the other's items; none when memory runs out. */
    COSOLEList& operator=(const COSOLEList& other) {
        if (this == &other) return *this;
        Free();
        if (!SetCount(other.m_count)) return *this;
        for (int i = 0; i < m_count; ++i) m_items[i] = other.m_items[i];
        return *this;
    }

    /** Takes the other's items over, which gets those of this list. */
    COSOLEList& operator=(COSOLEList&& other) {
        std::swap(m_items, other.m_items);
        std::swap(m_count, other.m_count);
        std::swap(m_capacity, other.m_capacity);
        return *this;
    }

    /** @return the number of items. */
    int GetCount() const { return m_count; }
    /** @return the item, which stays the list's; null when there is none at index. */
    T* GetItem(int index) { return index >= 0 && index < m_count ? m_items + index : nullptr; }
    /** The same, not to be changed. */
    const T* GetItem(int index) const {
        return index >= 0 && index < m_count ? m_items + index : nullptr;
    }

    /** Adds a copy of an item, which may be one of the list. @return 0 when memory runs out. */
    unsigned char AddItem(const T& item) {
        if (m_count == m_capacity) {
            const T copy(item);
            return Reserve(m_capacity < 8 ? 8 : 2 * m_capacity) ? AddItem(copy) : 0;
        }
        m_items[m_count++] = item;
        return 1;
    }

    /** Adds new items at the end, or takes items away there. @param count 0 or more.
        @return 0, with nothing changed, when memory runs out. */
    unsigned char SetCount(int count) {
        if (count < 0 || (count > m_capacity && !Reserve(count))) return 0;
        while (m_count > count) m_items[--m_count] = T();
        m_count = count;
        return 1;
    }

    /** Empties the list and gives its memory back. */
    void Free() {
        delete[] m_items;
        m_items = nullptr;
        m_count = m_capacity = 0;
    }

  private:
    bool Reserve(int capacity) {
        T* items = new (std::nothrow) T[static_cast<unsigned>(capacity)];
        if (!items) {
            genutil::ReportFullOleList();
            return false;
        }
        for (int i = 0; i < m_count; ++i) items[i] = m_items[i];
        delete[] m_items;
        m_items = items;
        m_capacity = capacity;
        return true;
    }

    T* m_items;
    int m_count;
    int m_capacity;
};

/** One dimension of an array. */
struct COSOLEBound {
    long m_lower = 0; /**< index of the first item */
    long m_count = 0; /**< items */
};

/** A value of any kind that automation knows. */
class GENUTIL_API COSOLEValue {
  public:
    /** What a value is. */
    enum Kind {
        kEmpty,    /**< nothing was assigned */
        kNull,     /**< no valid data */
        kMissing,  /**< an optional argument that is left out */
        kBoolean,  /**< true or false */
        kInteger,  /**< 64 bits; goes out with 32 bits where these do */
        kReal,     /**< a double */
        kText,     /**< a text */
        kDate,     /**< local date and time */
        kCurrency, /**< an amount of money with four decimals */
        kDecimal,  /**< a decimal number */
        kError,    /**< a number that stands for an error */
        kObject,   /**< an object of a server, or none */
        kArray,    /**< values in one dimension or more */
        kBytes     /**< an array of bytes in one dimension, from index 0 */
    };

    COSOLEValue();                               /**< empty */
    COSOLEValue(int value);                      /**< an integer */
    COSOLEValue(long value);                     /**< an integer */
    COSOLEValue(long long value);                /**< an integer */
    COSOLEValue(double value);                   /**< a real */
    COSOLEValue(const char* text);               /**< a text; null is an empty one */
    COSOLEValue(const CGNString& text);          /**< a text, with 0 bytes in it if it has them */
    COSOLEValue(const COSOLEAutomation& object); /**< see SetObject */
    COSOLEValue(const COSOLEValue& other);       /**< a copy; an object is shared */
    COSOLEValue& operator=(const COSOLEValue& other); /**< the same */
    ~COSOLEValue();

    /** @return what it is. */
    Kind GetKind() const { return m_kind; }
    /** @return the kind's name in English, such as "decimal". */
    const char* GetKindName() const;

    /* -- Setting: the value is empty where one of these returns 0 -------------------------- */

    void SetEmpty();                      /**< see Kind */
    void SetNull();                       /**< see Kind */
    void SetMissing();                    /**< see Kind */
    void SetBoolean(unsigned char value); /**< @param value 0 is false */
    void SetInteger(long long value);     /**< see Kind */
    void SetReal(double value);           /**< see Kind */
    void SetText(const CGNString& text);  /**< see Kind */
    void SetError(long code);             /**< see Kind */
    /** @param number in the C spelling, as it was set (GetRawBuffer); the empty one is 0.
        @return 0 when it is no number in it or has too many digits. */
    unsigned char SetDecimal(const CGNDecimal& number);
    /** @param amount its number in the C spelling; the code stays behind, servers know none.
        @return 0 when it is no number in it, has more than four decimals or too many digits. */
    unsigned char SetCurrency(const CGNCurrency& amount);
    /** @param moment its local date and time, to the second. @return 0 for an empty one. */
    unsigned char SetDateTime(const CGNDateTime& moment);
    /** @param date by its day number: days up to 4 October 1582 have other dates on the server,
        which reckons in the Gregorian calendar throughout. @param secondOfDay 0 to 86399.
        @return 0 when one is out of range. */
    unsigned char SetDate(const CGNDate& date, long secondOfDay = 0);
    /** @param days since 30 December 1899; of a negative number the fraction still counts forward
        in the day. @return 0 when it is out of range. */
    unsigned char SetOleDate(double days);
    /** @param object is shared; one that is not connected stands for none. */
    void SetObject(const COSOLEAutomation& object);
    /** @param bytes may be null when count is 0. @param count how many. @return 0 when memory runs
        out. */
    unsigned char SetBytes(const void* bytes, unsigned long count);

    /** Makes an array of empty values in one dimension.
        @param count items, 0 or more. @param lower index of the first on the server.
        @param element what all items are, for a server that insists: kBoolean to kCurrency,
        kDecimal or kObject; kEmpty for items of any kind.
        @return 0 when a number is negative, there is no such array or memory runs out. */
    unsigned char SetArray(long count, long lower = 0, Kind element = kEmpty);
    /** The same in 1 to 60 dimensions. @param bounds the dimensions, the first index first.
        @param dimensions how many. @param element as above. @return as above. */
    unsigned char SetArray(const COSOLEBound* bounds, int dimensions, Kind element = kEmpty);

    /* -- Getting: 0 when the value is of another kind or does not fit ---------------------- */

    unsigned char GetBoolean(unsigned char& out) const; /**< of a boolean */
    /** Of an integer, a boolean (1 or 0), and a whole real, decimal or amount of money. */
    unsigned char GetInteger(long long& out) const;
    unsigned char GetReal(double& out) const; /**< of a real, and of an integer up to 2^53 */
    /** A text as it is; numbers in the C spelling; "true" and "false"; a date as
        "2010-03-05 14:30:00"; an error as "0x80020004"; empty, null and missing as the empty text.
        @return 0 for objects, arrays and bytes. */
    unsigned char GetText(CGNString& out) const;
    unsigned char GetError(long& code) const; /**< of an error */
    /** Of a decimal, an amount of money and an integer. @param out receives it in the C spelling,
        with the decimals that the server gave. */
    unsigned char GetDecimal(CGNDecimal& out) const;
    /** Of an amount of money, an integer and a decimal of up to four decimals. @param out receives
        it in the C spelling, without zeroes at its end. @param code of the currency, to be added;
        empty for none. */
    unsigned char GetCurrency(CGNCurrency& out, const CGNString& code = CGNString()) const;
    /** Of a date that a moment can have, to the nearest second, in the zone of the thread. */
    unsigned char GetDateTime(CGNDateTime& out) const;
    /** Of any date. @param out receives it. @param secondOfDay receives 0 to 86399; may be
        null. */
    unsigned char GetDate(CGNDate& out, long* secondOfDay = nullptr) const;
    unsigned char GetOleDate(double& days) const; /**< of a date, as the server gave it */
    /** Of an object. @param out shares it; it is not connected when there is none. Its retry time
        and its error stay. */
    unsigned char GetObject(COSOLEAutomation& out) const;

    /** @return the bytes, valid until the value changes; null when it is of another kind. */
    const unsigned char* GetBytes() const;
    /** @return the items of an array in all its dimensions, or the bytes; else 0. */
    long GetCount() const;
    /** @return the dimensions of an array, 1 of bytes, else 0. */
    int GetDimensions() const;
    /** @return a dimension, from 0; an empty one when there is none. */
    COSOLEBound GetBound(int dimension) const;
    /** @return what all items of an array are; kEmpty when they may be of any kind. */
    Kind GetElementKind() const { return m_element; }
    /** An item of an array by its position: from 0, the first index running fastest.
        @return the item, which stays the value's; null when there is none. */
    COSOLEValue* GetItem(long position) {
        const bool fits = position == static_cast<int>(position);
        return fits ? m_items.GetItem(static_cast<int>(position)) : nullptr;
    }
    /** The same, not to be changed. */
    const COSOLEValue* GetItem(long position) const {
        const bool fits = position == static_cast<int>(position);
        return fits ? m_items.GetItem(static_cast<int>(position)) : nullptr;
    }
    /** @return the position of the item with these indexes, which begin at their lower bounds, one
        for each dimension; -1 when there is none. */
    long GetPosition(const long* indexes) const;

  private:
    friend struct genutil::OleAccess;

    void Become(Kind kind);

    Kind m_kind;
    Kind m_element;
    std::int64_t m_integer;        // boolean, integer, error; currency in ten-thousandths
    double m_real;                 // real, date
    CGNString m_text;              // text, bytes; a decimal in the C spelling
    genutil::OleObject* m_object;  // null for none
    COSOLEList<COSOLEValue> m_items;
    COSOLEList<COSOLEBound> m_bounds;
};

/** The arguments of a call: first those by position, then those by name. */
class GENUTIL_API COSOLEArguments {
  public:
    COSOLEArguments();
    COSOLEArguments(const COSOLEArguments& other);            /**< copies of all */
    COSOLEArguments& operator=(const COSOLEArguments& other); /**< takes copies of all */
    ~COSOLEArguments();

    /** Adds an argument. All of these return the arguments themselves. */
    COSOLEArguments& Add(const COSOLEValue& value);
    /** Adds one that the server may change: Get has the new value behind the call. It takes the
        type that the server's type information has for it; an empty value is one to be filled. */
    COSOLEArguments& AddByReference(const COSOLEValue& value);
    /** Leaves an optional argument out; those behind it have their position still. */
    COSOLEArguments& AddMissing();
    /** Adds an argument by its name, in any letter case. */
    COSOLEArguments& AddNamed(const CGNString& name, const COSOLEValue& value);
    /** The same for one that the server may change. */
    COSOLEArguments& AddNamedByReference(const CGNString& name, const COSOLEValue& value);

    int GetCount() const { return m_items.GetCount(); } /**< @return how many there are */
    void Clear() { m_items.Free(); }                    /**< takes all away */
    /** @param index from 0, in the order in which they were added. @return the argument; an empty
        value when there is none. */
    COSOLEValue Get(int index) const;
    /** @return the argument's name; empty for one by position and when there is none. */
    CGNString GetName(int index) const;
    /** @return 1 when the server may change the argument. */
    unsigned char IsByReference(int index) const;

  private:
    friend struct genutil::OleAccess;
    struct Item {
        COSOLEValue value;
        CGNString name;
        unsigned char byReference = 0;
    };
    COSOLEArguments& AddOne(const COSOLEValue& value, const char* name, unsigned char byReference);

    COSOLEList<Item> m_items;
};

#endif
