/* DDE: a client for programs that offer commands and data under a service and a topic.

   OSDDESend executes a single command. OSDDEConversation keeps a conversation open for several
   commands and exchanges texts identified by item names.

       OSDDEInit();
       CGNString error;
       if (!OSDDESend("PROGMAN", "PROGMAN", "[ShowGroup(Accessories,1)]", 5000, &error))
           puts(error);

       OSDDEConversation sheet;
       CGNString total;
       if (sheet.Connect("SHEETS", "report") && sheet.Poke("R1C1", "12.5") &&
           sheet.Request("R9C1", total)) ...
       OSDDEUnInit();                            // ends open conversations

   Texts are in the current code set. They are exchanged as 16-bit characters (CF_UNICODETEXT). A
   partner that does not accept these receives text in the code page of the system (CF_TEXT), with
   "?" for missing characters. Services, topics and items are names of 1 to 255 characters; letter
   case is ignored.

   A timeout is in milliseconds and applies to the whole call. A value below 1 means 1. A call that
   times out ends its conversation, because a late answer could be mistaken for that of the next
   call. Connect() starts a new conversation.

   Every function may be called from any thread, also concurrently. Calls on the same conversation
   wait for each other. Each conversation has a thread of the library that receives its messages, so
   the caller needs no message loop. While a call waits, it answers messages sent to the windows of
   the calling thread but not posted messages. A server on the calling thread itself therefore
   cannot respond.

   On systems without DDE (Linux), OSDDESupported() returns 0. All other calls with a result fail
   with osDDENotAvailable and its text. Calls without a result do nothing. */
#ifndef GENUTIL_OSDDE_H
#define GENUTIL_OSDDE_H

#include "genexport.h"
#include "genstr.h"

namespace genutil {
struct DdeConversation;
}

/** The default timeout of a call, in milliseconds. */
#define OS_DDE_TIMEOUT 10000

/** Error codes. */
enum osDDEError {
    osDDENone = 0,            /**< no error */
    osDDENotAvailable = -1,   /**< DDE is not available on this system */
    osDDENotInitialized = -2, /**< OSDDEInit was not called, or OSDDEUnInit undid it */
    /** A text is null or invalid in the current code set, or a name is empty or longer than 255
        characters. */
    osDDEBadText = -3,
    osDDENoServer = -4,     /**< no program offers this service and topic */
    osDDENotConnected = -5, /**< the object has no conversation */
    osDDERefused = -6,      /**< the partner rejected the command or text, or has no such item */
    osDDEBusy = -7,         /**< the partner is busy and asks for a later attempt */
    osDDETimedOut = -8,     /**< the call timed out; the partner may still carry out the request */
    osDDEPartnerGone = -9,  /**< the partner ended the conversation or itself */
    /** OSDDEUnInit or Disconnect on another thread ended the conversation */
    osDDEEnded = -10,
    osDDEFailed = -11 /**< allocation failed or another system resource is exhausted */
};

/** Returns 1 if this system supports DDE, or else 0. */
GENUTIL_API unsigned char OSDDESupported();

/** Enables the calls below until OSDDEUnInit has been called the same number of times. Returns 1,
    or 0 if DDE is not available.
    @param error receives the error text on failure; may be null. */
GENUTIL_API unsigned char OSDDEInit(CGNString* error = nullptr);

/** Undoes one call of OSDDEInit. The last one ends all conversations of the process; calls in
    progress on other threads return with osDDEEnded. Does nothing if there is no OSDDEInit to undo.
    If a program exits without this call, its partners may have to wait for a while. */
GENUTIL_API void OSDDEUnInit();

/** Connects to a service and topic, executes one command and disconnects. Returns 1 if the partner
    accepted the command, or else 0.
    @param service name of the service.
    @param topic name of the topic.
    @param command the command, in the partner's syntax.
    @param timeout total time limit in milliseconds.
    @param error receives the error text on failure; may be null. */
GENUTIL_API unsigned char OSDDESend(const char* service, const char* topic, const char* command,
                                    long timeout = OS_DDE_TIMEOUT, CGNString* error = nullptr);

/** Returns the English text of an error code.
    @param code one of osDDEError.
    @param text receives the text; empty for other codes. */
GENUTIL_API void OSDDEErrorText(int code, CGNString& text);

/** A conversation with a partner. Calls return 1 on success. On failure they return 0, and
    GetError() returns the reason. The object can still be used after a failure; if IsConnected()
    returns 0, call Connect() again. */
class GENUTIL_API OSDDEConversation {
  public:
    OSDDEConversation();
    /** Ends the conversation. No call may be in progress. */
    ~OSDDEConversation();
    OSDDEConversation(const OSDDEConversation&) = delete;
    OSDDEConversation& operator=(const OSDDEConversation&) = delete;

    /** Starts a conversation. An existing conversation is ended first.
        @param service name of the service.
        @param topic name of the topic.
        @param timeout time limit in milliseconds. */
    unsigned char Connect(const char* service, const char* topic, long timeout = OS_DDE_TIMEOUT);
    /** Returns 1 until either side ends the conversation. */
    unsigned char IsConnected() const;
    /** Executes a command. Returns 1 if the partner accepted it.
        @param command the command, in the partner's syntax; may be empty.
        @param timeout time limit in milliseconds. */
    unsigned char Execute(const char* command, long timeout = OS_DDE_TIMEOUT);
    /** Sets the text of an item. Returns 1 if the partner accepted it.
        @param item name of the item.
        @param text the text; may be empty.
        @param timeout time limit in milliseconds. */
    unsigned char Poke(const char* item, const char* text, long timeout = OS_DDE_TIMEOUT);
    /** Requests the text of an item.
        @param item name of the item.
        @param text receives the text up to its first 0, with "?" for characters missing in the
            current code set; unchanged on failure.
        @param timeout time limit in milliseconds. */
    unsigned char Request(const char* item, CGNString& text, long timeout = OS_DDE_TIMEOUT);
    /** Ends the conversation. A call in progress on another thread returns with osDDEEnded. */
    void Disconnect();

    /** Returns the error of the last completed call on any thread; one of osDDEError. */
    int GetError() const;
    /** Returns the text of GetError(); empty if there is no error. */
    void GetErrorText(CGNString& text) const;

  private:
    genutil::DdeConversation* m_self;
};

#endif
