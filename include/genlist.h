/* The lists of the text family, lists of deferred calls, and a checksum.

   CGNList is a growable array of items of type long, which are numbers or pointers; it owns nothing
   but the array. The lists derived from it own what their items point to: they store copies of what
   is added, and destroy them.

       CGNStringList names;
       names.ParseFrom("Kyoto;Nara;Osaka", ';');   // 3
       names.AddUnique("Nara");                    // 0: it is there
       names.InsertItem(0, "Tokyo");
       names.Sort();
       for (int i = 0; i < names.GetCount(); ++i) puts(*names.GetItem(i));

   Positions count items from 0. The capacity grows to multiples of the list's increment, one block
   at a time, and deletion gives no memory back; Free() does. A list derived from CGNList hides the
   operations of CGNList that it has under the same name. Those it does not have, SetItem for one,
   know nothing of ownership: what they overwrite is not destroyed.

   Nothing throws. A failure of allocation is reported to the library's assertion and leaves the
   list as it was, or with less in it where the operation empties the list first. A number of items
   that no list can hold fails in the same way. Results that answer yes or no are an unsigned char
   of 1 or 0.

   Lists are not synchronised: one that threads share is locked by its users. */
#ifndef GENUTIL_GENLIST_H
#define GENUTIL_GENLIST_H

#include "genexport.h"

/** A checksum of 32 bits that programs of the suite have stored: each byte, the first one first,
    goes through the table of the reflected CRC-32 polynomial 0xEDB88320 with the most significant
    byte of the sum. It is not the CRC-32 of other software. Any thread may call it.
    @param crc the checksum so far; programs choose what to start from. @param data any alignment;
    may be null when length is 0. @param length bytes. @return the checksum; the sum over a text is
    the sum over its second half started from that over its first. */
GENUTIL_C GENUTIL_API unsigned int gencrc32(unsigned int crc, const unsigned char* data,
                                            unsigned int length);

#ifdef __cplusplus

#include <cstdint>

#include "genstr.h"

namespace genutil {
struct ListStorage;
}

/** A growable array of numbers or pointers. */
class GENUTIL_API CGNList {
  public:
    /** An empty list with room for 10 items that grows by 10. */
    CGNList();

    /** An empty list. @param initial items to make room for, rounded up to a multiple of increment;
        0 allocates nothing. @param increment items in a block of growth; 0 stands for 10. */
    CGNList(unsigned int initial, unsigned int increment);

    /** A list of the same items, capacity and increment. */
    CGNList(const CGNList& other);

    /** Frees this list, as a derived list does it, then takes the other's items, capacity and
        increment. @return the list itself. */
    CGNList& operator=(const CGNList& other);

    virtual ~CGNList();

    /** Empties the list and gives its memory back. The increment stays. */
    virtual void Free();

    /** Exchanges two items. @return 0 when there is no item at a or at b. */
    virtual unsigned char SwapItems(int a, int b);

    /** @return the array of the items, valid until the list changes; null when there is none. */
    virtual long* GetItemListPtr() const;

    /** @return the number of items. */
    int GetCount() const { return m_count; }

    /** Makes room for n items. Growth goes to the next multiple of the increment above n, which for
        a multiple is a block more. @return 0 when memory runs out. */
    unsigned char AllocateItemList(unsigned int n);

    /** Adds an item behind the last. @return 0 when memory runs out. */
    unsigned char AddItem(long item);

    /** Inserts an item before the one at index, or behind the last. @param index 0 to GetCount().
        @param item the item. @return 0 when index is outside of it or memory runs out. */
    unsigned char InsertItem(int index, long item);

    /** Overwrites an item. @param index 0 to GetCount(): the place behind the last item can be
        written to, and made room for, but is no item before one is added over it.
        @param item the item. @return 0 when index is outside of it or memory runs out. */
    unsigned char SetItem(int index, long item);

    /** @return the item; 0 when there is none at index. */
    long GetItem(int index) const { return index >= 0 && index < m_count ? m_items[index] : 0; }

    /** Removes an item; nothing happens when there is none at index. */
    void DeleteItem(int index);

  private:
    friend struct genutil::ListStorage;

    long* m_items;              // null when nothing is allocated
    std::int32_t m_count;       // items in use
    std::uint32_t m_capacity;   // items allocated
    std::uint32_t m_increment;  // never 0
};

/** A list that owns strings. An item is null only where memory ran out while it was added. */
class GENUTIL_API CGNStringList : public CGNList {
  public:
    /** An empty list with room for 10 strings that grows by 10. */
    CGNStringList();
    /** An empty list; the numbers are those of CGNList. */
    CGNStringList(unsigned int initial, unsigned int increment);
    /** Copies of the other's strings. The new list has no room to spare and grows by 10. */
    CGNStringList(const CGNStringList& other);
    ~CGNStringList() override;

    /** Destroys the strings, then adds copies of the other's. The increment stays.
        @return the list itself. */
    CGNStringList& operator=(const CGNStringList& other);

    /** Adds copies of the other's strings; nothing when the other is this list.
        @return the list itself. */
    CGNStringList& operator+=(const CGNStringList& other);

    /** Adds a copy of a string; a null item, when memory runs out for the copy.
        @return 0 when memory runs out for the item. */
    unsigned char AddItem(const CGNString& s);
    /** The same with a text; null is an empty one. */
    unsigned char AddItem(const char* s);

    /** Inserts a copy of a string before the item at index, or behind the last.
        @param index 0 to GetCount(). @param s the string.
        @return 0 when index is outside of it or memory runs out. */
    unsigned char InsertItem(int index, const CGNString& s);

    /** @return the string, which stays the list's; null when there is none at index. */
    CGNString* GetItem(int index) { return reinterpret_cast<CGNString*>(CGNList::GetItem(index)); }
    /** The same: a constant list keeps its strings, but they may be changed. */
    CGNString* GetItem(int index) const {
        return reinterpret_cast<CGNString*>(CGNList::GetItem(index));
    }

    /** Destroys a string and removes it; nothing happens when there is none at index. */
    void DeleteItem(int index);

    /** Adds a copy of a string that equals none in the list.
        @return 0 when it is there, or memory runs out. */
    unsigned char AddUnique(const CGNString& s);

    /** Deletes the first string equal to s, then inserts a copy. @param index the position in the
        list as it is after the deletion. @param s the string. @return 0 when there is no such
       position (the equal string is gone) or memory runs out for the copy. */
    unsigned char InsertUnique(int index, const CGNString& s);

    /** Destroys the strings and removes the items. The memory of the array is kept. */
    void FreeListItems();

    /** Destroys the strings, and gives the memory of the array back. */
    void Free() override;

    /** Adds the parts of a text. Between two separators there may be an empty part; behind a last
        separator there is none. Bytes are compared: a separator is found in the second byte of a
        character too. @return the number of items in the list, older ones included. */
    unsigned int ParseFrom(const CGNString& text, char separator);

    /** Sorts the strings by the collation of the user's locale (mbstrcoll), ascending. Strings that
        compare equal are left in any order; null items come first. */
    void Sort();
};

/** A list that owns lists of strings. */
class GENUTIL_API CGNStringListList : public CGNList {
  public:
    /** An empty list with room for 10 lists that grows by 10. */
    CGNStringListList();
    /** Copies of the other's lists. The new list has no room to spare and grows by 10. */
    CGNStringListList(const CGNStringListList& other);
    ~CGNStringListList() override;

    /** Destroys the lists, then adds copies of the other's. @return the list itself. */
    CGNStringListList& operator=(const CGNStringListList& other);

    /** Adds a copy of a list. @return 0 when memory runs out, also for a string in it. */
    unsigned char AddItem(const CGNStringList& list);

    /** Inserts a copy of a list before the item at index, or behind the last.
        @param index 0 to GetCount(). @param list the list.
        @return 0 when index is outside of it or memory runs out. */
    unsigned char InsertItem(int index, const CGNStringList& list);

    /** @return the list, which stays this list's; null when there is none at index. */
    CGNStringList* GetItem(int index) {
        return reinterpret_cast<CGNStringList*>(CGNList::GetItem(index));
    }
    /** The same: a constant list keeps its lists, but they may be changed. */
    CGNStringList* GetItem(int index) const {
        return reinterpret_cast<CGNStringList*>(CGNList::GetItem(index));
    }

    /** Destroys a list and removes it; nothing happens when there is none at index. */
    void DeleteItem(int index);

    /** Destroys the lists and removes the items. The memory of the array is kept. */
    void FreeListItems();

    /** Destroys the lists, and gives the memory of the array back. */
    void Free() override;
};

/** A deferred call. */
struct CGNCleanupItem {
    void (*m_function)(void*); /**< what to call; null calls nothing */
    void* m_argument;          /**< what to pass */
};

/** Calls to be made together, when a module shuts down for instance. Making them leaves the list as
    it is, and destroying the list makes none. It cannot be copied, because it owns its records. */
class GENUTIL_API CGNCleanupList : public CGNList {
  public:
    /** An empty list with room for 10 calls that grows by 10. */
    CGNCleanupList();
    ~CGNCleanupList() override;
    CGNCleanupList(const CGNCleanupList&) = delete;
    CGNCleanupList& operator=(const CGNCleanupList&) = delete;

    /** Adds a call; a null item, when memory runs out for its record.
        @return 0 when memory runs out for the item. */
    unsigned char AddItem(void (*function)(void*), void* argument);

    /** Adds the caller's record itself, which becomes the list's. @param item made with new; null
        is an item that calls nothing. @return 0 when memory runs out: the record stays the
        caller's. */
    unsigned char AddItem(const CGNCleanupItem* item);

    /** @return the record, which stays the list's; null when there is none at index. */
    CGNCleanupItem* GetItem(int index) {
        return reinterpret_cast<CGNCleanupItem*>(CGNList::GetItem(index));
    }
    /** The same: a constant list keeps its records, but they may be changed. */
    CGNCleanupItem* GetItem(int index) const {
        return reinterpret_cast<CGNCleanupItem*>(CGNList::GetItem(index));
    }

    /** Makes the calls in the order in which they were added, those included that a call adds. */
    void Execute() const;

    /** Frees the records. The items stay in the list, as null. */
    void FreeListItems();

    /** Frees the records, and gives the memory of the array back. */
    void Free() override;
};

#endif

#endif
