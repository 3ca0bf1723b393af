// The main window: its messages, its layout, its commands.
#pragma once

#include <windows.h>

#include <shellapi.h>

#include <memory>
#include <optional>
#include <string>

#include "drawing/metafile.h"
#include "window/display.h"
#include "window/layout.h"
#include "window/select_dialog.h"
#include "window/session.h"

namespace viewer {

class MainWindow {
 public:
  explicit MainWindow(HINSTANCE module) : module_(module) {}

  // False if the platform makes no window.
  bool create(int show);

  // Opens a database; failures are shown to the user.
  void open(const std::wstring& path);

  // Runs until the window is closed. Returns the process's exit code.
  int run();

 private:
  static LRESULT CALLBACK procedure(HWND hwnd, UINT message, WPARAM wparam, LPARAM lparam);
  LRESULT on_message(UINT message, WPARAM wparam, LPARAM lparam);
  void on_create();
  void on_destroy();
  void on_dpi(int dpi, const RECT& suggested);
  void on_activate(bool active);
  void on_drop(HDROP drop);
  LRESULT on_notify(const NMHDR& header);
  void set_minimum(MINMAXINFO& info) const;

  void arrange();
  Layout layout() const;
  std::optional<Splitter> splitter_under(LPARAM point) const;
  bool show_splitter_cursor() const;
  void drag_splitter(LPARAM point);

  // commands.cpp
  bool on_command(int id, int notification);
  bool on_control(int id, int notification);
  void choose_database();
  void reload();
  void show_path();
  void copy_picture(int which);
  void save_picture(int which);
  Metafile recorded_picture(int which) const;
  void print();
  void escape();
  void go_to_pane(int step);

  HINSTANCE module_;
  HWND hwnd_ = nullptr;
  int dpi_ = USER_DEFAULT_SCREEN_DPI;
  UiFont font_;
  Shares shares_;
  std::optional<Splitter> dragged_;
  HWND focus_ = nullptr;  // while another program is active
  std::unique_ptr<Session> session_;
  std::unique_ptr<SelectDialog> select_dialog_;
};

}  // namespace viewer
