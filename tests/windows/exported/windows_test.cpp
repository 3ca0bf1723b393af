// Windows of all three kinds, made, painted, resized and destroyed again and again: nothing is left behind.
#include <gtest/gtest.h>
#include <windows.h>

#include <string>

#include "imports.h"
#include "live_objects.h"
#include "support/database.h"
#include "tavd/L2dg.h"
#include "tavd/flowdata.h"
#include "tavd/tavdg.h"
#include "tavd/tavdshapepic.h"

namespace {

using tavdtest::live_gdi_objects;
using tavdtest::live_windows;
using tavdtest::Record;

constexpr int kTimes = 1000;
constexpr int kTimesBefore = 20;  // until the system's own stores of fonts and device contexts are filled

HINSTANCE module() {
  return GetModuleHandleA(nullptr);
}

struct Kind {
  const char* name;
  const char* class_name;
  WNDPROC procedure;
  void (*show)();  // a product that the window paints
  void (*release)();
};

void show_flow_diagram() {
  tavdg_init_empty(module(), 0);
  Record product("TST", "FAN");
  product.header(110, 0, 0, 100, 1000, 100, 10000).floats(1651, {100, 100});
  ASSERT_EQ(tavdg_initdiagramdata(product.rec()), 0);
}

void show_throw_diagram() {
  L2dg_init_empty(module(), 0);
  Record product("TST", "GRILLE");
  product.header(110, 0, 0, 100, 1000, 10, 100).rows<QvL2Point>(1659, {{100, 1}});
  ASSERT_EQ(L2dg_initdiagramdata(product.rec()), 0);
}

void show_picture() {
  tavdshapepic_init(module(), 0, nullptr, 0);
  Record product("TST", "BOX");
  product.words(1110, {102, 400, 300, 200, 100, 50}).text(1501, "BOX 400");
  tavdshapepic_initdata(product.rec());
}

const Kind kKinds[] = {
    {"FlowDiagram", "TAVDDGR", tavdg_diagram_proc, show_flow_diagram, tavdg_release},
    {"ThrowDiagram", "TAVDDGRL02", L2dg_diagram_proc, show_throw_diagram, L2dg_release},
    {"Picture", "TAVDSHAPE", tavdshapepic_picproc, show_picture, tavdshapepic_release},
};

class LibraryWindow : public testing::TestWithParam<Kind> {
 protected:
  void SetUp() override {
    host_ = CreateWindowExA(0, "STATIC", "host", WS_POPUP | WS_VISIBLE, 0, 0, 500, 400, nullptr, nullptr,
                            module(), nullptr);
    GetParam().show();
    class_name_ = GetParam().class_name;
    WNDCLASSEXA known{};
    known.cbSize = sizeof known;
    if (GetClassInfoExA(module(), class_name_.c_str(), &known) == 0) class_name_ = own_class();
  }
  void TearDown() override {
    GetParam().release();
    DestroyWindow(host_);
  }

  // A child of the host's window, as a host has it.
  HWND create() const {
    return CreateWindowExA(0, class_name_.c_str(), "", WS_CHILD | WS_VISIBLE, 20, 20, 400, 300, host_,
                           nullptr, module(), nullptr);
  }

  static void paint(HWND window) {
    InvalidateRect(window, nullptr, TRUE);
    ASSERT_NE(GetUpdateRect(window, nullptr, FALSE), 0);
    UpdateWindow(window);
    ASSERT_EQ(GetUpdateRect(window, nullptr, FALSE), 0) << "the window has not painted itself";
  }

  static int dark_pixels(HWND window) {
    RECT client{};
    GetClientRect(window, &client);
    HDC hdc = GetDC(window);
    int dark = 0;
    for (int y = 0; y < client.bottom; y += 2) {
      for (int x = 0; x < client.right; x += 2) dark += GetPixel(hdc, x, y) == RGB(0, 0, 0) ? 1 : 0;
    }
    ReleaseDC(window, hdc);
    return dark;
  }

  void cycle(int times) const {
    for (int i = 0; i < times; ++i) {
      HWND window = create();
      ASSERT_NE(window, nullptr);
      paint(window);
      SetWindowPos(window, nullptr, 0, 0, 200 + i % 50, 150 + i % 40, SWP_NOMOVE | SWP_NOZORDER);
      paint(window);
      DestroyWindow(window);
    }
  }

 private:
  // A class of the host's own with the procedure that the library exports, where the platform refuses the
  // library's class record.
  static std::string own_class() {
    const std::string name = std::string("Host") + GetParam().class_name;
    WNDCLASSEXA host{};
    host.cbSize = sizeof host;
    host.style = CS_HREDRAW | CS_VREDRAW;
    host.lpfnWndProc = GetParam().procedure;
    host.hInstance = module();
    host.hCursor = LoadCursorA(nullptr, MAKEINTRESOURCEA(0x7F00));
    host.hbrBackground = reinterpret_cast<HBRUSH>(INT_PTR{COLOR_WINDOW + 1});
    host.lpszClassName = name.c_str();
    RegisterClassExA(&host);  // once; afterwards it is known
    return name;
  }

  HWND host_ = nullptr;
  std::string class_name_;
};

TEST_P(LibraryWindow, PaintsBlackLinesOnWhite) {
  HWND window = create();
  ASSERT_NE(window, nullptr);
  paint(window);
  EXPECT_GT(dark_pixels(window), 50);
  EXPECT_LT(dark_pixels(window), 400 * 300 / 4 / 2);
  DestroyWindow(window);
}

TEST_P(LibraryWindow, LeavesNothingBehind) {
  cycle(kTimesBefore);
  const int objects = live_gdi_objects();
  const int windows = live_windows();
  cycle(kTimes);
  EXPECT_EQ(live_gdi_objects(), objects);
  EXPECT_EQ(live_windows(), windows);
}

HGDIOBJ forgotten = nullptr;

BOOL WINAPI forget_one(HGDIOBJ object) {
  if (forgotten != nullptr) return DeleteObject(object);
  forgotten = object;
  return TRUE;
}

// The counts above are worth something only if they tell a single object and a single window.
TEST_P(LibraryWindow, ObjectThatIsForgottenIsCounted) {
  cycle(kTimesBefore);
  const int objects = live_gdi_objects();
  const int windows = live_windows();
  forgotten = nullptr;
  {
    const tavdtest::Redirected deleting(GetModuleHandleA("tavd.dll"), "DeleteObject",
                                        reinterpret_cast<void*>(&forget_one));
    ASSERT_NE(deleting.original(), nullptr);
    cycle(1);
  }
  ASSERT_NE(forgotten, nullptr);
  EXPECT_EQ(live_gdi_objects(), objects + 1);
  DeleteObject(forgotten);
  EXPECT_EQ(live_gdi_objects(), objects);
  HWND window = create();
  EXPECT_EQ(live_windows(), windows + 1);
  DestroyWindow(window);
  EXPECT_EQ(live_windows(), windows);
}

INSTANTIATE_TEST_SUITE_P(Kind, LibraryWindow, testing::ValuesIn(kKinds),
                         [](const auto& info) { return info.param.name; });

TEST(WindowClass, OfTheFlowDiagramIsRegisteredAsTold) {
  ASSERT_EQ(tavdg_init_empty(module(), 0), 0);
  WNDCLASSEXA known{};
  known.cbSize = sizeof known;
  ASSERT_NE(GetClassInfoExA(module(), "TAVDDGR", &known), 0);
  EXPECT_EQ(known.style, 3U);
  EXPECT_EQ(reinterpret_cast<void*>(known.lpfnWndProc),
            reinterpret_cast<void*>(GetProcAddress(GetModuleHandleA("tavd.dll"), "tavdg_diagram_proc")));
  EXPECT_EQ(known.cbClsExtra, 0);
  EXPECT_EQ(known.cbWndExtra, 8);
  EXPECT_EQ(known.hbrBackground, reinterpret_cast<HBRUSH>(INT_PTR{6}));
  EXPECT_EQ(known.hCursor, LoadCursorA(nullptr, MAKEINTRESOURCEA(0x7F00)));
  EXPECT_EQ(known.lpszMenuName, nullptr);
}

TEST(Library, MayBeLoadedAndReleasedAgainAndAgain) {
  char folder[MAX_PATH] = "";
  ASSERT_NE(GetModuleFileNameA(GetModuleHandleA("tavd.dll"), folder, MAX_PATH), 0U);
  const std::string copy = std::string(folder) + ".copy.dll";
  ASSERT_NE(CopyFileA(folder, copy.c_str(), FALSE), 0);
  const int objects = live_gdi_objects();
  for (int i = 0; i < 20; ++i) {
    HMODULE library = LoadLibraryA(copy.c_str());
    ASSERT_NE(library, nullptr);
    const auto version =
        reinterpret_cast<int (*)(int)>(reinterpret_cast<void*>(GetProcAddress(library, "tavd_version_nmb")));
    ASSERT_NE(version, nullptr);
    EXPECT_EQ(version(190), 190);
    EXPECT_NE(FreeLibrary(library), 0);
    EXPECT_EQ(GetModuleHandleA(copy.c_str()), nullptr) << "it stays in the process";
  }
  EXPECT_EQ(live_gdi_objects(), objects);
  EXPECT_NE(DeleteFileA(copy.c_str()), 0);
}

}  // namespace
