/* Lists of numbers, pointers and strings, lists of deferred calls, and a checksum.

   CGNList is a growable array of items of type GNItem, which are numbers or pointers. It owns only
   the array. The derived lists own the objects that their items point to: they store copies of
   added objects and destroy them.

       CGNStringList names;
       names.ParseFrom("Kyoto;Nara;Osaka", ';');   // 3
       names.AddUnique("Nara");                    // 0: already in the list
       names.InsertItem(0, "Tokyo");
       names.Sort();
       for (CGNString* name : names) puts(*name);
       CGNString line = names.Join("; ");

   Positions count items from 0. The capacity grows to multiples of the list's increment, one block
   at a time. Deleting items keeps the memory; Free() releases it. A derived list hides the
   operations of CGNList that it redefines. The others, such as SetItem(), ignore ownership: an item
   they overwrite is not destroyed.

   Nothing throws. An allocation failure is reported to the library's assertion service. The list is
   then unchanged, or has fewer items if the operation empties the list first. A number of items
   beyond the maximum fails in the same way. Boolean results are an unsigned char, 1 or 0.

   Lists are not synchronised. Callers must lock a list that several threads share. */
#ifndef GENUTIL_GENLIST_H
#define GENUTIL_GENLIST_H

#include "genexport.h"

/** Computes a 32-bit checksum that programs of the suite store. Each byte, in order, is combined
    with the most significant byte of the sum through the table of the reflected CRC-32 polynomial
    0xEDB88320. The result differs from the CRC-32 of other software. May be called from any thread.

    Returns the new checksum. A text may be processed in parts: pass the checksum of the first part
    as crc for the second.
    @param crc the checksum so far; the caller chooses the initial value.
    @param data the bytes, of any alignment; may be null if length is 0.
    @param length number of bytes. */
GENUTIL_C GENUTIL_API unsigned int gencrc32(unsigned int crc, const unsigned char* data,
                                            unsigned int length);

#ifdef __cplusplus

#include <cstddef>
#include <cstdint>
#include <iterator>

#include "genstring.h"

namespace genutil {
struct ListStorage;
}

/** Iterates over the objects that a list points to. A change of the list invalidates it. */
template <class T>
class CGNListIterator {
  public:
    using iterator_category = std::input_iterator_tag; /**< an input iterator */
    using value_type = T*;                             /**< a pointer to an object of the list */
    using difference_type = std::ptrdiff_t;            /**< unused */
    using pointer = T* const*;                         /**< unused */
    using reference = T*;                              /**< see operator* */

    /** Constructs an iterator at an item of a list. */
    explicit CGNListIterator(const GNItem* item) : m_item(item) {}
    /** Returns the object, or null where the list has a null item. */
    T* operator*() const { return reinterpret_cast<T*>(*m_item); }
    /** Moves on to the next item. */
    CGNListIterator& operator++() {
        ++m_item;
        return *this;
    }
    /** Moves on to the next item. Returns the iterator as it was. */
    CGNListIterator operator++(int) { return CGNListIterator(m_item++); }
    /** Returns true if both are at the same item. */
    friend bool operator==(CGNListIterator a, CGNListIterator b) { return a.m_item == b.m_item; }
    /** Returns the negation of ==. */
    friend bool operator!=(CGNListIterator a, CGNListIterator b) { return a.m_item != b.m_item; }

  private:
    const GNItem* m_item;
};

/** A growable array of numbers or pointers. */
class GENUTIL_API CGNList {
  public:
    /** Constructs an empty list with room for 10 items and an increment of 10. */
    CGNList();

    /** Constructs an empty list.
        @param initial number of items to make room for, rounded up to a multiple of increment;
            0 allocates nothing.
        @param increment number of items by which the capacity grows; 0 means 10. */
    CGNList(unsigned int initial, unsigned int increment);

    /** Copies the items, the capacity and the increment. */
    CGNList(const CGNList& other);

    /** Calls Free(), which derived lists override, then copies the items, the capacity and the
        increment. Returns the list itself. */
    CGNList& operator=(const CGNList& other);

    virtual ~CGNList();

    /** Empties the list and releases its memory. The increment is unchanged. */
    virtual void Free();

    /** Exchanges two items. Returns 0 if a or b is out of range. */
    virtual unsigned char SwapItems(int a, int b);

    /** Returns the array of items, valid until the list changes, or null if there is none. */
    virtual GNItem* GetItemListPtr() const;

    /** Returns the number of items. */
    int GetCount() const { return m_count; }

    /** Makes room for n items. The capacity grows to the next multiple of the increment above n; if
        n is a multiple, it grows by one more block. Returns 0 if allocation fails. */
    unsigned char AllocateItemList(unsigned int n);

    /** Appends an item. Returns 0 if allocation fails. */
    unsigned char AddItem(GNItem item);

    /** Inserts an item before the item at index, or appends it if index is GetCount(). Returns 0 if
        index is out of range or allocation fails.
        @param index 0 to GetCount().
        @param item the item. */
    unsigned char InsertItem(int index, GNItem item);

    /** Overwrites an item. Returns 0 if index is out of range or allocation fails.
        @param index 0 to GetCount(). Writing at GetCount() makes room for the item and stores
            it, but does not increase the number of items.
        @param item the item. */
    unsigned char SetItem(int index, GNItem item);

    /** Returns the item at index, or 0 if index is out of range. */
    GNItem GetItem(int index) const { return index >= 0 && index < m_count ? m_items[index] : 0; }

    /** Removes the item at index. Does nothing if index is out of range. */
    void DeleteItem(int index);

    /** Returns the first item. A change of the list invalidates the pointer. */
    const GNItem* begin() const { return m_items; }
    /** Returns the end of the items. */
    const GNItem* end() const { return m_items ? m_items + m_count : nullptr; }
    /** Returns the position of the first item equal to `item` at or after `start`, or -1 if there
       is none. */
    int Find(GNItem item, int start = 0) const {
        for (int i = start < 0 ? m_count : start; i < m_count; ++i)
            if (m_items[i] == item) return i;
        return -1;
    }

  private:
    friend struct genutil::ListStorage;

    GNItem* m_items;            // null if nothing is allocated
    std::int32_t m_count;       // items in use
    std::uint32_t m_capacity;   // items allocated
    std::uint32_t m_increment;  // never 0
};

/** A list that owns strings. An item is null only if allocation failed while it was added. */
class GENUTIL_API CGNStringList : public CGNList {
  public:
    /** Constructs an empty list with room for 10 strings and an increment of 10. */
    CGNStringList();
    /** Constructs an empty list; see CGNList. */
    CGNStringList(unsigned int initial, unsigned int increment);
    /** Copies the other list's strings. The capacity equals the number of strings and the increment
        is 10. */
    CGNStringList(const CGNStringList& other);
    ~CGNStringList() override;

    /** Destroys the strings, then appends copies of the other list's strings. The increment is
        unchanged. Returns the list itself. */
    CGNStringList& operator=(const CGNStringList& other);

    /** Appends copies of the other list's strings. Appending a list to itself does nothing. Returns
        the list itself. */
    CGNStringList& operator+=(const CGNStringList& other);

    /** Appends a copy of a string. If allocation of the copy fails, the item is null. Returns 0 if
        allocation of the item fails. */
    unsigned char AddItem(const CGNString& s);
    /** Appends a copy of a text; null is an empty text. See above. */
    unsigned char AddItem(const char* s);

    /** Inserts a copy of a string before the item at index, or appends it if index is GetCount().
        Returns 0 if index is out of range or allocation fails.
        @param index 0 to GetCount().
        @param s the string. */
    unsigned char InsertItem(int index, const CGNString& s);

    /** Returns the string at index, owned by the list, or null if index is out of range. */
    CGNString* GetItem(int index) { return reinterpret_cast<CGNString*>(CGNList::GetItem(index)); }
    /** Returns the string at index. The strings of a constant list may be modified. */
    CGNString* GetItem(int index) const {
        return reinterpret_cast<CGNString*>(CGNList::GetItem(index));
    }

    /** Destroys and removes the string at index. Does nothing if index is out of range. */
    void DeleteItem(int index);

    /** Appends a copy of a string unless the list contains an equal string. Returns 0 if it does or
        if allocation fails. */
    unsigned char AddUnique(const CGNString& s);

    /** Removes the first string equal to s, then inserts a copy of s. Returns 0 if index is out of
        range, in which case the equal string has been removed, or if allocation fails.
        @param index position in the list after the removal.
        @param s the string. */
    unsigned char InsertUnique(int index, const CGNString& s);

    /** Destroys the strings and removes all items. The memory of the array is kept. */
    void FreeListItems();

    /** Destroys the strings, removes all items and releases the memory of the array. */
    void Free() override;

    /** Splits a text and appends its parts. Adjacent separators give an empty part, but a final
        separator does not. Bytes are compared, so a trail byte of a character may be taken for a
        separator. Returns the number of items in the list, including earlier ones. */
    unsigned int ParseFrom(const CGNString& text, char separator);

    /** Sorts the strings in ascending order by the collation of the user's locale (mbstrcoll). The
        order of equal strings is unspecified. Null items come first. */
    void Sort();
    /** Sorts the strings in an order of the caller, e.g. `names.Sort(CGNStringLess())`. Otherwise
        same as above.
        @param before is called with two strings and returns true if the first comes before the
            second. */
    template <class Compare>
    void Sort(Compare before) {
        SortBy([](const CGNString& a, const CGNString& b,
                  void* compare) -> bool { return (*static_cast<Compare*>(compare))(a, b); },
               &before);
    }

    /** Returns the position of the first string equal to s at or after `start`, or -1 if there is
        none. */
    int Find(const CGNString& s, int start = 0) const;

    /** Returns the strings in one text with a separator between them. Null items are empty texts.
        Returns an empty text if allocation fails.
        @param separator the separator; null is an empty text. */
    CGNString Join(const char* separator) const;

    /** Returns the beginning of the strings, a range of CGNString*. */
    CGNListIterator<CGNString> begin() const {
        return CGNListIterator<CGNString>(CGNList::begin());
    }
    /** Returns the end of the strings. */
    CGNListIterator<CGNString> end() const { return CGNListIterator<CGNString>(CGNList::end()); }

  private:
    void SortBy(bool (*before)(const CGNString&, const CGNString&, void*), void* argument);
};

/** A list that owns lists of strings. */
class GENUTIL_API CGNStringListList : public CGNList {
  public:
    /** Constructs an empty list with room for 10 lists and an increment of 10. */
    CGNStringListList();
    /** Copies the other list's lists. The capacity equals the number of lists and the increment is
        10. */
    CGNStringListList(const CGNStringListList& other);
    ~CGNStringListList() override;

    /** Destroys the lists, then appends copies of the other list's lists. Returns the list
        itself. */
    CGNStringListList& operator=(const CGNStringListList& other);

    /** Appends a copy of a list. Returns 0 if allocation of the copy or of one of its strings
        fails. */
    unsigned char AddItem(const CGNStringList& list);

    /** Inserts a copy of a list before the item at index, or appends it if index is GetCount().
        Returns 0 if index is out of range or allocation fails.
        @param index 0 to GetCount().
        @param list the list. */
    unsigned char InsertItem(int index, const CGNStringList& list);

    /** Returns the list at index, owned by this list, or null if index is out of range. */
    CGNStringList* GetItem(int index) {
        return reinterpret_cast<CGNStringList*>(CGNList::GetItem(index));
    }
    /** Returns the list at index. The lists of a constant list may be modified. */
    CGNStringList* GetItem(int index) const {
        return reinterpret_cast<CGNStringList*>(CGNList::GetItem(index));
    }

    /** Destroys and removes the list at index. Does nothing if index is out of range. */
    void DeleteItem(int index);

    /** Returns the beginning of the lists, a range of CGNStringList*. */
    CGNListIterator<CGNStringList> begin() const {
        return CGNListIterator<CGNStringList>(CGNList::begin());
    }
    /** Returns the end of the lists. */
    CGNListIterator<CGNStringList> end() const {
        return CGNListIterator<CGNStringList>(CGNList::end());
    }

    /** Destroys the lists and removes all items. The memory of the array is kept. */
    void FreeListItems();

    /** Destroys the lists, removes all items and releases the memory of the array. */
    void Free() override;
};

/** A deferred call. */
struct CGNCleanupItem {
    void (*m_function)(void*); /**< the function to call; null calls nothing */
    void* m_argument;          /**< the argument to pass */
};

/** A list of calls to be made together, for example when a module shuts down. Executing the calls
    keeps the list. Destroying the list executes nothing. The list owns its records and cannot be
    copied. */
class GENUTIL_API CGNCleanupList : public CGNList {
  public:
    /** Constructs an empty list with room for 10 calls and an increment of 10. */
    CGNCleanupList();
    ~CGNCleanupList() override;
    CGNCleanupList(const CGNCleanupList&) = delete;
    CGNCleanupList& operator=(const CGNCleanupList&) = delete;

    /** Appends a call. If allocation of its record fails, the item is null. Returns 0 if allocation
        of the item fails. */
    unsigned char AddItem(void (*function)(void*), void* argument);

    /** Appends a record of the caller and takes ownership of it. Returns 0 if allocation fails; the
        caller then still owns the record.
        @param item a record created with new; null appends an item that calls nothing. */
    unsigned char AddItem(const CGNCleanupItem* item);

    /** Returns the record at index, owned by the list, or null if index is out of range. */
    CGNCleanupItem* GetItem(int index) {
        return reinterpret_cast<CGNCleanupItem*>(CGNList::GetItem(index));
    }
    /** Returns the record at index. The records of a constant list may be modified. */
    CGNCleanupItem* GetItem(int index) const {
        return reinterpret_cast<CGNCleanupItem*>(CGNList::GetItem(index));
    }

    /** Makes the calls in the order in which they were added, including calls added meanwhile. */
    void Execute() const;

    /** Frees the records. The items remain in the list as null. */
    void FreeListItems();

    /** Frees the records, removes all items and releases the memory of the array. */
    void Free() override;
};

#endif

#endif
