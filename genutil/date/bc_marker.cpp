#include "genutil/date/bc_marker.h"

#include <atomic>
#include <iterator>

#include "genutil/allocate.h"
#include "genutil/mbutil/code_set.h"
#include "genutil/string/storage.h"
#include "osresource.h"
#include "osutil/resource/resource_state.h"

namespace genutil {

namespace {

// The English messages. The first marker is used if there are no messages.
constexpr const char* kMarkers[] = {"B.C.", "BC", "B. C.", "b.c.", "b. c.", "before Christ"};
constexpr int kCount = std::size(kMarkers);
constexpr long kFirstMessage = 25048;

// The markers of a language in a code set. Sets are never freed: there are few, and pointers to
// their texts are returned.
struct MarkerSet {
    CGNString texts[kCount];
    bool begins[256] = {};  // true if a marker begins with the byte
    const MarkerSet* next = nullptr;
};

// The markers in force for a thread, and the state on which they depend.
struct InForce {
    ResourceState state;
    int codeSet;
    const MarkerSet* markers;  // null before the first call
};
thread_local InForce t_inForce;

std::atomic<const MarkerSet*> g_sets{nullptr};

bool HasTexts(const MarkerSet& set, const CGNString (&texts)[kCount]) {
    for (int i = 0; i < kCount; ++i)
        if (!(set.texts[i] == texts[i])) return false;
    return true;
}

const MarkerSet* SetOf(const CGNString (&texts)[kCount]) {
    const MarkerSet* first = g_sets.load(std::memory_order_acquire);
    for (const MarkerSet* set = first; set; set = set->next)
        if (HasTexts(*set, texts)) return set;
    auto* made = New<MarkerSet>();
    if (!made) return nullptr;
    for (int i = 0; i < kCount; ++i) {
        made->texts[i] = texts[i];
        made->begins[static_cast<unsigned char>(*static_cast<const char*>(texts[i]))] = true;
    }
    if (!HasTexts(*made, texts)) {
        delete made;
        return nullptr;
    }
    made->next = first;
    // Another thread may have added the same set. A duplicate does no harm.
    while (!g_sets.compare_exchange_weak(made->next, made, std::memory_order_acq_rel)) continue;
    return made;
}

[[gnu::noinline]] const MarkerSet* LoadMarkers() {
    CGNString texts[kCount];
    for (int i = 0; i < kCount; ++i) {
        if (OSLoadString(texts[i], kFirstMessage + i) == 0) texts[i] = kMarkers[i];
        if (texts[i].IsEmpty()) return nullptr;  // allocation failed
    }
    return SetOf(texts);
}

// Returns null if allocation fails.
const MarkerSet* Markers() {
    const ResourceState state = CurrentResourceState();
    InForce& inForce = t_inForce;
    if (!inForce.markers || !(inForce.state == state) ||
        inForce.codeSet != g_codeSetState.codeSet) {
        const MarkerSet* markers = LoadMarkers();
        inForce = {state, g_codeSetState.codeSet, markers};
    }
    return inForce.markers;
}

}  // namespace

const char* BcMarker() {
    return BcMarkerToRead(0);
}

const char* BcMarkerToRead(int index) {
    if (index >= kCount) return nullptr;
    const MarkerSet* markers = Markers();
    return markers ? static_cast<const char*>(markers->texts[index]) : kMarkers[index];
}

const char* FindBcMarkerStart(const char* text) {
    const MarkerSet* markers = Markers();
    while (*text && markers && !markers->begins[static_cast<unsigned char>(*text)]) ++text;
    return *text ? text : nullptr;
}

}  // namespace genutil
