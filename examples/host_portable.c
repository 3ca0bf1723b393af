/* The host's windows without Win32. Nothing is on a screen: a window is painted
 * when a picture of it is wanted. */
#include <stdio.h>
#include <tavdgui/tavdcairo.h>
#include <tavdgui/tavdgui.h>

#include "host.h"

enum { CHILD = 0x40000000 }; /* style of a window inside another */

static void (*chosen)(tavd_hwnd host);

tavd_hmodule host_module(void) {
  return tgui_main_module();
}

tavd_hwnd host_open(const char* title, int width, int height, int list, void (*on_choice)(tavd_hwnd host)) {
  tgui_window* host = tgui_create_dialog(title);
  (void)width, (void)height;
  chosen = on_choice;
  tgui_create_list_box(host, list);
  return host;
}

/* Classes of the library are never refused here. */
tavd_hwnd host_add(tavd_hwnd host, const char* class_name, host_procedure procedure, int x, int y, int width,
                   int height) {
  (void)procedure;
  return tgui_create_window(class_name, "", CHILD, x, y, width, height, host, 0, host_module());
}

void host_choose(tavd_hwnd host, int list, int row) {
  tgui_send_item_message(host, list, TGUI_LB_SETCURSEL, (uintptr_t)row, 0);
  chosen(host);
}

void host_repaint(tavd_hwnd window) {
  tgui_invalidate(window);
}

void host_run(tavd_hwnd host) {
  (void)host;
}

int host_save(tavd_hwnd window, const char* name) {
  char path[260], reason[200] = "no picture of that name can be made";
  tgui_rect client;
  tgui_client_rect(window, &client);
  snprintf(path, sizeof path, "%s.png", name);
  tgui_surface* surface = tgui_cairo_png(path, client.right, client.bottom);
  tgui_set_surface(window, surface);
  tgui_send_message(window, TGUI_WM_PAINT, 0, 0);
  tgui_set_surface(window, NULL);
  if (surface != NULL && tgui_cairo_finish(surface, reason, sizeof reason) == 0) return 0;
  fprintf(stderr, "host: %s: %s\n", path, reason);
  return -1;
}

void host_close(tavd_hwnd host) {
  tgui_destroy_window(host);
}
