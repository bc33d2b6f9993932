// Threads for tests. Nothing here waits without limit: a thread that takes too long ends the
// program as a failure, since stuck threads cannot be removed.
#pragma once

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <memory>
#include <string>
#include <thread>
#include <vector>

#include "osthread.h"

// Waits until the condition holds; false if that takes too long: a minute or more, because a busy
// machine may run the threads of a test one after the other.
template <class Condition>
bool Eventually(Condition condition) {
    for (int i = 0; i < 60000; ++i) {
        if (condition()) return true;
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
    return false;
}

// Returns true if the condition does not become true for a while.
template <class Condition>
bool HoldsBack(Condition condition) {
    std::this_thread::sleep_for(std::chrono::milliseconds(30));
    return !condition();
}

class Worker {
  public:
    explicit Worker(std::function<void()> work, void* threadValue = nullptr)
        : m_work(std::move(work)), m_thread(OSThreadCreate(Run, this, threadValue)) {}
    Worker(const Worker&) = delete;
    Worker& operator=(const Worker&) = delete;
    ~Worker() {
        Join();
        OSThreadDestroy(m_thread);
    }

    bool IsDone() const { return m_done; }

    void Join() {
        if (!Eventually([this] { return IsDone(); })) {
            std::fprintf(stderr, "[  FAILED  ] a thread is stuck\n");
            std::_Exit(1);
        }
        OSThreadTerminateWait(m_thread);
    }

  private:
    static unsigned Run(void* argument) {
        auto* self = static_cast<Worker*>(argument);
        self->m_work();
        self->m_done = true;
        return 0;
    }

    std::function<void()> m_work;
    std::atomic<bool> m_done{false};
    _osthread* m_thread;
};

// Returns true if the worker is not done for a while.
inline bool IsHeldUp(const Worker& worker) {
    return HoldsBack([&] { return worker.IsDone(); });
}

// Runs work(0), work(1), ... in as many threads, which begin together; returns when all are done.
template <class Work>
void AtTheSameTime(int threads, Work work) {
    std::atomic<int> missing{threads};
    std::vector<std::unique_ptr<Worker>> workers;
    for (int i = 0; i < threads; ++i)
        workers.push_back(std::make_unique<Worker>([=, &missing] {
            --missing;
            while (missing > 0) std::this_thread::yield();
            work(i);
        }));
}

// The text that a function prints on standard output.
template <class Function>
std::string Printed(Function function) {
    testing::internal::CaptureStdout();
    function();
    return testing::internal::GetCapturedStdout();
}

// Expects that the function prints an error of the system.
template <class Function>
void ExpectError(Function function) {
    EXPECT_EQ(Printed(function).substr(0, 6), "Error ");
}
