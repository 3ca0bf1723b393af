// The pictures of libtavdn beside the exported drawings: the same operations in the same order for every
// product of the sample catalogue, whose charts are wide, and of a made-up one with narrow texts; and from
// sixteen threads at once the bytes that one thread draws.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstring>
#include <functional>
#include <memory>
#include <string>
#include <thread>
#include <vector>

#include "support/program.h"
#include "support/recording.h"
#include "tavd/attributes.h"
#include "tavd/tavb.h"
#include "tavd/tavd.h"
#include "tavd/tavdn.h"
#include "tavd/tavdsrv.h"
#include "tavdgui/tavdcairo.h"

namespace {

using tavdtest::Recording;

constexpr int kThreads = 16;

struct RecordRelease {
  void operator()(void* record) const { tavbreleaserec(record); }
};
using Record = std::unique_ptr<void, RecordRelease>;

struct ProductRelease {
  void operator()(tavdn_product* product) const { tavdn_release(product); }
};
using Prepared = std::unique_ptr<tavdn_product, ProductRelease>;

template <typename Options>
Options cleared() {
  Options options;
  std::memset(&options, 0, sizeof options);
  options.size = sizeof options;
  return options;
}

// A product of the catalogue as both ways of drawing take it.
struct Item {
  std::string name;
  std::int16_t db;
  bool is_wide;  // the charts of its database
  Record record;
  std::string code;
  std::u16string wide_code;
  FlowData flow;       // end reflection as the flow diagram has it
  Prepared product;    // of that
  Prepared untouched;  // of the record as it was loaded
  tavdn_shape shape;
};

class CatalogueDrawings : public testing::Test {
 protected:
  static void SetUpTestSuite() {
    folder_ = std::make_unique<clitest::Folder>();
    tavdcore_init(0, "", "");
    const std::string sample = folder_->file("catalogue.tavdb");
    add_products(sample, {"db", "build", TAVD_SOURCE_DIR "/catalogue", "-o", sample});
    const std::string made_up = folder_->file("synth.tavdb");
    add_products(made_up, {"db", "synth", made_up, "--records", "300"});
    const auto wide =
        std::count_if(items_.begin(), items_.end(), [](const Item& item) { return item.is_wide; });
    ASSERT_GT(wide, 80);
    ASSERT_GT(static_cast<std::ptrdiff_t>(items_.size()) - wide, 80);
  }
  static void TearDownTestSuite() {
    items_.clear();
    folder_.reset();
  }

  static std::string exported_flow(const Item& item, const tavdn_flow_options& options) {
    tavdg_init_empty(tgui_main_module(), item.db);
    tavdg_reset_parameters();
    tavdg_set_xunit(options.xunit);
    tavdg_set_yunit(options.yunit);
    tavdg_set_dptype(options.dptype);
    tavdg_set_title(options.title);
    tavdg_set_LpA_label(options.LpA_label);
    tavdg_set_damperpos_label(options.damperpos_label);
    for (int i = 0; i < options.na_labels; ++i)
      tavdg_set_a_label(options.a_labels[i].position, options.a_labels[i].text);
    tavdg_set_lpmin_lpmax_lpstep(options.lpmin, options.lpmax, options.lpstep);
    tavdg_set_operation_point(options.qv, options.dp);
    tavdg_set_qvlimits(options.qvlimit1, options.qvlimit2);
    if (options.resolution != 0) tavdg_setcurveresolution(options.resolution);
    const bool is_built = tavdg_initdiagramdata(item.record.get()) == 0;
    const tavdn_rectangle& r = options.rectangle;
    if (is_built && r.right != 0) tavdg_resize(r.left, r.top, r.right, r.bottom);
    const Recording recording;
    if (is_built) {
      tavdg_create_drawing_tools();
      tavdg_draw_diagram(recording.surface());
      tavdg_destroy_drawing_tools();
    }
    tavdg_release();
    return recording.text();
  }

  static std::string exported_throw(const Item& item, const tavdn_throw_options& options) {
    L2dg_init(tgui_main_module(), item.db, nullptr, 0, options.qv, 0,
              static_cast<std::int16_t>(options.xunit));
    L2dg_reset_parameters();
    if (options.value != nullptr) L2dg_set_parameter(L2DG_THROW_PARAMETER, options.value);
    L2dg_set_title(options.title);
    const bool is_built = L2dg_initdiagramdata(item.record.get()) == 0;
    const tavdn_rectangle& r = options.rectangle;
    if (is_built && r.right != 0) L2dg_resize(r.left, r.top, r.right, r.bottom);
    const Recording recording;
    if (is_built) {
      L2dg_create_drawing_tools();
      L2dg_draw_diagram(recording.surface());
      L2dg_destroy_drawing_tools();
    }
    L2dg_release();
    L2dg_reset_parameters();
    return recording.text();
  }

  static std::string exported_shape(const Item& item, const tavdn_shape_options& options) {
    tavdshapepic_init(tgui_main_module(), item.db, nullptr, 0);
    tavdshapepic_set_title(options.title);
    tavdshapepic_initdata(item.record.get());
    const tavdn_rectangle& r = options.rectangle;
    if (r.right != 0) tavdshapepic_resize(r.left, r.top, r.right, r.bottom);
    const Recording recording;
    tavdshapepic_create_drawing_tools();
    tavdshapepic_draw(recording.surface());
    tavdshapepic_destroy_drawing_tools();
    tavdshapepic_release();
    return recording.text();
  }

  static std::vector<Item> items_;

 private:
  // Makes a database with the program and keeps its products; they outlive the database.
  static void add_products(const std::string& path, const std::vector<std::string>& arguments) {
    const clitest::Outcome made = clitest::run_program(arguments);
    ASSERT_EQ(made.exit_code, 0) << made.err;
    const std::int16_t db = tavdf_open_database(path.c_str(), 0);
    ASSERT_GE(db, 1);
    std::int16_t utf8 = 0;
    tavbfindatt(db, "000", "FILEHEADER", TAVD_ATT_USES_UTF8, nullptr, &utf8, sizeof utf8);
    for (Record at(tavbfindrec(db, "   ", "", TAVB_FIND_FROM)); at;) {
      Record next(tavbnextrec(db, at.get()));
      add(db, utf8 == TAVD_TEXTS_UTF8, std::move(at));
      at = std::move(next);
    }
  }

  static void add(std::int16_t db, bool is_wide, Record record) {
    Item item{};
    item.db = db;
    item.is_wide = is_wide;
    char class_id[8];
    char object_id[32];
    char name[32];
    tavbgetID(db, record.get(), class_id, object_id);
    tavbobjIDtosz(db, object_id, name);
    item.name = std::string(class_id, 3) + ' ' + name;
    char code[TAVDG_TITLE_CHARS];
    tavdf_copyproductcode(db, record.get(), code, sizeof code);
    item.code = code;
    tavd_wchar wide_code[TAVDG_TITLE_CHARS];
    tavdf_copyproductcodew(db, record.get(), wide_code, TAVDG_TITLE_CHARS);
    item.wide_code = reinterpret_cast<const char16_t*>(wide_code);
    tavca_load_flowdata(db, record.get(), &item.flow);
    tavdn_product* product = nullptr;
    ASSERT_EQ(TAVDN_OK, tavdn_prepare(&item.flow, nullptr, &product));
    item.untouched.reset(product);
    tavca_check_end_reflection(&item.flow);
    ASSERT_EQ(TAVDN_OK, tavdn_prepare(&item.flow, nullptr, &product));
    item.product.reset(product);
    tavdn_read_shape(db, record.get(), &item.shape);
    item.record = std::move(record);
    items_.push_back(std::move(item));
  }

  static std::unique_ptr<clitest::Folder> folder_;
};

std::vector<Item> CatalogueDrawings::items_;
std::unique_ptr<clitest::Folder> CatalogueDrawings::folder_;

tavdn_flow_options plain_options(const Item& item) {
  auto options = cleared<tavdn_flow_options>();
  options.title = item.code.c_str();
  if (item.is_wide) options.titlew = reinterpret_cast<const tavd_wchar*>(item.wide_code.c_str());
  options.roomdamp = 4.0F;
  return options;
}

std::string many_flow(const Item& item, const tavdn_flow_options& options, int* code) {
  const Recording recording;
  *code = tavdn_draw_flow(item.product.get(), &options, recording.surface());
  return recording.text();
}

TEST_F(CatalogueDrawings, FlowDiagramsAreTheExportedOnes) {
  int drawn = 0;
  for (const Item& item : items_) {
    const tavdn_flow_options options = plain_options(item);
    int code = 0;
    const std::string many = many_flow(item, options, &code);
    ASSERT_EQ(exported_flow(item, options), many) << item.name;
    EXPECT_EQ(code, many.empty() ? TAVDN_NOT_DRAWN : TAVDN_OK) << item.name;
    drawn += code == TAVDN_OK ? 1 : 0;
  }
  EXPECT_GT(drawn, 50);
}

TEST_F(CatalogueDrawings, FlowDiagramsWithEveryOptionAreTheExportedOnes) {
  constexpr std::array<tavdn_position_label, 2> kLabels = {{{1.0F, "first %%"}, {45.0F, "wide"}}};
  int changed = 0;
  for (const Item& item : items_) {
    tavdn_flow_options options = plain_options(item);
    options.title =
        "a title of the host's, which is longer than the room that a chart's title has, so that it is cut";
    options.qv = (item.flow.qvmin + item.flow.qvmax) / 2;
    options.dp = (item.flow.dpmin + item.flow.dpmax) / 2;
    options.qvlimit1 = item.flow.qvmin * 1.2F;
    options.qvlimit2 = item.flow.qvmax * 0.9F;
    options.xunit = TAVDG_FLOW_M3_H;
    options.yunit = TAVDG_PRESSURE_KPA;
    options.dptype = TAVDG_DP_STATIC;
    options.lpmin = 25;
    options.lpmax = 60;
    options.lpstep = 5;
    options.resolution = 5;
    options.LpA_label = "dB(A)";
    options.damperpos_label = "pos";
    options.a_labels = kLabels.data();
    options.na_labels = kLabels.size();
    options.rectangle = {100, 50, 7000, 5000};
    int code = 0;
    const std::string many = many_flow(item, options, &code);
    ASSERT_EQ(exported_flow(item, options), many) << item.name;
    if (many != many_flow(item, plain_options(item), &code)) ++changed;
  }
  EXPECT_GT(changed, 50);
}

TEST_F(CatalogueDrawings, ThrowDiagramsAreTheExportedOnes) {
  int drawn = 0;
  for (const Item& item : items_) {
    for (const char* value : {"", "0", "45"}) {
      auto options = cleared<tavdn_throw_options>();
      options.title = item.code.c_str();
      options.value = value;
      options.qv = (item.flow.qvmin + item.flow.qvmax) / 2;
      options.xunit = value[0] == 0 ? L2DG_FLOW_L_S : L2DG_FLOW_M3_H_M;
      if (value[0] == '4') options.rectangle = {0, 0, 4000, 3000};
      const Recording recording;
      const int code = tavdn_draw_throw(item.untouched.get(), &options, recording.surface());
      ASSERT_EQ(exported_throw(item, options), recording.text()) << item.name << ' ' << value;
      EXPECT_EQ(code, recording.text().empty() ? TAVDN_NOT_DRAWN : TAVDN_OK) << item.name;
      drawn += code == TAVDN_OK ? 1 : 0;
    }
  }
  EXPECT_GT(drawn, 20);
}

TEST_F(CatalogueDrawings, SketchesAreTheExportedOnes) {
  int sketches = 0;
  for (const Item& item : items_) {
    auto options = cleared<tavdn_shape_options>();
    options.title = item.code.c_str();
    for (const bool small : {false, true}) {
      if (small) options.rectangle = {10, 20, 260, 440};
      const Recording recording;
      ASSERT_EQ(TAVDN_OK, tavdn_draw_shape(&item.shape, &options, recording.surface()));
      ASSERT_EQ(exported_shape(item, options), recording.text()) << item.name;
      sketches += recording.segments().empty() ? 0 : 1;
    }
  }
  EXPECT_GT(sketches, 50);
}

TEST_F(CatalogueDrawings, RoomDampingOfTheCallMovesTheLevels) {
  const auto levels = [](float roomdamp) {
    std::string all;
    for (const Item& item : items_) {
      tavdn_flow_options options = plain_options(item);
      options.roomdamp = roomdamp;
      int code = 0;
      all += many_flow(item, options, &code);
    }
    return all;
  };
  const std::string before = levels(4.0F);
  tavca_setroomdamp(12.0F);
  const std::string other = levels(4.0F);
  const Item& item =
      *std::find_if(items_.begin(), items_.end(), [](const Item& i) { return i.name == "DMP QZDA-160"; });
  tavdn_flow_options options = plain_options(item);
  options.roomdamp = 12.0F;
  int code = 0;
  const std::string damped = many_flow(item, options, &code);
  EXPECT_EQ(exported_flow(item, options), damped);
  tavca_setroomdamp(4.0F);
  EXPECT_EQ(before, other);
  EXPECT_NE(exported_flow(item, options), damped);
}

TEST(Drawings, RefuseWhatIsNoProductOrNoRecord) {
  auto flow = cleared<tavdn_flow_options>();
  auto shape_options = cleared<tavdn_shape_options>();
  const tavdn_shape shape{};
  EXPECT_EQ(TAVDN_BAD_ARGUMENT, tavdn_draw_flow(nullptr, &flow, nullptr));
  EXPECT_EQ(TAVDN_BAD_ARGUMENT, tavdn_draw_throw(nullptr, nullptr, nullptr));
  EXPECT_EQ(TAVDN_BAD_ARGUMENT, tavdn_draw_shape(nullptr, &shape_options, nullptr));
  shape_options.size -= 1;
  EXPECT_EQ(TAVDN_BAD_ARGUMENT, tavdn_draw_shape(&shape, &shape_options, nullptr));
  EXPECT_EQ(TAVDN_OK, tavdn_draw_shape(&shape, nullptr, nullptr));
  tavdn_read_shape(TAVB_NO_DATABASE, nullptr, nullptr);
}

TEST(Drawings, LyingCountsOfAShapeStayInside) {
  for (const int number : {-32768, -1, 0, 101, 107, 164, 180, 192, 32767}) {
    for (const int count : {-32768, 0, 3, 30, 31, 32767}) {
      tavdn_shape shape{};
      std::fill(std::begin(shape.values), std::end(shape.values), static_cast<std::int16_t>(-32768));
      shape.values[0] = static_cast<std::int16_t>(number);
      shape.nvalues = static_cast<std::int16_t>(count);
      shape.nheader = 1;
      const Recording recording;
      EXPECT_EQ(TAVDN_OK, tavdn_draw_shape(&shape, nullptr, recording.surface()));
    }
  }
}

// ---- Threads ----

int32_t keep(void* kept, const void* bytes, std::size_t length) {
  static_cast<std::string*>(kept)->assign(static_cast<const char*>(bytes), length);
  return 0;
}

using Make = std::function<tgui_surface*()>;

void map(tgui_surface* surface, int width, int height) {
  tgui_set_map_mode(surface, TGUI_MM_ANISOTROPIC);
  tgui_set_window_ext(surface, width, height);
  tgui_set_viewport_ext(surface, 400, 300);
  tgui_set_background_mode(surface, TGUI_TRANSPARENT);
}

// The bytes of a picture with all drawings of an item.
std::string picture(const Item& item, const Make& make) {
  tgui_surface* const surface = make();
  tavdn_flow_options flow = plain_options(item);
  flow.LpA_label = "dB(A)";
  auto throws = cleared<tavdn_throw_options>();
  throws.title = item.code.c_str();
  auto sketch = cleared<tavdn_shape_options>();
  sketch.title = item.code.c_str();
  map(surface, TAVDG_EXTENT, TAVDG_EXTENT);
  tavdn_draw_flow(item.product.get(), &flow, surface);
  tavdn_draw_throw(item.untouched.get(), &throws, surface);
  map(surface, TAVDSHAPEPIC_WIDTH, TAVDSHAPEPIC_HEIGHT);
  tavdn_draw_shape(&item.shape, &sketch, surface);
  std::string bytes;
  EXPECT_EQ(0, tgui_cairo_finish_into(surface, keep, &bytes, nullptr, 0));
  return bytes;
}

TEST_F(CatalogueDrawings, SixteenThreadsDrawTheBytesOfOne) {
  const std::array<Make, 3> forms = {[] { return tgui_cairo_svg("x.svg", 400, 300); },
                                     [] { return tgui_cairo_png("x.png", 400, 300); },
                                     [] { return tgui_cairo_pdf("x.pdf", 400, 300, 297, 210); }};
  constexpr std::size_t kItems = 12;
  std::vector<const Item*> some;
  for (std::size_t i = 0; some.size() < kItems; i += items_.size() / kItems) some.push_back(&items_[i]);
  std::vector<std::string> alone;
  for (const Item* item : some) {
    for (const Make& make : forms) alone.push_back(picture(*item, make));
  }
  std::array<std::vector<std::string>, kThreads> drawn;
  {
    std::vector<std::jthread> threads;
    for (std::vector<std::string>& pictures : drawn) {
      threads.emplace_back([&] {
        for (const Item* item : some) {
          for (const Make& make : forms) pictures.push_back(picture(*item, make));
        }
      });
    }
  }
  for (const std::vector<std::string>& pictures : drawn) EXPECT_TRUE(pictures == alone);
  EXPECT_EQ(0, tgui_object_count());
}

}  // namespace
