// What the viewer selects: its dialog of duties, the list of products that fit, and a product of it shown.
#include <vector>

#include "viewer_pixels.h"
#include "viewer_run.h"

namespace drive {
namespace {

constexpr int kNumbers[] = {IDC_DUTY_FLOW, IDC_DUTY_PRESSURE, IDC_DUTY_LEVEL, IDC_DUTY_DAMPING,
                            IDC_DUTY_WANTED};
constexpr SIZE_T kMostGrowthOfDialog = 0x40000;  // bytes
constexpr int kOpenings = 50;
constexpr int kClass = 1;  // columns
constexpr int kId = 2;
constexpr int kFlow = 4;
constexpr int kLevel = 6;

HWND list_of(HWND dialog) {
  return GetDlgItem(dialog, IDC_DUTY_PRODUCTS);
}

std::wstring told(HWND dialog) {
  return text_of(GetDlgItem(dialog, IDC_DUTY_MESSAGE));
}

// The focus of the viewer's thread, as long as this is there.
class SharedInput {
 public:
  explicit SharedInput(HWND window) : thread_(GetWindowThreadProcessId(window, nullptr)) {
    AttachThreadInput(GetCurrentThreadId(), thread_, TRUE);
  }
  ~SharedInput() { AttachThreadInput(GetCurrentThreadId(), thread_, FALSE); }
  SharedInput(const SharedInput&) = delete;
  SharedInput& operator=(const SharedInput&) = delete;

 private:
  DWORD thread_;
};

}  // namespace

HWND Run::open_select_dialog() {
  viewer_->post_command(IDM_SELECT);
  return viewer_->wait_for_dialog();
}

// Types flow, pressure, level, damping and number of answers, and presses the button.
void Run::ask(HWND dialog, const std::wstring (&numbers)[5]) {
  for (int i = 0; i < 5; ++i) type_into(GetDlgItem(dialog, kNumbers[i]), numbers[i]);
  SendMessageW(GetDlgItem(dialog, IDOK), BM_CLICK, 0, 0);
}

void Run::write_products(HWND dialog, const std::wstring& name) {
  std::wstring lines;
  for (const std::vector<std::wstring>& row : viewer_->cells_of(list_of(dialog))) {
    for (const std::wstring& cell : row) lines += cell + L'\t';
    lines.back() = L'\n';
  }
  write(name, lines + told(dialog) + L'\n');
}

void Run::selects_products() {
  HWND dialog = open_select_dialog();
  check(dialog != nullptr && text_of(dialog) == L"Select", L"the dialog that selects");
  if (dialog == nullptr) return;
  check(text_of(GetDlgItem(dialog, IDC_DUTY_FLOW)) == L"60" &&
            text_of(GetDlgItem(dialog, IDC_DUTY_PRESSURE)) == L"40",
        L"it begins at the point that is shown");
  std::vector<std::wstring> classes = rows_of_combo_of(dialog, IDC_DUTY_CLASS);
  check(classes.size() == 14 && classes.front() == L"all", L"all classes, and each of the thirteen");
  const std::vector<std::wstring> rankings = {L"sound", L"pressure", L"size", L"fit"};
  check(rows_of_combo_of(dialog, IDC_DUTY_RANKING) == rankings, L"the four rankings");
  refuses_duties(dialog);
  lists_products(dialog);
  shows_products(dialog);
  keeps_to_the_keys(dialog);
  opens_often();
}

// What is wrong with a field is told, with the field ready to be typed anew.
void Run::refuses_duties(HWND dialog) {
  struct Case {
    std::wstring numbers[5];
    int field;
    const wchar_t* reason;
  };
  const Case cases[] = {
      {{L"", L"70", L"30", L"4", L"5"}, IDC_DUTY_FLOW, L"Type a flow."},
      {{L"-80", L"70", L"30", L"4", L"5"},
       IDC_DUTY_FLOW,
       L"Flow is \"-80\", expected a number above 0 such as 50 or 12.5."},
      {{L"80", L"", L"30", L"4", L"5"}, IDC_DUTY_PRESSURE, L"Type the pressure that is available."},
      {{L"80", L"0", L"30", L"4", L"5"},
       IDC_DUTY_PRESSURE,
       L"Pressure is \"0\", expected a number above 0 such as 50 or 12.5."},
      {{L"80", L"70", L"loud", L"4", L"5"},
       IDC_DUTY_LEVEL,
       L"Highest level is \"loud\", expected a number above 0 such as 50 or 12.5."},
      {{L"80", L"70", L"30", L"", L"5"},
       IDC_DUTY_DAMPING,
       L"Room damping is \"\", expected a number of dB such as 4."},
      {{L"80", L"70", L"30", L"4", L"2.5"},
       IDC_DUTY_WANTED,
       L"Answers is \"2.5\", expected a whole number from 1 to 1000."},
      {{L"80", L"70", L"30", L"4", L"1001"},
       IDC_DUTY_WANTED,
       L"Answers is \"1001\", expected a whole number from 1 to 1000."},
  };
  const SharedInput input(dialog);
  for (const Case& bad : cases) {
    ask(dialog, bad.numbers);
    check(told(dialog) == bad.reason, told(dialog));
    check(GetDlgCtrlID(GetFocus()) == bad.field, L"and the field has the focus");
    check(viewer_->cells_of(list_of(dialog)).empty(), L"and nothing is listed");
  }
  pick_in_combo_of(dialog, IDC_DUTY_CLASS, L"GRL");
  ask(dialog, {L"80", L"70", L"30", L"4", L"5"});
  check(told(dialog) == L"Class \"GRL\" has no products with flow data.", told(dialog));
  pick_in_combo_of(dialog, IDC_DUTY_CLASS, L"all");
}

// The numbers are compared with those of the other program by check_viewer.
void Run::lists_products(HWND dialog) {
  ask(dialog, {L"80", L"70", L"30", L"4", L"8"});
  write_products(dialog, L"select-all.txt");
  const std::vector<std::wstring> titles = {L"Rank", L"Class",        L"Id",           L"Size",
                                            L"Flow", L"Pressure, Pa", L"Level, dB(A)", L"Throw, m"};
  check(viewer_->titles_of(list_of(dialog)) == titles, L"titles of the columns");
  check(viewer_->cells_of(list_of(dialog)).size() == 8, L"eight products: " + told(dialog));
  pick_in_combo_of(dialog, IDC_DUTY_CLASS, L"DMP");
  pick_in_combo_of(dialog, IDC_DUTY_RANKING, L"size");
  pick_in_combo_of(dialog, IDC_DUTY_FLOW_UNIT, L"m³/h");
  pick_in_combo_of(dialog, IDC_DUTY_PRESSURE_UNIT, L"kPa");
  ask(dialog, {L"288", L"0,07", L"", L"6,5", L"1000"});
  write_products(dialog, L"select-class.txt");
  check(viewer_->titles_of(list_of(dialog))[5] == L"Pressure, kPa", L"pressures in kPa");
  pick_in_combo_of(dialog, IDC_DUTY_CLASS, L"FAN");
  ask(dialog, {L"288", L"0,07", L"", L"4", L"1000"});
  write_products(dialog, L"select-fan.txt");
  ask(dialog, {L"1", L"0,07", L"1", L"4", L"5"});
  check(told(dialog).starts_with(L"None of 5 products fit. Of those that come nearest, ") &&
            viewer_->cells_of(list_of(dialog)).empty(),
        told(dialog));
  pick_in_combo_of(dialog, IDC_DUTY_CLASS, L"all");
  pick_in_combo_of(dialog, IDC_DUTY_RANKING, L"sound");
  pick_in_combo_of(dialog, IDC_DUTY_FLOW_UNIT, L"l/s");
  pick_in_combo_of(dialog, IDC_DUTY_PRESSURE_UNIT, L"Pa");
}

// A row is shown at its point: the level is that of the list.
void Run::shows_products(HWND dialog) {
  pick_in_combo_of(dialog, IDC_DUTY_CLASS, L"DMP");
  ask(dialog, {L"80", L"70", L"", L"4", L"10"});
  clicks_damper(dialog);
  pick_in_combo_of(dialog, IDC_DUTY_CLASS, L"all");
  ask(dialog, {L"80", L"70", L"", L"10", L"40"});
  enters_diffuser(dialog);
  clicks_louvre(dialog);
  viewer_->command(IDM_RESET_VALUES);
}

// The first row of a class in the list; -1, and a failed check, if there is none.
int Run::row_of_class(HWND dialog, const std::wstring& class_id) {
  const std::vector<std::vector<std::wstring>> rows = viewer_->cells_of(list_of(dialog));
  for (std::size_t row = 0; row < rows.size(); ++row) {
    if (rows[row][kClass] == class_id) return static_cast<int>(row);
  }
  check(false, class_id + L" in the list");
  return -1;
}

std::vector<std::wstring> Run::cells_of_row(HWND dialog, int row) const {
  return viewer_->cells_of(list_of(dialog)).at(static_cast<std::size_t>(row));
}

bool Run::is_shown(const std::wstring& id) const {
  return wait_until([&] { return contains(results(), L"Product\t" + id + L"\r\n"); }, 5000);
}

void Run::clicks_damper(HWND dialog) {
  if (row_of_class(dialog, L"DMP") != 0) return;
  viewer_->click_row(list_of(dialog), 1);
  const std::vector<std::wstring> damper = cells_of_row(dialog, 1);
  check(is_shown(damper[kId]), L"a click shows " + damper[kId]);
  check(text_of(viewer_->control(IDC_FLOW)) == L"80" && text_of(viewer_->control(IDC_PRESSURE)) == L"70",
        L"at the point");
  const std::string id(damper[kId].begin(), damper[kId].end());
  for (const std::wstring& line : expected_lines(database_, {"DMP", id.c_str(), 80, 70, "", ""})) {
    check(contains(L"\r\n" + results(), L"\r\n" + line + L"\r\n"), line);
  }
  check(contains(results(), L"Sound level in the room\t" + damper[kLevel] + L" dB(A)\r\n"),
        L"with the level of the list, " + damper[kLevel]);
  HTREEITEM branch = TreeView_GetSelection(viewer_->control(IDC_PRODUCTS));
  check(viewer_->branch_text(IDC_PRODUCTS, branch).starts_with(damper[kId]),
        L"and it is selected in the tree");
  shoot(L"viewer-select", dialog);
}

void Run::enters_diffuser(HWND dialog) {
  const int row = row_of_class(dialog, L"ASD");
  if (row < 0) return;
  const std::vector<std::wstring> diffuser = cells_of_row(dialog, row);
  const SharedInput input(dialog);
  HWND list = list_of(dialog);
  SetFocus(list);
  for (int i = 0; i < row; ++i) PostMessageW(list, WM_KEYDOWN, VK_DOWN, 1);
  PostMessageW(list, WM_KEYDOWN, VK_RETURN, 1);
  check(is_shown(diffuser[kId]), L"Enter shows " + diffuser[kId]);
  check(contains(results(),
                 L"Sound level in the room\t" + diffuser[kLevel] + L" dB(A), room damping 10 dB\r\n"),
        L"with the level of the list at its room damping, " + diffuser[kLevel]);
  viewer_->command(IDM_RESET_VALUES);
  check(!contains(results(), L"room damping"), L"taking back goes back to the usual damping");
}

// Its flow is an air velocity.
void Run::clicks_louvre(HWND dialog) {
  const int row = row_of_class(dialog, L"LVR");
  if (row < 0) return;
  const std::vector<std::wstring> louvre = cells_of_row(dialog, row);
  viewer_->click_row(list_of(dialog), row);
  check(is_shown(louvre[kId]), L"a click shows " + louvre[kId]);
  const std::wstring flow = text_of(viewer_->control(IDC_FLOW));
  check(flow.starts_with(louvre[kFlow].substr(0, 4)) && louvre[kFlow].ends_with(L" m/s"),
        L"at its velocity, " + flow + L" as in " + louvre[kFlow]);
}

void Run::keeps_to_the_keys(HWND dialog) {
  const SharedInput input(dialog);
  const auto id_of_focus = [] { return GetDlgCtrlID(GetFocus()); };
  SetFocus(GetDlgItem(dialog, IDC_DUTY_FLOW));
  const int tabs[] = {IDC_DUTY_FLOW_UNIT, IDC_DUTY_PRESSURE, IDC_DUTY_PRESSURE_UNIT,
                      IDC_DUTY_LEVEL,     IDC_DUTY_DAMPING,  IDC_DUTY_CLASS,
                      IDC_DUTY_RANKING,   IDC_DUTY_WANTED,   IDOK,
                      IDCANCEL,           IDC_DUTY_PRODUCTS, IDC_DUTY_FLOW};
  for (const int tab : tabs) {
    PostMessageW(GetFocus(), WM_KEYDOWN, VK_TAB, 1);
    check(wait_until([&] { return id_of_focus() == tab; }, 3000),
          L"Tab goes to " + std::to_wstring(tab) + L" of the dialog");
  }
  type_into(GetDlgItem(dialog, IDC_DUTY_WANTED), L"2");
  PostMessageW(GetFocus(), WM_KEYDOWN, VK_RETURN, 1);
  check(wait_until([&] { return viewer_->cells_of(list_of(dialog)).size() == 2; }, 3000),
        L"Enter in a field selects");
  viewer_->command(IDM_RELOAD);
  check(viewer_->cells_of(list_of(dialog)).empty() && told(dialog).empty() &&
            rows_of_combo_of(dialog, IDC_DUTY_CLASS).size() == 14,
        L"what was found is gone when the database is read anew");
  SendMessageW(GetDlgItem(dialog, IDOK), BM_CLICK, 0, 0);
  check(viewer_->cells_of(list_of(dialog)).size() == 2, L"and is found again");
  PostMessageW(GetDlgItem(dialog, IDC_DUTY_FLOW), WM_KEYDOWN, VK_ESCAPE, 1);
  check(wait_until([&] { return IsWindowVisible(dialog) == FALSE; }, 3000), L"Escape closes the dialog");
}

// The database that was opened since has no fans.
void Run::selects_from_another() {
  HWND dialog = open_select_dialog();
  check(dialog != nullptr && viewer_->cells_of(list_of(dialog)).empty() &&
            rows_of_combo_of(dialog, IDC_DUTY_CLASS).size() == 13,
        L"another database has its own classes");
  if (dialog == nullptr) return;
  ask(dialog, {L"80", L"70", L"30", L"4", L"5"});
  check(contains(told(dialog), L" of 61 products fit"), L"and its own products: " + told(dialog));
  SendMessageW(dialog, WM_COMMAND, IDCANCEL, 0);
}

void Run::opens_often() {
  HWND dialog = nullptr;
  SIZE_T before = 0;
  for (int i = 0; i < kOpenings; ++i) {
    dialog = open_select_dialog();
    if (dialog == nullptr) break;
    SendMessageW(GetDlgItem(dialog, IDOK), BM_CLICK, 0, 0);
    if (i == 0) check(viewer_->cells_of(list_of(dialog)).size() == 2, L"it keeps what was typed");
    SendMessageW(dialog, WM_COMMAND, IDCANCEL, 0);
    if (i == kOpenings / 5) before = viewer_->private_bytes();
  }
  const SIZE_T after = viewer_->private_bytes();
  check(dialog != nullptr && before > 0 && after < before + kMostGrowthOfDialog,
        L"memory after selecting often: " + std::to_wstring(before / 1024) + L" KiB, then " +
            std::to_wstring(after / 1024) + L" KiB");
}

}  // namespace drive
