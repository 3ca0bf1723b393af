// One run of the viewer's check: what it says and shows, step by step. Every check is a line "ok: ..." or
// "FAILED: ...".
#pragma once

#include <windows.h>

#include <string>
#include <utility>
#include <vector>

#include "../../apps/viewer/window/resource.h"
#include "viewer_numbers.h"
#include "viewer_remote.h"

namespace drive {

inline constexpr int kDrawings = 3;
inline constexpr DWORD kPaintMs = 400;  // that painting takes at most

bool contains(const std::wstring& text, const std::wstring& part);

RECT rect_on_screen(HWND window);
RECT client_on_screen(HWND window);

class Run {
 public:
  Run(std::wstring program, std::wstring database, std::wstring variant, std::wstring no_database,
      std::wstring folder)
      : program_(std::move(program)),
        database_(std::move(database)),
        variant_(std::move(variant)),
        no_database_(std::move(no_database)),
        folder_(std::move(folder)) {}

  // Returns the number of failed checks.
  int all();

 private:
  void check(bool good, const std::wstring& what);
  void refuses(const std::wstring& path, const std::wstring& reason);
  void selects();
  void answers(const std::wstring& family, const std::wstring& code, const Question& question);
  void converts();
  void takes_back();
  void draws();
  void resizes();
  void drags();
  void drag_tree_edge(int distance);
  void keyboard();
  void copies();
  void saves();
  void opens();
  void classes();
  void answer_file_dialog(const std::wstring& path);
  void prints();
  void visits_all();
  void visit(HTREEITEM branch);
  void scales();
  void chooses_throw_line();
  void selects_products();
  void refuses_duties(HWND dialog);
  void lists_products(HWND dialog);
  void shows_products(HWND dialog);
  int row_of_class(HWND dialog, const std::wstring& class_id);
  std::vector<std::wstring> cells_of_row(HWND dialog, int row) const;
  bool is_shown(const std::wstring& id) const;
  void clicks_damper(HWND dialog);
  void enters_diffuser(HWND dialog);
  void clicks_louvre(HWND dialog);
  void keeps_to_the_keys(HWND dialog);
  void opens_often();
  void selects_from_another();
  HWND open_select_dialog();
  void ask(HWND dialog, const std::wstring (&numbers)[5]);
  void write_products(HWND dialog, const std::wstring& name);
  void closes();

  void open_branch(const std::wstring& class_id, const std::wstring& family);
  void check_layout(const std::wstring& where);
  std::wstring results() const { return text_of(viewer_->control(IDC_RESULTS)); }
  void shoot(const std::wstring& name, HWND front = nullptr) const;
  void write(const std::wstring& name, const std::wstring& text) const;
  static std::string read(const std::wstring& path);

  std::wstring program_, database_, variant_, no_database_, folder_;
  Viewer* viewer_ = nullptr;
  int failed_ = 0;
  int visited_ = 0;
};

}  // namespace drive
