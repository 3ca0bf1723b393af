// Drawers on states and records that no sane product makes.
#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>
#include <random>
#include <string>
#include <vector>

#include "shape/processpicture.h"
#include "support/database.h"
#include "support/recording.h"
#include "tavd/tavdshapepic.h"

namespace tavd {
namespace {

using tavdtest::Recording;
using tavdtest::Text;

constexpr std::int16_t kMost = 32767;
constexpr std::int16_t kLeast = -32768;
constexpr int kFirstNumber = 101;
constexpr int kLastNumber = 192;

class HostileShape : public ::testing::Test {
 protected:
  void SetUp() override { tavdshapepic_init(tgui_main_module(), 0, nullptr, 0); }
  void TearDown() override { tavdshapepic_release(); }

  // What is written below the title.
  std::vector<std::string> draw() {
    recording_.clear();
    tavdshapepic_create_drawing_tools();
    tavdshapepic_draw(recording_.surface());
    tavdshapepic_destroy_drawing_tools();
    std::vector<std::string> all;
    for (const Text& text : recording_.texts()) {
      all.push_back(text.text);
    }
    if (!all.empty()) {
      all.erase(all.begin());
    }
    return all;
  }

  Recording recording_;
};

TEST_F(HostileShape, FewerValuesThanNoneAreNone) {
  std::strcpy(shp.title, "title");
  for (const std::int16_t count : {kLeast, std::int16_t{-1}, std::int16_t{0}}) {
    shp.nvalues = count;
    for (int number = kFirstNumber; number <= kLastNumber; ++number) {
      std::memset(shp.values, 0, sizeof shp.values);
      shp.values[0] = static_cast<std::int16_t>(number);
      // What 160 and 164 work out of values, they work out of zeros.
      const bool works_out = number == 160 || number == 164;
      for (const std::string& text : draw()) {
        EXPECT_TRUE(text == "##" || (works_out && text == "0")) << number << ' ' << text;
      }
    }
  }
}

TEST_F(HostileShape, MoreValuesThanThereAreReadNoneBehindTheLast) {
  for (const std::int16_t count : {std::int16_t{30}, std::int16_t{31}, std::int16_t{1000}, kMost}) {
    shp.nvalues = count;
    for (int number = kFirstNumber; number <= kLastNumber; ++number) {
      for (std::int16_t& value : shp.values) {
        value = 7;
      }
      shp.values[0] = static_cast<std::int16_t>(number);
      for (const std::string& text : draw()) {
        // Sums and differences of two sevens, and half of one.
        EXPECT_TRUE(text == "7" || text == "14" || text == "0" || text == "3") << number << ' ' << text;
      }
    }
  }
}

TEST_F(HostileShape, ExtremesInAnyMixtureAreDrawn) {
  const int objects = tgui_object_count();
  std::mt19937 random(1);
  constexpr std::int16_t kValues[] = {kLeast, kLeast + 1, -1, 0, 1, 2, 3, 6, kMost - 1, kMost};
  std::uniform_int_distribution<std::size_t> pick(0, std::size(kValues) - 1);
  std::uniform_int_distribution<int> count(-1, 40);
  for (int number = kFirstNumber; number <= kLastNumber; ++number) {
    for (int round = 0; round < 40; ++round) {
      for (std::int16_t& value : shp.values) {
        value = kValues[pick(random)];
      }
      shp.values[0] = static_cast<std::int16_t>(number);
      shp.nvalues = static_cast<std::int16_t>(count(random));
      shp.header.b = kValues[pick(random)];
      shp.header.h = kValues[pick(random)];
      shp.nheader = static_cast<std::int16_t>(count(random));
      for (const std::string& text : draw()) {
        ASSERT_FALSE(text.empty()) << number;
        // The longest is two numbers of five digits and sign with an x between them.
        ASSERT_LE(text.size(), std::strlen("-32768x-32768")) << number;
      }
    }
  }
  EXPECT_EQ(objects, tgui_object_count());
}

TEST_F(HostileShape, HeadersOfAnyLengthFillTheirPlaceAlone) {
  const std::vector<char> bytes(60000, '\x01');
  for (const std::size_t length : {std::size_t{1}, std::size_t{2}, std::size_t{3}, std::size_t{21},
                                   std::size_t{22}, std::size_t{23}, std::size_t{30000}}) {
    tavdtest::Record record("TST", "HEADER");
    record.words(1110, {112, 1, 2, 3}).bytes(1650, bytes.data(), length);
    tavdshapepic_initdata(record.rec());
    EXPECT_EQ(4, shp.nvalues) << length;
    EXPECT_EQ(500, shp.pic_right) << length;
    EXPECT_EQ(length >= 4 ? 0x0101 : length == 3 ? 1 : 0, shp.header.b) << length;
    EXPECT_EQ((std::vector<std::string>{"1", "2", "3"}), draw()) << length;
  }
}

TEST_F(HostileShape, ShapesOfAnyLengthFillTheirPlaceAlone) {
  const std::vector<std::int16_t> words(16000, 112);
  for (const std::size_t count :
       {std::size_t{1}, std::size_t{29}, std::size_t{30}, std::size_t{31}, std::size_t{16000}}) {
    tavdtest::Record record("TST", "SHAPE");
    record.bytes(1110, words.data(), count * sizeof words[0]);
    tavdshapepic_initdata(record.rec());
    EXPECT_LE(shp.nvalues, kShapeWords) << count;
    EXPECT_GE(shp.nvalues, 1) << count;
    EXPECT_EQ(0, shp.classID[0]) << count;  // what stands behind the values
  }
}

TEST_F(HostileShape, TextsOfAProductMayHoldAnyByte) {
  std::string code;
  for (int c = 1; c < 256; ++c) {
    code += static_cast<char>(c);
  }
  tavdtest::Record record("TST", "CODE");
  record.words(1110, {112, 1, 2, 3}).text(1501, code);
  tavdshapepic_initdata(record.rec());
  EXPECT_LT(std::strlen(shp.title), sizeof shp.title);
  EXPECT_EQ((std::vector<std::string>{"1", "2", "3"}), draw());
}

}  // namespace
}  // namespace tavd
