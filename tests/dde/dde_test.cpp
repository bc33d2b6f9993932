// Conversations with tests/child/dde_server.cpp, and the results on systems without DDE.
#include <gtest/gtest.h>

#include <chrono>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

#include "osutil.h"
#include "tests/support/code_set_guard.h"
#include "tests/support/texts.h"

namespace {

#ifndef _WIN32

TEST(Dde, FailsOnSystemsWithoutDde) {
    constexpr char kError[] = "DDE is not available on this system";
    CGNString error, sendError, text("kept");
    EXPECT_FALSE(OSDDESupported() || OSDDEInit(&error));
    EXPECT_EQ(error, kError);
    EXPECT_FALSE(OSDDESend("service", "topic", "command", 1000, &sendError));
    EXPECT_EQ(sendError, kError);
    EXPECT_FALSE(OSDDESend(nullptr, nullptr, nullptr));
    OSDDEConversation conversation;
    EXPECT_EQ(conversation.GetError(), osDDENone);
    EXPECT_FALSE(conversation.Connect("service", "topic") || conversation.Execute("command") ||
                 conversation.Poke("item", "text") || conversation.Request("item", text));
    EXPECT_EQ(conversation.GetError(), osDDENotAvailable);
    EXPECT_FALSE(conversation.IsConnected());
    conversation.GetErrorText(error);
    EXPECT_EQ(error, kError);
    EXPECT_EQ(text, "kept");
    conversation.Disconnect();
    OSDDEUnInit();
}
#else

extern "C" {
__declspec(dllimport) int __stdcall GetProcessHandleCount(void*, unsigned long*);
__declspec(dllimport) unsigned long __stdcall GetGuiResources(void*, unsigned long);
__declspec(dllimport) void* __stdcall CreateWindowExA(unsigned long, const char*, const char*,
                                                      unsigned long, int, int, int, int, void*,
                                                      void*, void*, void*);
__declspec(dllimport) int __stdcall DestroyWindow(void*);
}

unsigned long CountHandles() {
    unsigned long count = 0;
    const std::intptr_t self = -1;
    GetProcessHandleCount(reinterpret_cast<void*>(self), &count);
    return count;
}

// Measures the time since its construction.
class Stopwatch {
  public:
    long Milliseconds() const {
        using std::chrono::milliseconds;
        const auto passed = std::chrono::steady_clock::now() - m_start;
        return static_cast<long>(std::chrono::duration_cast<milliseconds>(passed).count());
    }

  private:
    const std::chrono::steady_clock::time_point m_start = std::chrono::steady_clock::now();
};

void Sleep(int milliseconds) {
    std::this_thread::sleep_for(std::chrono::milliseconds(milliseconds));
}
// The error of a call, or -1 if it succeeded.
int Failure(const OSDDEConversation& conversation, bool done) {
    return done ? -1 : conversation.GetError();
}

void Start(const char* arguments) {
    CGNString error;
    ASSERT_TRUE(OSRunAsyncProcess(Join({"..\\dde_server ", arguments}).c_str(), error))
        << Bytes(error);
}

// Each test has a server of its own.
class Dde : public testing::Test {
  protected:
    void SetUp() override {
        static int number = 0;
        std::snprintf(m_service, sizeof m_service, "Server%d", ++number);
        ASSERT_TRUE(OSDDEInit());
        StartServer();
    }
    void TearDown() override {
        OSDDESend(m_service, "take", "[quit]", 5000);
        OSDDEUnInit();
    }
    void StartServer(const char* options = "") {
        Start(Join({m_service, options}).c_str());
        OSDDEConversation first;
        for (int i = 0; i < 100 && !first.Connect(m_service, "take", 1000); ++i) Sleep(100);
        ASSERT_TRUE(first.IsConnected());
    }
    std::string Ask(const char* item, const char* topic = "take") {
        OSDDEConversation conversation;
        CGNString text;
        if (!conversation.Connect(m_service, topic) || !conversation.Request(item, text))
            conversation.GetErrorText(text);
        return Bytes(text);
    }
    int ErrorOfSend(const char* topic, long timeout = 5000) {
        OSDDEConversation conversation;
        conversation.Connect(m_service, topic, timeout) && conversation.Execute("[x]", timeout);
        return conversation.GetError();
    }

    char m_service[16];
};

TEST_F(Dde, ReportsWhatBecameOfACommand) {
    EXPECT_TRUE(OSDDESupported());
    const struct {
        int line;
        const char* topic;
        int error;
    } kRows[] = {
        {__LINE__, "take", osDDENone},        {__LINE__, "TAKE", osDDENone},
        {__LINE__, "refuse", osDDERefused},   {__LINE__, "busy", osDDEBusy},
        {__LINE__, "missing", osDDENoServer}, {__LINE__, "leave", osDDEPartnerGone},
        {__LINE__, "", osDDEBadText},         {__LINE__, nullptr, osDDEBadText},
        {__LINE__, "system", osDDENone},
    };
    for (const auto& row : kRows) {
        CGNString error("kept"), expected("kept");
        if (row.error != osDDENone) OSDDEErrorText(row.error, expected);
        EXPECT_EQ(OSDDESend(m_service, row.topic, "[do]", 5000, &error), row.error == osDDENone)
            << row.line;
        EXPECT_EQ(Bytes(error), Bytes(expected)) << row.line;
    }
    EXPECT_TRUE(OSDDESend(m_service, "take", "[Open(\"a b\")]"));
    EXPECT_EQ(Ask("last"), "[Open(\"a b\")]");
    EXPECT_FALSE(OSDDESend("NoSuchServer", "take", "x"));
    EXPECT_FALSE(OSDDESend(m_service, "take", nullptr));
    EXPECT_TRUE(OSDDESend(m_service, "take", ""));
    EXPECT_EQ(Ask("last"), "");
}

TEST_F(Dde, SendsAndRequestsTextInTheCurrentCodeSet) {
    const struct {
        int line, codeSet;
        const char *item, *text;
    } kRows[] = {
        {__LINE__, mbShiftJis, "\x95\x5C", "\x93\x8C\x8B\x9E\x83\x5C"},
        {__LINE__, mbUtf8, "\xC3\xA9t\xC3\xA9", "\xE6\x9D\xB1\xE4\xBA\xAC \xF0\x9F\x98\x80"},
        {__LINE__, mbWestern, "caf\xE9", "\x80 25"},
        {__LINE__, mbWestern, "empty", ""},
    };
    OSDDEConversation conversation;
    ASSERT_TRUE(conversation.Connect(m_service, "take"));
    for (const auto& row : kRows) {
        const CodeSetGuard codeSet(row.codeSet);
        CGNString text("old");
        EXPECT_TRUE(conversation.Poke(row.item, row.text)) << row.line;
        EXPECT_TRUE(conversation.Request(row.item, text)) << row.line;
        EXPECT_EQ(Bytes(text), row.text) << row.line;
    }
    const CodeSetGuard western(mbWestern);
    EXPECT_EQ(Ask("\xE9t\xE9"), "?? ?");
    // Beyond these characters Wine takes a command in 16-bit characters for one in bytes.
    EXPECT_TRUE(conversation.Execute("[Open(caf\xE9)]"));
    EXPECT_EQ(Ask("last"), "[Open(caf\xE9)]");
    std::string text(100 * 1024, 'x');
    for (std::size_t i = 0; i < text.size(); i += 7) text[i] = static_cast<char>('a' + i % 26);
    EXPECT_TRUE(OSDDESend(m_service, "take", text.c_str()));
    EXPECT_EQ(Ask("last"), text);
    const CodeSetGuard utf8(mbUtf8);
    for (const char* broken : {"\xFF", "a\xE6\x9D"}) {
        EXPECT_EQ(Failure(conversation, conversation.Execute(broken)), osDDEBadText);
    }
}

// Such a partner gets the characters of the user's language.
TEST_F(Dde, TalksToAPartnerInTheSystemCodePage) {
    const bool japanese = std::string_view(std::getenv("TEST_LANGUAGE")) == "ja_JP";
    const CodeSetGuard codeSet(japanese ? mbShiftJis : mbWestern);
    const char* const word = japanese ? "\x93\x8C\x8B\x9E\x83\x5C" : "caf\xE9";
    OSDDESend(m_service, "take", "[quit]");  // it may end before its answer
    std::snprintf(m_service, sizeof m_service, "Narrow");
    StartServer(" narrow");
    OSDDEConversation conversation;
    CGNString text;
    ASSERT_TRUE(conversation.Connect(m_service, "system"));
    EXPECT_TRUE(conversation.Poke("item", word));
    EXPECT_TRUE(conversation.Request("item", text));
    EXPECT_EQ(Bytes(text), word);
    EXPECT_EQ(Failure(conversation, conversation.Request("none", text)), osDDERefused);
    EXPECT_EQ(Bytes(text), word);
    const std::string command = Join({"[Open(", word, ")]"});
    EXPECT_TRUE(conversation.Execute(command.c_str()));
    EXPECT_EQ(Ask("last", "system"), command);
}

TEST_F(Dde, StaysConnectedAfterARefusal) {
    OSDDEConversation conversation;
    CGNString text;
    const std::string longest(255, 'n'), tooLong(256, 'n');
    ASSERT_TRUE(conversation.Connect(m_service, "refuse"));
    EXPECT_EQ(Failure(conversation, conversation.Poke("a", "b")), osDDERefused);
    EXPECT_EQ(Failure(conversation, conversation.Request("a", text)), osDDERefused);
    ASSERT_TRUE(conversation.Connect(m_service, "busy"));
    EXPECT_EQ(Failure(conversation, conversation.Poke("a", "b")), osDDEBusy);
    ASSERT_TRUE(conversation.Connect(m_service, "take"));
    for (const char* item : {static_cast<const char*>(nullptr), "", tooLong.c_str()}) {
        EXPECT_FALSE(conversation.Poke(item, "b"));
        EXPECT_EQ(Failure(conversation, conversation.Request(item, text)), osDDEBadText);
    }
    EXPECT_EQ(Failure(conversation, conversation.Poke("a", nullptr)), osDDEBadText);
    EXPECT_TRUE(conversation.Poke(longest.c_str(), "b"));
    EXPECT_EQ(conversation.GetError(), osDDENone);
    EXPECT_TRUE(conversation.IsConnected());
    EXPECT_FALSE(conversation.Connect(m_service, "missing"));
    EXPECT_FALSE(conversation.IsConnected());
    EXPECT_EQ(Failure(conversation, conversation.Execute("x")), osDDENotConnected);
}

TEST_F(Dde, WaitsNoLongerThanTheTimeout) {
    OSDDEConversation conversation;
    ASSERT_TRUE(conversation.Connect(m_service, "slow"));
    const Stopwatch watch;
    EXPECT_EQ(Failure(conversation, conversation.Execute("late", 300)), osDDETimedOut);
    EXPECT_GE(watch.Milliseconds(), 250);
    EXPECT_LT(watch.Milliseconds(), 1500);
    EXPECT_FALSE(conversation.IsConnected());
    EXPECT_EQ(Failure(conversation, conversation.Execute("x")), osDDENotConnected);
    ASSERT_TRUE(conversation.Connect(m_service, "slow"));
    EXPECT_TRUE(conversation.Execute("in time", 6000));
    EXPECT_EQ(Ask("last"), "in time");
}

TEST_F(Dde, IgnoresLateAnswers) {
    OSDDEConversation conversation;
    CGNString text;
    ASSERT_TRUE(conversation.Connect(m_service, "late"));
    for (const char* item : {"one", "two", "three"}) {
        EXPECT_TRUE(conversation.Request(item, text));
        EXPECT_EQ(Bytes(text), item);
    }
    EXPECT_TRUE(conversation.Poke("three", "x"));
}

TEST_F(Dde, NoticesThatAPartnerDied) {
    OSDDEConversation conversation, idle;
    CGNString text;
    for (int request = 0; request < 2; ++request) {
        ASSERT_TRUE(idle.Connect(m_service, "take"));
        ASSERT_TRUE(conversation.Connect(m_service, "die"));
        const Stopwatch watch;
        EXPECT_FALSE(request ? conversation.Request("x", text) : conversation.Execute("x"));
        EXPECT_EQ(conversation.GetError(), osDDEPartnerGone);
        EXPECT_LT(watch.Milliseconds(), 5000);
        EXPECT_FALSE(conversation.IsConnected());
        EXPECT_FALSE(idle.IsConnected());
        EXPECT_EQ(Failure(idle, idle.Execute("x", 1000)), osDDEPartnerGone);
        EXPECT_EQ(Failure(conversation, conversation.Connect(m_service, "take")), osDDENoServer);
        StartServer();
    }
    EXPECT_TRUE(conversation.Connect(m_service, "take"));
}

TEST_F(Dde, NoticesThatAPartnerLeft) {
    OSDDEConversation conversation;
    ASSERT_TRUE(conversation.Connect(m_service, "leave"));
    EXPECT_EQ(Failure(conversation, conversation.Execute("x")), osDDEPartnerGone);
    EXPECT_FALSE(conversation.IsConnected());
    EXPECT_EQ(Failure(conversation, conversation.Execute("x")), osDDEPartnerGone);
    EXPECT_TRUE(conversation.Connect(m_service, "take"));
    OSDDESend(m_service, "take", "[quit]");
    for (int i = 0; i < 100 && conversation.IsConnected(); ++i) Sleep(20);
    EXPECT_FALSE(conversation.IsConnected());
}

TEST_F(Dde, UnInitEndsConversations) {
    OSDDEConversation open, busy;
    ASSERT_TRUE(OSDDEInit());
    ASSERT_TRUE(open.Connect(m_service, "take"));
    ASSERT_TRUE(busy.Connect(m_service, "slow"));
    OSDDEUnInit();
    EXPECT_TRUE(open.Execute("still there"));
    std::thread caller([&] { EXPECT_EQ(Failure(busy, busy.Execute("x")), osDDEEnded); });
    Sleep(300);
    const Stopwatch watch;
    OSDDEUnInit();
    caller.join();
    EXPECT_LT(watch.Milliseconds(), 1500);
    EXPECT_FALSE(open.IsConnected());
    EXPECT_EQ(Failure(open, open.Execute("x")), osDDENotInitialized);
    CGNString error;
    EXPECT_FALSE(OSDDESend(m_service, "take", "x", 1000, &error));
    EXPECT_EQ(error, "DDE is not initialized");
    OSDDEUnInit();  // one too many
    ASSERT_TRUE(OSDDEInit());
    EXPECT_EQ(Failure(open, open.Execute("x")), osDDENotConnected);
    EXPECT_TRUE(open.Connect(m_service, "take"));
    EXPECT_EQ(Ask("open"), "2");
}

TEST_F(Dde, ServesSeveralThreads) {
    OSDDEConversation shared;
    ASSERT_TRUE(shared.Connect(m_service, "take"));
    std::vector<std::thread> threads;
    for (int i = 0; i < 4; ++i)
        threads.emplace_back([&, i] {
            char item[16], value[16];
            OSDDEConversation own;
            CGNString text;
            EXPECT_TRUE(own.Connect(m_service, "take"));
            for (int round = 0; round < 25; ++round) {
                // Wine's servers acknowledge data that they sent, which must not pass for a poke's.
                std::snprintf(item, sizeof item, "item %d.%d", i, round / 2);
                std::snprintf(value, sizeof value, "%d.%d", i, round);
                EXPECT_TRUE((round % 2 ? own : shared).Poke(item, value));
                EXPECT_TRUE((round % 3 ? own : shared).Request(item, text));
                EXPECT_EQ(text, value);
            }
        });
    for (std::thread& thread : threads) thread.join();
}

TEST_F(Dde, IgnoresOtherWindowsOfTheCaller) {
    void* const window = CreateWindowExA(0, "STATIC", "", 0x80000000, 0, 0, 9, 9, nullptr, nullptr,
                                         nullptr, nullptr);
    ASSERT_TRUE(window);
    const Stopwatch watch;
    EXPECT_EQ(ErrorOfSend("take", 5000), osDDENone);
    EXPECT_LT(watch.Milliseconds(), 500);
    DestroyWindow(window);
}

TEST_F(Dde, IsNotHeldUpByAHungWindow) {
    Start("hang");
    Sleep(700);
    const Stopwatch watch;
    const int error = ErrorOfSend("missing", 400);
    EXPECT_TRUE(error == osDDETimedOut || error == osDDENoServer) << error;
    EXPECT_LT(watch.Milliseconds(), 1500);
    Sleep(2500);
}

TEST_F(Dde, ClosesAllHandles) {
    ErrorOfSend("take");
    const unsigned long before = CountHandles();
    const std::intptr_t self = -1;
    const unsigned long windows = GetGuiResources(reinterpret_cast<void*>(self), 1);
    for (int i = 0; i < 200; ++i) {
        EXPECT_EQ(ErrorOfSend("take"), osDDENone);
        if (i % 10 == 0) {
            EXPECT_EQ(ErrorOfSend("refuse"), osDDERefused);
            EXPECT_EQ(ErrorOfSend("missing"), osDDENoServer);
            EXPECT_EQ(ErrorOfSend("leave"), osDDEPartnerGone);
        }
    }
    EXPECT_LE(CountHandles(), before + 2);
    EXPECT_LE(GetGuiResources(reinterpret_cast<void*>(self), 1), windows);
    EXPECT_EQ(Ask("open"), "1");
}

#endif

}  // namespace
