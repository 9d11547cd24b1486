/* The mark of an exported function or object; everything else in the library is hidden. */
#pragma once

/* Around the declarations of a header: they are C, for C++ too. */
#ifdef __cplusplus
#define PLATFORM_BEGIN_DECLS extern "C" {
#define PLATFORM_END_DECLS }
#else
#define PLATFORM_BEGIN_DECLS \
    _Pragma("GCC diagnostic push") _Pragma("GCC diagnostic ignored \"-Wstrict-prototypes\"")
#define PLATFORM_END_DECLS _Pragma("GCC diagnostic pop")
#endif

/*
 * The parameters of a function that ignores them all: a C program may pass any arguments, or none.
 * C++ cannot say so without giving the function another type; a C++ program passes what the
 * brackets say.
 */
#ifdef __cplusplus
#define PLATFORM_ANY(...) __VA_ARGS__
#elif __STDC_VERSION__ >= 202311L || \
    (__STDC_VERSION__ > 201710L && (__clang_major__ >= 15 || (!__clang__ && __GNUC__ >= 13)))
#define PLATFORM_ANY(...) ...
#else
#define PLATFORM_ANY(...)
#endif

/* What the library exports. */
#define PLATFORM_API __attribute__((visibility("default")))
