/* DDE: commands and data for other programs that serve them under a service and a topic.

   OSDDESend has one command carried out. OSDDEConversation keeps a conversation for several, and
   exchanges texts under the names of items.

       OSDDEInit();
       CGNString error;
       if (!OSDDESend("PROGMAN", "PROGMAN", "[ShowGroup(Accessories,1)]", 5000, &error))
           puts(error);

       OSDDEConversation sheet;
       CGNString total;
       if (sheet.Connect("SHEETS", "report") && sheet.Poke("R1C1", "12.5") &&
           sheet.Request("R9C1", total)) ...
       OSDDEUnInit();                            // ends what is still open

   Texts are in the current code set. They are exchanged as 16-bit characters (CF_UNICODETEXT), and
   with a partner that does not take these as text of its system (CF_TEXT), which has "?" for
   characters that it lacks. Services, topics and items are names of 1 to 255 characters; letter
   case does not matter.

   A timeout is in milliseconds and holds for the whole call; below 1 it is 1. A call that ran out
   of time ends its conversation, since its answer may still come and must not pass for that of the
   next call: Connect makes a new one.

   Any thread may call any of these, at once with others and on the same conversation, where calls
   wait for one another. Each conversation has a thread of the library to receive its messages, so
   that the caller needs no message loop. While it waits it answers messages that are sent to its
   own windows, but not posted ones: a server on the calling thread itself is not heard.

   On a system without DDE (Linux) OSDDESupported is 0, every other call that has a result fails
   with osDDENotAvailable and its text, and those without one do nothing. */
#ifndef GENUTIL_OSDDE_H
#define GENUTIL_OSDDE_H

#include "genexport.h"
#include "genstr.h"

namespace genutil {
struct DdeConversation;
}

/** The timeout of calls that name none, in milliseconds. */
#define OS_DDE_TIMEOUT 10000

/** Why a call failed. */
enum osDDEError {
    osDDENone = 0,            /**< it did not */
    osDDENotAvailable = -1,   /**< this system has no DDE */
    osDDENotInitialized = -2, /**< OSDDEInit was not called, or undone by OSDDEUnInit */
    osDDEBadText = -3,        /**< a text is null, a name is empty or longer than 255 characters, or
                                   bytes are no text in the current code set */
    osDDENoServer = -4,       /**< no program answers for this service and topic */
    osDDENotConnected = -5,   /**< the object has no conversation */
    osDDERefused = -6,     /**< the partner did not take the command or the text, or does not have
                                the item */
    osDDEBusy = -7,        /**< the partner is busy and asks to try again later */
    osDDETimedOut = -8,    /**< the time ran out; the partner may still do what it was asked */
    osDDEPartnerGone = -9, /**< the partner ended the conversation, or itself */
    osDDEEnded = -10,      /**< OSDDEUnInit or Disconnect on another thread ended the
                                conversation */
    osDDEFailed = -11      /**< memory or another means of the system ran out */
};

/** @return 1 where the system has DDE, else 0. */
GENUTIL_API unsigned char OSDDESupported();

/** Allows the calls below until OSDDEUnInit was called as often.
    @param error receives the text of a failure; may be null.
    @return 1; 0 where DDE is not available. */
GENUTIL_API unsigned char OSDDEInit(CGNString* error = nullptr);

/** Undoes one OSDDEInit. The last one ends all conversations of the process; calls under way in
    other threads return with osDDEEnded. Without an OSDDEInit to undo nothing happens. A program
    that ends without it may leave partners waiting for a while. */
GENUTIL_API void OSDDEUnInit();

/** Connects to a service and a topic, has one command carried out and disconnects.
    @param service its name. @param topic its name. @param command as the partner understands it.
    @param timeout of all of that together.
    @param error receives the text of a failure; may be null.
    @return 1 when the partner took the command, else 0. */
GENUTIL_API unsigned char OSDDESend(const char* service, const char* topic, const char* command,
                                    long timeout = OS_DDE_TIMEOUT, CGNString* error = nullptr);

/** @param code one of osDDEError. @param text receives its English text; empty for other codes. */
GENUTIL_API void OSDDEErrorText(int code, CGNString& text);

/** A conversation with a partner. Calls return 1, or 0 with the reason in GetError. After a failure
    the object may be used again, with a new Connect where IsConnected is 0. */
class GENUTIL_API OSDDEConversation {
  public:
    OSDDEConversation();
    /** Disconnects. No call may be under way. */
    ~OSDDEConversation();
    OSDDEConversation(const OSDDEConversation&) = delete;
    OSDDEConversation& operator=(const OSDDEConversation&) = delete;

    /** Starts a conversation; one that the object has is ended first.
        @param service its name. @param topic its name. @param timeout of the call. */
    unsigned char Connect(const char* service, const char* topic, long timeout = OS_DDE_TIMEOUT);
    /** @return 1 as long as neither side has ended the conversation. */
    unsigned char IsConnected() const;
    /** Has a command carried out. @param command as the partner understands it; may be empty.
        @param timeout of the call. @return 1 when the partner took it. */
    unsigned char Execute(const char* command, long timeout = OS_DDE_TIMEOUT);
    /** Gives an item a new text. @param item its name. @param text may be empty.
        @param timeout of the call. @return 1 when the partner took it. */
    unsigned char Poke(const char* item, const char* text, long timeout = OS_DDE_TIMEOUT);
    /** Asks for the text of an item. @param item its name.
        @param text receives it up to its first 0, with "?" for characters that the current code set
        lacks; unchanged on failure. @param timeout of the call. */
    unsigned char Request(const char* item, CGNString& text, long timeout = OS_DDE_TIMEOUT);
    /** Ends the conversation; a call under way in another thread returns with osDDEEnded. */
    void Disconnect();

    /** @return why the last call that ended, in whatever thread, failed; one of osDDEError. */
    int GetError() const;
    /** @param text receives the text of GetError; empty without an error. */
    void GetErrorText(CGNString& text) const;

  private:
    genutil::DdeConversation* m_self;
};

#endif
