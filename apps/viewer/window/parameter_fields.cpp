#include "window/parameter_fields.h"

#include <algorithm>
#include <cstring>

#include "model/database.h"
#include "tavd/L2dg.h"
#include "tavd/tavdg.h"
#include "window/resource.h"

namespace viewer {
namespace {

constexpr int kValueChars = 100;  // room for a row of a combo box

// Behind a title, for Alt and the number of the field.
constexpr const wchar_t* kMnemonics[] = {L" (&1)", L" (&2)"};

bool is_throw_parameter(const std::string& name) {
  return lstrcmpiA(name.c_str(), L2DG_THROW_PARAMETER) == 0;
}

// A title whose "&" is no mnemonic.
std::wstring title_of(const std::string& name) {
  std::wstring title;
  for (const wchar_t c : wide(name)) title += c == L'&' ? L"&&" : std::wstring(1, c);
  return title;
}

std::string value_of(const ParEntry& row) {
  std::string value(row.value, strnlen(row.value, sizeof row.value));
  value.erase(value.find_last_not_of(' ') + 1);
  std::erase(value, '"');
  return value;
}

}  // namespace

ParameterFields::ParameterFields(HWND host)
    : host_(host),
      fields_{
          {{IDC_FIRST_VALUE_LABEL, IDC_FIRST_VALUE, {}}, {IDC_SECOND_VALUE_LABEL, IDC_SECOND_VALUE, {}}}} {}

void ParameterFields::fill(const Product& product) {
  const std::vector<Choice> wanted = choices();
  clear();
  const ParTable* tables = product.flow.par;
  const int first = tables[0].name[0] != 0 ? 0 : 1;  // the library's combo box shows this one
  const std::string name = tables[first].name;
  if (!name.empty()) {
    show(fields_[0], name, title_of(name));
    tavdg_fill_parameter_combo(host_, fields_[0].combo);
  }
  const std::string second = first == 0 ? tables[1].name : "";
  if (has_throw_lines(product) && !is_throw_parameter(name) && !is_throw_parameter(second)) {
    show(fields_[1], L2DG_THROW_PARAMETER, L"Throw line");
    L2dg_fill_parameter_combo(host_, fields_[1].combo, 0);
  } else if (!second.empty()) {
    show(fields_[1], second, title_of(second));
    list_rows(fields_[1], tables[1]);
  }
  for (const Field& field : fields_) select(field, wanted);
}

void ParameterFields::clear() {
  for (Field& field : fields_) {
    field.name.clear();
    SendDlgItemMessageW(host_, field.combo, CB_RESETCONTENT, 0, 0);
    ShowWindow(GetDlgItem(host_, field.label), SW_HIDE);
    ShowWindow(GetDlgItem(host_, field.combo), SW_HIDE);
  }
}

std::vector<Choice> ParameterFields::choices() const {
  std::vector<Choice> all;
  for (const Field& field : fields_) {
    std::string value = chosen(field);
    if (!value.empty()) all.push_back({field.name, std::move(value)});
  }
  return all;
}

std::string ParameterFields::throw_value() const {
  for (const Field& field : fields_) {
    if (is_throw_parameter(field.name)) return chosen(field);
  }
  return {};
}

void ParameterFields::take_back() {
  for (const Field& field : fields_) SendDlgItemMessageW(host_, field.combo, CB_SETCURSEL, WPARAM(-1), 0);
}

bool ParameterFields::take_back(HWND combo) {
  if (SendMessageW(combo, CB_GETCURSEL, 0, 0) == CB_ERR) return false;
  SendMessageW(combo, CB_SETCURSEL, WPARAM(-1), 0);
  return true;
}

void ParameterFields::show(Field& field, const std::string& name, const std::wstring& title) {
  field.name = name;
  const std::size_t index = static_cast<std::size_t>(&field - fields_.data());
  SetDlgItemTextW(host_, field.label, (title + kMnemonics[index]).c_str());
  ShowWindow(GetDlgItem(host_, field.label), SW_SHOW);
  ShowWindow(GetDlgItem(host_, field.combo), SW_SHOW);
}

void ParameterFields::list_rows(const Field& field, const ParTable& table) {
  const int rows = std::clamp(int{table.count}, 0, int{TAVD_PARAMETER_ROWS});
  for (int i = 0; i < rows; ++i) {
    const std::string value = value_of(table.table[i]);
    SendDlgItemMessageA(host_, field.combo, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(value.c_str()));
  }
}

void ParameterFields::select(const Field& field, const std::vector<Choice>& wanted) {
  const auto found = std::ranges::find(wanted, field.name, &Choice::name);
  if (field.name.empty() || found == wanted.end()) return;
  const LRESULT row = SendDlgItemMessageA(host_, field.combo, CB_FINDSTRINGEXACT, WPARAM(-1),
                                          reinterpret_cast<LPARAM>(found->value.c_str()));
  if (row != CB_ERR) SendDlgItemMessageW(host_, field.combo, CB_SETCURSEL, static_cast<WPARAM>(row), 0);
}

std::string ParameterFields::chosen(const Field& field) const {
  if (field.name.empty()) return {};
  char value[kValueChars] = {};
  const LRESULT row = SendDlgItemMessageA(host_, field.combo, CB_GETCURSEL, 0, 0);
  if (row == CB_ERR) return {};
  const auto at = static_cast<WPARAM>(row);
  const LRESULT length = SendDlgItemMessageA(host_, field.combo, CB_GETLBTEXTLEN, at, 0);
  if (length == CB_ERR || length >= kValueChars) return {};
  SendDlgItemMessageA(host_, field.combo, CB_GETLBTEXT, at, reinterpret_cast<LPARAM>(value));
  return value;
}

}  // namespace viewer
