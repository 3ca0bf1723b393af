/* libtavdcairo: surfaces of libtavdgui on Cairo and Pango. Pictures as PNG,
 * SVG and PDF, or on a cairo context of the host's own.
 *
 * Text is shaped by Pango and stays text in SVG and PDF. The same drawing
 * gives the same bytes: no dates, no random ids. Where on a picture a drawing
 * of the library stands, tavd/tavdg.h shows in five calls. Threads may draw at
 * once, each on pictures of its own. The memory for the pixels of up to one
 * picture a processor, of 4 MB at most, is kept for the next ones.
 *
 * Where memory runs out a surface is null, and a picture that lacks a part for
 * that reason is never written: completing it answers -1 and "out of memory",
 * measuring it finds nothing.
 *
 * Arguments, where a function says nothing else:
 *   surface      a surface of this library
 *   path         file to be written, in the system's encoding
 *   width        device units, 1 to 16384
 *   height       device units, 1 to 16384
 *   width_mm     width of the page, mm, 1 to 5000
 *   height_mm    height of the page, mm, 1 to 5000
 *   context      where to draw
 *   index        of a text, 0 for the first
 *   box          receives the box; all 0 where there is none
 *   title        UTF-8, terminated; null or empty for none
 *   description  UTF-8, terminated; null or empty for none
 *   reason       receives why it failed
 *   capacity     bytes that `reason` holds
 */
#ifndef TAVDCAIRO_H
#define TAVDCAIRO_H

#include "tavdgui/tavdgui.h"

TAVD_EXTERN_C_BEGIN

struct _cairo;

/* A picture of `width` by `height` pixels (1 to 16384) on white, to be written
 * to a PNG file by tgui_cairo_finish. Paths are in the system's encoding. */
TAVD_API tgui_surface* tgui_cairo_png(const char* path, int32_t width, int32_t height);

/* The same as SVG; a device unit is one user unit. */
TAVD_API tgui_surface* tgui_cairo_svg(const char* path, int32_t width, int32_t height);

/* A PDF of one page, width_mm by height_mm (1 to 5000), whose drawing plane is
 * `width` by `height` device units. */
TAVD_API tgui_surface* tgui_cairo_pdf(const char* path, int32_t width, int32_t height, double width_mm,
                                      double height_mm);

/* Draws on a context of the host's, which must outlive the surface. */
TAVD_API tgui_surface* tgui_cairo_context(struct _cairo* context, int32_t width, int32_t height);

/* ---- Measuring ---------------------------------------------------------- */

/* A rectangle between device units. */
typedef struct tgui_box {
  double left;   /* device units */
  double top;    /* device units */
  double right;  /* device units */
  double bottom; /* device units */
} tgui_box;

/* A surface that shows nothing and tells how far what is drawn on it reaches, so that a host can choose a
 * place, a scale or a margin at which nothing is cut: the same drawing covers the same on a picture of the
 * same mapping. It has no bytes: tgui_cairo_finish answers -1, tgui_surface_destroy ends it. */
TAVD_API tgui_surface* tgui_cairo_measure(int32_t width, int32_t height);

/* The box about all that was drawn so far, also outside of the surface: lines with their widths, figures, and
 * texts with their whole cells, from the highest accent to the lowest descender. Returns 0, or -1 if nothing
 * was drawn or the surface does not measure. */
TAVD_API int32_t tgui_cairo_extent(const tgui_surface* surface, tgui_box* box);

/* How many texts were drawn so far, and the box about the cell of one: for an inclined one with its sides
 * along the axes. Returns 0, or -1 if there is no such text. */
TAVD_API int32_t tgui_cairo_text_count(const tgui_surface* surface);
TAVD_API int32_t tgui_cairo_text_extent(const tgui_surface* surface, int32_t index, tgui_box* box);

/* ---- Words about the picture -------------------------------------------- */

/* What the picture shows, in UTF-8, for those who cannot see it and for lists of files: an SVG has the title
 * and the description as its <title> and <desc>, which screen readers read and viewers show, a PDF as the
 * title and the subject of its properties. The texts are copied; null or "" leaves one out, and a later call
 * replaces an earlier one. Other pictures have no place for them: nothing happens, nor with a surface that is
 * not of this library. */
TAVD_API void tgui_cairo_describe(tgui_surface* surface, const char* title, const char* description);

/* Names a pen that is about to draw: in an SVG what is drawn while that pen is selected, figures and texts,
 * stands in a group with this name as its <title>, and with an id made of it: its letters a to z and digits,
 * with "-" between words, such as "sound-level"; and "-2", "-3" and so on behind it where the group is
 * interrupted by others. `colour` is 0x00BBGGRR and `width` in logical units, as the pen was made. Two pens
 * of one look are told apart by order: the first of them that draws takes the name that was given first. What
 * other pens draw stands outside all groups. `name` is UTF-8 and copied; null or "" is no name, and then
 * nothing happens, nor with other pictures or a surface that is not of this library. */
TAVD_API void tgui_cairo_name_pen(tgui_surface* surface, uint32_t colour, int32_t width, const char* name);

/* ---- The end ------------------------------------------------------------- */

/* Completes the picture, writes the file and destroys the surface. A file that
 * cannot be written whole is not left behind, and what was there stays; one
 * that is replaced keeps its permissions, and a symbolic link stays one. A pipe
 * or another device is written straight into. Returns 0, or -1 and a reason in
 * `reason` (terminated, at most `capacity` bytes; may be null). */
TAVD_API int32_t tgui_cairo_finish(tgui_surface* surface, char* reason, size_t capacity);

/* Takes `length` bytes of a picture; returns 0 if it has. */
typedef int32_t (*tgui_cairo_writer)(void* context, const void* bytes, size_t length);

/* The same, but for the file: all bytes of it go to `write` in one call, and none if the picture cannot be
 * completed. A picture on a context of the host's has no bytes. -1 also if `write` is null or returns other
 * than 0. */
TAVD_API int32_t tgui_cairo_finish_into(tgui_surface* surface, tgui_cairo_writer write, void* context,
                                        char* reason, size_t capacity);

TAVD_EXTERN_C_END

#endif
