/* The flow diagram: one product in a chart of flow (x) and pressure (y), with
 * its curves, sound levels, operating point and flow limits.
 *
 * There is one flow diagram per process. A host creates a child window of the
 * class "TAVDDGR", which tavdg_init registers and which paints itself, or
 * draws on a device context of its own:
 *
 *   tavdg_init(module, db, rec, 0, qv, dp);     the product, built at once
 *   tavdg_create_drawing_tools();
 *   tavdg_draw_diagram(hdc);                    10000 by 10000 logical units
 *   tavdg_destroy_drawing_tools();
 *   tavdg_release();
 *
 * Where on a surface the drawing stands is the mapping's business. On a
 * rectangle of 600 by 450 device units whose upper left corner is 50, 20 (GDI has
 * functions of the same meaning; examples/surface.c is a whole program):
 *
 *   tgui_set_map_mode(hdc, TGUI_MM_ANISOTROPIC);
 *   tgui_set_window_ext(hdc, TAVDG_EXTENT, TAVDG_EXTENT);
 *   tgui_set_viewport_org(hdc, 50, 20);
 *   tgui_set_viewport_ext(hdc, 600, 450);
 *   tgui_set_background_mode(hdc, TGUI_TRANSPARENT);
 *
 * Between init and drawing stand the build (by tavdg_init itself, by
 * tavdg_initdiagramdata after an init without a product, or by
 * tavdg_update_from_list) and tavdg_create_drawing_tools; what the settings say
 * of the next build comes before it, tavdg_resize between build and tools. All
 * else may be left out. In a process without an init every call is harmless and
 * nothing is drawn; a second release does nothing.
 *
 * With a list box for the sizes of the product's family: tavdg_init with the
 * list's control id, tavdg_fillsizeLB, and tavdg_update_from_list whenever
 * the selection changes.
 *
 * Flows are l/s, or air velocities in m/s for products measured by velocity;
 * pressures are Pa, whatever unit the axes show. Texts are narrow, terminated,
 * and cut where their field ends; a null text counts as empty. No function
 * shows a message. All functions belong to the thread of the host's window.
 *
 * Arguments, where a function says nothing else:
 *   hmodule       module that the window class is registered for
 *   db            database handle
 *   u             index of the unit
 *   qv, qv1, qv2  flow, l/s (m/s)
 *   dp            pressure, Pa
 *   text          narrow, terminated; null counts as empty
 *   name          name of a parameter; null counts as empty
 *   value         its value; null counts as empty
 *   n             halvings per span
 *   hdlg          dialog of the host that holds the control; null does nothing
 *   id            control id of the combo box
 *   hdc           device context to draw on; null draws nothing
 *   left, top     upper left corner, logical units
 *   right, bottom  lower right corner, logical units
 *   hwnd          window of the class
 *   msg           message, as are wparam and lparam, as the system hands it
 *                 over
 *   wparam        with the message
 *   lparam        with the message
 */
#ifndef TAVD_TAVDG_H
#define TAVD_TAVDG_H

#include "tavd/types.h"

/* The window class that tavdg_init registers. */
#define TAVDG_WINDOW_CLASS "TAVDDGR"

TAVD_EXTERN_C_BEGIN

/* The diagram is not built: the product is missing or has no usable limits, or
 * memory ran out. */
enum { TAVDG_NOT_BUILT = -1 };

/* Sizes of the drawing, logical units. */
enum {
  TAVDG_EXTENT = 10000,      /* width and height unless tavdg_resize sets others */
  TAVDG_SMALLEST_EXTENT = 50 /* width and height from which tavdg_resize follows */
};

/* Room of the texts, in characters with the terminator, and of the list of
 * them. Longer texts are cut. */
enum {
  TAVDG_TITLE_CHARS = 80,
  TAVDG_LABEL_CHARS = 150, /* LpA, damper position and a-labels */
  TAVDG_A_LABELS = 200     /* a-labels that are kept */
};

/* Display units of the flow axis. */
enum {
  TAVDG_FLOW_L_S = 0,  /* l/s */
  TAVDG_FLOW_L_H = 1,  /* l/h */
  TAVDG_FLOW_M3_S = 2, /* m3/s */
  TAVDG_FLOW_M3_H = 3, /* m3/h */
  TAVDG_FLOW_CFM = 4   /* cubic feet a minute */
};

/* Display units of the pressure axis. */
enum {
  TAVDG_PRESSURE_PA = 0,   /* Pa */
  TAVDG_PRESSURE_KPA = 1,  /* kPa */
  TAVDG_PRESSURE_WC = 2,   /* inches of water, titled "WC */
  TAVDG_PRESSURE_IN_WG = 3 /* the same titled in wg */
};

/* What the curves show. */
enum { TAVDG_DP_TOTAL = 0, TAVDG_DP_STATIC = 1 };

/* Halvings of a span of a smoothed curve unless tavdg_setcurveresolution sets
 * others. */
enum { TAVDG_RESOLUTION = 2 };

/* ---- Setting up -------------------------------------------------------- */

/* Starts a diagram: clears all settings but the parameter choices, and
 * registers the window class for `hmodule` (null: the module that an embedder
 * stored, if any). What a former diagram held is released.
 *
 * db      database of the product
 * rec     the product; stays the host's and must live as long as
 *         tavdg_fillsizeLB is called. Null: as tavdg_init_empty
 * listid  control id of the list box of sizes; 0: none, the diagram is built
 *         here. Otherwise tavdg_update_from_list builds it
 * qv, dp  operating point, l/s (m/s) and Pa; outside the axes it is not shown
 *
 * Returns 0, or TAVDG_NOT_BUILT if the diagram was to be built and could not be
 * (see tavdg_initdiagramdata). */
TAVD_API int tavdg_init(tavd_hmodule hmodule, int16_t db, tavb_rec rec, int listid, float qv, float dp);

/* The same without a product, to be given with tavdg_initdiagramdata. There is
 * no family to list. Returns 0. */
TAVD_API int tavdg_init_empty(tavd_hmodule hmodule, int16_t db);

/* Releases the chart and the family list. Harmless when there are none. */
TAVD_API void tavdg_release(void);

/* Replaces the database. */
TAVD_API void tavdg_set_tavb(int16_t db);

/* Display unit of the flow axis, one of TAVDG_FLOW_; other values are ignored.
 * Products measured by velocity show m/s in any case. The axis follows at the
 * next build; build before the next drawing, since curves and marks follow at
 * once. */
TAVD_API void tavdg_set_xunit(int u);

/* Display unit of the pressure axis, one of TAVDG_PRESSURE_; other values are
 * ignored. As with the flow axis, build before the next drawing. */
TAVD_API void tavdg_set_yunit(int u);

/* `t` TAVDG_DP_STATIC: the curves show static pressure; anything else: total
 * pressure. Static pressure is known for the classes ASD, AOD, CCB, AEX and
 * AED; the curves of other classes stay as they are. The title follows at the
 * next build. */
TAVD_API void tavdg_set_dptype(int t);

/* Title of the chart, at most 79 characters; empty: the product code. Shown
 * from the next build on, in databases with narrow texts. */
TAVD_API void tavdg_set_title(const char* text);

/* Text behind the first sound level mark, at most 149 characters. Counts from
 * the next drawing on, over builds, until the next tavdg_init; so do the
 * settings that follow, down to tavdg_setcurveresolution. */
TAVD_API void tavdg_set_LpA_label(const char* text);

/* Text before the first damper position, at most 149 characters. As in
 * tavdg_set_a_label, "%%" draws one percent sign. */
TAVD_API void tavdg_set_damperpos_label(const char* text);

/* Adds a text, at most 149 characters, for the damper line of position `value`
 * (to within 0.001), in place of its number; the last one added counts. At
 * most TAVDG_A_LABELS are kept, further ones are dropped. "%%" draws one percent sign, a
 * print conversion such as "%d" draws nothing, and any other "%" is drawn as
 * it stands. */
TAVD_API void tavdg_set_a_label(float value, const char* text);

/* Lowest and highest sound level line (`lpmin`, `lpmax`) and their distance
 * (`lpstep`), dB(A). Each value above 0 replaces what the diagram would choose;
 * others leave what is set. */
TAVD_API void tavdg_set_lpmin_lpmax_lpstep(float lpmin, float lpmax, float lpstep);

/* Operating point, l/s (m/s) and Pa, in place of the one given to tavdg_init. It
 * counts from the next drawing on, without a build. */
TAVD_API void tavdg_set_operation_point(float qv, float dp);

/* Flow limits to mark on the lower edge, l/s (m/s). Limits outside the
 * product's own are not shown; `qv1` of 0 or less shows neither. */
TAVD_API void tavdg_set_qvlimits(float qv1, float qv2);

/* How finely curves are smoothed: halvings per span, cut to an even number.
 * TAVDG_RESOLUTION unless set. */
TAVD_API void tavdg_setcurveresolution(int n);

/* Remembers the choice of a parameter's value, at most 6 characters each; it
 * holds for every product loaded from then on, over tavdg_init too. Two
 * choices are kept: a third name replaces the second. */
TAVD_API void tavdg_set_parameter(const char* name, const char* value);

/* Forgets both. */
TAVD_API void tavdg_reset_parameters(void);

/* ---- Building ---------------------------------------------------------- */

/* Builds the diagram of a product: loads its flow data, applies the remembered
 * parameter choices, takes the end reflection off its sound levels and makes
 * the chart over the product's own limits, both axes logarithmic (linear for a
 * fan). `rec` stays the host's and is not needed afterwards.
 *
 * Returns 0, or TAVDG_NOT_BUILT: `rec` is null, the product has no flow data,
 * its limits do not rise or start at or below 0 (below 0 for a fan), or memory
 * ran out. The window then stays blank. */
TAVD_API int tavdg_initdiagramdata(tavb_rec rec);

/* Fills the list box given to tavdg_init, in dialog `hdlg`, with the product
 * codes of the family and selects the first. Without a product nothing
 * happens. */
TAVD_API void tavdg_fillsizeLB(tavd_hwnd hdlg);

/* Builds the diagram of the selected size. Without a selection, or if the size
 * is not in the database, the diagram stays as it was. */
TAVD_API void tavdg_update_from_list(tavd_hwnd hdlg);

/* Fills the combo box `id` of dialog `hdlg` with the values of the product's
 * first parameter that has a name, and forgets the remembered choices.
 * Returns the number of rows. */
TAVD_API int tavdg_fill_parameter_combo(tavd_hwnd hdlg, int id);

/* Chooses the selected value for that parameter. The next paint shows it; no
 * build is needed. */
TAVD_API void tavdg_update_parameter_combo(tavd_hwnd hdlg, int id);

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
TAVD_API void tavdg_resize(int left, int top, int right, int bottom);
TAVD_API void tavdg_resize_default(void);

/* Makes and deletes the pens and the font that tavdg_draw_diagram needs. Their
 * sizes follow the height of the drawing. */
TAVD_API void tavdg_create_drawing_tools(void);
TAVD_API void tavdg_destroy_drawing_tools(void);

/* Draws the diagram, in logical units; the host sets the mapping. Nothing is
 * drawn before a build succeeded. What was selected is selected again
 * afterwards; the text alignment is not. */
TAVD_API void tavdg_draw_diagram(tavd_hdc hdc);

/* The procedure of the window class TAVDG_WINDOW_CLASS: paints the diagram stretched over
 * the client area and leaves all else to the system, WM_PAINT without a diagram
 * included. Returns 0 for what it has painted, otherwise the answer of the
 * system's default procedure (DefWindowProc, tgui_default_procedure). */
TAVD_API intptr_t tavdg_diagram_proc(tavd_hwnd hwnd, unsigned int msg, uintptr_t wparam, intptr_t lparam);

TAVD_EXTERN_C_END

#endif
