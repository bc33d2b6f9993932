/* Threads and locks: threads, mutexes, read-write locks, conditions, variables of a thread by name,
   and mutexes by name.

   A process is not threaded until it says so. Until then locks are made and freed but do nothing,
   so that programs with one thread do not pay for them. A threaded program says so first of all,
   before it makes any lock: one that was made before has nothing behind it and must not be used.

       OSSetThreaded();
       _osmutex* lock = OSMutexCreate();
       _osthread* thread = OSThreadCreate(work, &job, nullptr);
       OSMutexWait(lock);
       ...                                // what both threads touch
       OSMutexRelease(lock);
       OSThreadTerminateWait(thread);
       OSThreadDestroy(thread);
       OSMutexDestroy(lock);

   What a thread holds is known: OSMutexWaitRemoveThisThread() releases all its mutexes, for a
   thread that ends or recovers from an error with no other record of them. A mutex whose holder
   ended without that, and a lock whose writer did, go to the next thread that waits.

   Records are owned by the caller, from the function that creates one to the one that destroys it;
   nobody else may use it when it is destroyed. Functions that take one do nothing for a null.
   Everything may be called from any thread unless it says otherwise.

   Failures of the system are printed on standard output as "Error " and the system's error code in
   hexadecimal digits; a release of what the thread does not hold is one of them. Nothing throws.
   Results that answer yes or no are an unsigned char of 1 or 0. */
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

/* -- The mode of the process ------------------------------------------------------------------ */

/** @return whether the process is threaded. */
GENUTIL_API unsigned char OSIsThreaded();

/** Makes the process threaded, for good. */
GENUTIL_API void OSSetThreaded();

/* -- Threads; these work in either mode -------------------------------------------------------- */

/** Starts a thread.
    @param start what it does. @param argument handed to start.
    @param threadValue null, or the variables of the new thread (CGNLclStTable), which it has from
    its start on. The caller keeps owning them and releases them when the thread has ended. They are
    left out in a process that is not threaded.
    @return the thread; null when there is none, after the failure was printed. */
GENUTIL_API _osthread* OSThreadCreate(unsigned int (*start)(void*), void* argument,
                                      void* threadValue);

/** @return the system's number of the calling thread, which no other running thread has. */
GENUTIL_API unsigned long OSGetCurrentThreadID();

/** Waits until the thread has ended; at once when it has. Any number of times. */
GENUTIL_API void OSThreadTerminateWait(_osthread* thread);

/** Ends the calling thread with exit code 0. It does not return. */
GENUTIL_API void OSThreadExit();

/** Frees the record of a thread, which runs on if it has not ended. */
GENUTIL_API void OSThreadDestroy(_osthread* thread);

/* -- Mutexes ----------------------------------------------------------------------------------- */

/** @return a new mutex, free; null without memory. Where the system makes none, the failure is
    printed and every wait for the mutex fails. */
GENUTIL_API _osmutex* OSMutexCreate();

/** Waits without limit until the calling thread holds the mutex. A thread that holds it already
    goes on at once, and has to release it as often. */
GENUTIL_API void OSMutexWait(_osmutex* mutex);

/** Undoes one wait of the calling thread. */
GENUTIL_API void OSMutexRelease(_osmutex* mutex);

/** @return whether the calling thread is on record as holding the mutex. Threads whose numbers
    are equal modulo 211 share their records here: it is 1, too, while such a one holds it. */
GENUTIL_API unsigned char OSMutexWaitIsPresentThisThread(_osmutex* mutex);

/** Releases every mutex that the calling thread holds, as often as it waited for it. */
GENUTIL_API void OSMutexWaitRemoveThisThread();

/** Frees a mutex, which the calling thread may hold. */
GENUTIL_API void OSMutexDestroy(_osmutex* mutex);

/* -- Read-write locks --------------------------------------------------------------------------

   Any number of readers or one writer. Readers go before: a writer waits until there is none, and
   new ones do not wait for it, so readers without a gap keep it out for as long. The writer may
   enter again, for writing and for reading. A reader that wants to write releases first, or it
   waits for itself. */

/** @return a new lock, free; null without memory. */
GENUTIL_API _osrdwr* OSRWLockCreate();

/** Waits without limit while another thread writes, and enters for reading. */
GENUTIL_API void OSRWLockReadWait(_osrdwr* lock);

/** Undoes one OSRWLockReadWait. */
GENUTIL_API void OSRWLockReadRelease(_osrdwr* lock);

/** Waits without limit while another thread reads or writes, and enters for writing. */
GENUTIL_API void OSRWLockWriteWait(_osrdwr* lock);

/** Undoes one OSRWLockWriteWait of the calling thread. */
GENUTIL_API void OSRWLockWriteRelease(_osrdwr* lock);

/** Frees a lock. */
GENUTIL_API void OSRWLockDestroy(_osrdwr* lock);

/* -- Conditions --------------------------------------------------------------------------------

   What the condition is about belongs under a mutex, and the waiter looks at it in a loop. Threads
   that wait for different things wait on conditions of their own: a signal is for whoever waits.

       OSMutexWait(lock);
       while (queue.IsEmpty()) OSConditionWait(filled, lock);
       ...
       OSMutexRelease(lock); */

/** @return a new condition without waiters; null without memory. */
GENUTIL_API _oscondition* OSConditionCreate();

/** Releases the mutex once, waits without limit for a signal and waits for the mutex again. A
    signal that comes after the release is not missed.
    @param mutex held by the calling thread, once: held twice it stays with it meanwhile. */
GENUTIL_API void OSConditionWait(_oscondition* condition, _osmutex* mutex);

/** Lets one waiter go on. Without a waiter it does nothing, and is not remembered. */
GENUTIL_API void OSConditionSignal(_oscondition* condition);

/** Lets every thread go on that waits now. */
GENUTIL_API void OSConditionBroadcast(_oscondition* condition);

/** Frees a condition. */
GENUTIL_API void OSConditionDestroy(_oscondition* condition);

/* -- Variables of a thread by name ------------------------------------------------------------- */

/** A place for a variable. */
struct CGNLclStSlot {
    char* m_name;  /**< owned by the table; null where the place is free */
    void* m_value; /**< the caller's */
};

/** A thread's variables in one block: the slots follow each other behind their number. A block for
    OSThreadCreate has 0 in all its slots and room for m_count of them. */
struct CGNLclStTable {
    std::int32_t m_count;    /**< how many slots there are */
    CGNLclStSlot m_slots[1]; /**< the first of them */
};

/** The variables of the calling thread: a table of fixed size, in which each thread sees its own.
    In a process that is not threaded there is one table, the object's. Nothing is locked, because
    no thread reaches the table of another.

        CGNLclSt* variables = CGNLclSt::Instance();
        variables->Init(4);                                // each thread, first
        variables->SetLocalVariable("timezone", &zone);
        ... variables->GetLocalVariable("timezone") ...
        variables->UnsetLocalVariable("timezone");

    A thread's table ends with the thread; values and tables given to OSThreadCreate stay. */
class GENUTIL_API CGNLclSt {
  public:
    CGNLclSt(const CGNLclSt&) = delete;

    /** Frees the object's own table, but no names: a text that GetVarName gave stays. The tables of
        threads are not the object's and stay too. */
    ~CGNLclSt();

    /** Shares the other's table. */
    CGNLclSt& operator=(const CGNLclSt& other) = default;

    /** @return the object of the process, created by the first call; null without memory. Not
        synchronised: called first while the program starts. */
    static CGNLclSt* Instance();

    /** Destroys the object of the process; Instance() creates another. Not synchronised. */
    static void Free();

    /** Gives the calling thread a table, unless it has one. @param count slots, not negative.
        @return whether it has a table, of whatever size. */
    unsigned char Init(long count);

    /** Adds a variable in the first free slot. An existing one is not changed: the search from slot
        0 fails where it finds the name. It ends at the first free slot, so after an
        UnsetLocalVariable a name can stand twice; the first counts.
        @param name copied. @param value any pointer.
        @return the slot; -1 when the name is there, no slot is free or there is no table. */
    long SetLocalVariable(const char* name, void* value);

    /** Changes nothing. @return -1. */
    long ResetLocalVariable(long index, const char* name, void* value);

    /** @return the value of the first variable of that name; null without one. */
    void* GetLocalVariable(const char* name);
    /** @return the value in a slot; null when it is free or out of range. */
    void* GetLocalVariable(long index);

    /** @return the slot of the first variable of that name, else -1; but 0 for a thread without a
        table in a threaded process, where programs expect a place to look at. */
    long GetIndex(const char* name);

    /** @return the name in a slot, owned by the table; null when it is free or out of range. */
    char* GetVarName(long index);

    /** Removes every variable of that name; with null, every variable. */
    void UnsetLocalVariable(const char* name);
    /** Removes the variable in a slot, if there is one. */
    void UnsetLocalVariable(long index);

  private:
    CGNLclSt();
    static void CheckLayout();
    friend struct genutil::VariableTable;

    std::int32_t m_count;
    CGNLclStSlot* m_slots;
    static CGNLclSt* m_pInstance;
};

/* -- Mutexes by name --------------------------------------------------------------------------- */

/** A named mutex while somebody uses it. */
struct CGNNamedMutex {
    _osmutex* mutex;    /**< owned by the record */
    CGNString* name;    /**< owned by the record */
    unsigned char held; /**< 1 from a wait that succeeded to the next release */
    std::int32_t users; /**< waits that were not released yet, those that still last included */
};

/** Mutexes that exist while their name is in use: the first wait for a name makes one, the last
    release takes it away. Names are compared byte by byte, one after another, so a pool is meant
   for few names at a time.

        CGNNamedMutexPool* pool = CGNGlobalNamedMutexPool::GetInstance();
        pool->WaitNamedMutex("customer 4711");
        ...
        pool->ReleaseNamedMutex("customer 4711");

    A pool is made and destroyed by one thread while no other uses it. */
class GENUTIL_API CGNNamedMutexPool {
  public:
    /** An empty pool, to be initialised. */
    CGNNamedMutexPool();
    CGNNamedMutexPool(const CGNNamedMutexPool&) = delete;
    CGNNamedMutexPool& operator=(const CGNNamedMutexPool&) = delete;
    /** Destroys the mutexes, which nobody may use any more. */
    virtual ~CGNNamedMutexPool();

    /** Makes the mutex under which the pool works. @return whether there is one. */
    unsigned char Init();

    /** Waits without limit until the calling thread holds the mutex of that name, which a thread
        may do again while it holds it. Other names are not held up.
        @return 0, at once, without memory for a new mutex. */
    unsigned char WaitNamedMutex(const CGNString& name);

    /** Undoes one wait for the name; nothing happens for a name that is not in use. By a thread
        that does not hold the mutex it is a failure. The mutex then stays with its holder; where it
        has none, because that ended or released all it held, the wait is undone all the same. */
    void ReleaseNamedMutex(const CGNString& name);

    /** Releases the mutex of that name if it is marked as held. The mark is the name's, whichever
        thread holds it, and the first of several releases by one thread clears it. */
    void RelIfWaitNamedMutex(const CGNString& name);

  private:
    static void CheckLayout();

    CGNList m_entries;
    _osmutex* m_mutex;
};

/** The pool of the process. */
class GENUTIL_API CGNGlobalNamedMutexPool : public CGNNamedMutexPool {
  public:
    /** @return the pool, made by the first call; null if that fails. Not synchronised: called first
        while the program starts. */
    static CGNGlobalNamedMutexPool* GetInstance();

  private:
    static CGNGlobalNamedMutexPool* m_pInstance;
};

#endif
