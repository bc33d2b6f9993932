/* How the library's names cross its boundary: GENUTIL_API marks an exported
   class or function, GENUTIL_C gives a function C linkage. */
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

#if defined(__cplusplus)
#define GENUTIL_C extern "C"
#else
#define GENUTIL_C
#endif

#endif
