/* What host.c needs of its system: host_win32.c has it through Win32,
 * host_portable.c through libtavdgui and libtavdcairo. */
#ifndef HOST_H
#define HOST_H

#include <tavd/types.h>

/* A window procedure. */
typedef intptr_t (*host_procedure)(tavd_hwnd window, unsigned int message, uintptr_t wparam, intptr_t lparam);

/* The program itself, which registers the window classes. */
tavd_hmodule host_module(void);

/* The host's own window, with an empty list box on its left that has the
 * control id `list`. `chosen` hears of each choice there. Null if there can be
 * none. */
tavd_hwnd host_open(const char* title, int width, int height, int list, void (*chosen)(tavd_hwnd host));

/* A window in it, of a class that the library has registered. Where the system
 * refused that class, the window gets a class of the host's own with the same
 * procedure, which the library exports for this. Null if there can be none. */
tavd_hwnd host_add(tavd_hwnd host, const char* class_name, host_procedure procedure, int x, int y, int width,
                   int height);

/* Chooses a row of the list box as a user does with the mouse. */
void host_choose(tavd_hwnd host, int list, int row);

/* What the window shows has changed. */
void host_repaint(tavd_hwnd window);

/* Serves the user until the host's window is closed. A system without a screen
 * has nothing to wait for. */
void host_run(tavd_hwnd host);

/* Saves what a window shows as a picture: NAME.bmp or NAME.png, whichever the
 * system makes. 0, or -1 if that fails. */
int host_save(tavd_hwnd window, const char* name);

/* Closes the host's window and all that stands in it. */
void host_close(tavd_hwnd host);

#endif
