// Lists of deferred calls.
#include "genutil/list/storage.h"

using Records = genutil::OwnedItems<CGNCleanupItem>;

CGNCleanupList::CGNCleanupList() = default;

CGNCleanupList::~CGNCleanupList() {
    Records::DestroyAll(*this);
}

unsigned char CGNCleanupList::AddItem(void (*function)(void*), void* argument) {
    auto* record = genutil::New<CGNCleanupItem>(CGNCleanupItem{function, argument});
    genutil::CheckListMemory(record);
    return Records::Append(*this, record);
}

unsigned char CGNCleanupList::AddItem(const CGNCleanupItem* item) {
    return CGNList::AddItem(Records::AsItem(item));
}

// The count is read in each iteration, and a record before its call, because a call may add to the
// list or free it.
void CGNCleanupList::Execute() const {
    for (int i = 0; i < GetCount(); ++i) {
        const CGNCleanupItem* item = GetItem(i);
        if (item && item->m_function) item->m_function(item->m_argument);
    }
}

// Unlike the other lists, this one keeps its count.
void CGNCleanupList::FreeListItems() {
    for (int i = 0; i < GetCount(); ++i) {
        delete GetItem(i);
        SetItem(i, 0);
    }
}

void CGNCleanupList::Free() {
    Records::DestroyAll(*this);
    CGNList::Free();
}
