// Assertions: traced lines, callbacks, and protection from recursion.
#include <gtest/gtest.h>

#include <string>

#include "gendiag.h"
#include "osthread.h"
#include "tests/support/temporary_file.h"

namespace {

// The assertion service with its failures going to a file.
class Assertion : public testing::Test {
  protected:
    void SetUp() override {
        OSSetThreaded();
        CGNAssert::Free();
        CGNGlobalTrace::Free();
        CGNGlobalTrace* trace = CGNGlobalTrace::Instance();
        trace->Init();
        trace->ResetMask(0x0100);
        trace->DisableDateTime();
        CGNString path(m_file.Path());
        trace->ResetOutput(1, path, 0);
    }
    void TearDown() override {
        CGNAssert::Free();
        CGNGlobalTrace::Free();
    }
    int Count(const std::string& text) const {
        int count = 0;
        const std::string bytes = m_file.Bytes();
        for (std::size_t at = 0; (at = bytes.find(text, at)) != std::string::npos;
             at += text.size())
            ++count;
        return count;
    }
    TemporaryFile m_file;
};

struct Reaction {
    int calls = 0;
    bool again = false, isMarked = false;
    unsigned char inner = 9;
};

unsigned char React(void* argument) {
    auto* reaction = static_cast<Reaction*>(argument);
    ++reaction->calls;
    reaction->isMarked = CGNLclSt::Instance()->GetLocalVariable("recflag") != nullptr;
    if (reaction->again) reaction->inner = CGNAssert::Instance()->cgnassert(0, "inner", 2);
    return 1;
}

TEST_F(Assertion, FailuresAreTracedOnceTurnedOn) {
    EXPECT_EQ(CGNAssert::Instance(), CGNAssert::Instance());
    EXPECT_EQ(CGNAssert::Instance()->cgnassert(0, "file", 1), 0);
    EXPECT_EQ(CGNAssert::Instance()->cgnassert(1, "file", 1), 0);  // also for a true condition
    EXPECT_EQ(m_file.Bytes(), "");
    CGNAssert::Instance()->SetNativeAssert(0);
    EXPECT_EQ(CGNAssert::Instance()->cgnassert(1, "file", 1), 1);
    EXPECT_EQ(m_file.Bytes(), "");
    EXPECT_EQ(CGNAssert::Instance()->cgnassert(0, "source name", 42), 0);
    EXPECT_EQ(Count("cgnassert : Assertion Failure !! : Line    42 in source name"), 1);
}

TEST_F(Assertion, CallbackIsNotCalledRecursively) {
    for (const bool withStore : {false, true}) {
        if (withStore) CGNLclSt::Instance()->Init(4);
        Reaction reaction;
        CGNAssert::Free();
        EXPECT_EQ(CGNAssert::Instance()->Init(React, &reaction), 1);
        EXPECT_EQ(CGNAssert::Instance()->cgnassert(0, "outer", 1), 0);  // still native
        CGNAssert::Instance()->SetNativeAssert(0);
        EXPECT_EQ(CGNAssert::Instance()->cgnassert(0, "outer", 1), 1);
        EXPECT_EQ(reaction.calls, 1);
        EXPECT_EQ(reaction.isMarked, withStore);
        reaction.again = true;
        for (int calls = 2; calls <= 3; ++calls) {
            EXPECT_EQ(CGNAssert::Instance()->cgnassert(0, "outer", 1), 1);
            EXPECT_EQ(reaction.calls, calls);
            EXPECT_EQ(reaction.inner, 0);
        }
    }
    EXPECT_EQ(Count("Recursive invocation of callback."), 4);
    EXPECT_EQ(Count("Switching to native assert. : Line     2 in inner"), 4);
}

unsigned int AssertOnAnotherThread(void*) {
    CGNLclSt::Instance()->Init(4);
    return CGNAssert::Instance()->cgnassert(0, "other", 3);
}

unsigned char WaitForAnotherThread(void* argument) {
    auto* reaction = static_cast<Reaction*>(argument);
    if (++reaction->calls > 1) return 1;
    _osthread* thread = OSThreadCreate(AssertOnAnotherThread, nullptr, nullptr);
    OSThreadTerminateWait(thread);
    OSThreadDestroy(thread);
    return 1;
}

TEST_F(Assertion, CallbacksRunInSeveralThreads) {
    Reaction reaction;
    CGNAssert::Instance()->Init(WaitForAnotherThread, &reaction);
    CGNAssert::Instance()->SetNativeAssert(0);
    EXPECT_EQ(CGNAssert::Instance()->cgnassert(0, "outer", 1), 1);
    EXPECT_EQ(reaction.calls, 2);
}

}  // namespace
