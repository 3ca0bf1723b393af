/* The three drawings of one product side by side in a picture: a host that has
 * no windows draws on a surface and says where on it each drawing stands.
 *
 *   surface DATABASE CLASS ID PICTURE.svg
 */
#include <stdio.h>
#include <tavd/tavb.h>
#include <tavd/tavd.h>
#include <tavd/tavdsrv.h>
#include <tavdgui/tavdcairo.h>
#include <tavdgui/tavdgui.h>

enum {
  HEIGHT = 450,
  DIAGRAM_WIDTH = 600,
  WIDTH = 2 * DIAGRAM_WIDTH + HEIGHT * TAVDSHAPEPIC_WIDTH / TAVDSHAPEPIC_HEIGHT
};

/* A drawing's units are put onto a rectangle of the surface: the window is
 * what is drawn in, the viewport where that comes to stand, in device units. */
static int place(tgui_surface* surface, int width, int height, int left, int device_width) {
  int saved = tgui_save(surface);
  tgui_set_map_mode(surface, TGUI_MM_ANISOTROPIC);
  tgui_set_window_ext(surface, width, height);
  tgui_set_viewport_org(surface, left, 0);
  tgui_set_viewport_ext(surface, device_width, HEIGHT);
  tgui_set_background_mode(surface, TGUI_TRANSPARENT);
  return saved;
}

static void draw_flow(tgui_surface* surface, int16_t db, tavb_rec product, int left) {
  const float qv = 60.0f, dp = 40.0f; /* operating point, l/s and Pa */
  int saved = place(surface, TAVDG_EXTENT, TAVDG_EXTENT, left, DIAGRAM_WIDTH);
  tavdg_init(tgui_main_module(), db, product, 0, qv, dp);
  tavdg_create_drawing_tools();
  tavdg_draw_diagram(surface);
  tavdg_destroy_drawing_tools();
  tavdg_release();
  tgui_restore(surface, saved);
}

static void draw_throw(tgui_surface* surface, int16_t db, tavb_rec product, int left) {
  const float qv = 60.0f; /* l/s */
  int saved = place(surface, L2DG_EXTENT, L2DG_EXTENT, left, DIAGRAM_WIDTH);
  L2dg_init(tgui_main_module(), db, product, 0, qv, 0.0f, 0);
  L2dg_create_drawing_tools();
  L2dg_draw_diagram(surface);
  L2dg_destroy_drawing_tools();
  L2dg_release();
  tgui_restore(surface, saved);
}

static void draw_picture(tgui_surface* surface, int16_t db, tavb_rec product, int left) {
  int saved = place(surface, TAVDSHAPEPIC_WIDTH, TAVDSHAPEPIC_HEIGHT, left, WIDTH - left);
  tavdshapepic_init(tgui_main_module(), db, product, 0);
  tavdshapepic_create_drawing_tools();
  tavdshapepic_draw(surface);
  tavdshapepic_destroy_drawing_tools();
  tavdshapepic_release();
  tgui_restore(surface, saved);
}

int main(int argc, char** argv) {
  char reason[200] = "no picture of that name can be made";
  tavdcore_init(0, "", ""); /* language, market area, vlk file: none */
  int16_t db = argc == 5 ? tavbopendatabase(NULL, argv[1], 0) : TAVB_NO_DATABASE;
  if (argc == 5 && db < 0) fprintf(stderr, "surface: %s\n", tavdsrv_lasterror());
  tavb_rec product = db < 0 ? NULL : tavbfindrec(db, argv[2], argv[3], TAVB_FIND_EXACT);
  if (product == NULL) {
    fprintf(stderr, "usage: surface DATABASE CLASS ID PICTURE.svg, of an air terminal\n");
    return 1;
  }
  tgui_surface* surface = tgui_cairo_svg(argv[4], WIDTH, HEIGHT);
  draw_flow(surface, db, product, 0);
  draw_throw(surface, db, product, DIAGRAM_WIDTH);
  draw_picture(surface, db, product, 2 * DIAGRAM_WIDTH);
  tavbreleaserec(product);
  tavdsrv_closedatabase(db);
  if (surface == NULL || tgui_cairo_finish(surface, reason, sizeof reason) != 0) {
    fprintf(stderr, "surface: %s: %s\n", argv[4], reason);
    return 1;
  }
  return 0;
}
