/* The host's windows on Windows. */
#include <stdio.h>
#include <string.h>
#include <windows.h>

#include "host.h"

enum { LIST_WIDTH = 130 };

static void (*chosen)(tavd_hwnd host);

static LRESULT CALLBACK host_window(HWND window, UINT message, WPARAM wparam, LPARAM lparam) {
  if (message == WM_COMMAND && HIWORD(wparam) == LBN_SELCHANGE) {
    chosen(window);
    return 0;
  }
  if (message == WM_DESTROY) PostQuitMessage(0);
  return DefWindowProcA(window, message, wparam, lparam);
}

static int add_class(const char* name, WNDPROC procedure) {
  WNDCLASSEXA window_class;
  memset(&window_class, 0, sizeof window_class);
  window_class.cbSize = sizeof window_class;
  window_class.style = CS_HREDRAW | CS_VREDRAW;
  window_class.lpfnWndProc = procedure;
  window_class.hInstance = host_module();
  window_class.hCursor = LoadCursorA(NULL, (LPCSTR)IDC_ARROW);
  window_class.hbrBackground = (HBRUSH)(COLOR_WINDOW + 1);
  window_class.lpszClassName = name;
  return RegisterClassExA(&window_class) != 0;
}

tavd_hmodule host_module(void) {
  return GetModuleHandleA(NULL);
}

tavd_hwnd host_open(const char* title, int width, int height, int list, void (*on_choice)(tavd_hwnd host)) {
  const DWORD style = WS_CAPTION | WS_SYSMENU | WS_MINIMIZEBOX | WS_CLIPCHILDREN;
  RECT place = {0, 0, width, height}; /* of what is inside the frame */
  AdjustWindowRect(&place, style, FALSE);
  chosen = on_choice;
  add_class("Host", host_window);
  HWND host = CreateWindowExA(0, "Host", title, style, CW_USEDEFAULT, CW_USEDEFAULT, place.right - place.left,
                              place.bottom - place.top, NULL, NULL, host_module(), NULL);
  if (host == NULL) return NULL;
  CreateWindowExA(0, "LISTBOX", "", WS_CHILD | WS_VISIBLE | WS_VSCROLL | LBS_NOTIFY, 0, 0, LIST_WIDTH, height,
                  host, (HMENU)(INT_PTR)list, host_module(), NULL);
  ShowWindow(host, SW_SHOW);
  return host;
}

tavd_hwnd host_add(tavd_hwnd host, const char* class_name, host_procedure procedure, int x, int y, int width,
                   int height) {
  WNDCLASSEXA known;
  memset(&known, 0, sizeof known);
  known.cbSize = sizeof known;
  if (!GetClassInfoExA(host_module(), class_name, &known)) add_class(class_name, procedure);
  return CreateWindowExA(0, class_name, "", WS_CHILD | WS_VISIBLE, x, y, width, height, host, NULL,
                         host_module(), NULL);
}

/* A row that a program selects is told to nobody, so the message is sent here. */
void host_choose(tavd_hwnd host, int list, int row) {
  SendDlgItemMessageA(host, list, LB_SETCURSEL, (WPARAM)row, 0);
  SendMessageA(host, WM_COMMAND, (WPARAM)MAKELONG(list, LBN_SELCHANGE), (LPARAM)GetDlgItem(host, list));
}

void host_repaint(tavd_hwnd window) {
  InvalidateRect(window, NULL, TRUE);
}

void host_run(tavd_hwnd host) {
  MSG message;
  (void)host;
  while (GetMessageA(&message, NULL, 0, 0) > 0) {
    TranslateMessage(&message);
    DispatchMessageA(&message);
  }
}

/* Copies the pixels of a window, 32 bits each and the lowest row first, as BMP
 * files have them. */
static void* copy_pixels(HWND window, const BITMAPINFO* form) {
  void* pixels = NULL;
  HDC screen = GetDC(window);
  HDC copy = CreateCompatibleDC(screen);
  HBITMAP bitmap = CreateDIBSection(copy, form, DIB_RGB_COLORS, &pixels, NULL, 0);
  void* result = NULL;
  if (bitmap != NULL) {
    HGDIOBJ former = SelectObject(copy, bitmap);
    BitBlt(copy, 0, 0, form->bmiHeader.biWidth, form->bmiHeader.biHeight, screen, 0, 0, SRCCOPY);
    GdiFlush();
    result = HeapAlloc(GetProcessHeap(), 0, form->bmiHeader.biSizeImage);
    if (result != NULL) memcpy(result, pixels, form->bmiHeader.biSizeImage);
    SelectObject(copy, former);
    DeleteObject(bitmap);
  }
  DeleteDC(copy);
  ReleaseDC(window, screen);
  return result;
}

int host_save(tavd_hwnd window, const char* name) {
  RECT client;
  char path[MAX_PATH];
  BITMAPINFO form;
  BITMAPFILEHEADER header;
  UpdateWindow(window); /* paints what still waits to be painted */
  GetClientRect(window, &client);
  memset(&form, 0, sizeof form);
  form.bmiHeader.biSize = sizeof form.bmiHeader;
  form.bmiHeader.biWidth = client.right;
  form.bmiHeader.biHeight = client.bottom;
  form.bmiHeader.biPlanes = 1;
  form.bmiHeader.biBitCount = 32;
  form.bmiHeader.biSizeImage = (DWORD)(client.right * client.bottom * 4);
  memset(&header, 0, sizeof header);
  header.bfType = 0x4D42; /* "BM" */
  header.bfOffBits = sizeof header + sizeof form.bmiHeader;
  header.bfSize = header.bfOffBits + form.bmiHeader.biSizeImage;

  void* pixels = copy_pixels(window, &form);
  if (pixels == NULL) return -1;
  snprintf(path, sizeof path, "%s.bmp", name);
  FILE* file = fopen(path, "wb");
  int good = file != NULL && fwrite(&header, sizeof header, 1, file) == 1 &&
             fwrite(&form.bmiHeader, sizeof form.bmiHeader, 1, file) == 1 &&
             fwrite(pixels, form.bmiHeader.biSizeImage, 1, file) == 1;
  if (file != NULL) good = fclose(file) == 0 && good;
  HeapFree(GetProcessHeap(), 0, pixels);
  return good ? 0 : -1;
}

void host_close(tavd_hwnd host) {
  if (IsWindow(host)) DestroyWindow(host); /* a user may have closed it */
}
