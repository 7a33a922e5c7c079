/*
 * Base types shared by every public header. On Windows they are the system's
 * own; elsewhere (the portable core built natively for tests) layout-identical
 * stand-ins are declared here, so the same structures compile on both.
 */
#pragma once

#include <stddef.h>
#include <stdint.h>
#include <wchar.h>

#ifdef _WIN32
#include <windows.h>
#else
typedef uint32_t COLORREF;
typedef struct tagRGBQUAD {
  uint8_t rgbBlue;
  uint8_t rgbGreen;
  uint8_t rgbRed;
  uint8_t rgbReserved;
} RGBQUAD;
typedef struct tagPOINT {
  int32_t x;
  int32_t y;
} POINT;
typedef struct tagRECT {
  int32_t left;
  int32_t top;
  int32_t right;
  int32_t bottom;
} RECT;
#endif

#ifdef __cplusplus
#define QV_EXTERN_C extern "C"
#define QV_BEGIN_C extern "C" {
#define QV_END_C }
#else
#define QV_EXTERN_C
#define QV_BEGIN_C
#define QV_END_C
#endif

#if defined(__cplusplus) && __cplusplus >= 201103L
#define QV_STATIC_ASSERT(cond, msg) static_assert(cond, msg)
#else
#define QV_STATIC_ASSERT(cond, msg) _Static_assert(cond, msg)
#endif

QV_STATIC_ASSERT(sizeof(RGBQUAD) == 4, "RGBQUAD is four bytes");
QV_STATIC_ASSERT(sizeof(POINT) == 8, "POINT is two 32-bit integers");
QV_STATIC_ASSERT(sizeof(RECT) == 16, "RECT is four 32-bit integers");
