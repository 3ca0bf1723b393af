/* The shape picture: a product's title and a dimensioned sketch of it, chosen
 * by the shape number in its attribute 1110, with its own measures in mm.
 *
 * There is one picture per process. A host creates a child window of the class
 * "TAVDSHAPE", which tavdshapepic_init registers and which paints itself, or
 * draws on a device context of its own:
 *
 *   tavdshapepic_init(module, db, rec, 0);     the product, read at once
 *   tavdshapepic_create_drawing_tools();
 *   tavdshapepic_draw(hdc);                    500 by 840 units
 *   tavdshapepic_destroy_drawing_tools();
 *   tavdshapepic_release();
 *
 * Where on a surface the drawing stands is the mapping's business. On a
 * rectangle of 250 by 420 device units whose upper left corner is 50, 20 (GDI has
 * functions of the same meaning; examples/surface.c is a whole program):
 *
 *   tgui_set_map_mode(hdc, TGUI_MM_ANISOTROPIC);
 *   tgui_set_window_ext(hdc, TAVDSHAPEPIC_WIDTH, TAVDSHAPEPIC_HEIGHT);
 *   tgui_set_viewport_org(hdc, 50, 20);
 *   tgui_set_viewport_ext(hdc, 250, 420);
 *   tgui_set_background_mode(hdc, TGUI_TRANSPARENT);
 *
 * Between init and drawing stand the reading of the product (by
 * tavdshapepic_init itself, by tavdshapepic_initdata after an init without a
 * product, or by tavdshapepic_update_from_list) and
 * tavdshapepic_create_drawing_tools, with tavdshapepic_resize before it. All
 * else may be left out. In a process without an init every call is harmless and
 * nothing is drawn; a second release does nothing.
 *
 * With a list box for the sizes of the product's family: tavdshapepic_init
 * with the list's control id, tavdshapepic_fillsizeLB, and
 * tavdshapepic_update_from_list whenever the selection changes.
 *
 * docs/shapes.md shows the shapes and what their values mean. A measure that
 * the product does not have is drawn as "##". Texts are narrow, terminated,
 * and cut where their field ends; a null text counts as empty. No function
 * shows a message. All functions belong to the thread of the host's window.
 *
 * Arguments, where a function says nothing else:
 *   hmodule    module that the window class is registered for
 *   db         database handle
 *   text       narrow, terminated; null counts as empty
 *   hdlg       dialog of the host that holds the control; null does nothing
 *   hdc        device context to draw on; null draws nothing
 *   hwnd       window of the class
 *   msg        message, as are wparam and lparam, as the system hands it over
 *   wparam     with the message
 *   lparam     with the message
 *   left, top  upper left corner, device units
 *   right, bottom  lower right corner, device units
 */
#ifndef TAVD_TAVDSHAPEPIC_H
#define TAVD_TAVDSHAPEPIC_H

#include "tavd/types.h"

/* The window class that tavdshapepic_init registers. */
#define TAVDSHAPEPIC_WINDOW_CLASS "TAVDSHAPE"

TAVD_EXTERN_C_BEGIN

/* Sizes of the default picture, device units, and room of its title. */
enum {
  TAVDSHAPEPIC_WIDTH = 500,
  TAVDSHAPEPIC_HEIGHT = 840,
  TAVDSHAPEPIC_TITLE_BAND = 40, /* at the top of that height */
  TAVDSHAPEPIC_TITLE_CHARS = 80 /* characters with the terminator */
};

/* ---- Setting up -------------------------------------------------------- */

/* Starts a picture: clears all settings and, the first time in the process,
 * registers the window class for `hmodule`. What a former picture held is
 * released. The picture has its default rectangle.
 *
 * db      database of the product
 * rec     the product; stays the host's and must live as long as
 *         tavdshapepic_fillsizeLB is called. Null: none yet, to be given with
 *         tavdshapepic_initdata
 * listid  control id of the list box of sizes; 0: none, the product's data are
 *         read here. Otherwise tavdshapepic_update_from_list reads them */
TAVD_API void tavdshapepic_init(tavd_hmodule hmodule, int16_t db, tavb_rec rec, int listid);

/* Releases the family list. Harmless when there is none. */
TAVD_API void tavdshapepic_release(void);

/* Title of the picture, at most 79 characters; empty: the product code. Shown
 * from the next reading of data on, until the next tavdshapepic_init. */
TAVD_API void tavdshapepic_set_title(const char* text);

/* Reads title, shape (1110) and flow data header (1650, for the size of the
 * connection) of a product. `rec` stays the host's and is not needed
 * afterwards. A product without a shape shows its title only; null shows not
 * even that, unless one was set. */
TAVD_API void tavdshapepic_initdata(tavb_rec rec);

/* Fills the list box given to tavdshapepic_init, in dialog `hdlg`, with the
 * product codes of the family and selects the first. Without a product nothing
 * happens. */
TAVD_API void tavdshapepic_fillsizeLB(tavd_hwnd hdlg);

/* Reads the data of the selected size. Without a selection the picture stays
 * as it was; if the size is not in the database, the title alone changes. */
TAVD_API void tavdshapepic_update_from_list(tavd_hwnd hdlg);

/* ---- Drawing ----------------------------------------------------------- */

/* Lays the picture out in a rectangle of device units: a title band of a
 * twentieth of the height, and below it the plane of the sketches, 500 units
 * wide and 798 high. Every rectangle is taken: one without width or height draws
 * all on a line or at a point, one whose right or bottom comes before its left
 * or top mirrors the sketch. */
TAVD_API void tavdshapepic_resize(int left, int top, int right, int bottom);

/* The default: 0, 0 to 500, 840, with a title band of 40 and a device unit to
 * each unit of the sketches, 800 of them below the title. */
TAVD_API void tavdshapepic_resize_default(void);

/* Makes and deletes the four pens and two fonts that tavdshapepic_draw needs.
 * Their sizes follow the rectangle. */
TAVD_API void tavdshapepic_create_drawing_tools(void);
TAVD_API void tavdshapepic_destroy_drawing_tools(void);

/* Draws title and sketch, in the rectangle's units; the host sets the mapping
 * and the background mode. A product whose shape number has no sketch shows
 * its title only. Font and pen that were selected are selected again
 * afterwards; the text alignment is not. */
TAVD_API void tavdshapepic_draw(tavd_hdc hdc);

/* The procedure of the window class TAVDSHAPEPIC_WINDOW_CLASS: paints the default rectangle
 * as high as the client area, in its own proportions, in the middle, and leaves
 * all else to the system. Returns 0 for WM_PAINT, otherwise the answer of the
 * system's default procedure (DefWindowProc, tgui_default_procedure). */
TAVD_API intptr_t tavdshapepic_picproc(tavd_hwnd hwnd, unsigned int msg, uintptr_t wparam, intptr_t lparam);

TAVD_EXTERN_C_END

#endif
