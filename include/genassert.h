/* Assertions: failed conditions are written to the trace of the process and handed to the
   application.

       CGNAssert::Instance()->SetNativeAssert(0);            // the service is off by default
       CGNAssert::Instance()->Init(AskTheUser, &window);     // what to do when one fails
       if (!CGNAssert::Instance()->cgnassert(size > 0, __FILE__, __LINE__)) return;

   The library reports its own failures of allocation here and goes on. */
#ifndef GENUTIL_GENASSERT_H
#define GENUTIL_GENASSERT_H

#include "genexport.h"

/** The assertion service of the process. Instance, Free and the setters are not synchronised: they
    belong to the start of the process; cgnassert may run on any thread. */
class GENUTIL_API CGNAssert {
  public:
    /** What an application does about a failure. @return the result of the cgnassert that failed.
     */
    using Callback = unsigned char (*)(void* argument);

    /** @return the instance, created at first with native assertions on and no callback; null when
        memory ran out for it. */
    static CGNAssert* Instance();
    /** Destroys the instance; the next Instance() creates another. */
    static void Free();

    /** Installs a callback. @param callback called for each failure; null for none.
        @param argument handed to it. @return 1. The native flag is not changed. */
    unsigned char Init(Callback callback, void* argument);

    /** While on is not 0, cgnassert says nothing and returns 0: callers assert by themselves. */
    void SetNativeAssert(unsigned char on);

    /** Reports a condition that does not hold to the trace of the process and to the callback. A
        callback that asserts again on its thread is not called again.
        @param condition what should hold. @param file name of the source file. @param line its
       line.
        @return with native assertions on 0, even for a condition that holds; else 1 when it holds,
        and the callback's result when it does not, 0 without a callback. */
    unsigned char cgnassert(unsigned char condition, const char* file, long line);

    /** Copies the flag, the callback and its argument. */
    CGNAssert& operator=(const CGNAssert& other) = default;
    /** Does nothing. */
    ~CGNAssert() = default;

  private:
    CGNAssert() = default;
    CGNAssert(const CGNAssert&) = default;

    static CGNAssert* m_pInstance;

    unsigned char m_nativeAssert = 1;
    Callback m_callback = nullptr;
    void* m_argument = nullptr;
};

#endif
