/* COSOLEValue: a value exchanged with an automation server. COSOLEArguments: the arguments of a
   call (osautomation.h).

       COSOLEValue price;
       price.SetDecimal(CGNDecimal("12.50"));   // exact, as all decimals and amounts of money
       COSOLEArguments arguments;
       arguments.Add("Tokyo").AddNamed("Price", price).AddByReference(COSOLEValue(0));

   Texts are in the current code set and are converted to and from the server's 16-bit characters
   during a call. A character of a result that is missing in the code set becomes "?". A text that
   is invalid in the code set makes the call fail. Numbers as text use the C spelling (gennum.h).

   Decimals have up to 96 bits and 28 decimal places. Amounts of money have 64 bits and four decimal
   places. Neither is ever converted to a binary fraction. A value that cannot be represented
   exactly is rejected, also if the server or an array requires another type during a call.

   Dates are those of the server: days since 30 December 1899 in local time, without a time zone,
   from the year 100 to 9999.

   Boolean results are an unsigned char, 1 or 0. A getter that returns 0 leaves its argument
   unchanged. Nothing throws. If allocation fails, the value becomes empty and the failure is
   reported to the library's assertion service. A value may be used by one thread at a time. */
#ifndef GENUTIL_OSOLEVALUE_H
#define GENUTIL_OSOLEVALUE_H

#include <cstdint>
#include <new>
#include <utility>

#include "gendate.h"
#include "genexport.h"
#include "gennum.h"
#include "genstr.h"

class COSOLEAutomation;

namespace genutil {
struct OleObject;
struct OleAccess;
/** Reports an allocation failure in a list to the library's assertion service. */
GENUTIL_API void ReportFullOleList();
}  // namespace genutil

/** A growable list that owns its items. */
template <class T>
class COSOLEList {
  public:
    COSOLEList() : m_items(nullptr), m_count(0), m_capacity(0) {}
    /** Copies the items; the list is empty if allocation fails. */
    COSOLEList(const COSOLEList& other) : COSOLEList() { *this = other; }
    /** Moves the items from the other list. */
    COSOLEList(COSOLEList&& other) noexcept : COSOLEList() {
        m_items = other.m_items;
        m_count = other.m_count;
        m_capacity = other.m_capacity;
        other.m_items = nullptr;
        other.m_count = other.m_capacity = 0;
    }
    ~COSOLEList() { delete[] m_items; }

    /** Copies the items; the list is empty if allocation fails. */
    COSOLEList& operator=(const COSOLEList& other) {
        if (this == &other) return *this;
        Free();
        if (!SetCount(other.m_count)) return *this;
        for (int i = 0; i < m_count; ++i) m_items[i] = other.m_items[i];
        return *this;
    }

    /** Exchanges the items of the two lists. */
    COSOLEList& operator=(COSOLEList&& other) noexcept {
        std::swap(m_items, other.m_items);
        std::swap(m_count, other.m_count);
        std::swap(m_capacity, other.m_capacity);
        return *this;
    }

    /** Returns the number of items. */
    int GetCount() const { return m_count; }
    /** Returns the item at index, owned by the list, or null if index is out of range. */
    T* GetItem(int index) { return index >= 0 && index < m_count ? m_items + index : nullptr; }
    /** Same as above, read-only. */
    const T* GetItem(int index) const {
        return index >= 0 && index < m_count ? m_items + index : nullptr;
    }

    /** Appends a copy of an item, which may be an item of this list. Returns 0 if allocation
        fails. */
    unsigned char AddItem(const T& item) {
        if (m_count == m_capacity) {
            const T copy(item);
            return Reserve(m_capacity < 8 ? 8 : 2 * m_capacity) ? AddItem(copy) : 0;
        }
        m_items[m_count++] = item;
        return 1;
    }

    /** Appends new items or removes items at the end until the list has count items. Returns 0 and
        changes nothing if count is negative or allocation fails. */
    unsigned char SetCount(int count) {
        if (count < 0 || (count > m_capacity && !Reserve(count))) return 0;
        while (m_count > count) m_items[--m_count] = T();
        m_count = count;
        return 1;
    }

    /** Empties the list and releases its memory. */
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

/** A dimension of an array. */
struct COSOLEBound {
    long m_lower = 0; /**< index of the first item */
    long m_count = 0; /**< number of items */
};

/** A value of any automation type. */
class GENUTIL_API COSOLEValue {
  public:
    /** The kind of a value. */
    enum Kind {
        kEmpty,    /**< no value was assigned */
        kNull,     /**< no valid data */
        kMissing,  /**< an omitted optional argument */
        kBoolean,  /**< true or false */
        kInteger,  /**< 64 bits; sent with 32 bits if they suffice */
        kReal,     /**< a double */
        kText,     /**< a text */
        kDate,     /**< a local date and time */
        kCurrency, /**< an amount of money with four decimal places */
        kDecimal,  /**< a decimal number */
        kError,    /**< an error number */
        kObject,   /**< a server object, or none */
        kArray,    /**< values in one or more dimensions */
        kBytes     /**< a one-dimensional array of bytes, starting at index 0 */
    };

    COSOLEValue();                               /**< Constructs an empty value. */
    COSOLEValue(int value);                      /**< Constructs an integer. */
    COSOLEValue(long value);                     /**< Constructs an integer. */
    COSOLEValue(long long value);                /**< Constructs an integer. */
    COSOLEValue(double value);                   /**< Constructs a real. */
    COSOLEValue(const char* text);               /**< Constructs a text; null is an empty text. */
    COSOLEValue(const CGNString& text);          /**< Constructs a text, including 0 bytes. */
    COSOLEValue(const COSOLEAutomation& object); /**< Constructs an object; see SetObject(). */
    COSOLEValue(const COSOLEValue& other);       /**< Copies the value; an object is shared. */
    /** Copies the value; an object is shared. */
    COSOLEValue& operator=(const COSOLEValue& other);
    ~COSOLEValue();

    /** Returns the kind of the value. */
    Kind GetKind() const { return m_kind; }
    /** Returns the English name of the kind, such as "decimal". */
    const char* GetKindName() const;

    /* -- Setters. If one returns 0, the value is empty ------------------------------------- */

    void SetEmpty();                      /**< Sets kEmpty. */
    void SetNull();                       /**< Sets kNull. */
    void SetMissing();                    /**< Sets kMissing. */
    void SetBoolean(unsigned char value); /**< Sets a boolean; 0 is false. */
    void SetInteger(long long value);     /**< Sets an integer. */
    void SetReal(double value);           /**< Sets a real. */
    void SetText(const CGNString& text);  /**< Sets a text. */
    void SetError(long code);             /**< Sets an error number. */
    /** Sets a decimal. The number is read from GetRawBuffer() in the C spelling; an empty one is 0.
        Returns 0 if it is malformed or has too many digits. */
    unsigned char SetDecimal(const CGNDecimal& number);
    /** Sets an amount of money. The number is read in the C spelling; the currency code is dropped,
        because servers have none. Returns 0 if the number is malformed, has more than four decimal
        places or has too many digits. */
    unsigned char SetCurrency(const CGNCurrency& amount);
    /** Sets a date from the local date and time of a moment, with a resolution of one second.
        Returns 0 if the moment is empty. */
    unsigned char SetDateTime(const CGNDateTime& moment);
    /** Sets a date. Returns 0 if an argument is out of range.
        @param date the date, converted by its day number. The server uses the Gregorian
            calendar throughout, so dates up to 4 October 1582 have other day, month and year values
            there.
        @param secondOfDay 0 to 86399. */
    unsigned char SetDate(const CGNDate& date, long secondOfDay = 0);
    /** Sets a date. Returns 0 if it is out of range.
        @param days days since 30 December 1899. The fraction of a negative number still counts
            forward within the day. */
    unsigned char SetOleDate(double days);
    /** Sets an object, which is shared. An object that is not connected gives a value without an
        object. */
    void SetObject(const COSOLEAutomation& object);
    /** Sets an array of bytes. Returns 0 if allocation fails.
        @param bytes the bytes; may be null if count is 0.
        @param count number of bytes. */
    unsigned char SetBytes(const void* bytes, unsigned long count);

    /** Sets a one-dimensional array of empty values. Returns 0 if a number is negative, no such
        array exists or allocation fails.
        @param count number of items.
        @param lower index of the first item on the server.
        @param element the kind of all items, for servers that require one: kBoolean to
            kCurrency, kDecimal or kObject. kEmpty allows items of any kind. */
    unsigned char SetArray(long count, long lower = 0, Kind element = kEmpty);
    /** Sets an array of 1 to 60 dimensions; see above.
        @param bounds the dimensions, beginning with that of the first index.
        @param dimensions number of dimensions.
        @param element as above. */
    unsigned char SetArray(const COSOLEBound* bounds, int dimensions, Kind element = kEmpty);

    /* -- Getters. They return 0 if the kind does not match or the value does not fit ------- */

    unsigned char GetBoolean(unsigned char& out) const; /**< Reads a boolean. */
    /** Reads an integer, a boolean as 1 or 0, or a real, decimal or amount of money without a
        fraction. */
    unsigned char GetInteger(long long& out) const;
    unsigned char GetReal(double& out) const; /**< Reads a real, or an integer up to 2^53. */
    /** Reads a value as text. Numbers are in the C spelling, booleans are "true" or "false", a date
        is "2010-03-05 14:30:00", an error is "0x80020004". Empty, null and missing values give an
        empty text. Returns 0 for objects, arrays and bytes. */
    unsigned char GetText(CGNString& out) const;
    unsigned char GetError(long& code) const; /**< Reads an error number. */
    /** Reads a decimal, an amount of money or an integer.
        @param out receives the number in the C spelling, with the decimal places that the
            server sent. */
    unsigned char GetDecimal(CGNDecimal& out) const;
    /** Reads an amount of money, an integer, or a decimal with up to four decimal places.
        @param out receives the amount in the C spelling, without trailing zeroes.
        @param code currency code to append; empty for none. */
    unsigned char GetCurrency(CGNCurrency& out, const CGNString& code = CGNString()) const;
    /** Reads a date within the range of CGNDateTime, rounded to the nearest second, in the time
        zone of the thread. */
    unsigned char GetDateTime(CGNDateTime& out) const;
    /** Reads any date.
        @param out receives the date.
        @param secondOfDay receives 0 to 86399; may be null. */
    unsigned char GetDate(CGNDate& out, long* secondOfDay = nullptr) const;
    unsigned char GetOleDate(double& days) const; /**< Reads a date as sent by the server. */
    /** Reads an object.
        @param out shares the object; not connected if the value has none. The retry time and
            the error of out are unchanged. */
    unsigned char GetAutomation(COSOLEAutomation& out) const;

    /** Returns the bytes, valid until the value changes, or null if the kind is not kBytes. */
    const unsigned char* GetBytes() const;
    /** Returns the number of items of an array in all its dimensions, or the number of bytes; 0 for
        other kinds. */
    long GetCount() const;
    /** Returns the number of dimensions: 1 for bytes, 0 if the value is not an array. */
    int GetDimensions() const;
    /** Returns a dimension, counted from 0. Returns an empty one if dimension is out of range. */
    COSOLEBound GetBound(int dimension) const;
    /** Returns the kind of all items of an array; kEmpty if items may be of any kind. */
    Kind GetElementKind() const { return m_element; }
    /** Returns the item of an array at a position, owned by the value, or null if it is out of
        range. Positions count from 0; the first index varies fastest. */
    COSOLEValue* GetItem(long position) {
        const bool fits = position == static_cast<int>(position);
        return fits ? m_items.GetItem(static_cast<int>(position)) : nullptr;
    }
    /** Same as above, read-only. */
    const COSOLEValue* GetItem(long position) const {
        const bool fits = position == static_cast<int>(position);
        return fits ? m_items.GetItem(static_cast<int>(position)) : nullptr;
    }
    /** Returns the position of an item, or -1 if there is none.
        @param indexes one index for each dimension, counted from its lower bound. */
    long GetPosition(const long* indexes) const;

  private:
    friend struct genutil::OleAccess;

    void Become(Kind kind);

    Kind m_kind;
    Kind m_element;
    std::int64_t m_integer;        // boolean, integer, error; currency in ten-thousandths
    double m_real;                 // real, date
    CGNString m_text;              // text, bytes; decimal in the C spelling
    genutil::OleObject* m_object;  // null for none
    COSOLEList<COSOLEValue> m_items;
    COSOLEList<COSOLEBound> m_bounds;
};

/** The arguments of a call: positional arguments first, then named ones. */
class GENUTIL_API COSOLEArguments {
  public:
    COSOLEArguments();
    COSOLEArguments(const COSOLEArguments& other);            /**< Copies all arguments. */
    COSOLEArguments& operator=(const COSOLEArguments& other); /**< Copies all arguments. */
    ~COSOLEArguments();

    /** Appends an argument. This function and those below return the object itself. */
    COSOLEArguments& Add(const COSOLEValue& value);
    /** Appends an argument that the server may change. After the call, Get() returns the new value.
        The argument has the type given by the server's type information. An empty value is an
        output argument. */
    COSOLEArguments& AddByReference(const COSOLEValue& value);
    /** Omits an optional argument. Later arguments keep their positions. */
    COSOLEArguments& AddMissing();
    /** Appends a named argument. Letter case of the name is ignored. */
    COSOLEArguments& AddNamed(const CGNString& name, const COSOLEValue& value);
    /** Appends a named argument that the server may change. */
    COSOLEArguments& AddNamedByReference(const CGNString& name, const COSOLEValue& value);

    int GetCount() const { return m_items.GetCount(); } /**< Returns the number of arguments. */
    void Clear() { m_items.Free(); }                    /**< Removes all arguments. */
    /** Returns an argument, or an empty value if index is out of range.
        @param index counted from 0 in the order in which arguments were added. */
    COSOLEValue Get(int index) const;
    /** Returns the name of an argument; empty if it is positional or index is out of range. */
    CGNString GetName(int index) const;
    /** Returns 1 if the server may change the argument. */
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
