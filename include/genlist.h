/* Lists: of numbers or pointers, of strings, of lists of strings, and of calls to make later.

   A list grows in blocks of its increment and never shrinks while items are deleted. Indexes count
   items from 0. Lists are not synchronised; items are `long`, which holds a pointer.

       CGNStringList names;
       names.ParseFrom("b;a;c", ';');
       names.Sort();
       for (int i = 0; i < names.GetCount(); ++i) puts(*names.GetItem(i));

   Results that answer yes or no are an unsigned char of 1 or 0. Nothing throws: when memory runs
   out the failure is reported to the library's assertion, and the list stays as it was. */
#ifndef GENUTIL_GENLIST_H
#define GENUTIL_GENLIST_H

#include <cstdint>

#include "export.h"
#include "genstr.h"

/** A growable array of numbers or pointers. It owns the array, not what the items point to. */
class GENUTIL_API CGNList {
  public:
    /** @param initial items to make room for, rounded up to whole blocks; 0 allocates nothing.
        @param increment items of a block; 0 stands for 10. */
    explicit CGNList(unsigned int initial = 10, unsigned int increment = 10);
    /** A copy with the increment and the capacity of the other. */
    CGNList(const CGNList& other);
    /** Frees the items as Free() does, then copies. */
    CGNList& operator=(const CGNList& other);
    /** Frees the array. */
    virtual ~CGNList();
    /** Back to no items and no array; the increment stays. */
    virtual void Free();
    /** Exchanges two items. @return 0 when either is out of range. */
    virtual unsigned char SwapItems(int a, int b);
    /** @return the array, owned by the list and valid until it changes; null when it is empty. */
    virtual long* GetItemListPtr() const;

    /** @return the number of items. */
    int GetCount() const { return m_count; }
    /** Makes room for n items; when there is too little, for whole blocks strictly above n.
        @return 0 when memory runs out. */
    unsigned char AllocateItemList(unsigned int n);
    /** Adds an item at the end. @return 0 when memory runs out. */
    unsigned char AddItem(long item);
    /** Inserts an item before the one at index. @return 0 unless 0 <= index <= GetCount(), and when
        memory runs out. */
    unsigned char InsertItem(int index, long item);
    /** Replaces an item. The index GetCount() is allowed: it writes behind the last item and leaves
        the count, as programs expect. @return 0 out of that range, and when memory runs out. */
    unsigned char SetItem(int index, long item);
    /** @return the item; 0 out of range. */
    long GetItem(int index) const { return IsItem(index) ? m_items[index] : 0; }
    /** Removes an item; nothing happens out of range. */
    void DeleteItem(int index);

  protected:
    /** @return whether there is an item at index. */
    bool IsItem(int index) const { return index >= 0 && index < m_count; }

  private:
    void CopyFrom(const CGNList& other);

    long* m_items;
    std::int32_t m_count;
    std::uint32_t m_capacity;
    std::uint32_t m_increment;
};

/** A list of strings, each a copy that the list owns. */
class GENUTIL_API CGNStringList : public CGNList {
  public:
    /** As CGNList. */
    explicit CGNStringList(unsigned int initial = 10, unsigned int increment = 10);
    /** Copies the strings, with room and increment of a new list. */
    CGNStringList(const CGNStringList& other);
    /** Frees the strings, then copies those of the other. */
    CGNStringList& operator=(const CGNStringList& other);
    /** Adds copies of the other's strings; a list adds nothing of itself. */
    CGNStringList& operator+=(const CGNStringList& other);
    /** Destroys the strings. */
    ~CGNStringList() override;
    /** Destroys the strings and frees the array. */
    void Free() override;

    /** Adds a copy. Without memory for it a null item is added, as programs expect.
        @return 0 when the list cannot grow. */
    unsigned char AddItem(const CGNString& s);
    /** The same for a text; null adds an empty string. */
    unsigned char AddItem(const char* s);
    /** Inserts a copy. @return 0 out of range. */
    unsigned char InsertItem(int index, const CGNString& s);
    /** @return the string, owned by the list; null out of range. */
    CGNString* GetItem(int index) { return reinterpret_cast<CGNString*>(CGNList::GetItem(index)); }
    /** @return the string, owned by the list; null out of range. */
    const CGNString* GetItem(int index) const {
        return reinterpret_cast<const CGNString*>(CGNList::GetItem(index));
    }
    /** Destroys a string and removes it; nothing happens out of range. */
    void DeleteItem(int index);
    /** Adds a copy unless an equal string is there. @return 0 when it is. */
    unsigned char AddUnique(const CGNString& s);
    /** Removes the first string that equals s, then inserts a copy at index of the list as it is
       then.
        @return 0 when that index is out of range; an equal string is gone all the same. */
    unsigned char InsertUnique(int index, const CGNString& s);
    /** Destroys the strings and keeps the array. */
    void FreeListItems();
    /** Adds the parts of a text between separators, empty ones too; behind the last separator only
        what is not empty. Bytes are compared: a separator that is a trail byte splits a character.
        @param text the text. @param separator a byte. @return the number of items now. */
    unsigned int ParseFrom(const CGNString& text, char separator);
    /** Sorts by the collation of the user's locale (mbstrcoll); equal texts come in any order. */
    void Sort();

  private:
    int FindItem(const CGNString& s) const;
};

/** A list of string lists, each a copy that the list owns. */
class GENUTIL_API CGNStringListList : public CGNList {
  public:
    /** A list with room for 10. */
    CGNStringListList();
    /** Copies the lists. */
    CGNStringListList(const CGNStringListList& other);
    /** Frees the lists, then copies those of the other. */
    CGNStringListList& operator=(const CGNStringListList& other);
    /** Destroys the lists. */
    ~CGNStringListList() override;
    /** Destroys the lists and frees the array. */
    void Free() override;

    /** Adds a copy. @return 0 when memory runs out. */
    unsigned char AddItem(const CGNStringList& list);
    /** Inserts a copy. @return 0 out of range and when memory runs out. */
    unsigned char InsertItem(int index, const CGNStringList& list);
    /** @return the list at index, owned by this one; null out of range. */
    CGNStringList* GetItem(int index);
    /** @return the list at index, owned by this one; null out of range. */
    const CGNStringList* GetItem(int index) const;
    /** Destroys a list and removes it; nothing happens out of range. */
    void DeleteItem(int index);
    /** Destroys the lists and keeps the array. */
    void FreeListItems();
};

/** A call to make later. */
struct CGNCleanupItem {
    void (*m_function)(void*); /**< what to call; null for nothing */
    void* m_argument;          /**< handed to it */
};

/** Calls that are made together, such as when a module shuts down. It owns its records. */
class GENUTIL_API CGNCleanupList : public CGNList {
  public:
    /** An empty list. */
    CGNCleanupList();
    CGNCleanupList(const CGNCleanupList&) = delete;
    CGNCleanupList& operator=(const CGNCleanupList&) = delete;
    /** Frees the records; makes no calls. */
    ~CGNCleanupList() override;
    /** Frees the records and the array; makes no calls. */
    void Free() override;

    /** Adds a call. Without memory for its record a null item is added.
        @return 0 when the list cannot grow. */
    unsigned char AddItem(void (*function)(void*), void* argument);
    /** Adds a record that was made with new, and takes it over.
        @return 0 when the list cannot grow; the record then stays the caller's. */
    unsigned char AddItem(const CGNCleanupItem* item);
    /** @return the record, owned by the list; null out of range. */
    CGNCleanupItem* GetItem(int index);
    /** @return the record, owned by the list; null out of range. */
    const CGNCleanupItem* GetItem(int index) const;
    /** Makes the calls in the order in which they were added; they may be made again. */
    void Execute() const;
    /** Frees the records. The count stays, over null items. */
    void FreeListItems();
};

/** Goes on with a checksum over more bytes. It is no standard CRC-32: the table is that of the
    reflected polynomial 0xEDB88320, used from the high end, as stored checksums need it.
    @param crc the checksum so far, or what the caller starts with. @param data length bytes.
    @param length bytes; 0 gives crc. @return the checksum. May be called from any thread. */
GENUTIL_C GENUTIL_API unsigned int gencrc32(unsigned int crc, const unsigned char* data,
                                            unsigned int length);

#endif
