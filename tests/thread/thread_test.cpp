// Threads, and the variables that each has for itself.
#include <gtest/gtest.h>

#include <atomic>
#include <string>

#include "osthread.h"
#include "tests/support/worker.h"

namespace {

class Threads : public testing::Test {
  protected:
    static void SetUpTestSuite() { OSSetThreaded(); }

    CGNLclSt* m_variables = CGNLclSt::Instance();
    int m_values[8] = {};
};

using LocalVariables = Threads;

unsigned AddOne(void* number) {
    ++*static_cast<std::atomic<int>*>(number);
    return 7;
}

unsigned ExitAtOnce(void* number) {
    AddOne(number);
    OSThreadExit();
    return AddOne(number);
}

}  // namespace

TEST_F(Threads, RunOnceAndMayBeWaitedForTwice) {
    std::atomic<int> number{0};
    int expected = 0;
    for (unsigned (*start)(void*) : {AddOne, ExitAtOnce}) {
        _osthread* thread = OSThreadCreate(start, &number, nullptr);
        ASSERT_NE(thread, nullptr);
        unsigned code = 5;
        EXPECT_EQ(Printed([&] {
                      EXPECT_TRUE(OSThreadWaitFor(thread, 1000000, &code));
                      OSThreadTerminateWait(thread);
                      OSThreadTerminateWait(thread);
                      EXPECT_TRUE(OSThreadWaitFor(thread, 0));
                  }),
                  "");
        EXPECT_EQ(code, start == AddOne ? 7u : 0u);
        EXPECT_EQ(number, ++expected);
        OSThreadDestroy(thread);
    }
    std::atomic<bool> goOn{false};
    _osthread* slow = OSThreadCreate(
        [](void* may) {
            Eventually([=] { return static_cast<std::atomic<bool>*>(may)->load(); });
            return 0u;
        },
        &goOn, nullptr);
    for (const unsigned limit : {0u, 1u, 20u}) EXPECT_FALSE(OSThreadWaitFor(slow, limit));
    goOn = true;
    EXPECT_TRUE(OSThreadWaitFor(slow, OSNoLimit));
    OSThreadDestroy(slow);
    EXPECT_FALSE(OSThreadWaitFor(nullptr, 0));
    OSThreadDestroy(OSThreadCreate(AddOne, &number, nullptr));  // which runs on
    EXPECT_TRUE(Eventually([&] { return number == 3; }));
    EXPECT_EQ(OSThreadCreate(nullptr, &number, nullptr), nullptr);
}

TEST_F(Threads, HaveNumbersOfTheirOwn) {
    unsigned long number = 0, again = 0;
    {
        Worker worker([&] {
            number = OSGetCurrentThreadID();
            again = OSGetCurrentThreadID();
        });
    }
    EXPECT_NE(number, 0u);
    EXPECT_EQ(number, again);
    EXPECT_NE(number, OSGetCurrentThreadID());
    EXPECT_TRUE(OSIsThreaded());
}

TEST_F(LocalVariables, AreFoundByNameAndByIndex) {
    Worker worker([&] {
        int* v = m_values;
        ASSERT_TRUE(m_variables->Init(4));
        EXPECT_TRUE(m_variables->Init(100)) << "which does not change the table";
        for (long i = 0; i < 4; ++i)
            EXPECT_EQ(m_variables->SetLocalVariable(std::string(1, char('a' + i)).c_str(), &v[i]),
                      i);
        EXPECT_EQ(m_variables->SetLocalVariable("e", &v[4]), -1) << "full";
        EXPECT_EQ(m_variables->SetLocalVariable("a", &v[4]), -1) << "taken";
        EXPECT_EQ(m_variables->ResetLocalVariable(0, "a", &v[4]), -1);
        EXPECT_EQ(m_variables->GetLocalVariable("a"), &v[0]);
        EXPECT_EQ(m_variables->GetLocalVariable(0), &v[0]);
        EXPECT_EQ(m_variables->GetLocalVariable(3L), &v[3]);
        EXPECT_EQ(m_variables->GetIndex("d"), 3);
        EXPECT_STREQ(m_variables->GetVarName(2), "c");
        for (const long outside : {-1L, 4L, 2000000000L}) {
            EXPECT_EQ(m_variables->GetLocalVariable(outside), nullptr);
            EXPECT_EQ(m_variables->GetVarName(outside), nullptr);
            m_variables->UnsetLocalVariable(outside);
        }
        EXPECT_EQ(m_variables->GetIndex("A"), -1);
        EXPECT_EQ(m_variables->GetLocalVariable(nullptr), nullptr);
        EXPECT_EQ(m_variables->SetLocalVariable(nullptr, &v[4]), -1);

        m_variables->UnsetLocalVariable(1L);
        EXPECT_EQ(m_variables->GetLocalVariable(1L), nullptr);
        EXPECT_EQ(m_variables->GetVarName(1), nullptr);
        EXPECT_EQ(m_variables->SetLocalVariable("\xE9\xFF", &v[5]), 1);
        EXPECT_EQ(m_variables->GetLocalVariable("\xE9\xFF"), &v[5]);
        m_variables->UnsetLocalVariable(0);
        EXPECT_EQ(m_variables->GetLocalVariable(3), &v[3]) << "only the first";
        m_variables->UnsetLocalVariable(nullptr);
        EXPECT_EQ(m_variables->SetLocalVariable("", &v[6]), 0);
        EXPECT_EQ(m_variables->GetIndex(""), 0);
    });
}

TEST_F(LocalVariables, FirstOfTwoEqualNamesCounts) {
    Worker worker([&] {
        m_variables->Init(4);
        m_variables->SetLocalVariable("a", &m_values[0]);
        m_variables->SetLocalVariable("b", &m_values[1]);
        m_variables->UnsetLocalVariable("a");
        EXPECT_EQ(m_variables->SetLocalVariable("b", &m_values[2]), 0);
        EXPECT_EQ(m_variables->GetIndex("b"), 0);
        EXPECT_EQ(m_variables->GetLocalVariable("b"), &m_values[2]);
        EXPECT_EQ(m_variables->GetLocalVariable(1L), &m_values[1]);
        m_variables->UnsetLocalVariable(m_variables->GetVarName(0));
        EXPECT_EQ(m_variables->GetIndex("b"), -1) << "both are gone";
    });
}

TEST_F(LocalVariables, BelongToOneThread) {
    Worker worker([&] {
        EXPECT_EQ(m_variables->GetIndex("x"), 0) << "of a thread without a table";
        EXPECT_EQ(m_variables->SetLocalVariable("x", m_values), -1);
        EXPECT_EQ(m_variables->GetLocalVariable("x"), nullptr);
        EXPECT_EQ(m_variables->GetLocalVariable(0L), nullptr);
        EXPECT_EQ(m_variables->GetVarName(0), nullptr);
        m_variables->UnsetLocalVariable(nullptr);
        EXPECT_FALSE(m_variables->Init(-1));
        EXPECT_TRUE(m_variables->Init(2));
        m_variables->SetLocalVariable("x", m_values);
        Worker inner([&] {
            EXPECT_TRUE(m_variables->Init(0));
            EXPECT_EQ(m_variables->SetLocalVariable("x", m_values), -1);
            EXPECT_EQ(m_variables->GetIndex("x"), -1);
        });
        inner.Join();
        CGNLclSt::Free();
        m_variables = CGNLclSt::Instance();
        EXPECT_EQ(m_variables->GetLocalVariable("x"), m_values);
    });
}

// In a table of the thread and in a block of the caller: with the variable, or at the thread's end.
TEST_F(LocalVariables, ReleaseTheirValues) {
    struct {
        CGNLclStTable table;
        CGNLclStSlot second;
    } block = {{2, {{nullptr, nullptr}}}, {nullptr, nullptr}};
    const auto release = [](void* value) { ++*static_cast<int*>(value); };
    for (void* table : {static_cast<void*>(nullptr), static_cast<void*>(&block)}) {
        int removed = 0, kept = 0, refused = 0, plain = 0;
        {
            Worker worker(
                [&] {
                    m_variables->Init(2);
                    EXPECT_EQ(m_variables->SetLocalVariable("a", &removed, release), 0);
                    EXPECT_EQ(m_variables->SetLocalVariable("a", &refused, release), -1);
                    m_variables->UnsetLocalVariable("a");
                    EXPECT_EQ(removed, 1);
                    EXPECT_EQ(m_variables->SetLocalVariable("a", &plain), 0) << "not released";
                    m_variables->UnsetLocalVariable(0);
                    EXPECT_EQ(m_variables->SetLocalVariable("b", &kept, release), 0);
                    EXPECT_EQ(m_variables->SetLocalVariable("c", &plain, nullptr), 1);
                    EXPECT_EQ(m_variables->SetLocalVariable("d", &refused, release), -1);
                    m_variables->UnsetLocalVariable("c");
                },
                table);
        }
        EXPECT_EQ(removed, 1);
        EXPECT_EQ(kept, 1);
        EXPECT_EQ(refused + plain, 0);
    }
    EXPECT_EQ(block.table.m_slots[0].m_name, nullptr);
    Worker([&] { m_variables->Init(0); }).Join();
}

TEST_F(LocalVariables, UseTheBlockGivenToTheThread) {
    struct {
        CGNLclStTable table;
        CGNLclStSlot second;
    } block = {{2, {{nullptr, nullptr}}}, {nullptr, nullptr}};
    {
        Worker worker(
            [&] {
                EXPECT_TRUE(m_variables->Init(1)) << "which the thread does not need";
                EXPECT_EQ(m_variables->SetLocalVariable("a", &m_values[0]), 0);
                EXPECT_EQ(m_variables->SetLocalVariable("b", &m_values[1]), 1);
                EXPECT_EQ(m_variables->SetLocalVariable("c", &m_values[2]), -1);
                m_variables->UnsetLocalVariable("a");
                m_variables->UnsetLocalVariable(1L);
            },
            &block);
    }
    EXPECT_EQ(block.table.m_count, 2) << "the block stays the caller's";
}
