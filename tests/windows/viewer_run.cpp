#include "viewer_run.h"

#include <cstdio>

#include "viewer_pixels.h"

namespace drive {
namespace {

std::string narrow(const std::wstring& text) {
  std::string bytes(text.size() * 3, '\0');
  const int length = WideCharToMultiByte(CP_UTF8, 0, text.data(), static_cast<int>(text.size()), bytes.data(),
                                         static_cast<int>(bytes.size()), nullptr, nullptr);
  bytes.resize(static_cast<std::size_t>(length));
  return bytes;
}

}  // namespace

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
  drags();
  keyboard();
  copies();
  saves();
  prints();
  opens();
  selects_products();
  answers(L"QZFA-*", L"QZFA-160", {"FAN", "QZFA-160", 60, 100, "", ""});
  shoot(L"viewer-fan");
  answers(L"QZMA-*", L"QZMA-600x400", {"MLD", "QZMA-600x400", 3, 60, "", ""});
  visits_all();
  answers(L"QZSA-*", L"QZSA-200", {"ASD", "QZSA-200", 80, 50, "G", "90"});
  scales();
  chooses_throw_line();
  selects_from_another();
  closes();
  return failed_;
}

void Run::closes() {
  check(viewer_->close() == DWORD{0}, L"the viewer ends with 0");
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

// Menu and client area; title and frame are the system's. A dialog before it may be in front.
void Run::shoot(const std::wstring& name, HWND front) const {
  SetForegroundWindow(front != nullptr ? front : viewer_->window());
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

}  // namespace drive
