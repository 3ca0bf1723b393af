// What the viewer says: its tree, lists, fields and results.
#include <vector>

#include "viewer_pixels.h"
#include "viewer_run.h"

namespace drive {
namespace {

constexpr SIZE_T kMostGrowthOfChoices = 0x100000;  // bytes

}  // namespace

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
  viewer.post_command(IDM_SELECT);
  dialog = viewer.wait_for_dialog();
  check(dialog != nullptr && contains(message_of(dialog), L"No database"), L"nothing to select from is told");
  if (dialog != nullptr) press(dialog, IDOK);
  check(viewer.close() == DWORD{0}, L"and ends with 0");
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
  check(before > 0 && after < before + kMostGrowthOfChoices,
        L"memory after reloading and choosing often: " + std::to_wstring(before / 1024) + L" KiB, then " +
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

}  // namespace drive
