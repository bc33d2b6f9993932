/* Threads and locks: threads, mutexes, read-write locks, conditions, named thread variables and
   named mutexes.

   A process is single-threaded until it calls OSSetThreaded(). Until then, locks can be created and
   destroyed but do nothing, so that single-threaded programs do not pay for them. A threaded
   program makes this call first, before it creates any lock. A lock created earlier is unusable and
   must not be used. Threads can be started in either mode. Thread variables work in either mode,
   but all threads of a single-threaded process share one table, which is no longer accessible
   after OSSetThreaded(). CGNTrace and CGNNamedMutexPool are usable in both modes; call their Init()
   again after OSSetThreaded().

       OSSetThreaded();
       _osmutex* lock = OSMutexCreate();
       _osthread* thread = OSThreadCreate(work, &job, nullptr);
       OSMutexWait(lock);
       ...                                // data shared by both threads
       OSMutexRelease(lock);
       OSThreadTerminateWait(thread);
       OSThreadDestroy(thread);
       OSMutexDestroy(lock);

   The library records which mutexes each thread holds. A thread that ends, or recovers from an
   error without its own records, calls OSMutexWaitRemoveThisThread() to release all of them. If a
   thread ends while it holds a mutex, or a lock for writing, the next waiting thread acquires it.

   The caller owns each record from the function that creates it to the function that destroys it.
   No thread may use a record when it is destroyed. Functions do nothing for a null record. Every
   function may be called from any thread unless stated otherwise.

   System failures are printed to standard output as "Error " and the system's error code in
   hexadecimal. Releasing a mutex or lock that the thread does not hold is such a failure. Nothing
   throws. Boolean results are an unsigned char, 1 or 0. */
#ifndef GENUTIL_OSTHREAD_H
#define GENUTIL_OSTHREAD_H

#include <cstdint>

#include "genexport.h"
#include "genlist.h"
#include "genstr.h"

struct _osthread;
struct _osmutex;
struct _osrdwr;
struct _oscondition;

namespace genutil {
struct VariableTable;
}

/** The limit of a wait that has none. Other limits are milliseconds, which are rounded up to the
    system's resolution; 0 returns at once. Setting the system's clock does not change a limit. */
constexpr std::uint32_t OSNoLimit = 0xFFFFFFFF;

/* -- Threaded mode ---------------------------------------------------------------------------- */

/** Returns 1 if the process is threaded. */
GENUTIL_API unsigned char OSIsThreaded();

/** Makes the process threaded, permanently. */
GENUTIL_API void OSSetThreaded();

/* -- Threads, in threaded and single-threaded processes ---------------------------------------- */

/** Starts a thread. Returns its record. On failure, prints the error and returns null.
    @param start the function that the thread executes.
    @param argument passed to start.
    @param threadValue the initial variables of the thread (CGNLclStTable), or null. The caller
        owns them and releases them after the thread has ended. Ignored if the process is not
        threaded. */
GENUTIL_API _osthread* OSThreadCreate(unsigned int (*start)(void*), void* argument,
                                      void* threadValue);

/** Returns the system's identifier of the calling thread, unique among running threads. */
GENUTIL_API unsigned long OSGetCurrentThreadID();

/** Waits until the thread has ended. Returns at once if it has. May be called repeatedly. */
GENUTIL_API void OSThreadTerminateWait(_osthread* thread);

/** Waits until the thread has ended, but no longer than a limit. Returns 1 if it has ended, 0 if
   the limit has passed or the wait failed. May be called repeatedly.
    @param thread the thread.
    @param limit milliseconds, at least 0; OSNoLimit for no limit.
    @param exitCode receives the result of the thread's function, or 0 after OSThreadExit(), if the
        thread has ended; null for none. */
GENUTIL_API unsigned char OSThreadWaitFor(_osthread* thread, std::uint32_t limit,
                                          unsigned int* exitCode = nullptr);

/** Ends the calling thread with exit code 0. Does not return. Its mutexes, and its locks for
   writing, are released, and its variables are freed. On Linux the stack is unwound: destructors
   run, and a catch (...) that does not rethrow ends the process. A function declared noexcept,
   which includes every destructor, must not be on the stack. On Windows nothing is unwound, so no
   destructor runs and memory owned by local objects is lost. A portable program therefore returns
   from the thread's function instead, or calls this function only where no local object needs
    destruction. */
GENUTIL_API void OSThreadExit();

/** Frees the record of a thread. A running thread continues. */
GENUTIL_API void OSThreadDestroy(_osthread* thread);

/* -- Mutexes ----------------------------------------------------------------------------------- */

/** Creates a free mutex. Returns null if allocation fails. If the system cannot create a mutex, the
    error is printed and every wait for the mutex fails. */
GENUTIL_API _osmutex* OSMutexCreate();

/** Waits without a time limit until the calling thread holds the mutex. A thread that already holds
    it continues at once and must release it once for each wait. */
GENUTIL_API void OSMutexWait(_osmutex* mutex);

/** Waits until the calling thread holds the mutex, but no longer than a limit. Returns 1 if the
   thread holds the mutex and must release it, 0 if the limit has passed or the wait failed. Always
    returns 1 in a process that is not threaded.
    @param mutex the mutex. For null, the result is 0.
    @param limit milliseconds; OSNoLimit for no limit. */
GENUTIL_API unsigned char OSMutexTryWait(_osmutex* mutex, std::uint32_t limit);

/** Undoes one wait of the calling thread. */
GENUTIL_API void OSMutexRelease(_osmutex* mutex);

/** Returns 1 if the calling thread is recorded as holding the mutex. Threads whose identifiers are
    equal modulo 211 share a record, so the result is also 1 while such a thread holds it. */
GENUTIL_API unsigned char OSMutexWaitIsPresentThisThread(_osmutex* mutex);

/** Releases every mutex that the calling thread holds, once for each wait. */
GENUTIL_API void OSMutexWaitRemoveThisThread();

/** Frees a mutex, which the calling thread may hold. */
GENUTIL_API void OSMutexDestroy(_osmutex* mutex);

/* -- Read-write locks --------------------------------------------------------------------------

   A lock admits any number of readers or one writer. Readers have priority: a writer waits until
   there are no readers, and new readers do not wait for it. An uninterrupted sequence of readers
   therefore blocks writers indefinitely. The writer may enter again, for writing and for reading. A
   reader that wants to write must release the lock first; otherwise it deadlocks. */

/** Creates a free lock. Returns null if allocation fails. */
GENUTIL_API _osrdwr* OSRWLockCreate();

/** Waits without a time limit while another thread writes, then enters for reading. */
GENUTIL_API void OSRWLockReadWait(_osrdwr* lock);

/** Enters for reading, but waits no longer than a limit. Returns 1 if the thread has entered and
   must release the lock, 0 if the limit has passed or the wait failed. Always returns 1 in a
   process that is not threaded.
    @param lock the lock. For null, the result is 0.
    @param limit milliseconds; OSNoLimit for no limit. */
GENUTIL_API unsigned char OSRWLockReadTryWait(_osrdwr* lock, std::uint32_t limit);

/** Undoes one OSRWLockReadWait. */
GENUTIL_API void OSRWLockReadRelease(_osrdwr* lock);

/** Waits without a time limit while another thread reads or writes, then enters for writing. */
GENUTIL_API void OSRWLockWriteWait(_osrdwr* lock);

/** Enters for writing, but waits no longer than a limit. Results and parameters are those of
    OSRWLockReadTryWait(). */
GENUTIL_API unsigned char OSRWLockWriteTryWait(_osrdwr* lock, std::uint32_t limit);

/** Undoes one OSRWLockWriteWait of the calling thread. */
GENUTIL_API void OSRWLockWriteRelease(_osrdwr* lock);

/** Frees a lock. */
GENUTIL_API void OSRWLockDestroy(_osrdwr* lock);

/* -- Conditions --------------------------------------------------------------------------------

   Protect the state of a condition with a mutex and test it in a loop. Use separate conditions for
   threads that wait for different states, because a signal wakes any one waiting thread.

       OSMutexWait(lock);
       while (queue.IsEmpty()) OSConditionWait(filled, lock);
       ...
       OSMutexRelease(lock); */

/** Creates a condition without waiting threads. Returns null if allocation fails. */
GENUTIL_API _oscondition* OSConditionCreate();

/** Releases the mutex once, waits without a time limit for a signal, and waits for the mutex again.
    A signal sent after the release is not missed.
    @param condition the condition.
    @param mutex a mutex that the calling thread holds exactly once. If it is held more often,
        it is not available to other threads during the wait. */
GENUTIL_API void OSConditionWait(_oscondition* condition, _osmutex* mutex);

/** Same as OSConditionWait(), but waits for a signal no longer than a limit. Then waits for the
   mutex again, without a limit. Returns 1 after a signal, 0 if the limit has passed without one or
   the wait failed. Returns 0 at once in a process that is not threaded.
    @param condition the condition.
    @param mutex a mutex that the calling thread holds exactly once.
    @param limit milliseconds; OSNoLimit for no limit. */
GENUTIL_API unsigned char OSConditionWaitFor(_oscondition* condition, _osmutex* mutex,
                                             std::uint32_t limit);

/** Wakes one waiting thread. Has no effect, now or later, if no thread is waiting. */
GENUTIL_API void OSConditionSignal(_oscondition* condition);

/** Wakes all threads that are waiting now. */
GENUTIL_API void OSConditionBroadcast(_oscondition* condition);

/** Frees a condition. */
GENUTIL_API void OSConditionDestroy(_oscondition* condition);

/* -- Named thread variables -------------------------------------------------------------------- */

/** A slot for a variable. */
struct CGNLclStSlot {
    char* m_name;  /**< owned by the table; null if the slot is free */
    void* m_value; /**< owned by the caller */
};

/** The variables of a thread in one memory block: the slots follow the count. A block for
    OSThreadCreate has m_count slots, filled with 0. */
struct CGNLclStTable {
    std::int32_t m_count;    /**< number of slots */
    CGNLclStSlot m_slots[1]; /**< the first slot */
};

/** The variables of the calling thread. Each thread sees its own table of fixed size. A process
    that is not threaded has one table, owned by the object. There is no locking, because threads do
    not access each other's tables.

        CGNLclSt* variables = CGNLclSt::Instance();
        variables->Init(4);                                // first, on every thread
        variables->SetLocalVariable("timezone", &zone);
        ... variables->GetLocalVariable("timezone") ...
        variables->UnsetLocalVariable("timezone");

    The table of a thread is freed when the thread ends. Values without a release function, and
    tables passed to OSThreadCreate, are not freed. */
class GENUTIL_API CGNLclSt {
  public:
    CGNLclSt(const CGNLclSt&) = delete;

    /** Frees the object's own table without the names, so texts returned by GetVarName() remain
        valid. The tables of threads are not owned by the object and are not freed. */
    ~CGNLclSt();

    /** Shares the table of other. */
    CGNLclSt& operator=(const CGNLclSt& other) = default;

    /** Returns the object of the process. The first call creates it. Returns null if allocation
        fails. Not synchronised; make the first call while the program starts. */
    static CGNLclSt* Instance();

    /** Destroys the object of the process. The next call of Instance() creates a new one. Not
        synchronised. */
    static void Free();

    /** Creates a table for the calling thread unless it has one. Returns 1 if the thread has a
        table, whatever its size.
        @param count number of slots; not negative. */
    unsigned char Init(long count);

    /** Adds a variable in the first free slot. Returns the slot. Returns -1 if the name exists, no
        slot is free or there is no table. The search for the name ends at the first free slot.
        After UnsetLocalVariable() a name can therefore occur twice; the first one counts.
        @param name the name; copied.
        @param value any pointer. */
    long SetLocalVariable(const char* name, void* value);

    /** Adds a variable, as above, whose value is released at the end: `release` is called with the
        value when the thread ends or the variable is removed. In a process that is not threaded, it
        is called when the object is destroyed. When the process ends, it may not be called. At the
        end of a thread it runs on that thread, which has no variables any more. Fails, without a
        call of `release`, if the variable cannot be added.
        @param name the name; copied.
        @param value any pointer.
        @param release the function; null for none. */
    long SetLocalVariable(const char* name, void* value, void (*release)(void* value));

    /** Does nothing. Always returns -1. */
    long ResetLocalVariable(long index, const char* name, void* value);

    /** Returns the value of the first variable with this name, or null if there is none. */
    void* GetLocalVariable(const char* name);
    /** Returns the value in a slot, or null if the slot is free or out of range. */
    void* GetLocalVariable(long index);
    /** Returns the value in a slot, as above. */
    void* GetLocalVariable(int index) { return GetLocalVariable(static_cast<long>(index)); }

    /** Returns the slot of the first variable with this name, or -1 if there is none. In a threaded
        process, returns 0 for a thread without a table, because existing programs expect a valid
        slot. */
    long GetIndex(const char* name);

    /** Returns the name in a slot, owned by the table, or null if the slot is free or out of
        range. */
    char* GetVarName(long index);

    /** Removes every variable with this name; null removes all variables. Write nullptr: compilers
        may treat NULL as slot 0. */
    void UnsetLocalVariable(const char* name);
    /** Removes the variable in a slot. Does nothing if the slot is free or out of range. */
    void UnsetLocalVariable(long index);
    /** Removes the variable in a slot, as above. */
    void UnsetLocalVariable(int index) { UnsetLocalVariable(static_cast<long>(index)); }

  private:
    CGNLclSt();
    friend struct genutil::VariableTable;

    std::int32_t m_count;
    CGNLclStSlot* m_slots;
    static CGNLclSt* m_pInstance;
};

/* -- Named mutexes ----------------------------------------------------------------------------- */

/** A named mutex that is in use. */
struct CGNNamedMutex {
    _osmutex* mutex;    /**< owned by the record */
    CGNString* name;    /**< owned by the record */
    unsigned char held; /**< 1 from a successful wait to the next release */
    std::int32_t users; /**< waits not yet released, including those in progress */
};

/** A pool of mutexes that exist while their names are in use. The first wait for a name creates its
    mutex and the last release destroys it. Names are compared byte by byte in a linear search, so a
    pool is intended for few names at a time.

        CGNNamedMutexPool* pool = CGNGlobalNamedMutexPool::GetInstance();
        pool->WaitNamedMutex("customer 4711");
        ...
        pool->ReleaseNamedMutex("customer 4711");

    A pool must not be in use by other threads while it is constructed or destroyed. */
class GENUTIL_API CGNNamedMutexPool {
  public:
    /** Constructs an empty pool. Call Init() before use. */
    CGNNamedMutexPool();
    CGNNamedMutexPool(const CGNNamedMutexPool&) = delete;
    CGNNamedMutexPool& operator=(const CGNNamedMutexPool&) = delete;
    /** Destroys the mutexes, which must not be in use. */
    virtual ~CGNNamedMutexPool();

    /** Creates the mutex that protects the pool. Returns 1 if it exists. */
    unsigned char Init();

    /** Waits without a time limit until the calling thread holds the mutex with this name. A thread
        may wait again while it holds the mutex. Other names are not blocked. Returns 0 at once if
        allocation of a new mutex fails. */
    unsigned char WaitNamedMutex(const CGNString& name);

    /** Same as above, but waits no longer than a limit. Returns 0 if the limit has passed.
        @param name the name.
        @param limit milliseconds; OSNoLimit for no limit. */
    unsigned char WaitNamedMutex(const CGNString& name, std::uint32_t limit);

    /** Undoes one wait for the name. Does nothing if the name is not in use. A call by a thread
        that does not hold the mutex is a failure, and the holder keeps the mutex. If no thread
        holds it, because its holder ended or released all its mutexes, the wait is undone
        nevertheless. */
    void ReleaseNamedMutex(const CGNString& name);

    /** Releases the mutex with this name if it is marked as held. The mark belongs to the name,
        whichever thread holds the mutex. The first of several releases by one thread clears it. */
    void RelIfWaitNamedMutex(const CGNString& name);

  private:
    void EndUse(CGNNamedMutex* used);

    CGNList m_entries;
    _osmutex* m_mutex;
};

/** The pool of the process. */
class GENUTIL_API CGNGlobalNamedMutexPool : public CGNNamedMutexPool {
  public:
    /** Returns the pool. The first call creates it. Returns null on failure. Not synchronised; make
        the first call while the program starts. */
    static CGNGlobalNamedMutexPool* GetInstance();

  private:
    static CGNGlobalNamedMutexPool* m_pInstance;
};

#endif
