/* COSOLEAutomation: talks to an automation server, another program or a component of the system
   that offers objects with methods and properties.

       COSOLEAutomation words;
       if (!words.Connect("Scripting.Dictionary")) puts(words.GetErrorText());
       COSOLEArguments pair;
       words.Call("Add", pair.Add("Kyoto").Add(1));
       COSOLEValue count;
       words.GetProperty("Count", count);               // 1
       COSOLEEnumerator keys;                           // all in a collection
       COSOLEValue key;
       if (words.Enumerate(keys))
           while (keys.Next(key)) Show(key);

   A server's object that comes as a value is a COSOLEAutomation of its own
   (COSOLEValue::GetObject). Copies share the server's object, which is given back with the last of
   them.

   Every operation answers 1 on success and 0 on failure, and then tells what was wrong: a code, the
   server's own description and source, and the argument at fault. After a failure the object can be
   used as before; when the server has ended, Connect starts it anew.

   Any thread may use any object, one thread at a time; copies of it may be in use in several
   threads at once. No initialisation of COM is asked of the program: each operation is done in the
   multi-threaded apartment, by the thread itself, or, where the program has put that into a
   single-threaded apartment, by one that the thread waits for, serving the calls that come in.

   On systems without automation IsAvailable() is 0 and every operation fails with the text "OLE
   automation is not available on this system". */
#ifndef GENUTIL_OSAUTOMATION_H
#define GENUTIL_OSAUTOMATION_H

#include "osolevalue.h"

/** A parameter of a method or property, as the server's type information has it. */
struct COSOLEParameter {
    CGNString m_name;                /**< empty when the server does not tell */
    CGNString m_type;                /**< "long", "text", "date", ...: see COSOLEMember */
    unsigned char m_optional = 0;    /**< it may be left out */
    unsigned char m_byReference = 0; /**< the server may change it */
    unsigned char m_output = 0;      /**< it is a result alone: nothing is read from it */
    unsigned char m_hasDefault = 0;  /**< a value stands in when it is left out */
    COSOLEValue m_default;           /**< that value */
};

/** A method or property, as the server's type information has it.

    Types go by these names: byte, short, long, hyper and their unsigned kinds (8, 16, 32 and 64
    bits), single, real, boolean, text, date, currency, decimal, error, value (of any kind), object,
    unknown, void, "array of" one of them, or by the server's own name for one of its types. */
struct COSOLEMember {
    /** How the member is used. A property that is read and written is two members. */
    enum Use { kMethod, kGet, kPut, kPutReference };

    CGNString m_name;                         /**< its name */
    Use m_use = kMethod;                      /**< see Use */
    long m_id = 0;                            /**< the server's number for it */
    unsigned char m_hidden = 0;               /**< not meant to be shown to users */
    CGNString m_type;                         /**< of the result, or of what is put */
    CGNString m_help;                         /**< the help text; often empty */
    COSOLEList<COSOLEParameter> m_parameters; /**< what is put is none of them */
};

/** Goes through a collection; made by COSOLEAutomation::Enumerate. */
class GENUTIL_API COSOLEEnumerator {
  public:
    COSOLEEnumerator(); /**< at the end of nothing */
    /** Copies share the place. */
    COSOLEEnumerator(const COSOLEEnumerator& other);
    COSOLEEnumerator& operator=(const COSOLEEnumerator& other); /**< the same */
    ~COSOLEEnumerator();

    /** @param item receives the next item. @return 0 at the end and on failure. */
    unsigned char Next(COSOLEValue& item);
    /** Begins again. @return 0 when the collection does not allow it. */
    unsigned char Reset();
    /** @return why the latest operation failed; 0 when it did not, as at the end. */
    long GetErrorCode() const { return m_code; }
    /** @return the same as a text; empty when it did not fail. */
    CGNString GetErrorText() const { return m_text; }

  private:
    friend class COSOLEAutomation;
    genutil::OleObject* m_object;
    long m_retryTime;
    long m_code;
    CGNString m_text;
};

/** A server's object. */
class GENUTIL_API COSOLEAutomation {
  public:
    COSOLEAutomation();                                         /**< not connected */
    COSOLEAutomation(const COSOLEAutomation& other);            /**< shares the server's object */
    COSOLEAutomation& operator=(const COSOLEAutomation& other); /**< the same */
    ~COSOLEAutomation();                                        /**< gives it back */

    /** @return 1 when this system has automation. */
    static unsigned char IsAvailable();

    /* -- Connection ------------------------------------------------------------------------ */

    /** Makes a new object of a server, which is started for it if need be. What the object was
        connected to is given back first, also when this fails.
        @param identifier the program identifier, such as "Scripting.Dictionary", or a class
        identifier in braces. */
    unsigned char Connect(const CGNString& identifier);
    /** The same with the object of a server that is running and has made it known. */
    unsigned char Attach(const CGNString& identifier);
    /** Attaches to a running server, or else starts one. */
    unsigned char AttachOrConnect(const CGNString& identifier);
    /** Gives the server's object back. */
    void Disconnect();
    /** @return 1 when there is an object; whether its server still lives, a call will tell. */
    unsigned char IsConnected() const { return m_object != nullptr; }
    /** @return 1 when both are the same object of the server. */
    unsigned char IsSame(const COSOLEAutomation& other) const;

    /** How long a call is made again when the server rejects it because it is busy.
        @param milliseconds 0 for not at all; at first 10,000. Objects that come from calls of this
        one have their own. */
    void SetRetryTime(long milliseconds);
    /** @return that time. */
    long GetRetryTime() const { return m_retryTime; }

    /* -- Type information ------------------------------------------------------------------ */

    /** Lists methods and properties, in the server's order. @param out receives them. @return 0,
        with an empty list, when the server has no type information. */
    unsigned char GetMembers(COSOLEList<COSOLEMember>& out);
    /** The members of one name in any letter case, each use of a property on its own.
        @return 0 when there is none. */
    unsigned char FindMembers(const CGNString& name, COSOLEList<COSOLEMember>& out);
    /** @return 1 when the server knows the name; servers without type information tell too. */
    unsigned char HasMember(const CGNString& name);

    /* -- Calls: names in any letter case; the empty name is the object's default member ------ */

    /** Calls a method without arguments or result. */
    unsigned char Call(const CGNString& method);
    /** @param method its name. @param arguments those by reference have their new values
        afterwards; on failure all stay. */
    unsigned char Call(const CGNString& method, COSOLEArguments& arguments);
    /** @param method its name. @param arguments as above. @param result receives the result; empty
        for a method that has none. */
    unsigned char Call(const CGNString& method, COSOLEArguments& arguments, COSOLEValue& result);
    /** Calls a method or gets a property, whichever the name is. */
    unsigned char CallOrGet(const CGNString& name, COSOLEArguments& arguments, COSOLEValue& result);

    /** Gets a property. @param name its name. @param value receives it. */
    unsigned char GetProperty(const CGNString& name, COSOLEValue& value);
    /** @param name its name. @param index the arguments of a property that has any, such as an
        item's number. @param value receives it. */
    unsigned char GetProperty(const CGNString& name, COSOLEArguments& index, COSOLEValue& value);
    /** Puts a property. @param name its name. @param value the new value. */
    unsigned char PutProperty(const CGNString& name, const COSOLEValue& value);
    /** @param name its name. @param index as for GetProperty. @param value the new value. */
    unsigned char PutProperty(const CGNString& name, COSOLEArguments& index,
                              const COSOLEValue& value);
    /** Puts an object itself, where PutProperty puts its default value. */
    unsigned char PutPropertyReference(const CGNString& name, const COSOLEValue& object);
    /** @param name the property's. @param index as for GetProperty. @param object the object. */
    unsigned char PutPropertyReference(const CGNString& name, COSOLEArguments& index,
                                       const COSOLEValue& object);

    /** Begins to go through the object, a collection. @param out receives its place. */
    unsigned char Enumerate(COSOLEEnumerator& out);

    /* -- The latest failure; all empty, and 0, behind a success ---------------------------- */

    /** @return the server's or the system's number: a result code of COM, as 0x80020006 for an
        unknown name, or a small number of the server's own. */
    long GetErrorCode() const { return m_code; }
    /** @return one line with all of it: "Source: description (0x80020005), argument 2". */
    CGNString GetErrorText() const;
    /** @return what the server says went wrong, or else the system. */
    CGNString GetErrorDescription() const { return m_description; }
    /** @return who says so; empty when it is not the server. */
    CGNString GetErrorSource() const { return m_source; }
    /** @return the server's help file for the failure; mostly empty. */
    CGNString GetErrorHelpFile() const { return m_helpFile; }
    /** @return the topic in the help file. */
    long GetErrorHelpContext() const { return m_helpContext; }
    /** @return the argument at fault, from 1 in the order in which they were added; 0 when it is
        none of them or the server does not tell. What is put counts behind the others. */
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
