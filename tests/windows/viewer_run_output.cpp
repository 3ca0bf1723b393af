// What the viewer hands out: metafiles, files, pages.
#include <windows.h>

#include <commctrl.h>

#include "viewer_pixels.h"
#include "viewer_printer.h"
#include "viewer_run.h"

namespace drive {
namespace {

constexpr SIZE kPagePicture = {720, 1040};  // pixels of metafiles played
constexpr SIZE kDiagramPicture = {640, 480};

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

}  // namespace

void Run::copies() {
  const wchar_t* const names[] = {L"flow diagram", L"throw length diagram", L"sketch", L"page"};
  const wchar_t* const files[] = {L"\\copied-flow.png", L"\\copied-throw.png", L"\\copied-sketch.png",
                                  L"\\viewer-page.png"};
  for (int i = 0; i <= kDrawings; ++i) {
    viewer_->command(IDM_COPY_FIRST + i);
    Records records;
    if (OpenClipboard(nullptr) != FALSE) {
      auto* metafile = static_cast<HENHMETAFILE>(GetClipboardData(CF_ENHMETAFILE));
      if (metafile != nullptr) {
        records = records_of(metafile);
        save_png(played(metafile, i == kDrawings ? kPagePicture : kDiagramPicture), folder_ + files[i]);
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

}  // namespace drive
