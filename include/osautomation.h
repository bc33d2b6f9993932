/* COSOLEAutomation: a client for automation servers. An automation server is another program or a
   system component that offers objects with methods and properties.

       COSOLEAutomation words;
       if (!words.Connect("Scripting.Dictionary")) puts(words.GetErrorText());
       COSOLEArguments pair;
       words.Call("Add", pair.Add("Kyoto").Add(1));
       COSOLEValue count;
       words.GetProperty("Count", count);               // 1
       COSOLEEnumerator keys;                           // all items of a collection
       COSOLEValue key;
       if (words.Enumerate(keys))
           while (keys.Next(key)) Show(key);

   A server object that is returned as a value becomes a COSOLEAutomation of its own
   (COSOLEValue::GetAutomation). Copies share the server object, which is released with the last
   copy.

   Every operation returns 1 on success and 0 on failure. After a failure, the object provides an
   error code, the server's description and source, and the argument at fault. It can be used as
   before; if the server has ended, Connect() starts it again.

   Any thread may use an object, one thread at a time. Copies may be used by several threads at the
   same time. The program need not initialise COM: each operation runs in the multi-threaded
   apartment. If the calling thread is in a single-threaded apartment, another thread performs the
   operation, while the caller waits and serves incoming calls.

   On systems without automation, IsAvailable() returns 0 and every operation fails with the text
   "OLE automation is not available on this system". */
#ifndef GENUTIL_OSAUTOMATION_H
#define GENUTIL_OSAUTOMATION_H

#include "osolevalue.h"

/** A parameter of a method or property, from the server's type information. */
struct COSOLEParameter {
    CGNString m_name;                /**< the name; empty if unknown */
    CGNString m_type;                /**< "long", "text", "date", ...: see COSOLEMember */
    unsigned char m_optional = 0;    /**< 1 if the parameter may be omitted */
    unsigned char m_byReference = 0; /**< 1 if the server may change the argument */
    unsigned char m_output = 0;      /**< 1 if the parameter is output only */
    unsigned char m_hasDefault = 0;  /**< 1 if there is a default value */
    COSOLEValue m_default;           /**< the default value */
};

/** A method or property, from the server's type information.

    Types have these names: byte, short, long, hyper and their unsigned forms (8, 16, 32 and 64
    bits), single, real, boolean, text, date, currency, decimal, error, value (any kind), object,
    unknown, void, "array of" one of these, or the server's own name of a type. */
struct COSOLEMember {
    /** The use of a member. A property that can be read and written is listed as two members. */
    enum Use { kMethod, kGet, kPut, kPutReference };

    CGNString m_name;                         /**< the name */
    Use m_use = kMethod;                      /**< see Use */
    long m_id = 0;                            /**< the server's number for the member */
    unsigned char m_hidden = 0;               /**< 1 if the member should not be shown to users */
    CGNString m_type;                         /**< type of the result or of the value to put */
    CGNString m_help;                         /**< the help text; often empty */
    COSOLEList<COSOLEParameter> m_parameters; /**< the parameters, without the value to put */
};

/** Iterates over a collection. COSOLEAutomation::Enumerate() sets it up. */
class GENUTIL_API COSOLEEnumerator {
  public:
    COSOLEEnumerator(); /**< Constructs an empty enumerator. */
    /** Shares the position of other. */
    COSOLEEnumerator(const COSOLEEnumerator& other);
    /** Shares the position of other. */
    COSOLEEnumerator& operator=(const COSOLEEnumerator& other);
    ~COSOLEEnumerator();

    /** Stores the next item in item. Returns 0 at the end and on failure. */
    unsigned char Next(COSOLEValue& item);
    /** Restarts the enumeration. Returns 0 if the collection does not support this. */
    unsigned char Reset();
    /** Returns the error code of the latest operation; 0 on success and at the end of the
        collection. */
    long GetErrorCode() const { return m_code; }
    /** Returns the error text of the latest operation; empty on success and at the end of the
        collection. */
    CGNString GetErrorText() const { return m_text; }

  private:
    friend class COSOLEAutomation;
    genutil::OleObject* m_object;
    long m_retryTime;
    long m_code;
    CGNString m_text;
};

/** A server object. */
class GENUTIL_API COSOLEAutomation {
  public:
    /** Constructs an object that is not connected. */
    COSOLEAutomation();
    COSOLEAutomation(const COSOLEAutomation& other);            /**< Shares the server object. */
    COSOLEAutomation& operator=(const COSOLEAutomation& other); /**< Shares the server object. */
    ~COSOLEAutomation();                                        /**< Releases the server object. */

    /** Returns 1 if this system supports automation. */
    static unsigned char IsAvailable();

    /* -- Connection ------------------------------------------------------------------------ */

    /** Creates a new server object and starts the server if necessary. The previous server object
        is released first, even if this call fails.
        @param identifier the program identifier, such as "Scripting.Dictionary", or a class
            identifier in braces. */
    unsigned char Connect(const CGNString& identifier);
    /** Connects to the registered object of a running server; see Connect(). */
    unsigned char Attach(const CGNString& identifier);
    /** Connects to a running server, or else starts one. */
    unsigned char AttachOrConnect(const CGNString& identifier);
    /** Releases the server object. */
    void Disconnect();
    /** Returns 1 if there is a server object. The server itself may have ended; the next call then
        fails. */
    unsigned char IsConnected() const { return m_object != nullptr; }
    /** Returns 1 if both refer to the same server object. */
    unsigned char IsSame(const COSOLEAutomation& other) const;

    /** Sets the time during which a call is repeated if the server rejects it because it is busy.
        Objects returned by calls of this object have their own setting.
        @param milliseconds the time; 0 disables repetition. The default is 10000. */
    void SetRetryTime(long milliseconds);
    /** Returns the retry time in milliseconds. */
    long GetRetryTime() const { return m_retryTime; }

    /* -- Type information ------------------------------------------------------------------ */

    /** Lists all methods and properties in the server's order. Returns 0 and empties out if the
        server has no type information. */
    unsigned char GetMembers(COSOLEList<COSOLEMember>& out);
    /** Lists the members with a name, ignoring letter case. Each use of a property is a separate
        member. Returns 0 if there is none. */
    unsigned char FindMembers(const CGNString& name, COSOLEList<COSOLEMember>& out);
    /** Returns 1 if the server knows the name. Also works for servers without type information. */
    unsigned char HasMember(const CGNString& name);

    /* -- Calls. Letter case of names is ignored; the empty name is the default member -------- */

    /** Calls a method without arguments and ignores its result. */
    unsigned char Call(const CGNString& method);
    /** Calls a method and ignores its result.
        @param method the name.
        @param arguments the arguments. Those by reference receive their new values; on failure
            all are unchanged. */
    unsigned char Call(const CGNString& method, COSOLEArguments& arguments);
    /** Calls a method.
        @param method the name.
        @param arguments as above.
        @param result receives the result; empty if the method has none. */
    unsigned char Call(const CGNString& method, COSOLEArguments& arguments, COSOLEValue& result);
    /** Calls the method or gets the property with this name. */
    unsigned char CallOrGet(const CGNString& name, COSOLEArguments& arguments, COSOLEValue& result);

    /** Gets a property.
        @param name the name.
        @param value receives the value. */
    unsigned char GetProperty(const CGNString& name, COSOLEValue& value);
    /** Gets a property that has arguments.
        @param name the name.
        @param index the arguments, such as the number of an item.
        @param value receives the value. */
    unsigned char GetProperty(const CGNString& name, COSOLEArguments& index, COSOLEValue& value);
    /** Sets a property.
        @param name the name.
        @param value the new value. */
    unsigned char PutProperty(const CGNString& name, const COSOLEValue& value);
    /** Sets a property that has arguments.
        @param name the name.
        @param index as for GetProperty().
        @param value the new value. */
    unsigned char PutProperty(const CGNString& name, COSOLEArguments& index,
                              const COSOLEValue& value);
    /** Sets a property to an object itself. PutProperty() sets it to the object's default value. */
    unsigned char PutPropertyReference(const CGNString& name, const COSOLEValue& object);
    /** Sets a property that has arguments to an object itself.
        @param name the name.
        @param index as for GetProperty().
        @param object the object. */
    unsigned char PutPropertyReference(const CGNString& name, COSOLEArguments& index,
                                       const COSOLEValue& object);

    /** Starts an enumeration of the object, which must be a collection.
        @param out receives the enumerator. */
    unsigned char Enumerate(COSOLEEnumerator& out);

    /* -- Latest failure; empty texts and 0 after a success --------------------------------- */

    /** Returns the error code of the server or the system: a COM result code, such as 0x80020006
        for an unknown name, or a small number defined by the server. */
    long GetErrorCode() const { return m_code; }
    /** Returns a one-line summary: "Source: description (0x80020005), argument 2". */
    CGNString GetErrorText() const;
    /** Returns the server's description of the error, or else the system's. */
    CGNString GetErrorDescription() const { return m_description; }
    /** Returns the source of the description; empty if it is not from the server. */
    CGNString GetErrorSource() const { return m_source; }
    /** Returns the server's help file for the error; usually empty. */
    CGNString GetErrorHelpFile() const { return m_helpFile; }
    /** Returns the topic in the help file. */
    long GetErrorHelpContext() const { return m_helpContext; }
    /** Returns the number of the argument at fault, counted from 1 in the order in which arguments
        were added. A value to put counts after all of them. Returns 0 if the error is not due to an
        argument or the server does not report it. */
    int GetErrorArgument() const { return m_argument; }

  private:
    friend struct genutil::OleAccess;

    unsigned char ConnectBy(const CGNString& identifier, bool attach, bool start);
    unsigned char Invoke(int use, const CGNString& name, COSOLEArguments& arguments,
                         const COSOLEValue* put, COSOLEValue* result);

    genutil::OleObject* m_object;
    long m_retryTime;
    long m_code;
    long m_helpContext;
    int m_argument;
    CGNString m_description, m_source, m_helpFile;
};

#endif
