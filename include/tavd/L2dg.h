/* The throw length diagram: one air terminal in a chart of flow (x) and throw
 * length (y), with its throw line and its operating point.
 *
 * There is one throw length diagram per process, apart from the flow diagram
 * of tavd/tavdg.h; both may be in use at once. A host creates a child window
 * of the class "TAVDDGRL02", which L2dg_init registers and which paints
 * itself, or draws on a device context of its own:
 *
 *   L2dg_init(module, db, rec, 0, qv, 0, 0);    the product, built at once
 *   L2dg_create_drawing_tools();
 *   L2dg_draw_diagram(hdc);                     10000 by 10000 logical units
 *   L2dg_destroy_drawing_tools();
 *   L2dg_release();
 *
 * Where on a surface the drawing stands is the mapping's business. On a
 * rectangle of 600 by 450 device units whose upper left corner is 50, 20 (GDI has
 * functions of the same meaning; examples/surface.c is a whole program):
 *
 *   tgui_set_map_mode(hdc, TGUI_MM_ANISOTROPIC);
 *   tgui_set_window_ext(hdc, L2DG_EXTENT, L2DG_EXTENT);
 *   tgui_set_viewport_org(hdc, 50, 20);
 *   tgui_set_viewport_ext(hdc, 600, 450);
 *   tgui_set_background_mode(hdc, TGUI_TRANSPARENT);
 *
 * Between init and drawing stand the build (by L2dg_init itself, by
 * L2dg_initdiagramdata after an init without a product, or by
 * L2dg_update_from_list) and L2dg_create_drawing_tools; what the settings say of
 * the next build comes before it, L2dg_resize between build and tools. All else
 * may be left out. In a process without an init every call is harmless and
 * nothing is drawn; a second release does nothing.
 *
 * With a list box for the sizes of the product's family: L2dg_init with the
 * list's control id, L2dg_fillsizeLB, and L2dg_update_from_list whenever the
 * selection changes.
 *
 * Flows are l/s and throw lengths m, whatever unit the flow axis shows. Texts
 * are narrow, terminated, and cut where their field ends; a null text counts
 * as empty. No function shows a message. All functions belong to the thread of
 * the host's window.
 *
 * Arguments, where a function says nothing else:
 *   hmodule    module that the window class is registered for
 *   db         database handle
 *   text       narrow, terminated; null counts as empty
 *   name       name of a parameter; null counts as empty
 *   value      its value; null counts as empty
 *   n          halvings per span
 *   hdlg       dialog of the host that holds the control; null does nothing
 *   id         control id of the combo box
 *   hdc        device context to draw on; null draws nothing
 *   left, top  upper left corner, logical units
 *   right, bottom  lower right corner, logical units
 *   hwnd       window of the class
 *   msg        message, as are wparam and lparam, as the system hands it over
 *   wparam     with the message
 *   lparam     with the message
 */
#ifndef TAVD_L2DG_H
#define TAVD_L2DG_H

#include "tavd/types.h"

/* The window class that L2dg_init registers. */
#define L2DG_WINDOW_CLASS "TAVDDGRL02"

/* The parameter whose chosen value selects the throw line. */
#define L2DG_THROW_PARAMETER "G"

TAVD_EXTERN_C_BEGIN

/* From L2dg_init and L2dg_initdiagramdata: there is no diagram. */
enum { L2DG_NOT_BUILT = -1 };

/* Sizes of the drawing, logical units. */
enum {
  L2DG_EXTENT = 10000,      /* width and height unless L2dg_resize sets others */
  L2DG_SMALLEST_EXTENT = 50 /* width and height from which L2dg_resize follows */
};

/* Room of the texts, in characters with the terminator. Longer texts are cut. */
enum { L2DG_TITLE_CHARS = 80, L2DG_LABEL_CHARS = 50 };

/* Display units of the flow axis. */
enum {
  L2DG_FLOW_L_S = 0,    /* l/s */
  L2DG_FLOW_L_H = 1,    /* l/h */
  L2DG_FLOW_M3_S = 2,   /* m3/s */
  L2DG_FLOW_M3_H = 3,   /* m3/h */
  L2DG_FLOW_CFM = 4,    /* cubic feet a minute */
  L2DG_FLOW_M3_H_M = 5, /* m3/h for each metre of the terminal */
  L2DG_FLOW_L_S_M = 6   /* l/s for each metre */
};

/* ---- Setting up -------------------------------------------------------- */

/* Starts a diagram: clears all settings but the parameter choices, and
 * registers the window class for `hmodule`, which gets it only if it is the
 * first module in the process. What a former diagram held is released.
 *
 * db      database of the product
 * rec     the product; stays the host's and must live as long as
 *         L2dg_fillsizeLB is called. Null: none, to be given with
 *         L2dg_initdiagramdata
 * listid  control id of the list box of sizes; 0: none, the diagram is built
 *         here. Otherwise L2dg_update_from_list builds it
 * qv      flow of the operating point, l/s; outside the product's limits the
 *         point is not shown
 * L2      its throw length, m; the diagram calculates it anew as soon as it
 *         draws the line
 * xunit   display unit of the flow axis, one of L2DG_FLOW_; any other counts as
 *         0
 *
 * Returns 0, or L2DG_NOT_BUILT: the platform refuses the window class (reported
 * once, the next call goes on without it), and the diagram is left empty; or
 * the diagram was to be built and cannot be (see L2dg_initdiagramdata). */
TAVD_API int L2dg_init(tavd_hmodule hmodule, int16_t db, tavb_rec rec, int listid, float qv, float L2,
                       int16_t xunit);

/* The same without a product and with flows in l/s; a null module is replaced
 * by the one that an embedder stored, if any. There is no family to list. */
TAVD_API void L2dg_init_empty(tavd_hmodule hmodule, int16_t db);

/* Releases the chart and the family list. Harmless when there are none. */
TAVD_API void L2dg_release(void);

/* Title of the chart, at most 79 characters; empty: the product code. Shown
 * from the next build on. */
TAVD_API void L2dg_set_title(const char* text);

/* A text of at most 49 characters that is kept and not drawn. */
TAVD_API void L2dg_set_damperpos_label(const char* text);

/* Kept, cut to an even number, and not used: the line is straight. */
TAVD_API void L2dg_setcurveresolution(int n);

/* Remembers the choice of a parameter's value, at most 6 characters each; it
 * holds for every product loaded from then on, over L2dg_init too. Two choices
 * are kept: a third name replaces the second. The value of parameter "G" (or
 * "g") also selects the throw line of products that have one for each value,
 * from the next paint on. */
TAVD_API void L2dg_set_parameter(const char* name, const char* value);

/* Forgets both choices and the selected throw line. */
TAVD_API void L2dg_reset_parameters(void);

/* ---- Building ---------------------------------------------------------- */

/* Builds the diagram of a product: loads its flow data, applies the remembered
 * parameter choices and makes the chart, both axes logarithmic. The flow axis
 * spans the product's own limits; the throw axis spans whole metres (from 0.5
 * m at the lowest) around an estimate from the first and the last row of its
 * throw table. `rec` stays the host's and is not needed afterwards.
 *
 * Returns 0, or L2DG_NOT_BUILT: `rec` is null; the product has no throw table; it has no
 * flow data, its limits of flow or pressure do not rise or start at or below
 * 0; or memory ran out. Without flow data, usable limits or memory the window
 * stays blank until L2dg_update_from_list finds a product or the diagram is
 * started anew, also after a build that succeeds. */
TAVD_API int L2dg_initdiagramdata(tavb_rec rec);

/* Fills the list box given to L2dg_init, in dialog `hdlg`, with the product
 * codes of the family and selects the first. Without a product nothing
 * happens. */
TAVD_API void L2dg_fillsizeLB(tavd_hwnd hdlg);

/* Builds the diagram of the selected size. Without a selection, or if the size
 * is not in the database, the diagram stays as it was. */
TAVD_API void L2dg_update_from_list(tavd_hwnd hdlg);

/* Fills the combo box `id` of dialog `hdlg` with the values that select a
 * throw line, or, for a product with one line for all, with the values of its
 * first parameter that has a name; and forgets the remembered choices, so that
 * the line of the first rows is drawn, without a label. `spare` is not used.
 * Returns the number of rows. */
TAVD_API int L2dg_fill_parameter_combo(tavd_hwnd hdlg, int id, int spare);

/* Chooses the selected value. The next paint shows it; no build is needed. */
TAVD_API void L2dg_update_parameter_combo(tavd_hwnd hdlg, int id);

/* ---- Drawing ----------------------------------------------------------- */

/* Lays the diagram out in a rectangle of logical units, within 16 bits; without
 * a diagram nothing happens. The default is 0, 0 to 10000, 10000, and every
 * build lays out in that again.
 *
 * A rectangle of fewer than 50 units across or down, both ends counted, and one
 * whose right or bottom comes before its left or top, leave the layout as it
 * was. Pens, font and marks take their size from it all the same: pens and font
 * their least from one that is upside down, marks its width either way. They
 * keep it over builds. */
TAVD_API void L2dg_resize(int left, int top, int right, int bottom);
TAVD_API void L2dg_resize_default(void);

/* Makes and deletes the pens and the font that L2dg_draw_diagram needs. Their
 * sizes follow the height of the drawing. */
TAVD_API void L2dg_create_drawing_tools(void);
TAVD_API void L2dg_destroy_drawing_tools(void);

/* Draws the diagram, in logical units; the host sets the mapping. Nothing is
 * drawn before a build succeeded; after a failed one the former diagram is
 * gone. A parameter value that has no place in the throw table leaves the grid
 * without a line and without a mark. The diagram's font and pen and the text
 * alignment stay selected: a host saves its context before the call and
 * restores it before the tools are destroyed. */
TAVD_API void L2dg_draw_diagram(tavd_hdc hdc);

/* The procedure of the window class L2DG_WINDOW_CLASS: paints the diagram stretched
 * over the client area and leaves all else to the system, WM_PAINT without a
 * diagram included. Returns 0 for what it has painted, otherwise the answer of
 * the system's default procedure (DefWindowProc, tgui_default_procedure). */
TAVD_API intptr_t L2dg_diagram_proc(tavd_hwnd hwnd, unsigned int msg, uintptr_t wparam, intptr_t lparam);

TAVD_EXTERN_C_END

#endif
