// Templates that nobody meant to write: whatever a record or a host hands in, codes and ids stay in their
// room.
#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <regex>
#include <string>
#include <vector>

#include "exported/db/guarded.h"
#include "support/database.h"
#include "support/wide.h"
#include "tavd/codes.h"

namespace {

using tavdtest::AtPageEnd;
using tavdtest::Database;
using tavdtest::Record;

constexpr DuctSize kRound = {0, 125, 125};
constexpr DuctSize kRectangular = {1, 300, 200};
constexpr tavd_wchar kNonsense = 0x5A5A;

int build(const std::string& code_template, std::size_t width) {
  std::vector<char> bytes(code_template.begin(), code_template.end());
  bytes.push_back('\0');
  AtPageEnd<char> at_end(bytes);
  AtPageEnd<char> dest(width);
  return tavd_build_code_ds2(dest.data(), static_cast<int32_t>(width), at_end.data(), &kRound, &kRectangular);
}

// The grammar a second time, as a regular expression over templates of one round duct.
TEST(HostileTemplate, ExactlyTheWellFormedFieldsAreAccepted) {
  const std::regex well_formed("([^{]|\\{[Dd](\\}|[:1][:]*([0-9]?(mm|cm|dm))?\\}))*");
  const std::string alphabet = "}1:mcd0{";
  const std::size_t count = alphabet.size();
  int accepted = 0;
  for (std::size_t length = 0, strings = 1; length <= 5; ++length, strings *= count) {
    for (std::size_t n = 0; n < strings; ++n) {
      std::string code_template = "{D";
      for (std::size_t i = 0, rest = n; i < length; ++i, rest /= count)
        code_template += alphabet[rest % count];
      char dest[64];
      const int result =
          tavd_build_code_ds2(dest, sizeof dest, code_template.c_str(), &kRound, &kRectangular);
      const bool fits = std::regex_match(code_template, well_formed);
      ASSERT_EQ(result == 0, fits) << code_template << ' ' << result;
      ASSERT_LE(result, 0);
      ASSERT_GE(result, -5);
      accepted += fits ? 1 : 0;
    }
  }
  EXPECT_GT(accepted, 1000) << "templates of both kinds were tried";
}

TEST(HostileTemplate, EveryBeginningOfATemplateIsReadToItsEndOnly) {
  const std::string whole = "AB{D}-{D1:4cm}{d:::9dm}x{B2:mm}{H9}";
  for (std::size_t length = 0; length <= whole.size(); ++length) {
    const std::string cut = whole.substr(0, length);
    const int result = build(cut, 64);
    const bool inside_field =
        std::count(cut.begin(), cut.end(), '{') > std::count(cut.begin(), cut.end(), '}');
    EXPECT_EQ(result != 0, inside_field) << cut;
  }
}

TEST(HostileTemplate, LongFieldsOfColonsWriteNothing) {
  const std::string colons(100000, ':');
  EXPECT_EQ(build("{D" + colons + "4mm}", 4), 0);
  EXPECT_EQ(build("{D" + colons, 4), TAVD_CODE_UNCLOSED);
}

TEST(HostileTemplate, NumbersAtEveryDistanceFromTheEndAreCut) {
  for (std::size_t width = 1; width <= 24; ++width) {
    for (std::size_t before = 0; before <= width; ++before) {
      EXPECT_EQ(build(std::string(before, 'x') + "{D:9mm}{H2:9cm}", width), 0) << width << ' ' << before;
    }
  }
}

// All eight builders over one template, each into room that ends at a page.
void build_all(const Database& database, const std::string& code_template, int32_t room) {
  Record record("ASD", "AN-ID-OF-THIRTY-CHARACTERS-\xC3\x84-");
  record.text(1511, code_template);
  const auto size = static_cast<std::size_t>(room);
  AtPageEnd<char> field(30);
  tavd_build_code_ds(field.data(), code_template.c_str(), &kRound, &kRectangular);
  AtPageEnd<char> narrow(size);
  tavd_build_code_ds2(narrow.data(), room, code_template.c_str(), &kRound, &kRectangular);
  AtPageEnd<char> id(31);
  EXPECT_EQ(tavd_build_productId_ds(database.handle(), id.data(), record.rec(), &kRound, &kRectangular), 0);
  EXPECT_NE(std::find(id.data(), id.data() + 31, '\0'), id.data() + 31);
  EXPECT_EQ(
      tavd_build_productId_ds2(database.handle(), narrow.data(), room, record.rec(), &kRound, &kRectangular),
      0);
  EXPECT_NE(std::find(narrow.data(), narrow.data() + size, '\0'), narrow.data() + size);

  tavdtest::Wide wide_template;
  for (const char c : code_template)
    wide_template += static_cast<tavd_wchar>(static_cast<unsigned char>(c) * 7);
  for (tavd_wchar& c : wide_template) c = c % 3 == 0 ? WIDE('{') : c;
  AtPageEnd<tavd_wchar> fixed(256, kNonsense);
  AtPageEnd<tavd_wchar> wide(size, kNonsense);
  const auto terminated = [](AtPageEnd<tavd_wchar>& text) {
    return std::find(text.data(), text.data() + text.size(), WIDE('\0')) != text.data() + text.size();
  };
  tavd_build_code_dsw(fixed.data(), wide_template.c_str(), &kRound, &kRectangular);
  EXPECT_TRUE(terminated(fixed));
  tavd_build_code_dsw2(wide.data(), room, wide_template.c_str(), &kRound, &kRectangular);
  EXPECT_TRUE(terminated(wide));
  std::fill_n(fixed.data(), fixed.size(), kNonsense);
  std::fill_n(wide.data(), wide.size(), kNonsense);
  tavd_build_productId_dsw(database.handle(), fixed.data(), record.rec(), &kRound, &kRectangular);
  EXPECT_TRUE(terminated(fixed));
  tavd_build_productId_dsw2(database.handle(), wide.data(), room, record.rec(), &kRound, &kRectangular);
  EXPECT_TRUE(terminated(wide));
}

TEST(HostileTemplate, NoiseStaysInItsRoomInAnyEncoding) {
  std::mt19937 random(20240607);  // any seed: the same noise every time
  const std::string signs = "{{{}}DBHd123:::049mmcmdm \x80\xC3\xE2\xF0\xFF";
  for (const int16_t encoding : std::initializer_list<int16_t>{0, 1, 3}) {
    const Database database;
    Record("000", "FILEHEADER").words(1049, {encoding}).save(database.handle());
    for (int n = 0; n < 200; ++n) {
      std::string noise(random() % 400, '\0');
      for (char& c : noise) c = signs[random() % signs.size()];
      build_all(database, noise, static_cast<int32_t>(1 + random() % 300));
    }
  }
}

TEST(HostileTemplate, TextsOfExactlyTheRoomThatTheyAreReadIntoAreNotReadFurther) {
  const Database database;
  for (const std::size_t length : {199U, 200U, 201U, 254U, 255U, 256U, 257U, 32767U}) {
    for (const int32_t room : {1, 2, 31, 255, 256, 257, 258, 1000}) {
      build_all(database, std::string(length, 'x'), room);
    }
  }
}

}  // namespace
