// What the viewer shows: its drawings, its layout, and where the keys lead.
#include <vector>

#include "viewer_pixels.h"
#include "viewer_run.h"

namespace drive {
namespace {

constexpr Colour kBlack = {0, 0, 0};
constexpr Colour kRed = {255, 0, 0};
constexpr Colour kBluePoint = {0, 0, 255};

}  // namespace

// The library's windows, and ours with the library's procedure where the platform refused those.
void Run::classes() {
  const wchar_t* const library[] = {L"TAVDDGR", L"TAVDDGRL02", L"TAVDSHAPE"};
  const wchar_t* const own[] = {L"TavdViewerFlow", L"TavdViewerThrow", L"TavdViewerShape"};
  for (int i = 0; i < kDrawings; ++i) {
    wchar_t name[32] = {};
    GetClassNameW(viewer_->control(IDC_FIRST_DRAWING + i), name, 32);
    check(name == std::wstring(library[i]) || (i > 0 && name == std::wstring(own[i])),
          std::wstring(L"a window of the class ") + name);
  }
}

void Run::draws() {
  SetForegroundWindow(viewer_->window());
  Sleep(kPaintMs);
  Picture panes[kDrawings];
  const wchar_t* const names[kDrawings] = {L"flow", L"throw", L"sketch"};
  for (int i = 0; i < kDrawings; ++i) {
    panes[i] = screen(client_on_screen(viewer_->control(IDC_FIRST_DRAWING + i)));
    save_png(panes[i], folder_ + L"\\pane-" + names[i] + L".png");
    const double ink = ink_share(panes[i]);
    check(ink > 0.01 && ink < 0.4,
          std::wstring(names[i]) + L" pane: ink on " + std::to_wstring(ink * 100) + L" %");
    check(count_of(panes[i], kBlack, 40) > 300, std::wstring(names[i]) + L" pane: black lines and texts");
    check(text_of(viewer_->control(IDC_FIRST_CAPTION + i)).find(L'–') == std::wstring::npos,
          std::wstring(names[i]) + L" pane: has a drawing");
  }
  check(count_of(panes[0], kBluePoint, 40) > 30, L"flow pane: the blue point");
  check(count_of(panes[0], kRed, 40) > 30, L"flow pane: red sound levels");
  check(count_of(panes[1], kRed, 40) > 50, L"throw pane: the red line");
  check(count_of(panes[1], kBluePoint, 40) > 30, L"throw pane: the blue point");
  const double text = ink_share(screen(client_on_screen(viewer_->control(IDC_RESULTS))));
  check(text > 0.01 && text < 0.4, L"results pane: text");
  shoot(L"viewer-main");
}

void Run::check_layout(const std::wstring& where) {
  const RECT client = client_on_screen(viewer_->window());
  std::vector<RECT> taken;
  std::wstring wrong;
  for (HWND child = GetWindow(viewer_->window(), GW_CHILD); child != nullptr;
       child = GetWindow(child, GW_HWNDNEXT)) {
    if (IsWindowVisible(child) == FALSE) continue;
    const RECT rect = rect_on_screen(child);
    const std::wstring id = std::to_wstring(GetDlgCtrlID(child));
    RECT common{};
    if (IntersectRect(&common, &rect, &client) == FALSE || EqualRect(&common, &rect) == FALSE) {
      wrong += L" " + id + L" leaves the window;";
    }
    for (const RECT& other : taken) {
      if (IntersectRect(&common, &rect, &other) != FALSE) wrong += L" " + id + L" lies on another;";
    }
    taken.push_back(rect);
  }
  check(wrong.empty() && taken.size() > 15, L"layout " + where + L":" + wrong);
}

void Run::resizes() {
  const SIZE sizes[] = {{900, 640}, {1270, 1000}, {300, 200}, {1000, 900}};
  for (const SIZE& size : sizes) {
    SetWindowPos(viewer_->window(), nullptr, 0, 0, static_cast<int>(size.cx), static_cast<int>(size.cy),
                 SWP_NOZORDER);
    Sleep(kPaintMs);
    const std::wstring name = std::to_wstring(size.cx) + L"x" + std::to_wstring(size.cy);
    check_layout(name);
    for (int i = 0; i < kDrawings; ++i) {
      const double ink = ink_share(screen(client_on_screen(viewer_->control(IDC_FIRST_DRAWING + i))));
      check(ink > 0.01 && ink < 0.5, name + L": pane " + std::to_wstring(i) + L" is drawn");
    }
    shoot(L"size-" + name);
  }
  const RECT smallest = rect_on_screen(viewer_->window());
  check(smallest.right - smallest.left == 1000, L"the window has the last size");
  SetWindowPos(viewer_->window(), nullptr, 0, 0, 1240, 840, SWP_NOZORDER);
}

// The gap to the right of the tree, which can be dragged.
void Run::drag_tree_edge(int distance) {
  const RECT tree = rect_on_screen(viewer_->control(IDC_PRODUCTS));
  const RECT pane = rect_on_screen(viewer_->control(IDC_FIRST_DRAWING));
  POINT grip = {(tree.right + pane.left) / 2, tree.top + 10};
  ScreenToClient(viewer_->window(), &grip);
  SendMessageW(viewer_->window(), WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(grip.x, grip.y));
  SendMessageW(viewer_->window(), WM_MOUSEMOVE, MK_LBUTTON, MAKELPARAM(grip.x + distance, grip.y));
  SendMessageW(viewer_->window(), WM_LBUTTONUP, 0, MAKELPARAM(grip.x + distance, grip.y));
}

void Run::drags() {
  const auto width = [&] {
    const RECT tree = rect_on_screen(viewer_->control(IDC_PRODUCTS));
    return tree.right - tree.left;
  };
  const LONG before = width();
  drag_tree_edge(60);
  const LONG wider = width();
  check(wider > before + 54 && wider < before + 66,
        L"the tree is dragged wider, by " + std::to_wstring(wider - before));
  check_layout(L"with a wider tree");
  const LONG sketch = rect_on_screen(viewer_->control(IDC_FIRST_DRAWING + 2)).left;
  drag_tree_edge(5000);
  check(rect_on_screen(viewer_->control(IDC_FIRST_DRAWING + 2)).left == sketch,
        L"the other columns keep theirs");
  check_layout(L"with the tree dragged as far as it goes");
  drag_tree_edge(-5000);
  check_layout(L"with the tree dragged as narrow as it gets");
  SendMessageW(viewer_->window(), WM_MOUSEMOVE, 0, MAKELPARAM(500, 300));
  const LONG narrow = width();
  check(narrow < before && narrow > 50, L"and stays there without the button");
  drag_tree_edge(static_cast<int>(before - narrow));
}

void Run::scales() {
  const RECT larger = {0, 0, 1270, 1000};
  viewer_->change_dpi(144, larger);
  Sleep(kPaintMs);
  check_layout(L"at 144 dots per inch");
  const RECT field = rect_on_screen(viewer_->control(IDC_FLOW));
  check(field.right - field.left == 105, L"fields are half as large again");
  shoot(L"viewer-144");
  const RECT former = {0, 0, 1240, 840};
  viewer_->change_dpi(96, former);
  Sleep(kPaintMs);
  check_layout(L"back at 96");
  shoot(L"viewer-throw");
}

// Escape and F6 go by the focus, which is another process's: its thread's input is shared for the while.
void Run::keyboard() {
  const DWORD thread = GetWindowThreadProcessId(viewer_->window(), nullptr);
  AttachThreadInput(GetCurrentThreadId(), thread, TRUE);
  const auto id_of_focus = [] { return GetDlgCtrlID(GetFocus()); };
  SetFocus(viewer_->control(IDC_PRODUCTS));
  const int panes[] = {IDC_SIZES, IDC_FLOW, IDC_RESULTS, IDC_PRODUCTS};
  for (const int pane : panes) {
    viewer_->command(IDM_NEXT_PANE);
    check(id_of_focus() == pane, L"F6 goes to " + std::to_wstring(pane));
  }
  viewer_->command(IDM_PREVIOUS_PANE);
  check(id_of_focus() == IDC_RESULTS, L"Shift+F6 goes back");
  const int tabs[] = {IDC_PRODUCTS, IDC_SIZES, IDC_FLOW, IDC_FLOW_UNIT, IDC_PRESSURE};
  for (const int tab : tabs) {
    PostMessageW(GetFocus(), WM_KEYDOWN, VK_TAB, 1);
    check(wait_until([&] { return id_of_focus() == tab; }, 3000), L"Tab goes to " + std::to_wstring(tab));
  }
  viewer_->command(IDCANCEL);
  check(text_of(viewer_->control(IDC_PRESSURE)) != L"40" && id_of_focus() == IDC_PRESSURE,
        L"Escape takes back what was typed");
  viewer_->command(IDCANCEL);
  check(id_of_focus() == IDC_PRODUCTS, L"and then leaves the field");
  AttachThreadInput(GetCurrentThreadId(), thread, FALSE);
  viewer_->type(IDC_PRESSURE, L"40");
}

}  // namespace drive
