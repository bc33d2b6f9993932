/* Symbol visibility and linkage. GENUTIL_API marks an exported class or function. GENUTIL_C gives a
   function C linkage. */
#ifndef GENUTIL_EXPORT_H
#define GENUTIL_EXPORT_H

#if defined(_WIN32)
#if defined(GENUTIL_BUILDING)
#define GENUTIL_API __declspec(dllexport)
#elif defined(GENUTIL_STATIC)
#define GENUTIL_API
#else
#define GENUTIL_API __declspec(dllimport)
#endif
#else
#define GENUTIL_API __attribute__((visibility("default")))
#endif

/* Marks a function whose parameter number `text`, counted from 1, is a printf format. Its arguments
   begin at parameter number `first`. */
#if defined(__GNUC__)
#define GENUTIL_PRINTF(text, first) __attribute__((format(printf, text, first)))
#else
#define GENUTIL_PRINTF(text, first)
#endif

#if defined(__cplusplus)
#define GENUTIL_C extern "C"
#else
#define GENUTIL_C
#endif

#endif
