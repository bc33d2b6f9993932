// What the library asks of an operating system about conversations by DDE. Texts are UTF-16 and
// terminated. Any thread may make any call; calls on one link wait for one another.
#pragma once

#include <cstddef>

namespace genutil::platform {

enum class DdeOutcome {
    kDone,
    kUnavailable,  // on a system without DDE: of everything
    kNoServer,     // nobody answers for the service and topic
    kNotConnected,
    kRefused,
    kBusy,
    kTimedOut,  // the link is ended too
    kGone,      // the partner ended the conversation, or itself
    kEnded,     // EndDde was called
    kFailed,    // the system or memory
};

bool HasDde();

// One conversation, from before it is connected until it is ended, which it stays. It has holders,
// of which the maker is the first; somebody ends it before the last one drops it.
struct DdeLink;
DdeOutcome MakeDde(DdeLink** link);
void HoldDde(DdeLink* link);
void DropDde(DdeLink* link);  // null is allowed

// Once for a link. Names have 1 to kLongestDdeName units.
constexpr std::size_t kLongestDdeName = 255;
DdeOutcome ConnectDde(DdeLink* link, const unsigned short* service, const unsigned short* topic,
                      unsigned timeout);

// What is wanted of the partner.
struct DdeCall {
    enum Kind { kExecute, kPoke, kRequest } kind;
    const unsigned short* item;  // not of kExecute
    const unsigned short* text;  // the command, or the item's new text
    std::size_t count;           // units of it, without terminator
    // Of kRequest: gets the item's text, on the calling thread, `count` units without a 0.
    void (*take)(void* context, const unsigned short* text, std::size_t count);
    void* context;
};
DdeOutcome TransactDde(DdeLink* link, const DdeCall& call, unsigned timeout);

bool IsDdeOpen(DdeLink* link);

// Ends the conversation, and a call that is under way with kEnded. AwaitDdeEnd returns when the
// partner knows, or has not answered for a second since EndDde.
void EndDde(DdeLink* link);
void AwaitDdeEnd(DdeLink* link);

}  // namespace genutil::platform
