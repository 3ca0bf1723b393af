#include "window/main_window.h"

#include <windowsx.h>

#include <commctrl.h>

#include <exception>

#include "window/controls.h"
#include "window/dialogs.h"
#include "window/resource.h"

namespace viewer {
namespace {

constexpr wchar_t kClassName[] = L"TavdViewerMain";
constexpr SIZE kFirstSize = {1240, 840};  // at 96 dots per inch
constexpr DWORD kStyle = WS_OVERLAPPEDWINDOW | WS_CLIPCHILDREN;

bool register_class(HINSTANCE module, WNDPROC procedure) {
  WNDCLASSEXW own{};
  own.cbSize = sizeof own;
  own.lpfnWndProc = procedure;
  own.hInstance = module;
  own.hIcon = LoadIconW(module, MAKEINTRESOURCEW(IDI_VIEWER));
  own.hIconSm =
      static_cast<HICON>(LoadImageW(module, MAKEINTRESOURCEW(IDI_VIEWER), IMAGE_ICON,
                                    GetSystemMetrics(SM_CXSMICON), GetSystemMetrics(SM_CYSMICON), LR_SHARED));
  own.hCursor = LoadCursor(nullptr, IDC_ARROW);
  own.hbrBackground = reinterpret_cast<HBRUSH>(std::intptr_t{COLOR_BTNFACE + 1});
  own.lpszMenuName = MAKEINTRESOURCEW(IDR_VIEWER);
  own.lpszClassName = kClassName;
  return RegisterClassExW(&own) != 0;
}

SIZE client_size(HWND hwnd) {
  RECT rect{};
  GetClientRect(hwnd, &rect);
  return {rect.right, rect.bottom};
}

int height_of(HWND window) {
  RECT rect{};
  GetWindowRect(window, &rect);
  return static_cast<int>(rect.bottom - rect.top);
}

}  // namespace

bool MainWindow::create(int show) {
  const INITCOMMONCONTROLSEX controls = {
      sizeof controls, ICC_TREEVIEW_CLASSES | ICC_LISTVIEW_CLASSES | ICC_BAR_CLASSES | ICC_STANDARD_CLASSES};
  InitCommonControlsEx(&controls);
  if (!register_class(module_, procedure)) return false;
  CreateWindowExW(WS_EX_ACCEPTFILES, kClassName, kProgramName, kStyle, CW_USEDEFAULT, CW_USEDEFAULT,
                  CW_USEDEFAULT, CW_USEDEFAULT, nullptr, nullptr, module_, this);
  if (hwnd_ == nullptr || !session_) return false;
  SetWindowPos(hwnd_, nullptr, 0, 0, scaled(static_cast<int>(kFirstSize.cx), dpi_),
               scaled(static_cast<int>(kFirstSize.cy), dpi_), SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
  ShowWindow(hwnd_, show);
  SetFocus(GetDlgItem(hwnd_, IDC_PRODUCTS));
  return true;
}

int MainWindow::run() {
  HACCEL accelerators = LoadAcceleratorsW(module_, MAKEINTRESOURCEW(IDR_VIEWER));
  MSG message{};
  while (GetMessageW(&message, nullptr, 0, 0) > 0) {
    if (select_dialog_ && select_dialog_->takes(message)) continue;
    if (TranslateAcceleratorW(hwnd_, accelerators, &message) != 0) continue;
    if (IsDialogMessageW(hwnd_, &message) != FALSE) continue;
    TranslateMessage(&message);
    DispatchMessageW(&message);
  }
  return static_cast<int>(message.wParam);
}

// No exception may run through the system's frames.
LRESULT CALLBACK MainWindow::procedure(HWND hwnd, UINT message, WPARAM wparam, LPARAM lparam) {
  if (message == WM_NCCREATE) {
    auto* created = static_cast<MainWindow*>(reinterpret_cast<const CREATESTRUCTW*>(lparam)->lpCreateParams);
    created->hwnd_ = hwnd;
    SetWindowLongPtrW(hwnd, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(created));
  }
  auto* window = reinterpret_cast<MainWindow*>(GetWindowLongPtrW(hwnd, GWLP_USERDATA));
  if (window == nullptr) return DefWindowProcW(hwnd, message, wparam, lparam);
  try {
    return window->on_message(message, wparam, lparam);
  } catch (const UserError& error) {
    tell_error(hwnd, error.text());
  } catch (const std::exception&) {
    tell_error(hwnd, L"There is not enough memory for this.");
  }
  return 0;
}

LRESULT MainWindow::on_message(UINT message, WPARAM wparam, LPARAM lparam) {
  switch (message) {
    case WM_CREATE:
      on_create();
      return 0;
    case WM_DESTROY:
      on_destroy();
      return 0;
    case WM_SIZE:
      arrange();
      return 0;
    case WM_GETMINMAXINFO:
      set_minimum(*reinterpret_cast<MINMAXINFO*>(lparam));
      return 0;
    case WM_DPICHANGED:
      on_dpi(LOWORD(wparam), *reinterpret_cast<const RECT*>(lparam));
      return 0;
    case WM_ACTIVATE:
      on_activate(LOWORD(wparam) != WA_INACTIVE);
      return 0;
    case WM_COMMAND:
      if (session_ && on_command(LOWORD(wparam), HIWORD(wparam))) return 0;
      break;
    case WM_NOTIFY:
      return session_ ? on_notify(*reinterpret_cast<const NMHDR*>(lparam)) : 0;
    case WM_DROPFILES:
      on_drop(reinterpret_cast<HDROP>(wparam));
      return 0;
    case WM_CTLCOLORSTATIC:  // a field that is only read stands on white like those that are written
      if (reinterpret_cast<HWND>(lparam) != GetDlgItem(hwnd_, IDC_RESULTS)) break;
      return reinterpret_cast<LRESULT>(GetSysColorBrush(COLOR_WINDOW));
    case WM_SETCURSOR:
      if (LOWORD(lparam) == HTCLIENT && show_splitter_cursor()) return TRUE;
      break;
    case WM_LBUTTONDOWN:
      dragged_ = splitter_under(lparam);
      if (dragged_) SetCapture(hwnd_);
      return 0;
    case WM_MOUSEMOVE:
      drag_splitter(lparam);
      return 0;
    case WM_LBUTTONUP:
      if (dragged_) ReleaseCapture();
      return 0;
    case WM_CAPTURECHANGED:
      dragged_.reset();
      return 0;
    default:
      break;
  }
  return DefWindowProcW(hwnd_, message, wparam, lparam);
}

void MainWindow::on_create() {
  dpi_ = dpi_of(hwnd_);
  font_.make(dpi_);
  create_controls(hwnd_, module_);
  set_font(hwnd_, font_.handle());
  session_ = std::make_unique<Session>(hwnd_, module_);
  select_dialog_ = std::make_unique<SelectDialog>(module_, *session_);
}

// The drawings' windows are still there, and find nothing to draw from now on.
void MainWindow::on_destroy() {
  select_dialog_.reset();
  session_.reset();
  PostQuitMessage(0);
}

void MainWindow::on_dpi(int dpi, const RECT& suggested) {
  dpi_ = dpi;
  font_.make(dpi_);
  set_font(hwnd_, font_.handle());
  SetWindowPos(hwnd_, nullptr, static_cast<int>(suggested.left), static_cast<int>(suggested.top),
               static_cast<int>(suggested.right - suggested.left),
               static_cast<int>(suggested.bottom - suggested.top), SWP_NOZORDER | SWP_NOACTIVATE);
  arrange();
  RedrawWindow(hwnd_, nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_ALLCHILDREN);
}

void MainWindow::on_activate(bool active) {
  if (!active) {
    focus_ = GetFocus();
  } else if (focus_ != nullptr && IsChild(hwnd_, focus_) != FALSE) {
    SetFocus(focus_);
  }
}

void MainWindow::on_drop(HDROP drop) {
  const UINT length = DragQueryFileW(drop, 0, nullptr, 0);
  std::wstring path(length + 1, L'\0');
  DragQueryFileW(drop, 0, path.data(), length + 1);
  path.resize(length);
  DragFinish(drop);
  SetForegroundWindow(hwnd_);
  open(path);
}

LRESULT MainWindow::on_notify(const NMHDR& header) {
  if (header.idFrom != IDC_PRODUCTS) return 0;
  if (header.code == TVN_ITEMEXPANDINGW) session_->tree_opens(reinterpret_cast<const NMTREEVIEWW&>(header));
  if (header.code == TVN_SELCHANGEDW) session_->tree_selected();
  return 0;
}

void MainWindow::set_minimum(MINMAXINFO& info) const {
  const SIZE client = smallest_client(dpi_);
  RECT rect = {0, 0, client.cx, client.cy};
  AdjustWindowRectEx(&rect, kStyle, TRUE, WS_EX_ACCEPTFILES);
  info.ptMinTrackSize = {rect.right - rect.left, rect.bottom - rect.top};
}

void MainWindow::arrange() {
  HWND status = GetDlgItem(hwnd_, IDC_STATUS);
  if (status == nullptr) return;
  SendMessageW(status, WM_SIZE, 0, 0);  // it places itself, and may leave its former grip behind
  InvalidateRect(status, nullptr, TRUE);
  const Layout placed = layout();
  HDWP positions = BeginDeferWindowPos(static_cast<int>(placed.controls.size()));
  for (const Placed& control : placed.controls) {
    if (positions == nullptr) return;
    positions = DeferWindowPos(
        positions, GetDlgItem(hwnd_, control.id), nullptr, static_cast<int>(control.rect.left),
        static_cast<int>(control.rect.top), static_cast<int>(control.rect.right - control.rect.left),
        static_cast<int>(control.rect.bottom - control.rect.top), SWP_NOZORDER | SWP_NOACTIVATE);
  }
  if (positions != nullptr) EndDeferWindowPos(positions);
}

Layout MainWindow::layout() const {
  const Measures measures = {dpi_, font_.line_height(), height_of(GetDlgItem(hwnd_, IDC_STATUS))};
  return laid_out(client_size(hwnd_), measures, shares_);
}

std::optional<Splitter> MainWindow::splitter_under(LPARAM point) const {
  return splitter_at(layout(), {GET_X_LPARAM(point), GET_Y_LPARAM(point)});
}

bool MainWindow::show_splitter_cursor() const {
  POINT point{};
  GetCursorPos(&point);
  ScreenToClient(hwnd_, &point);
  const std::optional<Splitter> splitter = splitter_at(layout(), point);
  if (!splitter) return false;
  SetCursor(LoadCursor(nullptr, splitter->upright ? IDC_SIZEWE : IDC_SIZENS));
  return true;
}

void MainWindow::drag_splitter(LPARAM point) {
  if (!dragged_) return;
  drag(*dragged_, {GET_X_LPARAM(point), GET_Y_LPARAM(point)}, shares_);
  arrange();
}

}  // namespace viewer
