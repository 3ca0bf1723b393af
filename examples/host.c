/* The three windows of the library in a host's own one: a list of the sizes of
 * a family, and for the size that is chosen its flow diagram, its throw length
 * diagram and its picture.
 *
 *   host [--once] DATABASE CLASS ID
 *
 * ID is the main record of a family. With --once the windows are painted,
 * saved as pictures and closed. The same program runs on Windows and without
 * it: what differs stands behind host.h. */
#include "host.h"

#include <stdio.h>
#include <string.h>
#include <tavd/tavb.h>
#include <tavd/tavd.h>

enum { SIZES = 101 }; /* control id of the list box, the host's to choose */

static tavd_hwnd flow, throw_length, picture;

/* A size was chosen: each window has its data built anew and is painted. */
static void show_size(tavd_hwnd host) {
  tavdg_update_from_list(host);
  L2dg_update_from_list(host);
  tavdshapepic_update_from_list(host);
  host_repaint(flow);
  host_repaint(throw_length);
  host_repaint(picture);
}

/* Makes the windows known to the system, with the family as their product. The
 * list box chooses the size, so that nothing is built yet. */
static void start(int16_t db, tavb_rec family) {
  const float qv = 60.0f, dp = 40.0f; /* operating point, l/s and Pa */
  tavdg_init(host_module(), db, family, SIZES, qv, dp);
  tavdg_set_damperpos_label("pos");
  tavdg_set_LpA_label("dB(A)");
  /* Where the system refuses the window class, the first call ends there. */
  if (L2dg_init(host_module(), db, family, SIZES, qv, 0.0f, 0) != 0) {
    L2dg_init(host_module(), db, family, SIZES, qv, 0.0f, 0);
  }
  tavdshapepic_init(host_module(), db, family, SIZES);
}

/* Puts the windows into the host's; 0 if one is missing. */
static int add_windows(tavd_hwnd host) {
  flow = host_add(host, "TAVDDGR", tavdg_diagram_proc, 140, 0, 480, 360);
  throw_length = host_add(host, "TAVDDGRL02", L2dg_diagram_proc, 630, 0, 480, 360);
  picture = host_add(host, "TAVDSHAPE", tavdshapepic_picproc, 1120, 0, 280, 480);
  return flow != NULL && throw_length != NULL && picture != NULL;
}

/* Each of the three keeps a family of its own, and all share the list box. */
static void fill_list(tavd_hwnd host) {
  tavdg_fillsizeLB(host);
  L2dg_fillsizeLB(host);
  tavdshapepic_fillsizeLB(host);
}

static int save_windows(void) {
  return host_save(flow, "flow") == 0 && host_save(throw_length, "throw") == 0 &&
         host_save(picture, "picture") == 0;
}

static void finish(tavb_rec family) {
  tavdshapepic_release();
  L2dg_release();
  tavdg_release();
  tavbreleaserec(family);
}

int main(int argc, char** argv) {
  int once = argc > 1 && strcmp(argv[1], "--once") == 0;
  char** product = argv + 1 + once;
  tavdcore_init(0, "", ""); /* language, market area, vlk file: none */
  int16_t db = argc == 4 + once ? tavdf_open_database(product[0], 0) : -1;
  tavb_rec family = db < 0 ? NULL : tavbfindrec(db, product[1], product[2], 0);
  if (family == NULL) {
    fprintf(stderr, "usage: host [--once] DATABASE CLASS ID, of the main record of a family\n");
    return 1;
  }
  tavd_hwnd host = host_open("Sizes of a family", 1400, 480, SIZES, show_size);
  start(db, family);
  int good = host != NULL && add_windows(host);
  if (good) {
    fill_list(host);
    host_choose(host, SIZES, 0);
    if (once) {
      good = save_windows();
    } else {
      host_run(host);
    }
  }
  host_close(host);
  finish(family);
  if (!good) fprintf(stderr, "host: a window or its picture could not be made\n");
  return good ? 0 : 1;
}
