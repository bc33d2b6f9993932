// Calls to make later.
#include "genlist.h"
#include "genutil/owned_item.h"

using namespace genutil;

CGNCleanupList::CGNCleanupList() : CGNList(10, 10) {}

CGNCleanupList::~CGNCleanupList() {
    FreeListItems();
}

void CGNCleanupList::Free() {
    FreeListItems();
    CGNList::Free();
}

unsigned char CGNCleanupList::AddItem(void (*function)(void*), void* argument) {
    CGNCleanupItem* item = NewItem<CGNCleanupItem>(function, argument);
    if (AddItem(item)) return 1;
    delete item;
    return 0;
}

unsigned char CGNCleanupList::AddItem(const CGNCleanupItem* item) {
    return CGNList::AddItem(ItemOf(item));
}

CGNCleanupItem* CGNCleanupList::GetItem(int index) {
    return ObjectOf<CGNCleanupItem>(CGNList::GetItem(index));
}

const CGNCleanupItem* CGNCleanupList::GetItem(int index) const {
    return ObjectOf<CGNCleanupItem>(CGNList::GetItem(index));
}

void CGNCleanupList::Execute() const {
    for (int i = 0; i < GetCount(); ++i)
        if (const CGNCleanupItem* item = GetItem(i); item && item->m_function)
            item->m_function(item->m_argument);
}

void CGNCleanupList::FreeListItems() {
    for (int i = 0; i < GetCount(); ++i) {
        delete GetItem(i);
        SetItem(i, 0);
    }
}
