/* The mark of an exported function or object; everything else in the library is hidden. */
#pragma once

/* Around the declarations of a header: they are C, for C++ too. */
#ifdef __cplusplus
#define PLATFORM_BEGIN_DECLS extern "C" {
#define PLATFORM_END_DECLS }
#else
#define PLATFORM_BEGIN_DECLS
#define PLATFORM_END_DECLS
#endif

/* What the library exports. */
#define PLATFORM_API __attribute__((visibility("default")))
