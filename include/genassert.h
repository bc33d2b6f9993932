/* The assertion service. It writes each failed condition to the process trace and reports it to the
   application's callback.

       CGNAssert::Instance()->SetNativeAssert(0);            // the service is off by default
       CGNAssert::Instance()->Init(AskTheUser, &window);     // called for each failed condition
       if (!CGNAssert::Instance()->cgnassert(size > 0, __FILE__, __LINE__)) return;

   The library reports its own allocation failures through this service and then continues.

   Failures are trace messages of the module "cgnassert" with the categories 0xFF01. They are
   written if the trace has an output and its enabled categories (CGNTrace::ResetMask) include all
   of these or lie within them: 0x0001, 0x0100 and 0xFF01 show failures; 0x0003 does not. */
#ifndef GENUTIL_GENASSERT_H
#define GENUTIL_GENASSERT_H

#include "genexport.h"

/** The assertion service of the process. cgnassert() may be called on any thread. Instance(),
    Free() and the setters are not synchronised; call them while the process starts. */
class GENUTIL_API CGNAssert {
  public:
    /** The application's response to a failed condition. Its result becomes the result of
        cgnassert(). */
    using Callback = unsigned char (*)(void* argument);

    /** Returns the instance. The first call creates it with native assertions on and no callback.
        Returns null if allocation fails. */
    static CGNAssert* Instance();
    /** Destroys the instance. The next call of Instance() creates a new one. */
    static void Free();

    /** Installs a callback. The native assertion flag is unchanged. Always returns 1.
        @param callback called for each failed condition; null removes the callback.
        @param argument passed to the callback. */
    unsigned char Init(Callback callback, void* argument);

    /** Sets the native assertion flag. While it is nonzero, cgnassert() does nothing and returns 0,
        because callers use their own assertions. */
    void SetNativeAssert(unsigned char on);

    /** Reports a failed condition to the process trace and to the callback. A callback that fails
        an assertion on the same thread is not called recursively. Returns 0 for every condition
        while native assertions are on. Otherwise returns 1 if the condition holds, the callback's
        result if it does not, and 0 if there is no callback.
        @param condition nonzero if the condition holds.
        @param file name of the source file.
        @param line line number in the file. */
    unsigned char cgnassert(unsigned char condition, const char* file, long line);

    /** Copies the flag, the callback and its argument. */
    CGNAssert& operator=(const CGNAssert& other) = default;
    /** Does nothing. The object owns no resources. */
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
