/* The dialog of a host without Win32: a list box of sizes, a combo box of
 * values, and the flow diagram and the throw length diagram of the product
 * that is chosen there. The windows paint themselves into picture files. */
#include <stdio.h>
#include <string.h>
#include <tavd/tavb.h>
#include <tavd/tavd.h>
#include <tavdgui/tavdcairo.h>
#include <tavdgui/tavdgui.h>

enum { SIZES = 101, VALUES = 102 }; /* control ids, the host's to choose */
enum { WIDTH = 600, HEIGHT = 450 }; /* pixels of a diagram */
enum { CHILD = 0x40000000 };        /* style of a window inside another */

static tgui_window* create_diagram(const char* class_name, tgui_window* dialog, int place) {
  return tgui_create_window(class_name, "", CHILD, place * WIDTH, 0, WIDTH, HEIGHT, dialog, 0,
                            tgui_main_module());
}

/* Has a window paint itself into NAME.svg or NAME.png: 0 if that worked. */
static int paint(tgui_window* window, const char* name) {
  char reason[200] = "no picture of that name can be made";
  const char* ending = strrchr(name, '.');
  int svg = ending != NULL && strcmp(ending, ".svg") == 0;
  tgui_surface* picture = (svg ? tgui_cairo_svg : tgui_cairo_png)(name, WIDTH, HEIGHT);
  tgui_set_surface(window, picture);
  tgui_send_message(window, TGUI_WM_PAINT, 0, 0);
  tgui_set_surface(window, NULL);
  if (picture == NULL || tgui_cairo_finish(picture, reason, sizeof reason) != 0) {
    fprintf(stderr, "windows: %s: %s\n", name, reason);
    return 1;
  }
  return 0;
}

/* What a user does with the mouse: a row is selected, and the host hears of it. */
static void pick_size(tgui_window* dialog, int row) {
  char text[100] = "";
  tgui_send_item_message(dialog, SIZES, TGUI_LB_SETCURSEL, (uintptr_t)row, 0);
  tgui_send_item_message(dialog, SIZES, TGUI_LB_GETTEXT, (uintptr_t)row, (intptr_t)text);
  printf("size %s\n", text);
  tavdg_update_from_list(dialog);
  L2dg_update_from_list(dialog);
}

static void pick_value(tgui_window* dialog, int row) {
  char text[100] = "";
  tgui_send_item_message(dialog, VALUES, TGUI_CB_SETCURSEL, (uintptr_t)row, 0);
  tgui_send_item_message(dialog, VALUES, TGUI_CB_GETLBTEXT, (uintptr_t)row, (intptr_t)text);
  printf("value %s\n", text);
  tavdg_update_parameter_combo(dialog, VALUES);
  L2dg_update_parameter_combo(dialog, VALUES);
}

int main(int argc, char** argv) {
  float qv = 60.0f, dp = 40.0f; /* operating point, l/s and Pa */
  int failed = 0;
  tavdcore_init(0, "", ""); /* language, market area, vlk file: none */
  int16_t db = argc > 3 ? tavdf_open_database(argv[1], 0) : -1;
  tavb_rec family = db < 0 ? NULL : tavbfindrec(db, argv[2], argv[3], 0);
  if (family == NULL) {
    fprintf(stderr, "usage: windows DATABASE CLASS ID, of the main record of a family\n");
    return 1;
  }

  tgui_window* dialog = tgui_create_dialog("Diagrams");
  tgui_create_list_box(dialog, SIZES);
  tgui_create_combo_box(dialog, VALUES);

  /* The window classes are registered here; the diagrams wait for the list. */
  tavdg_init(tgui_main_module(), db, family, SIZES, qv, dp);
  L2dg_init(tgui_main_module(), db, family, SIZES, qv, 0.0f, 0);
  tgui_window* flow = create_diagram("TAVDDGR", dialog, 0);
  tgui_window* throw_length = create_diagram("TAVDDGRL02", dialog, 1);

  tavdg_fillsizeLB(dialog); /* each diagram keeps a family of its own */
  L2dg_fillsizeLB(dialog);
  printf("%d sizes\n", (int)tgui_send_item_message(dialog, SIZES, TGUI_LB_GETCOUNT, 0, 0));
  pick_size(dialog, 0);
  failed += paint(flow, "flow-1.svg") + paint(throw_length, "throw-1.svg");

  /* Another size, and of its values another one. */
  pick_size(dialog, 1);
  printf("%d values\n", L2dg_fill_parameter_combo(dialog, VALUES, 0));
  pick_value(dialog, 1);
  failed += paint(flow, "flow-2.png") + paint(throw_length, "throw-2.svg");

  tgui_destroy_window(dialog); /* and with it all that stands in it */
  tavdg_release();
  L2dg_release();
  tavbreleaserec(family);
  return failed != 0;
}
