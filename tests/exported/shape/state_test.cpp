// The picture's state: product, title, sizes of a family, and the plane in its rectangle.
#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <string>
#include <vector>

#include "exported/shape/picture_fixture.h"
#include "support/dialog.h"

namespace {

using tavdtest::Drawing;
using tavdtest::kList;
using tavdtest::Position;
using tavdtest::Record;
using tavdtest::Segment;
using Strings = std::vector<std::string>;
using Words = std::vector<std::int16_t>;

class ShapeState : public tavdtest::ShapePicture {
 protected:
  std::int16_t db() const { return database_.handle(); }
  std::string title() { return drawing().title.text; }
  // A product with a code and, as its first dimension, a length.
  static Record& product(Record& record, const char* code, std::int16_t length) {
    return record.text(1501, code).rows(1110, Words{140, length});
  }

  tavdtest::Database database_;
};

// ---- Setting up ----

TEST_F(ShapeState, WithoutAListTheInitReadsTheProduct) {
  Record record("TST", "ONE");
  product(record, "Code of one", 250);
  tavdshapepic_init(tgui_main_module(), db(), record.rec(), 0);
  EXPECT_EQ("Code of one", title());
  EXPECT_EQ(Strings{"250"}, drawing().said());
}

TEST_F(ShapeState, WithAListTheInitLeavesTheDataToIt) {
  Record record("TST", "ONE");
  product(record, "Code of one", 250);
  tavdshapepic_init(tgui_main_module(), db(), record.rec(), kList);
  EXPECT_EQ("", title());
  EXPECT_TRUE(drawing().said().empty());
}

TEST_F(ShapeState, WithoutAProductThePictureIsBlank) {
  tavdshapepic_init(tgui_main_module(), db(), nullptr, 0);
  const Drawing blank = drawing();
  EXPECT_EQ("", blank.title.text);
  EXPECT_TRUE(blank.strokes.empty());
  EXPECT_TRUE(blank.dimensions.empty());
}

TEST_F(ShapeState, InitForgetsProductTitleAndRectangle) {
  show({140, 250});
  tavdshapepic_set_title("My own");
  tavdshapepic_resize(0, 0, 50, 84);
  tavdshapepic_init(tgui_main_module(), 0, nullptr, 0);
  EXPECT_TRUE(drawing().strokes.empty());
  show({140, 250});
  EXPECT_EQ("CODE", title());
  EXPECT_EQ((Position{250, 2}), drawing().title.at);
}

TEST_F(ShapeState, ReleaseTwiceAndWithoutAnInitIsHarmless) {
  show({140, 250});
  tavdshapepic_release();
  tavdshapepic_release();
  EXPECT_EQ(Strings{"250"}, drawing().said());
}

// ---- Title ----

TEST_F(ShapeState, OwnTitleShowsFromTheNextReadingOn) {
  show({140, 250});
  tavdshapepic_set_title("My own");
  EXPECT_EQ("CODE", title());
  show({140, 250});
  EXPECT_EQ("My own", title());
  show({150, 250});
  EXPECT_EQ("My own", title());
}

TEST_F(ShapeState, EmptyOrNullOwnTitleGivesTheProductCode) {
  for (const char* text : {"", static_cast<const char*>(nullptr)}) {
    tavdshapepic_set_title("My own");
    show({140, 250});
    EXPECT_EQ("My own", title());
    tavdshapepic_set_title(text);
    show({140, 250});
    EXPECT_EQ("CODE", title());
  }
}

TEST_F(ShapeState, TitlesAreCutAt79Characters) {
  tavdshapepic_set_title(std::string(79, 'x').c_str());
  show({140, 250});
  EXPECT_EQ(std::string(79, 'x'), title());
  tavdshapepic_set_title(std::string(5000, 'y').c_str());
  show({140, 250});
  EXPECT_EQ(std::string(79, 'y'), title());
  tavdshapepic_set_title("");
  Record record("TST", "ONE");
  product(record, std::string(200, 'z').c_str(), 250);
  tavdshapepic_initdata(record.rec());
  EXPECT_EQ(std::string(79, 'z'), title());
}

TEST_F(ShapeState, TitleIsDrawnAsItIsWritten) {
  tavdshapepic_set_title("%d%s%n%%");
  show({140, 250});
  EXPECT_EQ("%d%s%n%%", title());
}

TEST_F(ShapeState, TitleStandsInTheMiddleATwentiethDownItsBand) {
  show({1, 1});
  const auto label = [this] { return drawing().title; };
  EXPECT_EQ((Position{250, 2}), label().at);  // band 0 to 40
  EXPECT_EQ("center+top", label().align);
  tavdshapepic_resize(100, 1000, 301, 9000);  // band 1000 to 1400
  EXPECT_EQ((Position{200, 1020}), label().at);
}

// ---- Data ----

TEST_F(ShapeState, ProductWithoutAShapeAfterOneWithShowsItsTitleOnly) {
  show({140, 250}, 160);
  Record bare("TST", "BARE");
  bare.text(1501, "Bare");
  tavdshapepic_initdata(bare.rec());
  const Drawing drawing = this->drawing();
  EXPECT_EQ("Bare", drawing.title.text);
  EXPECT_TRUE(drawing.strokes.empty());
  EXPECT_TRUE(drawing.said().empty());
}

TEST_F(ShapeState, ProductWithoutAHeaderAfterOneWithShowsNoConnection) {
  show({102, 1, 2, 3, 4, 5, 6, 7}, 160);
  EXPECT_EQ("160", drawing().said().back());
  show({102, 1, 2, 3, 4, 5, 6, 7});
  EXPECT_EQ((Strings{"1", "2", "3", "4", "5", "6", "7"}), drawing().said());
}

TEST_F(ShapeState, ValuesOfAFormerProductAreNotLeft) {
  show({102, 1, 2, 3, 4, 5, 6, 7});
  show({102, 8});
  EXPECT_EQ((Strings{"8", "##", "##", "##", "##", "##", "##"}), drawing().said());
}

TEST_F(ShapeState, NullProductGivesABlankPictureUnlessATitleWasSet) {
  show({140, 250});
  tavdshapepic_initdata(nullptr);
  EXPECT_EQ("", title());
  EXPECT_TRUE(drawing().strokes.empty());
  tavdshapepic_set_title("My own");
  tavdshapepic_initdata(nullptr);
  EXPECT_EQ("My own", title());
  EXPECT_TRUE(drawing().strokes.empty());
}

TEST_F(ShapeState, MoreWordsThanTheStateHasAreCut) {
  Words words(400, 77);
  words[0] = 102;
  show(words);
  EXPECT_EQ(Strings(7, "77"), drawing().said());
}

TEST_F(ShapeState, EndsOfSixteenBitsAreWrittenWhole) {
  show({102, 32767, -32768, 0, -1, 1, 32767, -32768}, 32767);
  EXPECT_EQ((Strings{"32767", "-32768", "0", "-1", "1", "32767", "-32768", "32767"}), drawing().said());
}

// ---- The sizes of a family ----

class ShapeFamily : public ShapeState {
 protected:
  void SetUp() override {
    ShapeState::SetUp();
    Record("TST", "ABC-*").words(1150, {1}).save(db());
    add_size("ABC-100", "ABC 100", 100);
    add_size("ABC-200", "ABC 200", 200);
    add_size("ABC-300", "ABC 300", 300);
    main_ = tavbfindrec(db(), "TST", "ABC-*", 0);
    ASSERT_NE(nullptr, main_);
    tavdshapepic_init(tgui_main_module(), db(), main_, kList);
  }
  void TearDown() override {
    ShapeState::TearDown();
    tavbreleaserec(main_);
  }
  void add_size(const char* id, const char* code, std::int16_t length) {
    Record size("TST", id);
    product(size, code, length).save(db());
  }
  void update() { tavdshapepic_update_from_list(dialog_.window()); }

  tavdtest::Dialog dialog_;
  tavb_rec main_ = nullptr;
};

TEST_F(ShapeFamily, ListBoxIsFilledAndItsFirstRowSelected) {
  dialog_.add(kList, "left over");
  tavdshapepic_fillsizeLB(dialog_.window());
  EXPECT_EQ((Strings{"ABC 100", "ABC 200", "ABC 300"}), dialog_.rows(kList));
  EXPECT_EQ(0, dialog_.selected(kList));
}

TEST_F(ShapeFamily, SelectedSizeIsRead) {
  tavdshapepic_fillsizeLB(dialog_.window());
  for (const auto& [row, text] : {std::pair{0, "100"}, std::pair{2, "300"}, std::pair{1, "200"}}) {
    dialog_.select(kList, row);
    update();
    EXPECT_EQ("ABC " + std::string(text), title());
    EXPECT_EQ(Strings{text}, drawing().said());
  }
}

TEST_F(ShapeFamily, WithoutASelectionThePictureStays) {
  tavdshapepic_fillsizeLB(dialog_.window());
  update();
  dialog_.select(kList, -1);
  update();
  EXPECT_EQ("ABC 100", title());
  EXPECT_EQ(Strings{"100"}, drawing().said());
}

TEST_F(ShapeFamily, SizeThatIsGoneChangesTheTitleAlone) {
  tavdshapepic_fillsizeLB(dialog_.window());
  update();
  tavbdeleterec(db(), "TST", "ABC-200");
  dialog_.select(kList, 1);
  update();
  EXPECT_EQ("ABC 200", title());
  EXPECT_EQ(Strings{"100"}, drawing().said());
}

TEST_F(ShapeFamily, OwnTitleStaysForAllSizes) {
  tavdshapepic_set_title("My own");
  tavdshapepic_fillsizeLB(dialog_.window());
  dialog_.select(kList, 2);
  update();
  EXPECT_EQ("My own", title());
  EXPECT_EQ(Strings{"300"}, drawing().said());
}

TEST_F(ShapeFamily, RowsThatTheHostAddedChangeNothing) {
  tavdshapepic_fillsizeLB(dialog_.window());
  update();
  dialog_.add(kList, "the host's own");
  dialog_.select(kList, 3);
  update();
  EXPECT_EQ("ABC 100", title());
}

TEST_F(ShapeFamily, AfterTheReleaseNoSizeIsFound) {
  tavdshapepic_fillsizeLB(dialog_.window());
  tavdshapepic_release();
  update();
  EXPECT_EQ("", title());
}

TEST_F(ShapeFamily, FillingTwiceGivesTheListOnce) {
  tavdshapepic_fillsizeLB(dialog_.window());
  tavdshapepic_fillsizeLB(dialog_.window());
  EXPECT_EQ(3U, dialog_.rows(kList).size());
}

TEST_F(ShapeFamily, NullDialogIsHarmless) {
  tavdshapepic_fillsizeLB(nullptr);
  tavdshapepic_update_from_list(nullptr);
  EXPECT_EQ("", title());
}

TEST_F(ShapeFamily, WithoutAProductTheListStays) {
  tavdshapepic_init(tgui_main_module(), db(), nullptr, kList);
  dialog_.add(kList, "kept");
  tavdshapepic_fillsizeLB(dialog_.window());
  EXPECT_EQ(Strings{"kept"}, dialog_.rows(kList));
}

// ---- The rectangle ----

class ShapeRectangle : public ShapeState {
 protected:
  // The device coordinates of the rectangle from 100, 200 to 300, 400 of shape 141.
  Segment corners() {
    show({141, 1, 2, 3});
    const Drawing drawing = this->drawing();
    for (const auto& stroke : drawing.strokes) {
      if (stroke.points.size() == 5) {
        return {stroke.points[0].x, stroke.points[0].y, stroke.points[2].x, stroke.points[2].y};
      }
    }
    return {};
  }
};

TEST_F(ShapeRectangle, DefaultIsAUnitEachBelowABandOf40) {
  EXPECT_EQ((Segment{100, 240, 300, 440}), corners());
  tavdshapepic_resize(7, 7, 70, 70);
  tavdshapepic_resize_default();
  EXPECT_EQ((Segment{100, 240, 300, 440}), corners());
}

TEST_F(ShapeRectangle, OfTheDefaultSizeStartsTwoUnitsLower) {
  tavdshapepic_resize(0, 0, 500, 840);
  EXPECT_EQ((Segment{100, 242, 300, 442}), corners());
}

TEST_F(ShapeRectangle, MovesAndScalesThePlane) {
  tavdshapepic_resize(1000, 2000, 2000, 3680);  // origin 2084, scales 2 and 1596 / 798 = 2
  EXPECT_EQ((Segment{1200, 2484, 1600, 2884}), corners());
}

TEST_F(ShapeRectangle, ScalesBothAxesOnTheirOwn) {
  tavdshapepic_resize(0, 0, 250, 840);
  EXPECT_EQ((Segment{50, 242, 150, 442}), corners());
  tavdshapepic_resize(0, 0, 500, 420);  // origin 21, scale 399 / 798
  EXPECT_EQ((Segment{100, 121, 300, 221}), corners());
}

TEST_F(ShapeRectangle, BandIsATwentiethTruncated) {
  tavdshapepic_resize(0, 10, 500, 29);  // 19 / 20 = 0; scale 19 / 798
  EXPECT_EQ((Segment{100, 14, 300, 19}), corners());
}

TEST_F(ShapeRectangle, WithoutAnAreaDrawsEverythingAtAPoint) {
  tavdshapepic_resize(30, 40, 30, 40);
  EXPECT_EQ((Segment{30, 40, 30, 40}), corners());
}

TEST_F(ShapeRectangle, UpsideDownIsDrawnSo) {
  tavdshapepic_resize(500, 840, 0, 0);  // origin 840 - 42, scales -1
  EXPECT_EQ((Segment{400, 598, 200, 398}), corners());
}

// Whatever the rectangle, every shape is drawn without a coordinate that runs over.
TEST_F(ShapeRectangle, OfAnySizeDrawsEveryShape) {
  constexpr int kMost = std::numeric_limits<int>::max();
  constexpr int kLeast = std::numeric_limits<int>::min();
  const int rectangles[][4] = {{0, 0, 0, 0},
                               {kLeast, kLeast, kMost, kMost},
                               {kMost, kMost, kLeast, kLeast},
                               {kMost, kMost, kMost, kMost},
                               {kLeast, kLeast, kLeast, kLeast},
                               {0, kLeast, kMost, 0},
                               {5, 5, 4, 4}};
  const int objects = tgui_object_count();
  for (const auto& r : rectangles) {
    tavdshapepic_resize(r[0], r[1], r[2], r[3]);
    for (int number = 101; number <= 192; ++number) {
      Words words(30, std::int16_t{32767});
      words[0] = static_cast<std::int16_t>(number);
      show(words, 32767, -32768);
      ASSERT_FALSE(draw().texts().empty()) << number;
      words.assign(30, std::int16_t{-32768});
      words[0] = static_cast<std::int16_t>(number);
      show(words, -32768, 32767);
      ASSERT_FALSE(draw().texts().empty()) << number;
    }
  }
  EXPECT_EQ(objects, tgui_object_count());
}

}  // namespace
