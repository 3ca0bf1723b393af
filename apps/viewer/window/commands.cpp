// What the menu, the keys and the controls have the main window do.
#include "drawing/printing.h"
#include "window/controls.h"
#include "window/dialogs.h"
#include "window/main_window.h"
#include "window/resource.h"

namespace viewer {
namespace {

// Where F6 goes.
constexpr int kPanes[] = {IDC_PRODUCTS, IDC_SIZES, IDC_FLOW, IDC_RESULTS};
constexpr int kPaneCount = 4;

// Place of the whole page behind the drawings.
constexpr int kPage = kDrawingCount;
static_assert(IDM_COPY_PAGE - IDM_COPY_FIRST == kPage && IDM_SAVE_PAGE - IDM_SAVE_FIRST == kPage);

std::wstring file_name(const std::wstring& path) {
  const std::size_t slash = path.find_last_of(L"\\/");
  return slash == std::wstring::npos ? path : path.substr(slash + 1);
}

}  // namespace

void MainWindow::open(const std::wstring& path) {
  try {
    session_->open(path);
    select_dialog_->database_changed();
  } catch (const UserError& error) {
    tell_error(hwnd_, error.text());
  }
  show_path();
}

bool MainWindow::on_command(int id, int notification) {
  if (id >= IDM_COPY_FIRST && id <= IDM_COPY_PAGE) {
    copy_picture(id - IDM_COPY_FIRST);
    return true;
  }
  if (id >= IDM_SAVE_FIRST && id <= IDM_SAVE_PAGE) {
    save_picture(id - IDM_SAVE_FIRST);
    return true;
  }
  switch (id) {
    case IDM_OPEN:
      choose_database();
      return true;
    case IDM_RELOAD:
      reload();
      return true;
    case IDM_SELECT:
      select_dialog_->show(hwnd_);
      return true;
    case IDM_PRINT:
      print();
      return true;
    case IDM_EXIT:
      DestroyWindow(hwnd_);
      return true;
    case IDM_COPY_RESULTS:
      copy_text_to_clipboard(hwnd_, text_of(session_->lines()));
      return true;
    case IDM_RESET_VALUES:
      session_->take_back();
      return true;
    case IDM_NEXT_PANE:
      go_to_pane(1);
      return true;
    case IDM_PREVIOUS_PANE:
      go_to_pane(-1);
      return true;
    case IDM_ABOUT:
      tell_about(hwnd_);
      return true;
    case IDCANCEL:
      escape();
      return true;
    default:
      return on_control(id, notification);
  }
}

bool MainWindow::on_control(int id, int notification) {
  switch (id) {
    case IDC_SIZES:
      if (notification == LBN_SELCHANGE) session_->size_selected();
      return true;
    case IDC_FLOW:
      if (notification == EN_CHANGE) session_->flow_typed();
      return true;
    case IDC_PRESSURE:
      if (notification == EN_CHANGE) session_->pressure_typed();
      return true;
    case IDC_FLOW_UNIT:
    case IDC_PRESSURE_UNIT:
      if (notification == CBN_SELCHANGE) session_->unit_chosen();
      return true;
    case IDC_FIRST_VALUE:
    case IDC_SECOND_VALUE:
      if (notification == CBN_SELCHANGE) session_->value_chosen();
      return true;
    default:
      return false;
  }
}

void MainWindow::choose_database() {
  if (const std::optional<std::wstring> path = ask_for_database(hwnd_)) open(*path);
}

void MainWindow::reload() {
  session_->reload();
  select_dialog_->database_changed();
}

void MainWindow::show_path() {
  const std::wstring path = session_->path();
  const std::wstring title = path.empty() ? kProgramName : file_name(path) + L" – " + kProgramName;
  SetWindowTextW(hwnd_, title.c_str());
}

void MainWindow::copy_picture(int which) {
  copy_to_clipboard(hwnd_, recorded_picture(which));
}

void MainWindow::save_picture(int which) {
  const Metafile picture = recorded_picture(which);
  const std::optional<std::wstring> path = ask_for_metafile(hwnd_, session_->page().title);
  if (path) save(picture, *path);
}

Metafile MainWindow::recorded_picture(int which) const {
  if (!session_->has_product()) throw UserError(L"No product is selected.");
  if (which == kPage) return recorded(session_->page());
  const auto drawing = static_cast<Drawing>(which);
  if (!session_->panes().is_drawn(drawing)) throw UserError(name_of(drawing) + L": this product has none.");
  return recorded(drawing);
}

void MainWindow::print() {
  if (!session_->has_product()) throw UserError(L"No product is selected.");
  print_page(hwnd_, session_->page());
}

// Takes back what was typed or chosen in the field; a second time it leaves the field.
void MainWindow::escape() {
  if (!session_->take_back(GetFocus())) SetFocus(GetDlgItem(hwnd_, IDC_PRODUCTS));
}

void MainWindow::go_to_pane(int step) {
  const int id = GetDlgCtrlID(GetFocus());
  int place = step > 0 ? -1 : 0;
  for (int i = 0; i < kPaneCount; ++i) {
    if (id >= kPanes[i]) place = i;
  }
  place = (place + step + kPaneCount) % kPaneCount;
  SetFocus(GetDlgItem(hwnd_, kPanes[place]));
}

}  // namespace viewer
