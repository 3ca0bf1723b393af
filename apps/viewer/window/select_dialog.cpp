#include "window/select_dialog.h"

#include <algorithm>
#include <exception>
#include <iterator>

#include "shared/numbers.h"
#include "shared/selection.h"
#include "window/controls.h"
#include "window/dialogs.h"
#include "window/resource.h"

namespace viewer {
namespace {

constexpr WPARAM kMostChars = 30;  // of a number that is typed

// Widths of the list's columns, per cent of what there is, in the order of found_titles(). From
// `kFirstNumber` on there are numbers.
constexpr int kWidths[] = {7, 7, 20, 15, 12, 15, 14, 10};
constexpr int kColumns = static_cast<int>(std::size(kWidths));
constexpr int kFirstNumber = 4;

constexpr wchar_t kAllClasses[] = L"all";

int chosen_row(HWND window, int id) {
  return static_cast<int>(SendDlgItemMessageW(window, id, CB_GETCURSEL, 0, 0));
}

void add_row(HWND window, int id, const std::wstring& text) {
  SendDlgItemMessageW(window, id, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(text.c_str()));
}

void choose_row(HWND window, int id, int row) {
  SendDlgItemMessageW(window, id, CB_SETCURSEL, static_cast<WPARAM>(row), 0);
}

int control_of(DutyField field) {
  switch (field) {
    case DutyField::kFlow:
      return IDC_DUTY_FLOW;
    case DutyField::kPressure:
      return IDC_DUTY_PRESSURE;
    case DutyField::kLevel:
      return IDC_DUTY_LEVEL;
    case DutyField::kDamping:
      return IDC_DUTY_DAMPING;
    case DutyField::kClass:
      return IDC_DUTY_CLASS;
    case DutyField::kWanted:
      break;
  }
  return IDC_DUTY_WANTED;
}

// At the lower left corner of the owner, so that diagram and results stay in sight.
void place_over(HWND window, HWND owner) {
  RECT own{};
  RECT frame{};
  GetWindowRect(window, &own);
  GetWindowRect(owner, &frame);
  SetWindowPos(window, nullptr, static_cast<int>(frame.left),
               std::max(0, static_cast<int>(frame.bottom - (own.bottom - own.top))), 0, 0,
               SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
}

// The pointer while products are read.
class Waiting {
 public:
  Waiting() : former_(SetCursor(LoadCursor(nullptr, IDC_WAIT))) {}
  ~Waiting() { SetCursor(former_); }
  Waiting(const Waiting&) = delete;
  Waiting& operator=(const Waiting&) = delete;

 private:
  HCURSOR former_;
};

}  // namespace

SelectDialog::~SelectDialog() {
  if (window_ != nullptr) DestroyWindow(window_);
}

void SelectDialog::show(HWND owner) {
  if (session_.path().empty()) throw UserError(L"No database is open.");
  if (window_ == nullptr) {
    CreateDialogParamW(module_, MAKEINTRESOURCEW(IDD_SELECT), owner, procedure,
                       reinterpret_cast<LPARAM>(this));
    if (window_ == nullptr) throw UserError(L"The dialog cannot be shown.");
    place_over(window_, owner);
  }
  ShowWindow(window_, SW_SHOW);
  SetActiveWindow(window_);
}

void SelectDialog::database_changed() {
  if (window_ == nullptr) return;
  list_classes();
  found_.clear();
  ListView_DeleteAllItems(products());
  set_text(window_, IDC_DUTY_MESSAGE, L"");
}

// No exception may run through the system's frames.
INT_PTR CALLBACK SelectDialog::procedure(HWND window, UINT message, WPARAM wparam, LPARAM lparam) {
  if (message == WM_INITDIALOG) {
    reinterpret_cast<SelectDialog*>(lparam)->window_ = window;
    SetWindowLongPtrW(window, DWLP_USER, lparam);
  }
  auto* dialog = reinterpret_cast<SelectDialog*>(GetWindowLongPtrW(window, DWLP_USER));
  if (dialog == nullptr) return FALSE;
  try {
    return dialog->on_message(message, wparam, lparam) ? TRUE : FALSE;
  } catch (const UserError& error) {
    tell_error(window, error.text());
  } catch (const std::exception&) {
    tell_error(window, L"There is not enough memory for this.");
  }
  return TRUE;
}

bool SelectDialog::on_message(UINT message, WPARAM wparam, LPARAM lparam) {
  switch (message) {
    case WM_INITDIALOG:
      on_create();
      return true;  // the first field gets the focus
    case WM_COMMAND:
      return on_command(LOWORD(wparam));
    case WM_NOTIFY: {
      const auto& header = *reinterpret_cast<const NMHDR*>(lparam);
      if (header.idFrom != IDC_DUTY_PRODUCTS || header.code != NM_CLICK) return false;
      show_row(reinterpret_cast<const NMITEMACTIVATE*>(lparam)->iItem);
      return true;
    }
    case WM_DESTROY:
      window_ = nullptr;
      return false;
    default:
      return false;
  }
}

void SelectDialog::on_create() {
  const DutyTexts suggested = session_.suggested_duty();
  const auto place_of = [](std::span<const Unit> units, const Unit* unit) {
    return static_cast<int>(unit - units.data());
  };
  list_units(window_, IDC_DUTY_FLOW_UNIT, flow_units(), place_of(flow_units(), suggested.flow_unit));
  list_units(window_, IDC_DUTY_PRESSURE_UNIT, pressure_units(),
             place_of(pressure_units(), suggested.pressure_unit));
  set_text(window_, IDC_DUTY_FLOW, suggested.flow);
  set_text(window_, IDC_DUTY_PRESSURE, suggested.pressure);
  set_text(window_, IDC_DUTY_DAMPING, wide(hosts::brief(hosts::kRoomDamping)));
  set_text(window_, IDC_DUTY_WANTED, std::to_wstring(hosts::kUsualHits));
  for (const int id : {IDC_DUTY_FLOW, IDC_DUTY_PRESSURE, IDC_DUTY_LEVEL, IDC_DUTY_DAMPING, IDC_DUTY_WANTED}) {
    SendDlgItemMessageW(window_, id, EM_LIMITTEXT, kMostChars, 0);
  }
  for (const hosts::DutyWord& ranking : hosts::rankings()) {
    add_row(window_, IDC_DUTY_RANKING, wide(ranking.name));
  }
  choose_row(window_, IDC_DUTY_RANKING, 0);
  list_classes();
  ListView_SetExtendedListViewStyle(products(), LVS_EX_FULLROWSELECT);
  list_titles(*suggested.pressure_unit);
}

bool SelectDialog::on_command(int id) {
  if (id == IDOK) on_enter();
  if (id == IDCANCEL) hide();
  return id == IDOK || id == IDCANCEL;
}

// Enter in the list shows the row; anywhere else it is the button, which selects.
void SelectDialog::on_enter() {
  const int row = ListView_GetNextItem(products(), -1, LVNI_FOCUSED);
  if (GetFocus() == products() && row >= 0) {
    show_row(row);
  } else {
    select();
  }
}

void SelectDialog::hide() const {
  SetActiveWindow(GetWindow(window_, GW_OWNER));
  ShowWindow(window_, SW_HIDE);
}

// The class that was chosen stays, if the database has it.
void SelectDialog::list_classes() {
  const std::string chosen = texts().class_id;
  classes_ = session_.classes();
  SendDlgItemMessageW(window_, IDC_DUTY_CLASS, CB_RESETCONTENT, 0, 0);
  add_row(window_, IDC_DUTY_CLASS, kAllClasses);
  for (const std::string& class_id : classes_) add_row(window_, IDC_DUTY_CLASS, wide(class_id));
  const auto found = std::ranges::find(classes_, chosen);
  choose_row(window_, IDC_DUTY_CLASS,
             found == classes_.end() ? 0 : static_cast<int>(found - classes_.begin()) + 1);
}

DutyTexts SelectDialog::texts() const {
  const int row = chosen_row(window_, IDC_DUTY_CLASS);
  const bool is_class = row > 0 && row <= static_cast<int>(classes_.size());
  const auto unit = [&](std::span<const Unit> units, int id) {
    return &units[static_cast<std::size_t>(std::max(0, chosen_row(window_, id)))];
  };
  const int ranking = std::max(0, chosen_row(window_, IDC_DUTY_RANKING));
  return {text_of(window_, IDC_DUTY_FLOW),
          text_of(window_, IDC_DUTY_PRESSURE),
          text_of(window_, IDC_DUTY_LEVEL),
          text_of(window_, IDC_DUTY_DAMPING),
          text_of(window_, IDC_DUTY_WANTED),
          unit(flow_units(), IDC_DUTY_FLOW_UNIT),
          unit(pressure_units(), IDC_DUTY_PRESSURE_UNIT),
          is_class ? classes_[static_cast<std::size_t>(row) - 1] : std::string(),
          static_cast<std::int32_t>(hosts::rankings()[static_cast<std::size_t>(ranking)].value)};
}

void SelectDialog::select() {
  const DutyTexts asked = texts();
  try {
    const Waiting waiting;
    list(session_.catalogue().select(asked), *asked.pressure_unit);
  } catch (const FieldError& error) {
    tell(error);
  }
}

// What was found for another duty would stand there as if it were the answer.
void SelectDialog::tell(const FieldError& error) {
  found_.clear();
  ListView_DeleteAllItems(products());
  set_text(window_, IDC_DUTY_MESSAGE, error.text());
  HWND control = GetDlgItem(window_, control_of(error.field()));
  SendMessageW(window_, WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(control), TRUE);  // and selects its text
}

void SelectDialog::list(const Selection& selection, const Unit& pressure_unit) {
  ListView_DeleteAllItems(products());
  found_ = selection.products;
  list_titles(pressure_unit);
  for (int row = 0; row < static_cast<int>(found_.size()); ++row) {
    std::vector<std::wstring>& cells = found_[static_cast<std::size_t>(row)].cells;
    LVITEMW item{};
    item.mask = LVIF_TEXT;
    item.iItem = row;
    item.pszText = cells.front().data();
    ListView_InsertItem(products(), &item);
    for (int column = 1; column < kColumns; ++column) {
      ListView_SetItemText(products(), row, column, cells[static_cast<std::size_t>(column)].data());
    }
  }
  // Where the arrow keys begin; nothing is shown before a row is asked for.
  ListView_SetItemState(products(), 0, LVIS_FOCUSED, LVIS_FOCUSED);
  set_text(window_, IDC_DUTY_MESSAGE, selection.told);
}

// Makes the columns where there are none yet.
void SelectDialog::list_titles(const Unit& pressure_unit) const {
  RECT area{};
  GetClientRect(products(), &area);
  const int width = static_cast<int>(area.right) - GetSystemMetrics(SM_CXVSCROLL);
  std::vector<std::wstring> titles = found_titles(pressure_unit);
  for (int i = 0; i < kColumns; ++i) {
    LVCOLUMNW column{};
    column.mask = LVCF_TEXT | LVCF_WIDTH | LVCF_FMT;
    column.fmt = i < kFirstNumber ? LVCFMT_LEFT : LVCFMT_RIGHT;
    column.cx = width * kWidths[i] / 100;
    column.pszText = titles[static_cast<std::size_t>(i)].data();
    if (ListView_SetColumn(products(), i, &column) == FALSE) ListView_InsertColumn(products(), i, &column);
  }
}

void SelectDialog::show_row(int row) const {
  if (row >= 0 && row < static_cast<int>(found_.size())) session_.show(found_[static_cast<std::size_t>(row)]);
}

HWND SelectDialog::products() const {
  return GetDlgItem(window_, IDC_DUTY_PRODUCTS);
}

}  // namespace viewer
