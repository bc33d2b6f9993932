/* Symbol visibility and linkage, and the type of list items and handles. GENUTIL_API marks an
   exported class or function. GENUTIL_C gives a function C linkage. */
#ifndef GENUTIL_EXPORT_H
#define GENUTIL_EXPORT_H

#if defined(__cplusplus) && __cplusplus < 201703L && !(defined(_MSVC_LANG) && _MSVC_LANG >= 201703L)
#error "genutil needs C++17 or later: compile with -std=c++17"
#endif

/* A list item or a handle: a number that can hold a pointer. It is a long on every target except
   64-bit Windows, where a long has 32 bits. */
#if defined(_WIN64)
typedef long long GNItem;
#else
typedef long GNItem;
#endif

#if defined(_WIN32)
#if defined(GENUTIL_STATIC)
#define GENUTIL_API
#elif defined(GENUTIL_BUILDING)
#define GENUTIL_API __declspec(dllexport)
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
