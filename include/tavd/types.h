/* Basic types of the library's interface.
 *
 * All functions of the library have C linkage and the platform's default
 * calling convention; every record is plain data. Headers are valid C99 and
 * C++17 and may be included alone.
 */
#ifndef TAVD_TYPES_H
#define TAVD_TYPES_H

#include <stdbool.h>
#include <stdint.h>

#ifdef _WIN32
#include <wchar.h>
#elif !defined(__cplusplus)
#include <uchar.h>
#endif

#ifdef __cplusplus
#define TAVD_EXTERN_C_BEGIN extern "C" {
#define TAVD_EXTERN_C_END }
#else
#define TAVD_EXTERN_C_BEGIN
#define TAVD_EXTERN_C_END
#endif

/* Marks what a shared library exports. */
#ifdef _WIN32
#define TAVD_API
#else
#define TAVD_API __attribute__((visibility("default")))
#endif

/* One UTF-16 code unit: 16 bits on every platform. */
#ifdef _WIN32
typedef wchar_t tavd_wchar;
#else
typedef char16_t tavd_wchar;
#endif

/* Handles of the window system. On Windows they are HWND, HINSTANCE and HDC;
 * elsewhere they point to objects of libtavdgui (see tavdgui/tavdgui.h). The
 * library never looks inside them. */
#ifdef _WIN32
struct HWND__;
struct HINSTANCE__;
struct HDC__;
typedef struct HWND__* tavd_hwnd;
typedef struct HINSTANCE__* tavd_hmodule;
typedef struct HDC__* tavd_hdc;
#else
struct tgui_window;
struct tgui_module;
struct tgui_surface;
typedef struct tgui_window* tavd_hwnd;    /* window: HWND on Windows */
typedef struct tgui_module* tavd_hmodule; /* module: HINSTANCE on Windows */
typedef struct tgui_surface* tavd_hdc;    /* what is drawn on: HDC on Windows */
#endif

/* A record handle of the product-database service (tavd/tavb.h): a private
 * in-memory copy of one product record. Null means no record. The holder
 * gives it back with tavbreleaserec. */
typedef void* tavb_rec;

/* Shapes of a duct. */
enum { TAVD_DUCT_ROUND = 0, TAVD_DUCT_RECTANGULAR = 1 };

/* A duct size, 6 bytes. All zero means that no size is known. */
typedef struct DuctSize {
  int16_t shape; /* TAVD_DUCT_ROUND or TAVD_DUCT_RECTANGULAR */
  int16_t b;     /* diameter of a round duct, width of a rectangular one, mm */
  int16_t h;     /* height of a rectangular duct, mm; a round size that was
                    read from a database or a text holds its diameter here */
} DuctSize;

/* A growable array of fixed-size items, held by value. The library's family
 * lists and id sets keep their items in one; hosts read `count` and leave the
 * rest to the functions of the family that owns the array. */
typedef struct gwarray {
  void* data;       /* the items, one block; null while nothing was added */
  int32_t count;    /* number of items */
  int32_t itemsize; /* bytes per item */
} gwarray;

#endif
