/* Locks held for a scope, and threads that are joined at the end of one.

       OSMutexLock lock(mutex);                     // waits; released at the end of the scope
       if (OSWriteLock write{table, 100}; write) ...   // waits at most 100 ms

       OSMutexLock a(first, std::defer_lock), b(second, std::defer_lock);
       std::scoped_lock both(a, b);                 // takes both, without a deadlock

       OSThread thread([&] { work(); });            // joined at the end of the scope

   OSMutexLock, OSReadLock, OSWriteLock and CGNNamedMutexLock meet the Lockable requirements of the
   standard library (lock, try_lock, unlock). A guard is used by one thread. In a process that is
   not threaded, locks do nothing and guards always hold them. Nothing throws. */
#ifndef GENUTIL_OSGUARD_H
#define GENUTIL_OSGUARD_H

#include <cstdint>
#include <memory>
#include <mutex>
#include <new>
#include <type_traits>
#include <utility>

#include "osthread.h"

/** Holds a lock for a scope. The lock must exist longer than the guard. Use it through OSMutexLock,
    OSReadLock, OSWriteLock and CGNNamedMutexLock.
    @tparam Target identifies a lock. Its Wait(limit) returns 1 when the thread holds the lock;
        Release() undoes it. */
template <class Target>
class OSScopedLock {
  public:
    /** Waits without a time limit for the lock. */
    explicit OSScopedLock(Target target) : OSScopedLock(std::move(target), OSNoLimit) {}
    /** Waits for the lock, but no longer than `limit` milliseconds. Examine owns_lock(). */
    OSScopedLock(Target target, std::uint32_t limit)
        : m_target(std::move(target)), m_owns(m_target.Wait(limit) != 0) {}
    /** Does not wait. The lock can be taken later with lock(). */
    OSScopedLock(Target target, std::defer_lock_t) : m_target(std::move(target)), m_owns(false) {}
    OSScopedLock(const OSScopedLock&) = delete;
    OSScopedLock& operator=(const OSScopedLock&) = delete;
    /** Releases the lock if the guard holds it. */
    ~OSScopedLock() { unlock(); }

    /** Waits without a time limit for the lock. Does nothing if the guard holds it. Examine
        owns_lock() if the wait can fail: for a null lock, or without system resources. */
    void lock() { try_lock_for(OSNoLimit); }
    /** Takes the lock if no wait is required. Returns true if the guard holds it. */
    bool try_lock() { return try_lock_for(0); }
    /** Waits for the lock, but no longer than `limit` milliseconds. Returns true if the guard holds
        it. */
    bool try_lock_for(std::uint32_t limit) {
        if (!m_owns) m_owns = m_target.Wait(limit) != 0;
        return m_owns;
    }
    /** Releases the lock if the guard holds it. */
    void unlock() {
        if (m_owns) m_target.Release();
        m_owns = false;
    }
    /** Returns true if the guard holds the lock. */
    bool owns_lock() const { return m_owns; }
    /** Returns true if the guard holds the lock. */
    explicit operator bool() const { return m_owns; }

  private:
    Target m_target;
    bool m_owns;
};

/** @cond */
namespace genutil {

struct MutexTarget {
    MutexTarget(_osmutex* mutex) : m_mutex(mutex) {}
    unsigned char Wait(std::uint32_t limit) { return OSMutexTryWait(m_mutex, limit); }
    void Release() { OSMutexRelease(m_mutex); }

  private:
    _osmutex* m_mutex;
};

struct ReadTarget {
    ReadTarget(_osrdwr* lock) : m_lock(lock) {}
    unsigned char Wait(std::uint32_t limit) { return OSRWLockReadTryWait(m_lock, limit); }
    void Release() { OSRWLockReadRelease(m_lock); }

  private:
    _osrdwr* m_lock;
};

struct WriteTarget {
    WriteTarget(_osrdwr* lock) : m_lock(lock) {}
    unsigned char Wait(std::uint32_t limit) { return OSRWLockWriteTryWait(m_lock, limit); }
    void Release() { OSRWLockWriteRelease(m_lock); }

  private:
    _osrdwr* m_lock;
};

struct NameTarget {
    NameTarget(CGNNamedMutexPool* pool, const CGNString& name) : m_pool(pool), m_name(name) {}
    unsigned char Wait(std::uint32_t limit) {
        return m_pool && m_pool->WaitNamedMutex(m_name, limit);
    }
    void Release() { m_pool->ReleaseNamedMutex(m_name); }

  private:
    CGNNamedMutexPool* m_pool;
    CGNString m_name;
};

// A function that a thread runs and then destroys.
template <class Function>
class ThreadFunction {
  public:
    template <class F>
    explicit ThreadFunction(F&& function) : m_function(std::forward<F>(function)) {}

    static unsigned int Run(void* argument) {
        const std::unique_ptr<ThreadFunction> self(static_cast<ThreadFunction*>(argument));
        if constexpr (std::is_void_v<std::invoke_result_t<Function&>>) {
            self->m_function();
            return 0;
        } else {
            return static_cast<unsigned int>(self->m_function());
        }
    }

  private:
    Function m_function;
};

}  // namespace genutil
/** @endcond */

/** Holds a mutex: OSMutexLock(_osmutex*), with a limit or std::defer_lock as a second argument. */
using OSMutexLock = OSScopedLock<genutil::MutexTarget>;
/** Holds a read-write lock for reading. */
using OSReadLock = OSScopedLock<genutil::ReadTarget>;
/** Holds a read-write lock for writing. */
using OSWriteLock = OSScopedLock<genutil::WriteTarget>;

/** Holds a named mutex. */
class CGNNamedMutexLock : public OSScopedLock<genutil::NameTarget> {
  public:
    /** Waits for the mutex of a name.
        @param pool the pool, such as CGNGlobalNamedMutexPool::GetInstance(). If it is null, the
            guard holds nothing.
        @param name the name; copied.
        @param limit milliseconds; OSNoLimit for no limit. */
    CGNNamedMutexLock(CGNNamedMutexPool* pool, const CGNString& name,
                      std::uint32_t limit = OSNoLimit)
        : OSScopedLock(genutil::NameTarget(pool, name), limit) {}
    /** Does not wait. The mutex can be taken later with lock(). */
    CGNNamedMutexLock(CGNNamedMutexPool* pool, const CGNString& name, std::defer_lock_t deferred)
        : OSScopedLock(genutil::NameTarget(pool, name), deferred) {}
};

/** A thread that is joined when the object is destroyed. The object may be moved. It must not be
    destroyed by its own thread. */
class OSThread {
  public:
    /** Constructs an object without a thread. */
    OSThread() = default;

    /** Starts a thread. If that fails, the error is printed and the object has no thread.
        @param function a callable without arguments, copied or moved to the thread, which destroys
            it after the call. A result that is not void is the exit code. If the thread ends by
            OSThreadExit() on Windows, the copy is not destroyed. The function must not throw. */
    template <class Function, class = std::enable_if_t<!std::is_same_v<
                                  std::remove_cv_t<std::remove_reference_t<Function>>, OSThread>>>
    explicit OSThread(Function&& function) {
        using Task = genutil::ThreadFunction<std::decay_t<Function>>;
        std::unique_ptr<Task> task(new (std::nothrow) Task(std::forward<Function>(function)));
        if (task) m_thread = OSThreadCreate(Task::Run, task.get(), nullptr);
        if (m_thread) static_cast<void>(task.release());
    }

    /** Takes the thread of other. */
    OSThread(OSThread&& other) noexcept
        : m_thread(std::exchange(other.m_thread, nullptr)), m_exitCode(other.m_exitCode) {}
    /** Joins the thread of this object, then takes that of other. */
    OSThread& operator=(OSThread&& other) noexcept {
        if (this == &other) return *this;
        Join();
        m_thread = std::exchange(other.m_thread, nullptr);
        m_exitCode = other.m_exitCode;
        return *this;
    }
    /** Waits without a time limit until the thread has ended. */
    ~OSThread() { Join(); }

    /** Returns true if the object has a thread that has not been joined. */
    explicit operator bool() const { return m_thread != nullptr; }

    /** Waits until the thread has ended, but no longer than `limit` milliseconds, and releases it.
        Returns true if the object has no thread any more. */
    bool Join(std::uint32_t limit = OSNoLimit) {
        if (m_thread && !OSThreadWaitFor(m_thread, limit, &m_exitCode) && limit != OSNoLimit)
            return false;
        OSThreadDestroy(std::exchange(m_thread, nullptr));
        return true;
    }

    /** Returns the exit code of the thread that was joined last; 0 before. */
    unsigned int ExitCode() const { return m_exitCode; }

  private:
    _osthread* m_thread = nullptr;
    unsigned int m_exitCode = 0;
};

#endif
