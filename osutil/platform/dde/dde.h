// Platform layer: DDE conversations. Texts are terminated UTF-16. Every function may be called from
// any thread; calls on one link wait for one another.
#pragma once

#include <cstddef>

namespace genutil::platform {

enum class DdeOutcome {
    kDone,
    kUnavailable,  // the system has no DDE; returned by every function
    kNoServer,     // there is no answer for the service and topic
    kNotConnected,
    kRefused,
    kBusy,
    kTimedOut,  // the link is also ended
    kGone,      // the partner ended the conversation, or exited
    kEnded,     // EndDde() was called
    kFailed,    // a system call or an allocation failed
};

bool HasDde();

// One conversation, from before it is connected until it is ended, which is permanent. It is
// reference-counted, and its creator has the first reference. It must be ended before the last
// reference is dropped.
struct DdeLink;
DdeOutcome MakeDde(DdeLink** link);
void HoldDde(DdeLink* link);
void DropDde(DdeLink* link);  // null is allowed

// Connects. May be called once per link. Names have 1 to kLongestDdeName units.
constexpr std::size_t kLongestDdeName = 255;
DdeOutcome ConnectDde(DdeLink* link, const unsigned short* service, const unsigned short* topic,
                      unsigned timeout);

// A request to the partner.
struct DdeCall {
    enum Kind { kExecute, kPoke, kRequest } kind;
    const unsigned short* item;  // unused for kExecute
    const unsigned short* text;  // the command, or the new text of the item
    std::size_t count;           // number of units, without a terminator
    // For kRequest: receives the item's text of `count` units without a 0, on the calling thread.
    void (*take)(void* context, const unsigned short* text, std::size_t count);
    void* context;
};
DdeOutcome TransactDde(DdeLink* link, const DdeCall& call, unsigned timeout);

bool IsDdeOpen(DdeLink* link);

// Ends the conversation, and makes a call in progress return kEnded. AwaitDdeEnd() returns when the
// partner has been notified, or has not answered for one second since EndDde().
void EndDde(DdeLink* link);
void AwaitDdeEnd(DdeLink* link);

}  // namespace genutil::platform
