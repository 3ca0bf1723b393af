// A host's dialog that the user works with: sizes in a list box, values of a parameter in a combo box.
#include <gtest/gtest.h>
#include <windows.h>

#include <cstring>
#include <string>
#include <vector>

#include "host.h"
#include "support/database.h"
#include "support/messages.h"
#include "tavd/L2dg.h"
#include "tavd/flowdata.h"
#include "tavd/tavdg.h"
#include "tavd/tavdshapepic.h"

namespace {

using tavdtest::Database;
using tavdtest::Dialog;
using tavdtest::Drawn;
using tavdtest::kCombo;
using tavdtest::kList;
using tavdtest::Record;
using Texts = std::vector<std::wstring>;

HINSTANCE module() {
  return GetModuleHandleA(nullptr);
}

ParEntry entry(const char (&value)[7], float dk) {
  ParEntry row{};
  std::memcpy(row.value, value, sizeof row.value);
  row.dk = dk;
  return row;
}

// One of the library's three drawings in a host's dialog, in either kind of characters.
struct Family {
  const char* name;
  Dialog::Characters characters;
  bool utf8;
};

class SizesDialog : public testing::TestWithParam<Family> {
 protected:
  SizesDialog() : host_(GetParam().characters) {
    if (GetParam().utf8) Record("000", "FILEHEADER").words(1049, {1}).save(db());
    Record("TST", "ABC-*").words(1150, {1}).save(db());
    add("ABC-100", "ABC 100");
    add("ABC-200", GetParam().utf8 ? "ABC \xC3\x84\xD0\x96 200" : "ABC \xC4 200");
    main_ = tavbfindrec(db(), "TST", "ABC-*", 0);
  }
  ~SizesDialog() override { tavbreleaserec(main_); }

  std::int16_t db() const { return database_.handle(); }
  static std::wstring second() { return GetParam().utf8 ? L"ABC \u00C4\u0416 200" : L"ABC \u00C4 200"; }
  // Rows are narrow: where the system's code page has no such letter, it shows as "?".
  static Texts sizes() {
    char narrow[40] = "";
    wchar_t shown[40] = L"";
    WideCharToMultiByte(CP_ACP, WC_NO_BEST_FIT_CHARS, second().c_str(), -1, narrow, 40, nullptr, nullptr);
    MultiByteToWideChar(CP_ACP, 0, narrow, -1, shown, 40);
    return {L"ABC 100", shown};
  }

  void add(const char* id, const char* code) {
    Record size("TST", id);
    size.header(110, 0, 0, 100, 1000, 100, 10000).floats(1651, {100, 100}).text(1501, code);
    size.rows<QvL2Point>(1659, {{100, 1}}).words(1110, {102, 400, 300, 200, 100, 50});
    size.save(db());
  }

  Database database_;
  Dialog host_;
  tavb_rec main_ = nullptr;
};

std::wstring first_text(void (*create)(), void (*draw)(tavd_hdc), void (*destroy)()) {
  create();
  const Drawn all = tavdtest::drawn([draw](HDC hdc) { draw(hdc); });
  destroy();
  return all.texts.empty() ? L"" : all.texts.front();
}

std::wstring flow_title() {
  return first_text(tavdg_create_drawing_tools, tavdg_draw_diagram, tavdg_destroy_drawing_tools);
}
std::wstring throw_title() {
  return first_text(L2dg_create_drawing_tools, L2dg_draw_diagram, L2dg_destroy_drawing_tools);
}
std::wstring picture_title() {
  return first_text(tavdshapepic_create_drawing_tools, tavdshapepic_draw, tavdshapepic_destroy_drawing_tools);
}

TEST_P(SizesDialog, ChosenSizeIsDrawnByTheFlowDiagram) {
  host_.selected = [this](int id) {
    if (id == kList) tavdg_update_from_list(host_.window());
  };
  ASSERT_EQ(tavdg_init(module(), db(), main_, kList, 0, 0), 0);
  tavdg_fillsizeLB(host_.window());
  EXPECT_EQ(host_.rows(kList), sizes());
  EXPECT_EQ(host_.send(kList, LB_GETCURSEL), 0);
  host_.choose(kList, 1);
  EXPECT_EQ(flow_title(), second());
  host_.choose(kList, 0);
  EXPECT_EQ(flow_title(), L"ABC 100");
  tavdg_release();
}

TEST_P(SizesDialog, ChosenSizeIsDrawnByTheThrowDiagram) {
  if (GetParam().utf8) GTEST_SKIP() << "its texts are narrow";
  host_.selected = [this](int id) {
    if (id == kList) L2dg_update_from_list(host_.window());
  };
  L2dg_init(module(), db(), main_, kList, 0, 0, 0);  // -1 where the platform refuses its class
  L2dg_init(module(), db(), main_, kList, 0, 0, 0);
  L2dg_fillsizeLB(host_.window());
  EXPECT_EQ(host_.rows(kList), sizes());
  host_.choose(kList, 1);
  EXPECT_EQ(throw_title(), second());
  L2dg_release();
}

TEST_P(SizesDialog, ChosenSizeIsDrawnByThePicture) {
  if (GetParam().utf8) GTEST_SKIP() << "its texts are narrow";
  host_.selected = [this](int id) {
    if (id == kList) tavdshapepic_update_from_list(host_.window());
  };
  tavdshapepic_init(module(), db(), main_, kList);
  tavdshapepic_fillsizeLB(host_.window());
  EXPECT_EQ(host_.rows(kList), sizes());
  host_.choose(kList, 1);
  EXPECT_EQ(picture_title(), second());
  tavdshapepic_release();
}

INSTANTIATE_TEST_SUITE_P(Characters, SizesDialog,
                         testing::Values(Family{"Narrow", Dialog::Characters::narrow, false},
                                         Family{"Wide", Dialog::Characters::wide, false},
                                         Family{"Utf8", Dialog::Characters::wide, true}),
                         [](const auto& info) { return info.param.name; });

TEST(ParameterDialog, ChosenValueIsDrawn) {
  Dialog host;
  host.selected = [&host](int id) {
    if (id == kCombo) tavdg_update_parameter_combo(host.window(), kCombo);
  };
  ASSERT_EQ(tavdg_init_empty(module(), 0), 0);
  tavdg_reset_parameters();
  const std::vector<ParEntry> table = {entry("1     ", 0), entry("\"2\"   ", 0.03F)};
  Record product("TST", "PRODUCT");
  product.header(110, 0, 0, 100, 1000, 100, 10000).floats(1651, {100, 100}).text(1514, "A").rows(1661, table);
  ASSERT_EQ(tavdg_initdiagramdata(product.rec()), 0);
  EXPECT_EQ(tavdg_fill_parameter_combo(host.window(), kCombo), 2);
  EXPECT_EQ(host.rows(kCombo), (Texts{L"1", L"2"}));
  const auto lines = [] {
    tavdg_create_drawing_tools();
    const Drawn all = tavdtest::drawn([](HDC hdc) { tavdg_draw_diagram(hdc); });
    tavdg_destroy_drawing_tools();
    return all.lines;
  };
  const auto before = lines();
  host.choose(kCombo, 0);
  EXPECT_EQ(lines(), before) << "the first value adds nothing";
  host.choose(kCombo, 1);
  const auto after = lines();
  EXPECT_NE(after, before);
  EXPECT_NE(std::find(after.begin(), after.end(), "move 1955 6093"), after.end()) << "the higher resistance";
  tavdg_release();
}

TEST(Warning, HasItsTextAndItsOwner) {
  const Dialog host;
  tavdtest::Messages messages(1, host.window());
  tavca_msg("text");
  EXPECT_EQ(messages.texts, std::vector<std::string>{"text"});
  EXPECT_EQ(messages.owners, std::vector<HWND>{host.window()});
}

TEST(Warning, IsNotShownWithWarningsOff) {
  tavdtest::Messages messages(0);
  tavca_msg("text");
  EXPECT_TRUE(messages.texts.empty());
}

}  // namespace
