// Drives the viewer as a user would, and checks what its window then says and shows.
//
//   viewer_driver run VIEWER DATABASE NO-DATABASE FOLDER   NO-DATABASE is a file of another kind; pictures,
//   metafiles
//                                                          and results go to FOLDER
//   viewer_driver like A.png B.png
//                                 tells how alike two pictures are, -100 to 100 per
//   cent
//
// Every check is a line "ok: ..." or "FAILED: ..."; the result of `run` is the number of the failed ones.
#include <windows.h>

#include <cstdio>
#include <exception>
#include <functional>
#include <string>
#include <vector>

#include "../../apps/viewer/resource.h"
#include "viewer_numbers.h"
#include "viewer_pixels.h"
#include "viewer_printer.h"
#include "viewer_remote.h"

namespace drive {
namespace {

constexpr int kDrawings = 3;
constexpr int kBadCall = 99;
constexpr SIZE_T kMostGrowth = 1024 * 1024;  // bytes
constexpr DWORD kPaintMs = 400;
constexpr SIZE kPagePicture = {720, 1040};  // pixels of metafiles played
constexpr SIZE kDiagramPicture = {640, 480};
constexpr Colour kBlack = {0, 0, 0};
constexpr Colour kRed = {255, 0, 0};
constexpr Colour kBlue = {0, 0, 255};
constexpr int kBluePointSlack = 100;  // its lines are softened on Linux

std::string narrow(const std::wstring& text) {
  std::string bytes(text.size() * 3, '\0');
  const int length = WideCharToMultiByte(CP_UTF8, 0, text.data(), static_cast<int>(text.size()), bytes.data(),
                                         static_cast<int>(bytes.size()), nullptr, nullptr);
  bytes.resize(static_cast<std::size_t>(length));
  return bytes;
}

bool contains(const std::wstring& text, const std::wstring& part) {
  return text.find(part) != std::wstring::npos;
}

RECT rect_on_screen(HWND window) {
  RECT rect{};
  GetWindowRect(window, &rect);
  return rect;
}

RECT client_on_screen(HWND window) {
  RECT rect{};
  GetClientRect(window, &rect);
  MapWindowPoints(window, nullptr, reinterpret_cast<POINT*>(&rect), 2);
  return rect;
}

struct Records {
  int lines = 0, texts = 0;
  std::wstring text;  // of all texts
};

int CALLBACK count_record(HDC, HANDLETABLE*, const ENHMETARECORD* record, int, LPARAM records) {
  auto& counted = *reinterpret_cast<Records*>(records);
  counted.lines += record->iType == EMR_LINETO || record->iType == EMR_POLYLINE16;
  if (record->iType == EMR_EXTTEXTOUTW) {
    const auto* out = reinterpret_cast<const EMREXTTEXTOUTW*>(record);
    const auto* characters =
        reinterpret_cast<const wchar_t*>(reinterpret_cast<const BYTE*>(record) + out->emrtext.offString);
    counted.text += std::wstring(characters, out->emrtext.nChars) + L'\n';
  }
  counted.texts += record->iType == EMR_EXTTEXTOUTW || record->iType == EMR_EXTTEXTOUTA;
  return 1;
}

Records records_of(HENHMETAFILE metafile) {
  Records records;
  EnumEnhMetaFile(nullptr, metafile, count_record, &records, nullptr);
  return records;
}

class Run {
 public:
  Run(std::wstring program, std::wstring database, std::wstring variant, std::wstring no_database,
      std::wstring folder)
      : program_(std::move(program)),
        database_(std::move(database)),
        variant_(std::move(variant)),
        no_database_(std::move(no_database)),
        folder_(std::move(folder)) {}

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
  void closes();

  void open_branch(const std::wstring& class_id, const std::wstring& family);
  void check_layout(const std::wstring& where);
  std::wstring results() const { return text_of(viewer_->control(IDC_RESULTS)); }
  void shoot(const std::wstring& name) const;
  void write(const std::wstring& name, const std::wstring& text) const;
  static std::string read(const std::wstring& path);

  std::wstring program_, database_, variant_, no_database_, folder_;
  Viewer* viewer_ = nullptr;
  int failed_ = 0;
  int visited_ = 0;
};

void Run::check(bool good, const std::wstring& what) {
  std::printf("%s: %s\n", good ? "ok" : "FAILED", narrow(what).c_str());
  std::fflush(stdout);
  failed_ += !good;
}

int Run::all() {
  refuses(folder_ + L"\\missing.tavdb", L"there is no such file");
  refuses(no_database_, L"not a product database");
  refuses(folder_, L"it is a folder");

  Viewer viewer(program_, L'"' + database_ + L'"');
  viewer_ = &viewer;
  SetWindowPos(viewer.window(), nullptr, 0, 0, 1240, 840, SWP_NOZORDER);
  classes();
  selects();
  answers(L"QZSA-*", L"QZSA-160", {"ASD", "QZSA-160", 60, 40, "G", "45"});
  draws();
  converts();
  takes_back();
  resizes();
  keyboard();
  copies();
  saves();
  prints();
  opens();
  answers(L"QZFA-*", L"QZFA-160", {"FAN", "QZFA-160", 60, 100, "", ""});
  shoot(L"viewer-fan");
  answers(L"QZMA-*", L"QZMA-600x400", {"MLD", "QZMA-600x400", 3, 60, "", ""});
  visits_all();
  answers(L"QZSA-*", L"QZSA-200", {"ASD", "QZSA-200", 80, 50, "G", "90"});
  scales();
  chooses_throw_line();
  closes();
  return failed_;
}

// A file that cannot be opened is told, and the viewer stays.
void Run::refuses(const std::wstring& path, const std::wstring& reason) {
  Viewer viewer(program_, L'"' + path + L'"');
  HWND dialog = viewer.wait_for_dialog();
  const std::wstring message = dialog != nullptr ? message_of(dialog) : L"";
  check(contains(message, reason) && contains(message, path), L"refused: " + message);
  if (dialog != nullptr) press(dialog, IDOK);
  check(viewer.is_running() && text_of(viewer.window()) == L"Product Viewer",
        L"the viewer stays, without a file");
  viewer.command(IDM_COPY_RESULTS);
  viewer.post_command(IDM_PRINT);
  dialog = viewer.wait_for_dialog();
  check(dialog != nullptr && contains(message_of(dialog), L"No product"), L"nothing to print is told");
  if (dialog != nullptr) press(dialog, IDOK);
  check(viewer.close() == DWORD{0}, L"and ends with 0");
}

void Run::open_branch(const std::wstring& class_id, const std::wstring& family) {
  HTREEITEM parent = viewer_->find_branch(IDC_PRODUCTS, nullptr, class_id);
  HTREEITEM branch = parent != nullptr ? viewer_->find_branch(IDC_PRODUCTS, parent, family) : nullptr;
  if (branch == nullptr) {
    check(false, L"the tree has " + class_id + L", " + family);
  } else {
    viewer_->select_branch(IDC_PRODUCTS, branch);
  }
}

void Run::selects() {
  const bool shown = wait_until([&] { return contains(text_of(viewer_->window()), L"viewer.tavdb"); });
  check(shown, L"the title names the file: " + text_of(viewer_->window()));
  check(viewer_->children(IDC_PRODUCTS, nullptr).size() == 13, L"the tree has thirteen classes");
  open_branch(L"ASD", L"QZSA-*");
  HTREEITEM parent = viewer_->find_branch(IDC_PRODUCTS, nullptr, L"ASD");
  HTREEITEM family = viewer_->find_branch(IDC_PRODUCTS, parent, L"QZSA-*");
  const std::wstring text = viewer_->branch_text(IDC_PRODUCTS, family);
  check(text == L"QZSA-*  Adjustable supply diffuser", L"a family with its description: " + text);
  check(viewer_->children(IDC_PRODUCTS, parent).size() == 2, L"sizes stand under their families alone");
  check(viewer_->children(IDC_PRODUCTS, family).size() == 4, L"four sizes in the tree");
  const std::vector<std::wstring> sizes = {L"QZSA-125", L"QZSA-160", L"QZSA-200", L"QZSA-250"};
  check(viewer_->rows_of_list(IDC_SIZES) == sizes, L"the same four in the list box");
  HTREEITEM last = viewer_->find_branch(IDC_PRODUCTS, family, L"QZSA-250");
  viewer_->select_branch(IDC_PRODUCTS, last);
  check(contains(results(), L"Product\tQZSA-250\r\n"), L"a size of the tree is shown");
  check(SendMessageW(viewer_->control(IDC_SIZES), LB_GETCURSEL, 0, 0) == 3, L"and selected in the list box");
}

// The results at a point are the library's.
void Run::answers(const std::wstring& family, const std::wstring& code, const Question& question) {
  open_branch(std::wstring(question.class_id, question.class_id + 3), family);
  check(viewer_->pick_in_list(IDC_SIZES, code), code + L" in the list box");
  if (question.parameter[0] != 0) {
    const std::wstring value(question.value, question.value + std::string(question.value).size());
    check(viewer_->pick_in_combo(IDC_FIRST_VALUE, value), L"the value " + value + L" in the combo box");
  }
  viewer_->type(IDC_FLOW, std::to_wstring(static_cast<int>(question.qv)));
  viewer_->type(IDC_PRESSURE, std::to_wstring(static_cast<int>(question.dp)));
  const std::wstring said = results();
  write(L"results-" + code + L".txt", said);
  const std::vector<std::wstring> wanted = expected_lines(database_, question);
  check(wanted.size() >= 2, L"the library answers for " + code);
  for (const std::wstring& line : wanted) check(contains(L"\r\n" + said, L"\r\n" + line + L"\r\n"), line);
}

void Run::converts() {
  const std::wstring before = results();
  check(viewer_->pick_in_combo(IDC_FLOW_UNIT, L"m³/h"), L"m³/h among the units");
  check(text_of(viewer_->control(IDC_FLOW)) == L"216", L"60 l/s become 216 m³/h");
  check(contains(results(), L"Flow limits\t58.0 – 579.6 m³/h"), L"and so do the limits");
  shoot(L"viewer-units");
  viewer_->pick_in_combo(IDC_FLOW_UNIT, L"l/s");
  check(text_of(viewer_->control(IDC_FLOW)) == L"60" && results() == before, L"and back");
  viewer_->type(IDC_FLOW, L"6x");
  check(!contains(results(), L"Pressure range"), L"no answers for what is no number");
  check(contains(text_of(viewer_->control(IDC_STATUS)), L"Type a flow"), L"a flow is asked for");
  viewer_->type(IDC_FLOW, L"600");
  check(contains(text_of(viewer_->control(IDC_STATUS)), L"outside"), L"a flow outside the limits is told");
  viewer_->type(IDC_FLOW, L"60,0");
  check(results() == before, L"a comma is a decimal point");
}

void Run::takes_back() {
  const std::wstring before = results();
  SetForegroundWindow(viewer_->window());
  viewer_->command(IDM_RESET_VALUES);
  check(SendMessageW(viewer_->control(IDC_FIRST_VALUE), CB_GETCURSEL, 0, 0) == CB_ERR &&
            text_of(viewer_->control(IDC_FLOW)) == L"50.9",
        L"no value, and the point suggested: " + text_of(viewer_->control(IDC_FLOW)));
  viewer_->pick_in_combo(IDC_FIRST_VALUE, L"45");
  viewer_->type(IDC_FLOW, L"60");
  viewer_->type(IDC_PRESSURE, L"40");
  check(results() == before, L"typed and chosen again");
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
  check(count_of(panes[0], kBlue, 40) > 30, L"flow pane: the blue point");
  check(count_of(panes[0], kRed, 40) > 30, L"flow pane: red sound levels");
  check(count_of(panes[1], kRed, 40) > 50, L"throw pane: the red line");
  check(count_of(panes[1], kBlue, 40) > 30, L"throw pane: the blue point");
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
  const SIZE sizes[] = {{900, 640}, {1380, 940}, {300, 200}, {1000, 900}};
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

void Run::copies() {
  const wchar_t* const names[] = {L"flow diagram", L"throw length diagram", L"sketch", L"page"};
  for (int i = 0; i <= kDrawings; ++i) {
    viewer_->command(IDM_COPY_FIRST + i);
    Records records;
    if (OpenClipboard(nullptr) != FALSE) {
      auto* metafile = static_cast<HENHMETAFILE>(GetClipboardData(CF_ENHMETAFILE));
      if (metafile != nullptr) {
        records = records_of(metafile);
        save_png(played(metafile, i == kDrawings ? kPagePicture : kDiagramPicture),
                 folder_ + L"\\viewer-copied-" + std::to_wstring(i) + L".png");
      }
      CloseClipboard();
    }
    check(records.lines > 5 && records.texts > 2, std::wstring(L"copied: ") + names[i] + L", " +
                                                      std::to_wstring(records.lines) + L" lines, " +
                                                      std::to_wstring(records.texts) + L" texts");
    if (i == kDrawings) {
      check(contains(records.text, L"Adjustable supply diffuser") && contains(records.text, L"Throw length"),
            L"the page has description and results");
    }
  }
  viewer_->command(IDM_COPY_RESULTS);
  std::wstring text;
  if (OpenClipboard(nullptr) != FALSE) {
    HANDLE block = GetClipboardData(CF_UNICODETEXT);
    if (block != nullptr) text = static_cast<const wchar_t*>(GlobalLock(block));
    if (block != nullptr) GlobalUnlock(block);
    CloseClipboard();
  }
  check(text == results(), L"copied: results");
}

// Answers a dialog for a file with a path.
void Run::answer_file_dialog(const std::wstring& path) {
  HWND dialog = viewer_->wait_for_dialog();
  check(dialog != nullptr, L"the dialog for a file");
  if (dialog == nullptr) return;
  HWND field = nullptr;
  wait_until([&] { return (field = FindWindowExW(dialog, nullptr, L"Edit", nullptr)) != nullptr; }, 3000);
  if (field == nullptr) {
    HWND combo = FindWindowExW(dialog, nullptr, L"ComboBoxEx32", nullptr);
    field =
        combo != nullptr ? reinterpret_cast<HWND>(SendMessageW(combo, CBEM_GETEDITCONTROL, 0, 0)) : nullptr;
  }
  SendMessageW(field, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(path.c_str()));
  press(dialog, IDOK);
}

void Run::saves() {
  const std::wstring path = folder_ + L"\\saved.emf";
  DeleteFileW(path.c_str());
  viewer_->post_command(IDM_SAVE_FIRST);
  answer_file_dialog(path);
  HENHMETAFILE saved = nullptr;
  wait_until([&] { return (saved = GetEnhMetaFileW(path.c_str())) != nullptr; });
  const Records records = records_of(saved);
  check(records.lines > 20, L"saved: " + std::to_wstring(records.lines) + L" lines");
  DeleteEnhMetaFile(saved);
}

// A file that is no database leaves the one that is open.
void Run::opens() {
  const std::wstring before = results();
  viewer_->post_command(IDM_OPEN);
  answer_file_dialog(no_database_);
  HWND dialog = viewer_->wait_for_dialog();
  check(dialog != nullptr && contains(message_of(dialog), L"not a product database"),
        L"File, Open tells a wrong file");
  if (dialog != nullptr) press(dialog, IDOK);
  check(contains(text_of(viewer_->window()), L"viewer.tavdb") && results() == before,
        L"and leaves what was open");
  viewer_->pick_in_list(IDC_SIZES, L"QZSA-125");
  check(results() != before, L"another size has other results");
  viewer_->pick_in_list(IDC_SIZES, L"QZSA-160");
  // The first class, which was opened at the start, is closed in a tree that is read anew.
  HWND tree = viewer_->control(IDC_PRODUCTS);
  const auto first_is_open = [&] { return TreeView_GetChild(tree, TreeView_GetRoot(tree)) != nullptr; };
  check(first_is_open(), L"the first class was opened");
  viewer_->post_command(IDM_OPEN);
  answer_file_dialog(database_);
  check(wait_until([&] { return !first_is_open(); }) && results() == before,
        L"File, Open opens, here the same file at the same product");
}

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

// Without a printer the viewer says so; with one it prints a page, into a file.
void Run::prints() {
  if (!has_printer()) {
    viewer_->post_command(IDM_PRINT);
    HWND dialog = viewer_->wait_for_dialog();
    check(dialog != nullptr && contains(message_of(dialog), L"no printer"),
          L"that there is no printer is told");
    if (dialog != nullptr) press(dialog, IDOK);
  }
  const std::wstring path = folder_ + L"\\printed.ps";
  const TestPrinter printer(path);
  check(printer.works(), L"a printer for the test");
  if (!printer.works()) return;
  viewer_->post_command(IDM_PRINT);
  HWND dialog = viewer_->wait_for_dialog();
  check(dialog != nullptr && GetDlgItem(dialog, IDCANCEL) != nullptr, L"the dialog for printers");
  if (dialog == nullptr) return;
  press(dialog, IDCANCEL);
  check(read(path).empty(), L"nothing is printed where the dialog is cancelled");
  viewer_->post_command(IDM_PRINT);
  dialog = viewer_->wait_for_dialog();
  if (dialog == nullptr) return;
  press(dialog, IDOK);
  std::string page;
  wait_until([&] { return (page = read(path)).find("%%EOF") != std::string::npos; });
  int lines = 0;
  for (std::size_t at = page.find(" lineto"); at != std::string::npos; at = page.find(" lineto", at + 1))
    ++lines;
  check(page.starts_with("%!PS") && page.find("%%Page: 1") != std::string::npos &&
            page.find("%%Page: 2") == std::string::npos && lines > 150,
        L"printed: one page with " + std::to_wstring(lines) + L" lines");
}

// Every product of the database: also those without flow data, throw data or a shape.
void Run::visits_all() {
  for (HTREEITEM class_branch : viewer_->children(IDC_PRODUCTS, nullptr)) {
    for (HTREEITEM family : viewer_->children(IDC_PRODUCTS, class_branch)) {
      visit(family);
      for (HTREEITEM size : viewer_->children(IDC_PRODUCTS, family)) visit(size);
    }
  }
  const SIZE_T before = viewer_->private_bytes();
  for (int i = 0; i < 10; ++i) viewer_->command(IDM_RELOAD);
  for (int i = 0; i < 400; ++i) viewer_->pick_in_list(IDC_SIZES, viewer_->rows_of_list(IDC_SIZES).back());
  const SIZE_T after = viewer_->private_bytes();
  check(before > 0 && after < before + kMostGrowth, L"memory after reloading and choosing often: " +
                                                        std::to_wstring(before / 1024) + L" KiB, then " +
                                                        std::to_wstring(after / 1024) + L" KiB");
  check(visited_ > 60, L"visited " + std::to_wstring(visited_) + L" branches");
  open_branch(L"GRL", L"QZGA-400x200-D+C");
  Sleep(kPaintMs);
  check(contains(results(), L"no flow data") &&
            contains(text_of(viewer_->control(IDC_FIRST_CAPTION)), L"no flow data") &&
            ink_share(screen(client_on_screen(viewer_->control(IDC_FIRST_DRAWING)))) < 0.001,
        L"a product without flow data has no diagram, and that is told");
  shoot(L"viewer-no-flow");
  viewer_->command(IDM_RELOAD);
  check(contains(results(), L"QZGA-400x200-D+C"), L"reloading keeps the product");
}

void Run::visit(HTREEITEM branch) {
  ++visited_;
  viewer_->select_branch(IDC_PRODUCTS, branch);
  UpdateWindow(viewer_->window());
  if (!viewer_->is_running() || !contains(results(), L"Kind\t")) {
    check(false, L"results of " + viewer_->branch_text(IDC_PRODUCTS, branch));
  }
}

void Run::scales() {
  const RECT larger = {0, 0, 1390, 960};
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

// Where no parameter has the name that chooses throw lines, the second combo box is theirs. The name of the
// file is not of one code page.
void Run::chooses_throw_line() {
  viewer_->post_command(IDM_OPEN);
  answer_file_dialog(variant_);
  const std::wstring name = variant_.substr(variant_.find_last_of(L'\\') + 1);
  check(wait_until([&] { return contains(text_of(viewer_->window()), name); }), L"opened: " + name);
  open_branch(L"ASD", L"QZSA-*");
  viewer_->pick_in_list(IDC_SIZES, L"QZSA-160");
  check(contains(text_of(viewer_->control(IDC_FIRST_VALUE_LABEL)), L"ANG") &&
            contains(text_of(viewer_->control(IDC_SECOND_VALUE_LABEL)), L"Throw line"),
        L"a parameter and the throw lines");
  viewer_->type(IDC_FLOW, L"60");
  viewer_->type(IDC_PRESSURE, L"40");
  check(viewer_->pick_in_combo(IDC_SECOND_VALUE, L"90"), L"throw line 90");
  const std::vector<std::wstring> wanted = expected_lines(variant_, {"ASD", "QZSA-160", 60, 40, "", "90"});
  for (const std::wstring& line : wanted) check(contains(results(), L"\r\n" + line + L"\r\n"), line);
  check(wanted.size() > 4 && viewer_->pick_in_combo(IDC_FIRST_VALUE, L"45"), L"and the parameter's 45");
  for (const std::wstring& line : expected_lines(variant_, {"ASD", "QZSA-160", 60, 40, "ANG", "45"})) {
    const bool of_throw = line.starts_with(L"Throw");
    check(contains(results(), L"\r\n" + line + L"\r\n") != of_throw,
          line + (of_throw ? L" is not chosen" : L""));
  }
  shoot(L"viewer-throw-line");
}

void Run::closes() {
  check(viewer_->close() == DWORD{0}, L"the viewer ends with 0");
}

// Menu and client area; title and frame are the system's.
void Run::shoot(const std::wstring& name) const {
  SetForegroundWindow(viewer_->window());
  Sleep(kPaintMs);
  RECT rect = client_on_screen(viewer_->window());
  rect.top -= GetSystemMetrics(SM_CYMENU);
  save_png(screen(rect), folder_ + L'\\' + name + L".png");
}

void Run::write(const std::wstring& name, const std::wstring& text) const {
  FILE* file = _wfopen((folder_ + L'\\' + name).c_str(), L"wb");
  if (file == nullptr) return;
  const std::string bytes = narrow(text);
  std::fwrite(bytes.data(), 1, bytes.size(), file);
  std::fclose(file);
}

// All bytes of a file; none if it is not there.
std::string Run::read(const std::wstring& path) {
  std::string bytes;
  FILE* file = _wfopen(path.c_str(), L"rb");
  if (file == nullptr) return bytes;
  char block[4096];
  for (std::size_t n = 1; n > 0; bytes.append(block, n)) n = std::fread(block, 1, sizeof block, file);
  std::fclose(file);
  return bytes;
}

int run(const std::vector<std::wstring>& arguments) {
  const PictureFiles files;
  if (arguments.size() == 4 && arguments[1] == L"like") {
    const Picture a = load_png(arguments[2]);
    const Picture b = load_png(arguments[3]);
    std::printf("%d %d\n", static_cast<int>(likeness(a, b) * 100),
                static_cast<int>(distance_of(a, b, kBlue, kBluePointSlack) * 1000));
    return 0;
  }
  if (arguments.size() != 7 || arguments[1] != L"run") return kBadCall;
  return Run(arguments[2], arguments[3], arguments[4], arguments[5], arguments[6]).all();
}

}  // namespace
}  // namespace drive

int wmain(int count, wchar_t** arguments) {
  try {
    return drive::run({arguments, arguments + count});
  } catch (const std::exception& error) {
    std::printf("FAILED: %s\n", error.what());
    return drive::kBadCall;
  }
}
