/* libtavdgui: drawing surfaces, windows, dialogs and message boxes for systems
 * without Win32. The library draws on a tgui_surface where it draws on a
 * device context under Windows, and the operations have the meaning that GDI
 * gives them.
 *
 * Surfaces, and the pens, brushes and fonts that are selected into them, may be
 * used by any number of threads at once, each surface by one at a time; an
 * object may be selected into surfaces of several threads. Windows, dialogs,
 * message boxes and all that is of the screen belong to one thread.
 *
 * Handles may be null, or of something that was destroyed, wherever a function
 * takes one: the call then does nothing and answers 0 (rectangles, sizes and
 * places are set to 0).
 * Other pointers through which a function answers may be null as well. Narrow
 * texts are windows-1252, wide ones UTF-16.
 *
 * Arguments, where a function says nothing else:
 *   surface       what is drawn on
 *   window        a window, dialog or control
 *   dialog        window that holds the control
 *   owner         window over which a message is shown, or null
 *   module        who registers classes; null is the main one
 *   object        a pen, brush or font
 *   font          the font that is asked for
 *   style         pen style; style of a window as Win32 counts it
 *   colour        0x00BBGGRR
 *   stock         number of a stock object
 *   context       handed to the host's functions as it stands
 *   operations    the host's table
 *   id            control id; id of a saved state
 *   index         number of a system colour
 *   x, y          a place: logical units on a surface, device units of windows
 *                 and the screen
 *   device_x      receives device units
 *   device_y      receives device units
 *   width         device units; of a pen logical units
 *   height        device units
 *   left, top     upper left corner, logical units
 *   right, bottom  lower right corner, logical units
 *   xs, ys        a point on the ray at which an arc starts
 *   xe, ye        a point on the ray at which it ends
 *   align         TGUI_TA_ values
 *   mode          a TGUI_ mode
 *   text          the characters; terminated where no length is given
 *   length        number of characters
 *   rect          receives the rectangle
 *   state         receives the state
 *   info          receives the description
 *   name          name of a module or a class, terminated
 *   class_name    name of the class, terminated
 *   title         UTF-8, terminated
 *   caption       narrow, terminated, or null
 *   window_class  the class; receives it where one is asked for
 *   message       number of the message
 *   wparam        with the message
 *   lparam        with the message
 *   value         the new value
 *   result        what the dialog is to return
 *   procedure     the dialog's procedure
 *   dialog_template  the template
 *   callback      asked for a button, or null
 */
#ifndef TAVDGUI_H
#define TAVDGUI_H

#include <stddef.h>

#include "tavd/types.h"

TAVD_EXTERN_C_BEGIN

typedef struct tgui_surface tgui_surface; /* what is drawn on: a device context */
typedef struct tgui_window tgui_window;   /* a window, dialog or control */
typedef struct tgui_module tgui_module;   /* who registers window classes */
typedef struct tgui_object tgui_object;   /* a pen, brush or font */

/* ---- Drawing objects --------------------------------------------------- */

/* Kinds of drawing objects. */
enum { TGUI_PEN = 1, TGUI_BRUSH = 2, TGUI_FONT = 3 };

/* Pen styles. */
enum { TGUI_PEN_SOLID = 0, TGUI_PEN_DASH = 1, TGUI_PEN_DOT = 2, TGUI_PEN_DASHDOT = 3, TGUI_PEN_NULL = 5 };

/* Stock objects, never deleted. */
enum {
  TGUI_WHITE_BRUSH = 0,
  TGUI_LTGRAY_BRUSH = 1,
  TGUI_GRAY_BRUSH = 2,
  TGUI_DKGRAY_BRUSH = 3,
  TGUI_BLACK_BRUSH = 4,
  TGUI_NULL_BRUSH = 5,
  TGUI_WHITE_PEN = 6,
  TGUI_BLACK_PEN = 7,
  TGUI_NULL_PEN = 8,
  TGUI_ANSI_VAR_FONT = 12,
  TGUI_SYSTEM_FONT = 13
};

/* Text alignment: one horizontal and one vertical value, added. */
enum {
  TGUI_TA_LEFT = 0,
  TGUI_TA_RIGHT = 2,
  TGUI_TA_CENTER = 6,
  TGUI_TA_TOP = 0,
  TGUI_TA_BOTTOM = 8,
  TGUI_TA_BASELINE = 24
};

/* Background modes and map modes. */
enum { TGUI_TRANSPARENT = 1, TGUI_OPAQUE = 2 };
enum { TGUI_MM_TEXT = 1, TGUI_MM_ANISOTROPIC = 8 };

/* A font as it is asked for. */
typedef struct tgui_font {
  int32_t height;      /* negative: character height, logical units; positive:
                          cell height; 0: a default */
  int32_t width;       /* 0: follows the height */
  int32_t escapement;  /* angle of the text line, tenths of a degree,
                          counter-clockwise */
  int32_t orientation; /* carried, not used: characters follow the line */
  int32_t weight;      /* 400 normal, 700 bold */
  uint8_t italic;      /* 0 or 1 */
  uint8_t underline;   /* 0 or 1 */
  uint8_t strikeout;   /* 0 or 1 */
  uint8_t charset;     /* 0 or 1; carried, not used */
  char face[32];       /* name of the face, terminated */
} tgui_font;

/* What an object is. Only the fields of its kind are set, the rest is 0. */
typedef struct tgui_object_info {
  int32_t kind;    /* TGUI_PEN, TGUI_BRUSH or TGUI_FONT */
  int32_t stock;   /* stock number, -1 for an object that was created */
  int32_t style;   /* pen: style; brush: 0 solid, 1 null */
  int32_t width;   /* pen: width in logical units; drawn at least one device
                      pixel wide */
  uint32_t colour; /* pen and brush: 0x00BBGGRR */
  tgui_font font;  /* font */
} tgui_object_info;

/* Creating and deleting. The creator owns the object. Creating answers null if
 * the style is unknown, the font is null or memory ran out; a negative width
 * counts as its magnitude, and a face without a terminator is cut to 31
 * characters. Deleting a stock object does nothing and answers 1; deleting null
 * or a second time answers 0. An object that is still selected into a surface,
 * or in one of its saved states, stays usable there until another is selected;
 * it cannot be selected anew. */
TAVD_API tgui_object* tgui_create_pen(int32_t style, int32_t width, uint32_t colour);
TAVD_API tgui_object* tgui_create_brush(uint32_t colour);
TAVD_API tgui_object* tgui_create_font(const tgui_font* font);
TAVD_API tgui_object* tgui_stock_object(int32_t stock);
TAVD_API int32_t tgui_delete_object(tgui_object* object);

/* Describes an object; returns 0, or -1 for null and for one that is gone. A
 * deleted object is described as long as a surface uses it. */
TAVD_API int32_t tgui_get_object(const tgui_object* object, tgui_object_info* info);

/* Objects created and not yet deleted in this process, stock objects apart. */
TAVD_API int32_t tgui_object_count(void);

/* Makes the next `n` creations of pens, brushes and fonts fail, after `skip`
 * that succeed, as a system short of handles does. For tests. */
TAVD_API void tgui_fail_objects(int32_t skip, int32_t n);

/* ---- Surfaces ---------------------------------------------------------- */

/* The drawing state of a surface, as GDI keeps it in a device context. */
typedef struct tgui_state {
  const tgui_object* pen;   /* selected pen, never null */
  const tgui_object* brush; /* selected brush, never null */
  const tgui_object* font;  /* selected font, never null */
  uint32_t text_align;      /* TGUI_TA_ values */
  uint32_t text_colour;     /* 0x00BBGGRR */
  int32_t background_mode;  /* TGUI_TRANSPARENT or TGUI_OPAQUE */
  int32_t map_mode;         /* TGUI_MM_TEXT or TGUI_MM_ANISOTROPIC */
  int32_t window_org[2];    /* logical units, x and y */
  int32_t window_ext[2];    /* logical units, x and y */
  int32_t viewport_org[2];  /* device units, x and y */
  int32_t viewport_ext[2];  /* device units, x and y */
  int32_t position[2];      /* current position of lines, logical units, x and y */
} tgui_state;

/* What a surface does with what is drawn on it: a table that a host may supply
 * to draw anywhere. Each entry gets the context that came with the table and
 * the surface, whose state has already changed when the entry is called; all
 * coordinates are logical. An entry may be null: the operation then changes
 * the state and shows nothing. Angles of arcs run counter-clockwise.
 *
 * What is refused calls no entry: extents under TGUI_MM_TEXT or of 0, unknown
 * modes, saved states that are not there, texts without characters, deleted
 * objects. tgui_begin_paint and tgui_end_paint change the state as a whole and
 * call none either, so that a table reads the state when it draws
 * (tgui_surface_state) rather than keep one of its own. An entry may destroy
 * its surface. */
typedef struct tgui_operations {
  size_t size; /* sizeof(tgui_operations) */
  /* A pen, brush or font was selected. */
  void (*select)(void* context, tgui_surface* surface, const tgui_object* object);
  /* The state's text alignment, text colour or background mode has changed. */
  void (*text_align)(void* context, tgui_surface* surface, uint32_t align);
  void (*text_colour)(void* context, tgui_surface* surface, uint32_t colour);
  void (*background_mode)(void* context, tgui_surface* surface, int32_t mode);
  /* The position of lines has moved without drawing. */
  void (*move_to)(void* context, tgui_surface* surface, int32_t x, int32_t y);
  /* A line from the former position (x1, y1) to the new one (x2, y2). */
  void (*line_to)(void* context, tgui_surface* surface, int32_t x1, int32_t y1, int32_t x2, int32_t y2);
  /* An ellipse in the rectangle, filled with the brush. */
  void (*ellipse)(void* context, tgui_surface* surface, int32_t left, int32_t top, int32_t right,
                  int32_t bottom);
  /* The part of that ellipse from the ray to (xs, ys) to the ray to (xe, ye). */
  void (*arc)(void* context, tgui_surface* surface, int32_t left, int32_t top, int32_t right, int32_t bottom,
              int32_t xs, int32_t ys, int32_t xe, int32_t ye);
  /* `length` characters at the reference point; not terminated. */
  void (*text)(void* context, tgui_surface* surface, int32_t x, int32_t y, const char* text, int32_t length);
  void (*textw)(void* context, tgui_surface* surface, int32_t x, int32_t y, const tavd_wchar* text,
                int32_t length);
  /* The mapping has changed. */
  void (*map_mode)(void* context, tgui_surface* surface, int32_t mode);
  void (*window_org)(void* context, tgui_surface* surface, int32_t x, int32_t y);
  void (*window_ext)(void* context, tgui_surface* surface, int32_t x, int32_t y);
  void (*viewport_org)(void* context, tgui_surface* surface, int32_t x, int32_t y);
  void (*viewport_ext)(void* context, tgui_surface* surface, int32_t x, int32_t y);
  /* The state was saved under `id`, or the one of that id restored. */
  void (*save)(void* context, tgui_surface* surface, int32_t id);
  void (*restore)(void* context, tgui_surface* surface, int32_t id);
  /* The surface is being destroyed: the context may go. */
  void (*release)(void* context);
} tgui_operations;

/* A surface of `width` by `height` device units (1 to 32767) that draws
 * through a table of the host's, which is copied. Null if a size is outside its
 * range, memory ran out or `operations->size` is not that of this version; the
 * context then stays the host's. */
TAVD_API tgui_surface* tgui_surface_create(const tgui_operations* operations, void* context, int32_t width,
                                           int32_t height);
TAVD_API void tgui_surface_destroy(tgui_surface* surface);

/* The context given to tgui_surface_create, and the size in device units. */
TAVD_API void* tgui_surface_context(const tgui_surface* surface);
TAVD_API void tgui_surface_size(const tgui_surface* surface, int32_t* width, int32_t* height);

/* The state as it stands; returns 0, or -1 for null. */
TAVD_API int32_t tgui_surface_state(const tgui_surface* surface, tgui_state* state);

/* Logical to device units under the map mode, unrounded. Under TGUI_MM_TEXT
 * only the origins count. A window extent of 0 counts as 1. */
TAVD_API void tgui_to_device(const tgui_surface* surface, double x, double y, double* device_x,
                             double* device_y);

/* The operations. Results are those of GDI: the former object, alignment,
 * colour or mode; the id of the saved state (1 and up); 1 or 0. The former
 * object may be one that was deleted meanwhile: selecting it again is refused.
 *
 * Under TGUI_MM_TEXT all extents are 1 and setting them has no effect; going
 * back to that mode sets them to 1 and leaves the origins. An extent of 0 is
 * refused. Lines move the current position; figures and texts do not.
 * Restoring a state drops it and those saved after it; a negative id counts
 * back from the last save (-1 is the last). */
TAVD_API tgui_object* tgui_select(tgui_surface* surface, tgui_object* object);
TAVD_API uint32_t tgui_set_text_align(tgui_surface* surface, uint32_t align);
TAVD_API uint32_t tgui_set_text_colour(tgui_surface* surface, uint32_t colour);
TAVD_API int32_t tgui_set_background_mode(tgui_surface* surface, int32_t mode);
TAVD_API void tgui_move_to(tgui_surface* surface, int32_t x, int32_t y);
TAVD_API void tgui_line_to(tgui_surface* surface, int32_t x, int32_t y);
TAVD_API void tgui_ellipse(tgui_surface* surface, int32_t left, int32_t top, int32_t right, int32_t bottom);
TAVD_API void tgui_arc(tgui_surface* surface, int32_t left, int32_t top, int32_t right, int32_t bottom,
                       int32_t xs, int32_t ys, int32_t xe, int32_t ye);
TAVD_API void tgui_text(tgui_surface* surface, int32_t x, int32_t y, const char* text, int32_t length);
TAVD_API void tgui_textw(tgui_surface* surface, int32_t x, int32_t y, const tavd_wchar* text, int32_t length);
TAVD_API int32_t tgui_set_map_mode(tgui_surface* surface, int32_t mode);
TAVD_API void tgui_set_window_org(tgui_surface* surface, int32_t x, int32_t y);
TAVD_API void tgui_set_window_ext(tgui_surface* surface, int32_t x, int32_t y);
TAVD_API void tgui_set_viewport_org(tgui_surface* surface, int32_t x, int32_t y);
TAVD_API void tgui_set_viewport_ext(tgui_surface* surface, int32_t x, int32_t y);
TAVD_API int32_t tgui_save(tgui_surface* surface);
TAVD_API int32_t tgui_restore(tgui_surface* surface, int32_t id);

/* ---- Recording --------------------------------------------------------- */

/* A surface that keeps a readable list of what was drawn, one operation a
 * line, for tests and tools. docs/recording.md describes the form. */
TAVD_API tgui_surface* tgui_recording_create(int32_t width, int32_t height);

/* The list so far (UTF-8, each line ended by a line feed), valid until the
 * next operation on the surface; the number of its lines; emptying it.
 * Surfaces of another kind answer an empty text and 0. */
TAVD_API const char* tgui_recording_text(const tgui_surface* surface);
TAVD_API int32_t tgui_recording_count(const tgui_surface* surface);
TAVD_API void tgui_recording_clear(tgui_surface* surface);

/* ---- Windows ----------------------------------------------------------- */

/* Message numbers that the library and its windows use; the values are those
 * of Win32. */
enum {
  TGUI_WM_CREATE = 0x0001,
  TGUI_WM_DESTROY = 0x0002,
  TGUI_WM_SIZE = 0x0005,
  TGUI_WM_PAINT = 0x000F,
  TGUI_WM_SETFONT = 0x0030,
  TGUI_WM_NCACTIVATE = 0x0086,
  TGUI_WM_INITDIALOG = 0x0110,
  TGUI_WM_COMMAND = 0x0111,
  TGUI_LB_ADDSTRING = 0x0180,
  TGUI_LB_RESETCONTENT = 0x0184,
  TGUI_LB_SETCURSEL = 0x0186,
  TGUI_LB_GETCURSEL = 0x0188,
  TGUI_LB_GETTEXT = 0x0189,
  TGUI_LB_GETTEXTLEN = 0x018A,
  TGUI_LB_GETCOUNT = 0x018B,
  TGUI_CB_ADDSTRING = 0x0143,
  TGUI_CB_GETCOUNT = 0x0146,
  TGUI_CB_GETCURSEL = 0x0147,
  TGUI_CB_GETLBTEXT = 0x0148,
  TGUI_CB_GETLBTEXTLEN = 0x0149,
  TGUI_CB_RESETCONTENT = 0x014B,
  TGUI_CB_SETCURSEL = 0x014E
};

/* A rectangle in device units; right and bottom lie just outside. */
typedef struct tgui_rect {
  int32_t left;   /* included */
  int32_t top;    /* included */
  int32_t right;  /* not included */
  int32_t bottom; /* not included */
} tgui_rect;

/* A window or dialog procedure. */
typedef intptr_t (*tgui_procedure)(tgui_window* window, unsigned int message, uintptr_t wparam,
                                   intptr_t lparam);

/* A module: who registers classes. Hosts that have no need of several use the
 * one of tgui_main_module, which is never destroyed. The classes go with their
 * module; windows of them live on. */
TAVD_API tgui_module* tgui_main_module(void);
TAVD_API tgui_module* tgui_module_create(const char* name);
TAVD_API void tgui_module_destroy(tgui_module* module);

/* What a window class is. `size` may be 0x48 or 0x50; anything else is
 * refused. */
typedef struct tgui_class {
  uint32_t size;            /* 0x48 or 0x50 */
  uint32_t style;           /* class style as Win32 counts it; carried, not used */
  tgui_procedure procedure; /* of its windows */
  int32_t class_extra;      /* bytes kept with the class */
  int32_t window_extra;     /* bytes kept with each window, 0 to 256 */
  tgui_module* module;      /* who registers it */
  uint32_t cursor;          /* number of a stock cursor, 0x7F00 the arrow */
  uint32_t background;      /* system colour index plus 1 */
  const char* name;         /* up to 63 characters; compared without regard to
                               the case of ASCII letters */
} tgui_class;

/* Registers a class: a number above 0, or 0 if the record is bad or the module
 * has a class of that name. A null module is the main one, here and below. */
TAVD_API uint32_t tgui_register_class(const tgui_class* window_class);
/* Removes a class; returns 1, or 0 if there is none or a window of it lives. */
TAVD_API int32_t tgui_unregister_class(const char* name, tgui_module* module);
/* Describes a class; returns 1 or 0. The name stays the class's. */
TAVD_API int32_t tgui_get_class(const char* name, tgui_module* module, tgui_class* window_class);

/* Creates a window of a class, registered by `module` or, if that has none, by
 * any; sends WM_CREATE with both arguments 0. `parent` may be null. Null if the
 * class is unknown, the parent has 50 ancestors or is being destroyed,
 * or the procedure answers WM_CREATE with -1 (WM_DESTROY follows then). The
 * client area is the whole rectangle. A style with WS_CHILD (0x40000000) and
 * without WS_POPUP (0x80000000) places the window in its parent, any other on
 * the screen. */
TAVD_API tgui_window* tgui_create_window(const char* class_name, const char* title, uint32_t style, int32_t x,
                                         int32_t y, int32_t width, int32_t height, tgui_window* parent,
                                         int32_t id, tgui_module* module);
/* Sends WM_DESTROY, then destroys the children and the window. A procedure may
 * destroy any window, its own included, during any message. */
TAVD_API void tgui_destroy_window(tgui_window* window);
/* Windows alive, dialogs and controls included. */
TAVD_API int32_t tgui_window_count(void);

/* Sends a message to the window's procedure and returns its answer. */
TAVD_API intptr_t tgui_send_message(tgui_window* window, unsigned int message, uintptr_t wparam,
                                    intptr_t lparam);
/* What a window does with a message that its procedure leaves alone: WM_PAINT
 * unmarks the window, nothing else has an effect. Answers 0. */
TAVD_API intptr_t tgui_default_procedure(tgui_window* window, unsigned int message, uintptr_t wparam,
                                         intptr_t lparam);

/* The surface that the window paints on, owned by the host; null by default:
 * painting then shows nothing. */
TAVD_API void tgui_set_surface(tgui_window* window, tgui_surface* surface);
/* Puts the window's surface at hand in the state of a fresh one, saved states
 * included, inside a WM_PAINT, and unmarks the window; null if it has no
 * surface. tgui_end_paint brings back the state and the saved states that the
 * surface had before. A window that is destroyed ends its painting. */
TAVD_API tgui_surface* tgui_begin_paint(tgui_window* window);
TAVD_API void tgui_end_paint(tgui_window* window);

/* The client rectangle (from 0, 0), the place on the screen, moving and
 * resizing, the parent. Coordinates for moving count as for creating; a width
 * or height of 0 or less keeps what it was. A change of size marks the window
 * as to be painted and sends WM_SIZE with width and height, 16 bits each, in
 * lparam. */
TAVD_API void tgui_client_rect(const tgui_window* window, tgui_rect* rect);
TAVD_API void tgui_window_rect(const tgui_window* window, tgui_rect* rect);
TAVD_API void tgui_move_window(tgui_window* window, int32_t x, int32_t y, int32_t width, int32_t height);
TAVD_API tgui_window* tgui_parent(const tgui_window* window);
/* The window's title or text, in UTF-8; empty for null. Valid while the window
 * lives. */
TAVD_API const char* tgui_window_title(const tgui_window* window);
/* Marks the window as to be painted, as a new window is; whether it is marked.
 * Painting and tgui_default_procedure unmark. Nothing is painted until the host
 * sends WM_PAINT. */
TAVD_API void tgui_invalidate(tgui_window* window);
TAVD_API int32_t tgui_is_invalid(const tgui_window* window);

/* Extra bytes of a window, as one value at `offset`; 0 outside. The setter
 * returns the former value. */
TAVD_API intptr_t tgui_window_long(const tgui_window* window, int32_t offset);
TAVD_API intptr_t tgui_set_window_long(tgui_window* window, int32_t offset, intptr_t value);

/* The window with the focus; the setter returns the former one. */
TAVD_API tgui_window* tgui_focus(void);
TAVD_API tgui_window* tgui_set_focus(tgui_window* window);

/* The screen and the cursor, 1920 by 1080 and 0, 0 unless the host says
 * otherwise; system colours by index (0 outside 0 to 30). */
TAVD_API void tgui_set_screen(int32_t width, int32_t height);
TAVD_API void tgui_screen(int32_t* width, int32_t* height);
TAVD_API void tgui_set_cursor(int32_t x, int32_t y);
TAVD_API void tgui_cursor(int32_t* x, int32_t* y);
TAVD_API uint32_t tgui_system_colour(int32_t index);
/* Dialog base units in device units: 8 across and 16 down. */
TAVD_API void tgui_dialog_base_units(int32_t* x, int32_t* y);

/* ---- Dialogs and controls ---------------------------------------------- */

/* A dialog without content for controls of the host's, and list and combo
 * boxes in it (or in any window) by control id. Destroying the dialog destroys
 * its controls. The item of an id that several controls have is the first. */
TAVD_API tgui_window* tgui_create_dialog(const char* title);
TAVD_API tgui_window* tgui_create_list_box(tgui_window* dialog, int32_t id);
TAVD_API tgui_window* tgui_create_combo_box(tgui_window* dialog, int32_t id);
TAVD_API tgui_window* tgui_dialog_item(const tgui_window* dialog, int32_t id);

/* Sends a message to a control of a dialog, with narrow or wide texts behind
 * lparam (tgui_send_message: narrow ones). Unknown controls answer 0.
 *
 * Rows count from 0 and stand in the order of adding. ADDSTRING answers the
 * row, -1 for a null text, -2 if memory ran out; SETCURSEL the row, or -1 for a
 * row that is not there, which clears the selection; GETCURSEL the row or -1;
 * GETTEXT and GETLBTEXT the length without the terminator that they write, or
 * -1 without writing anything; the LEN messages that length or -1; GETCOUNT the
 * number of rows; RESETCONTENT 0, with nothing selected any more. A character
 * that windows-1252 lacks is "?" in narrow text. */
TAVD_API intptr_t tgui_send_item_message(tgui_window* dialog, int32_t id, unsigned int message,
                                         uintptr_t wparam, intptr_t lparam);
TAVD_API intptr_t tgui_send_item_messagew(tgui_window* dialog, int32_t id, unsigned int message,
                                          uintptr_t wparam, intptr_t lparam);

/* ---- Messages ---------------------------------------------------------- */

/* A message that the library shows. */
typedef struct tgui_message {
  tgui_window* owner;          /* may be null */
  const char* text;            /* narrow, may be null */
  const char* caption;         /* narrow, null or empty for none */
  uint32_t flags;              /* message box flags as Win32 counts them */
  int32_t button_count;        /* buttons from left to right */
  int32_t buttons[3];          /* their ids: 1 OK, 2 Cancel, 6 Yes, 7 No, ... */
  const void* dialog_template; /* of a dialog built in memory, else null */
  size_t template_size;        /* bytes, as far as the template reaches */
} tgui_message;

/* Answers a message with the id of a button. An answer that is none counts as
 * the default button. The message lives as long as the call. */
typedef int32_t (*tgui_message_callback)(const tgui_message* message, void* context);

/* Who answers messages. Without a callback nothing is shown and the answer is
 * the default button; no call ever blocks. */
TAVD_API void tgui_set_message_callback(tgui_message_callback callback, void* context);

/* Shows a message box; answers the id of the button, 0 if the low four bits of
 * `flags` name no set of buttons. */
TAVD_API int32_t tgui_message_box(tgui_window* owner, const char* text, const char* caption, uint32_t flags);

/* Runs a dialog from a template in memory: makes the dialog and its controls,
 * sends WM_INITDIALOG, asks the callback for a button and sends WM_COMMAND with
 * it, until the procedure has called tgui_end_dialog. Returns the dialog's
 * result, or -1 if the template is no good, the dialog was destroyed, or its
 * procedure has left 1000 answers alone.
 *
 * The template is a DLGTEMPLATE with its items (not the extended form), at most
 * 255 of them and 64 KiB. Its length is not given: it is read forward as far as
 * its own counts and terminators say, and the memory has to reach as far. Items
 * are the platform's six controls or windows of registered classes. The message
 * shows the first static text and the push buttons; the callback may answer
 * with any of them, or with Cancel (2). The default is the button marked as
 * default, else the first, else Cancel. tgui_end_dialog answers 1, or 0 for a
 * window that is no running dialog. */
TAVD_API intptr_t tgui_dialog_box(tgui_module* module, const void* dialog_template, tgui_window* owner,
                                  tgui_procedure procedure);
TAVD_API int32_t tgui_end_dialog(tgui_window* dialog, intptr_t result);

TAVD_EXTERN_C_END

#endif
