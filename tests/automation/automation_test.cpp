// Automation with servers of the system and with tests/child/automation_server.cpp, which has
// members that they lack; the results on systems without automation.
#include <gtest/gtest.h>

#include <chrono>
#include <filesystem>
#include <string>
#include <thread>

#include "osutil.h"
#include "tests/support/code_set_guard.h"
#include "tests/support/texts.h"

namespace {

#ifdef _WIN32
extern "C" __declspec(dllimport) long __stdcall CoInitializeEx(void*, unsigned long);
extern "C" __declspec(dllimport) void __stdcall CoUninitialize();

bool EnterApartment(bool single) {
    return CoInitializeEx(nullptr, single ? 2 : 0) >= 0;
}
void LeaveApartment() {
    CoUninitialize();
}
#else
bool EnterApartment(bool) {
    return false;
}
void LeaveApartment() {}
#endif

constexpr char kOwn[] = "Genutil.TestServer";
constexpr char kDictionary[] = "Scripting.Dictionary";
constexpr long kVariableType[] = {0, 1, 10, 11, 3, 5, 8, 7, 6, 14, 10, 9};  // by Kind

std::string TextOf(const COSOLEValue& value) {
    CGNString text(value.GetKindName());
    value.GetText(text);
    return Bytes(text);
}

COSOLEValue Decimal(const char* number) {
    COSOLEValue value;
    value.SetDecimal(CGNDecimal(number));
    return value;
}

COSOLEValue Currency(const char* amount) {
    COSOLEValue value;
    value.SetCurrency(CGNCurrency(amount));
    return value;
}

template <class... Values>
COSOLEArguments With(const Values&... values) {
    COSOLEArguments arguments;
    (arguments.Add(values), ...);
    return arguments;
}

// The result of a call as text, or the error text.
std::string DoWith(COSOLEAutomation& object, const char* name, COSOLEArguments arguments) {
    COSOLEValue result;
    return object.CallOrGet(name, arguments, result) ? TextOf(result)
                                                     : Bytes(object.GetErrorText());
}
template <class... Values>
std::string Do(COSOLEAutomation& object, const char* name, const Values&... values) {
    return DoWith(object, name, With(values...));
}

// Succeeds if the last call failed with this code and argument and has a description.
testing::AssertionResult Failed(const COSOLEAutomation& object, unsigned code, int argument = 0) {
    if (static_cast<unsigned>(object.GetErrorCode()) == code &&
        object.GetErrorArgument() == argument && !object.GetErrorDescription().IsEmpty())
        return testing::AssertionSuccess();
    return testing::AssertionFailure() << Bytes(object.GetErrorText());
}

template <class... Values>
void ExpectFailure(COSOLEAutomation& object, unsigned code, int argument, const char* name,
                   const Values&... values) {
    COSOLEArguments arguments = With(values...);
    EXPECT_FALSE(object.Call(name, arguments)) << name;
    EXPECT_TRUE(Failed(object, code, argument)) << name;
}

template <class... Values>
COSOLEValue Get(COSOLEAutomation& object, const char* name, const Values&... values) {
    COSOLEValue result;
    COSOLEArguments arguments = With(values...);
    EXPECT_TRUE(object.CallOrGet(name, arguments, result)) << Bytes(object.GetErrorText());
    return result;
}

COSOLEAutomation ObjectOf(const COSOLEValue& value) {
    COSOLEAutomation object;
    EXPECT_TRUE(value.GetAutomation(object));
    return object;
}

// A member as it would be declared.
std::string Signature(const COSOLEMember& member) {
    std::string text = Bytes(member.m_name) + '(';
    for (int i = 0; i < member.m_parameters.GetCount(); ++i) {
        const COSOLEParameter& one = *member.m_parameters.GetItem(i);
        text += Join({i ? ", " : "", one.m_output ? "out " : "", one.m_optional ? "optional " : "",
                      Bytes(one.m_type), one.m_byReference ? "& " : " ", Bytes(one.m_name)});
        if (one.m_hasDefault) text += " = " + TextOf(one.m_default);
    }
    return Join({text, ") ", Bytes(member.m_type)});
}

// The items of a collection, each followed by ";".
std::string AllOf(COSOLEAutomation& collection) {
    COSOLEEnumerator place;
    COSOLEValue item;
    std::string all;
    EXPECT_TRUE(collection.Enumerate(place)) << Bytes(collection.GetErrorText());
    while (place.Next(item)) all += TextOf(item) + ";";
    EXPECT_EQ(place.GetErrorCode(), 0);
    EXPECT_TRUE(place.Reset() && place.Next(item));
    return all;
}

class Automation : public testing::Test {
  protected:
    void SetUp() override {
        if (!COSOLEAutomation::IsAvailable()) GTEST_SKIP();
    }
    static void SetUpTestSuite() { Register("register"); }
    static void TearDownTestSuite() { Register("unregister"); }
    static void Register(const char* what) {
        CGNString output;
        if (COSOLEAutomation::IsAvailable()) {
            EXPECT_EQ(OSRunSyncProcess(Join({"..\\automation_server ", what}).c_str(), output), 0);
        }
    }
    static COSOLEAutomation Own() {
        COSOLEAutomation server;
        EXPECT_TRUE(server.Connect(kOwn)) << Bytes(server.GetErrorText());
        return server;
    }
};

TEST(AutomationOnOtherSystems, EveryCallFails) {
    if (COSOLEAutomation::IsAvailable()) GTEST_SKIP();
    COSOLEAutomation server;
    COSOLEArguments arguments;
    COSOLEValue value("kept");
    COSOLEEnumerator place;
    COSOLEList<COSOLEMember> members;
    EXPECT_FALSE(server.Connect(kDictionary) || server.Attach(kDictionary) ||
                 server.AttachOrConnect("") || server.IsConnected() || server.Call("x") ||
                 server.Call("x", arguments, value) || server.GetProperty("x", value) ||
                 server.PutProperty("x", 1) || server.PutPropertyReference("x", value) ||
                 server.HasMember("x") || server.GetMembers(members) ||
                 server.FindMembers("x", members) || server.Enumerate(place) || place.Next(value) ||
                 place.Reset());
    EXPECT_EQ(Bytes(place.GetErrorText()),
              "OLE automation is not available on this system (0x80004001)");
    EXPECT_EQ(Bytes(server.GetErrorDescription()),
              "OLE automation is not available on this system");
    EXPECT_EQ(TextOf(value), "kept");
}
TEST_F(Automation, UsesADictionary) {
    COSOLEAutomation words, inner;
    ASSERT_TRUE(words.Connect(kDictionary)) << Bytes(words.GetErrorText());
    EXPECT_EQ(Do(words, "Add", "Kyoto", 1), "");
    EXPECT_EQ(Do(words, "add", "Nara", "two"), "");
    EXPECT_EQ(Do(words, "Count"), "2");
    EXPECT_EQ(Do(words, "Exists", "Kyoto"), "true");
    EXPECT_EQ(Do(words, "", "Nara"), "two");
    COSOLEArguments nara, none;
    EXPECT_TRUE(words.PutProperty("Item", nara.Add("Nara"), Decimal("2.50")));
    EXPECT_EQ(DoWith(words, "Item", nara), "2.50");
    EXPECT_TRUE(words.PutProperty("Key", nara, "Osaka")) << Bytes(words.GetErrorText());
    COSOLEValue keys;
    ASSERT_TRUE(words.Call("Keys", none, keys));
    ASSERT_EQ(keys.GetCount(), 2);
    EXPECT_EQ(TextOf(*keys.GetItem(1)), "Osaka");
    EXPECT_EQ(AllOf(words), "Kyoto;Osaka;");

    ASSERT_TRUE(inner.Connect(kDictionary));
    EXPECT_EQ(Do(words, "Add", "inner", inner), "");
    COSOLEAutomation same = ObjectOf(Get(words, "Item", "inner"));
    EXPECT_TRUE(same.IsSame(inner));
    EXPECT_FALSE(same.IsSame(words));
    EXPECT_NE(Do(words, "Add", "Kyoto", 1), "");  // it is there already
    EXPECT_NE(words.GetErrorCode(), 0);
}

// The shell lives in a single-threaded apartment that the system makes for it.
TEST_F(Automation, UsesTheShellAndDocuments) {
    COSOLEAutomation shell, document;
    ASSERT_TRUE(shell.Connect("Shell.Application")) << Bytes(shell.GetErrorText());
    COSOLEAutomation space = ObjectOf(Get(shell, "NameSpace", "c:\\windows\\system32"));
    EXPECT_EQ(Do(space, "Title"), "system32");

    ASSERT_TRUE(document.Connect("MSXML2.DOMDocument")) << Bytes(document.GetErrorText());
    const CodeSetGuard shiftJis(mbShiftJis);
    EXPECT_EQ(Do(document, "loadXML", "<\x93\x8C><b i='1'/><b i='2'/></\x93\x8C>"), "true");
    COSOLEAutomation root = ObjectOf(Get(document, "documentElement"));
    EXPECT_EQ(Do(root, "nodeName"), "\x93\x8C");
    EXPECT_EQ(Do(root, "getAttribute", "none"), "");
    COSOLEAutomation list = ObjectOf(Get(root, "childNodes"));
    COSOLEEnumerator place;
    COSOLEValue item;
    std::string all;
    ASSERT_TRUE(list.Enumerate(place));
    while (place.Next(item)) {
        COSOLEAutomation node = ObjectOf(item);
        all += Do(node, "getAttribute", "i");
    }
    EXPECT_EQ(all, "12");
}
TEST_F(Automation, SendsAndReceivesValues) {
    COSOLEAutomation server = Own();
    COSOLEValue date, null, missing, truth, none(COSOLEAutomation{}), error, own(server);
    CGNString zero("a");
    (zero += '\0') += 'b';
    date.SetOleDate(40242.604166666664);
    null.SetNull();
    missing.SetMissing();
    truth.SetBoolean(1);
    error.SetError(-5);
    const struct {
        int line;
        COSOLEValue value;
        long type;  // that the server receives
    } kRows[] = {
        {__LINE__, COSOLEValue(), 0},
        {__LINE__, null, 1},
        {__LINE__, missing, 10},
        {__LINE__, error, 10},
        {__LINE__, truth, 11},
        {__LINE__, -7, 3},
        {__LINE__, 2147483647LL, 3},
        {__LINE__, 2147483648LL, 20},
        {__LINE__, 0.1, 5},
        {__LINE__, "text", 8},
        {__LINE__, "", 8},
        {__LINE__, zero, 8},
        {__LINE__, date, 7},
        {__LINE__, Currency("-922337203685477.5808 USD"), 6},
        {__LINE__, Decimal("79228162514264337593543950335"), 14},
        {__LINE__, Decimal("-0.10"), 14},
        {__LINE__, none, 9},
        {__LINE__, own, 9},
    };
    for (const auto& row : kRows) {
        const COSOLEValue back = Get(server, "Echo", row.value);
        EXPECT_EQ(back.GetKind(), row.value.GetKind()) << row.line;
        EXPECT_EQ(TextOf(back), TextOf(row.value)) << row.line;
        EXPECT_EQ(Do(server, "TypeOf", row.value), std::to_string(row.type)) << row.line;
    }
    EXPECT_EQ(Do(server, "Unsigned"), "18446744073709551615");

    const CodeSetGuard shiftJis(mbShiftJis);
    EXPECT_EQ(Do(server, "Echo", "\x93\x8C"), "\x93\x8C");
    ExpectFailure(server, 0x80070459, 1, "Echo", "ok\x93");
}

TEST_F(Automation, SendsAndReceivesArrays) {
    COSOLEAutomation server = Own();
    const COSOLEValue::Kind kKinds[] = {
        COSOLEValue::kBoolean, COSOLEValue::kInteger,  COSOLEValue::kReal,    COSOLEValue::kText,
        COSOLEValue::kDate,    COSOLEValue::kCurrency, COSOLEValue::kDecimal, COSOLEValue::kObject};
    for (const COSOLEValue::Kind kind : kKinds) {
        COSOLEValue array;
        ASSERT_TRUE(array.SetArray(3, 5, kind));
        if (kind != COSOLEValue::kObject) *array.GetItem(1) = 1;
        EXPECT_EQ(Do(server, "TypeOf", array), std::to_string(0x2000 + kVariableType[kind]));
        COSOLEValue back = Get(server, "Echo", array);
        EXPECT_EQ(back.GetElementKind(), kind);
        EXPECT_EQ(back.GetBound(0).m_lower, 5);
        ASSERT_EQ(back.GetCount(), 3);
        EXPECT_EQ(back.GetItem(1)->GetKind(), kind);
    }
    COSOLEValue bytes, mixed, back;
    bytes.SetBytes("\0\xFF\x80", 3);
    back = Get(server, "Echo", bytes);
    ASSERT_EQ(back.GetKind(), COSOLEValue::kBytes);
    EXPECT_EQ(back.GetBytes()[1], 0xFF);
    mixed.SetArray(3);
    *mixed.GetItem(0) = "text";
    *mixed.GetItem(1) = Decimal("1.5");
    *mixed.GetItem(2) = bytes;
    back = Get(server, "Echo", mixed);
    ASSERT_EQ(back.GetCount(), 3);
    EXPECT_EQ(TextOf(*back.GetItem(0)) + TextOf(*back.GetItem(1)), "text1.5");
    EXPECT_EQ(back.GetItem(2)->GetCount(), 3);
    back = Get(server, "Grid");
    const long place[] = {2, -1};
    ASSERT_EQ(back.GetPosition(place), 1);
    EXPECT_EQ(TextOf(*back.GetItem(1)), "19");
    EXPECT_EQ(TextOf(*Get(server, "Echo", back).GetItem(5)), "21");
    // Items of another kind are converted, unless that would round them.
    const struct {
        COSOLEValue::Kind kind;
        COSOLEValue item;
        const char* becomes;
        unsigned code = 0;
    } kRows[] = {{COSOLEValue::kInteger, "many", nullptr, 0x80020005},
                 {COSOLEValue::kInteger, Decimal("7.0"), "7"},
                 {COSOLEValue::kInteger, Currency("7.5"), nullptr, 0x8002000A},
                 {COSOLEValue::kCurrency, Decimal("1.2345"), "1.2345"},
                 {COSOLEValue::kCurrency, Decimal("1.23456"), nullptr, 0x8002000A}};
    for (const auto& row : kRows) {
        mixed.SetArray(1, 0, row.kind);
        *mixed.GetItem(0) = row.item;
        if (row.becomes)
            EXPECT_EQ(TextOf(*Get(server, "Echo", mixed).GetItem(0)), row.becomes);
        else
            ExpectFailure(server, row.code, 1, "Echo", mixed);
    }
}

TEST_F(Automation, PassesArgumentsByNameAndByReference) {
    COSOLEAutomation server = Own();
    const struct {
        int line;
        COSOLEArguments arguments;
        const char* result;  // null: the failure that follows
        unsigned code = 0;
        int argument = 0;
    } kRows[] = {
        {__LINE__, With(1), "107"},
        {__LINE__, With(1, 2), "102"},
        {__LINE__, With(1).AddMissing(), "107"},
        {__LINE__, With().AddNamed("Y", 3).AddNamed("x", 4), "403"},
        {__LINE__, With().AddNamed("y", 3).Add(5), "503"},
        {__LINE__, With("6").AddNamed("y", 3), "603"},
        {__LINE__, With(1).AddNamed("z", 3), nullptr, 0x80020006, 2},
        {__LINE__, With().AddNamed("y", 3), nullptr, 0x8002000F},
        {__LINE__, With(), nullptr, 0x8002000F},
        {__LINE__, With(1, 2, 3), nullptr, 0x8002000E},
        {__LINE__, With(1, "two"), nullptr, 0x80020005, 2},
        {__LINE__, With("one", 2), nullptr, 0x80020005, 1},
        {__LINE__, With().AddNamed("y", "b").AddNamed("x", 1), nullptr, 0x80020005, 1},
    };
    for (const auto& row : kRows) {
        const std::string got = DoWith(server, "Point", row.arguments);
        if (row.result)
            EXPECT_EQ(got, row.result) << row.line;
        else
            EXPECT_TRUE(Failed(server, row.code, row.argument)) << row.line;
    }
    COSOLEArguments change, text, fill, tenth;
    EXPECT_TRUE(server.Call("Tenth", tenth.AddByReference(Decimal("12.50"))));
    EXPECT_EQ(TextOf(tenth.Get(0)), "1.250") << Bytes(server.GetErrorText());
    change.AddByReference(41).AddByReference("b");
    EXPECT_TRUE(server.Call("Change", change)) << Bytes(server.GetErrorText());
    EXPECT_EQ(TextOf(change.Get(0)) + TextOf(change.Get(1)), "42<b>");
    EXPECT_TRUE(server.Call("Change", text.AddByReference("9").AddByReference(COSOLEValue())));
    EXPECT_EQ(TextOf(text.Get(0)) + TextOf(text.Get(1)), "10<>");
    text.Clear();
    EXPECT_FALSE(server.Call("Change", text.AddByReference("x").AddByReference("kept")));
    EXPECT_TRUE(Failed(server, 0x80020005, 1));
    EXPECT_EQ(TextOf(text.Get(1)), "kept");
    const CodeSetGuard shiftJis(mbShiftJis);
    EXPECT_TRUE(server.Call("Fill", fill.AddByReference(COSOLEValue())));
    EXPECT_EQ(TextOf(fill.Get(0)), "\x93\x8C filled");
}

TEST_F(Automation, ReadsAndWritesProperties) {
    COSOLEAutomation server = Own();
    COSOLEValue value;
    EXPECT_TRUE(server.PutProperty("Value", Currency("1.05")));
    EXPECT_TRUE(server.GetProperty("Value", value));
    EXPECT_EQ(TextOf(value), "1.05");
    EXPECT_TRUE(server.GetProperty("", value));
    COSOLEAutomation child = ObjectOf(Get(server, "Child"));
    EXPECT_TRUE(server.PutPropertyReference("Target", child)) << Bytes(server.GetErrorText());
    EXPECT_TRUE(ObjectOf(Get(server, "Target")).IsSame(child));
    EXPECT_FALSE(server.PutPropertyReference("Target", 5));
    EXPECT_TRUE(Failed(server, 0x80020005, 1));
    EXPECT_TRUE(server.PutPropertyReference("Target", COSOLEAutomation()));
    EXPECT_FALSE(ObjectOf(Get(server, "Target")).IsConnected());
    EXPECT_EQ(AllOf(server), "1;2;3;");
}

TEST_F(Automation, ReportsFailuresAndStaysUsable) {
    COSOLEAutomation server, other;
    for (const char* identifier : {"No.Such.Server", "", "{no}", "\x93"}) {
        EXPECT_FALSE(other.Connect(identifier)) << identifier;
        EXPECT_TRUE(Failed(other, 0x800401F3)) << identifier;
        EXPECT_FALSE(other.Attach(identifier));
    }
    EXPECT_FALSE(other.Attach(kDictionary));
    EXPECT_TRUE(Failed(other, 0x800401E3));
    ExpectFailure(other, 0x800401FD, 0, "Add");
    COSOLEList<COSOLEMember> members;
    EXPECT_FALSE(other.GetMembers(members));

    server = Own();
    ExpectFailure(server, 0x80020006, 0, "NoSuch");
    EXPECT_NE(Bytes(server.GetErrorText()).find("'NoSuch' (0x80020006)"), std::string::npos);
    EXPECT_FALSE(server.HasMember("NoSuch"));
    EXPECT_TRUE(server.HasMember("echo"));
    EXPECT_EQ(server.GetErrorCode(), 0);
    EXPECT_TRUE(server.GetErrorText().IsEmpty());

    ExpectFailure(server, 0x80040007, 0, "Fail", -2147221504 + 7, "No paper");
    EXPECT_EQ(Bytes(server.GetErrorText()), "Genutil.TestServer: No paper (0x80040007)");
    EXPECT_EQ(Bytes(server.GetErrorSource()), kOwn);
    EXPECT_EQ(Bytes(server.GetErrorHelpFile()), "test.hlp");
    EXPECT_EQ(server.GetErrorHelpContext(), 42);
    ExpectFailure(server, 0x80070005, 0, "Plain");
    EXPECT_TRUE(server.GetErrorSource().IsEmpty());
    ExpectFailure(server, 0x80020005, 1, "Picky", "text");
    COSOLEEnumerator place;
    EXPECT_FALSE(COSOLEAutomation().Enumerate(place));
    EXPECT_FALSE(place.GetErrorText().IsEmpty());
    EXPECT_EQ(Do(server, "Point", 1), "107");
}

TEST_F(Automation, ConnectsAgainAfterTheServerDied) {
    COSOLEAutomation server = Own();
    COSOLEAutomation child = ObjectOf(Get(server, "Child"));
    EXPECT_FALSE(server.Call("Die"));
    EXPECT_NE(server.GetErrorCode(), 0);
    EXPECT_FALSE(server.GetErrorDescription().IsEmpty());
    EXPECT_FALSE(child.Call("Child"));
    EXPECT_TRUE(server.IsConnected());
    ASSERT_TRUE(server.Connect(kOwn)) << Bytes(server.GetErrorText());
    EXPECT_EQ(Do(server, "Point", 1), "107");
}

TEST_F(Automation, RetriesWhileTheServerIsBusy) {
    using std::chrono::milliseconds;
    constexpr int kRejected = 1, kRetryLater = 2;
    COSOLEAutomation server = Own();
    for (const int answer : {kRejected, kRetryLater}) {
        EXPECT_EQ(Do(server, "Busy", 3, answer), "");
        EXPECT_EQ(Do(server, "Point", 1), "107") << answer;
    }
    EXPECT_EQ(Do(server, "Busy", 12, kRejected), "");
    server.SetRetryTime(60);
    const auto start = std::chrono::steady_clock::now();
    EXPECT_FALSE(server.Call("Point"));
    const auto passed = std::chrono::steady_clock::now() - start;
    EXPECT_TRUE(Failed(server, 0x80010001));
    EXPECT_GE(passed, milliseconds(50));
    EXPECT_LT(passed, milliseconds(3000));
    server.SetRetryTime(-1);
    EXPECT_EQ(server.GetRetryTime(), 0);
    EXPECT_FALSE(server.Call("Point"));
    server.SetRetryTime(10000);
    EXPECT_EQ(Do(server, "Point", 1), "107");
}

TEST_F(Automation, ReleasesAllObjects) {
    COSOLEAutomation server = Own();
    const std::string before = Do(server, "Objects");
    for (int i = 0; i < 5; ++i) {
        COSOLEAutomation child = ObjectOf(Get(server, "Child"));
        COSOLEValue value;
        EXPECT_EQ(AllOf(child), "1;2;3;");
        EXPECT_TRUE(child.PutPropertyReference("Target", ObjectOf(Get(server, "Child"))));
        value.SetArray(2);
        *value.GetItem(0) = child;
        Do(child, "Echo", value);
        Do(child, "Echo", child, child);
        Do(child, "Picky", child);
        DoWith(child, "Change", With().AddByReference(child).AddByReference(value));
        Do(child, "Fail", -1, "x");
        DoWith(child, "Point", With().AddNamed("q", child));
        COSOLEList<COSOLEMember> members;
        EXPECT_TRUE(child.GetMembers(members));
        EXPECT_TRUE(child.Call("Child"));
    }
    EXPECT_EQ(Do(server, "Objects"), before);
}

TEST_F(Automation, WorksInAnyThread) {
    COSOLEAutomation words, server;
    // Connects in a thread that ends.
    std::thread([&] {
        server = Own();
        EXPECT_TRUE(words.Connect(kDictionary));
        Do(words, "Add", "a", 1);
    }).join();
    std::thread users[4];
    for (std::thread& user : users)
        user = std::thread([copy = server, mine = words, apartment = &user - users]() mutable {
            // Three threads enter an apartment of COM, one of them a single-threaded one.
            const bool entered = apartment != 0 && EnterApartment(apartment != 1);
            for (int i = 0; i < 10; ++i) {
                EXPECT_EQ(Do(copy, "Point", i), std::to_string(100 * i + 7));
                EXPECT_EQ(Do(mine, "Count"), "1");
            }
            copy.Disconnect();
            mine.Disconnect();
            if (entered) LeaveApartment();
        });
    for (std::thread& user : users) user.join();
    EXPECT_EQ(Do(words, "Count"), "1");
}

TEST_F(Automation, DescribesMembersAndParameters) {
    COSOLEAutomation server = Own(), words;
    COSOLEList<COSOLEMember> members;
    ASSERT_TRUE(server.GetMembers(members)) << Bytes(server.GetErrorText());
    const char* const kMembers[] = {"Point(long x, optional long y = 7) long",
                                    "Change(long& number, text& text) void",
                                    "Fill(out value& out) void",
                                    "Value() value",
                                    "Value() value",
                                    "Tenth(decimal& number) void"};
    ASSERT_EQ(members.GetCount(), 6);
    for (int i = 0; i < 6; ++i) EXPECT_EQ(Signature(*members.GetItem(i)), kMembers[i]);
    EXPECT_EQ(Bytes(members.GetItem(0)->m_help), "A place on the grid");
    ASSERT_TRUE(server.FindMembers("VALUE", members));
    ASSERT_TRUE(server.FindMembers(members.GetItem(1)->m_name, members));
    ASSERT_EQ(members.GetCount(), 2);
    EXPECT_EQ(members.GetItem(0)->m_use, COSOLEMember::kGet);
    EXPECT_EQ(members.GetItem(1)->m_use, COSOLEMember::kPut);
    EXPECT_FALSE(server.FindMembers("NoSuch", members));
    EXPECT_TRUE(Failed(server, 0x80020003));

    ASSERT_TRUE(words.Connect(kDictionary));
    ASSERT_TRUE(words.FindMembers("Add", members)) << Bytes(words.GetErrorText());
    EXPECT_EQ(Signature(*members.GetItem(0)).substr(0, 14), "Add(value& Key");
    EXPECT_TRUE(words.FindMembers("Count", members));
    EXPECT_FALSE(words.FindMembers("QueryInterface", members));
}

TEST_F(Automation, AttachesToARunningServer) {
    COSOLEAutomation server;
    CGNString error;
    EXPECT_FALSE(server.Attach(kOwn));
    EXPECT_TRUE(Failed(server, 0x800401E3));
    ASSERT_TRUE(OSRunAsyncProcess("..\\automation_server active", error));
    for (int i = 0; i < 100 && !server.Attach(kOwn); ++i)
        std::this_thread::sleep_for(std::chrono::milliseconds(50));
    ASSERT_TRUE(server.IsConnected()) << Bytes(server.GetErrorText());
    COSOLEAutomation again;
    EXPECT_TRUE(again.AttachOrConnect(kOwn));
    EXPECT_TRUE(again.IsSame(server));
    EXPECT_FALSE(server.Call("Die"));
    EXPECT_TRUE(again.AttachOrConnect(kOwn)) << Bytes(again.GetErrorText());
    EXPECT_EQ(Do(again, "Point", 1), "107");
}

}  // namespace
