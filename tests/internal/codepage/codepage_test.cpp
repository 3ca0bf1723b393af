// Conversions between narrow text and UTF-16.
#include "codepage/codepage.h"
#include "support/wide.h"

#include <gtest/gtest.h>

#include <array>
#include <string>

using namespace codepage;

namespace {

constexpr std::array<unsigned, 4> kSingleBytePages = {kWindows1250, kWindows1251, kWindows1252, kWindows1257};

tavdtest::Wide wide(unsigned page, const std::string& text, std::size_t capacity = 100) {
  tavdtest::Wide out(capacity, WIDE('#'));
  out.resize(widen(page, text.data(), text.size(), out.data(), capacity));
  return out;
}

std::string narrowed(unsigned page, const tavdtest::Wide& text, std::size_t capacity = 100,
                     bool* lost = nullptr) {
  std::string out(capacity, '#');
  out.resize(narrow(page, text.data(), text.size(), out.data(), capacity, lost));
  return out;
}

}  // namespace

TEST(SingleBytePages, AsciiIsItself) {
  for (const unsigned page : kSingleBytePages) {
    for (char c = 0; c >= 0 && c < 127; ++c) {
      EXPECT_EQ(wide(page, {c}), tavdtest::Wide(1, static_cast<tavd_wchar>(c)));
      EXPECT_EQ(narrowed(page, tavdtest::Wide(1, static_cast<tavd_wchar>(c))), std::string(1, c));
    }
  }
}

TEST(SingleBytePages, CharactersStandWhereTheirPageHasThem) {
  EXPECT_EQ(wide(kWindows1252, "\x80\x9F\xA0\xE5\xFF"), WIDE("\u20AC\u0178\u00A0\u00E5\u00FF"));
  EXPECT_EQ(wide(kWindows1250, "\x8A\xA3\xF5\xFF"), WIDE("\u0160\u0141\u0151\u02D9"));
  EXPECT_EQ(wide(kWindows1251, "\x80\xA8\xC0\xFF"), WIDE("\u0402\u0401\u0410\u044F"));
  EXPECT_EQ(wide(kWindows1257, "\xA8\xC0\xD0\xFE"), WIDE("\u00D8\u0104\u0160\u017E"));
}

TEST(SingleBytePages, UnassignedBytesOfTheControlRangeAreControlCharacters) {
  const std::array<std::pair<unsigned, std::string>, 4> unassigned = {
      {{kWindows1252, "\x81\x8D\x8F\x90\x9D"},
       {kWindows1250, "\x81\x83\x88\x90\x98"},
       {kWindows1251, "\x98"},
       {kWindows1257, "\x81\x83\x88\x8A\x8C\x90\x98\x9A\x9C\x9F"}}};
  for (const auto& [page, bytes] : unassigned) {
    for (const char byte : bytes) {
      const tavd_wchar control = static_cast<unsigned char>(byte);
      EXPECT_EQ(wide(page, {byte}), tavdtest::Wide(1, control));
      EXPECT_EQ(narrowed(page, tavdtest::Wide(1, control)), std::string(1, byte));
    }
  }
}

TEST(SingleBytePages, UnassignedBytesAboveTheControlsAreReplacementCharacters) {
  EXPECT_EQ(wide(kWindows1257, "\xA1\xA5"), WIDE("\uFFFD\uFFFD"));
}

TEST(SingleBytePages, EveryAssignedByteGoesThereAndBack) {
  for (const unsigned page : kSingleBytePages) {
    for (unsigned byte = 0; byte < 256; ++byte) {
      if (page == kWindows1257 && (byte == 0xA1 || byte == 0xA5)) continue;
      const std::string text(1, static_cast<char>(byte));
      bool lost = true;
      EXPECT_EQ(narrowed(page, wide(page, text), 100, &lost), text) << page << " " << byte;
      EXPECT_FALSE(lost);
    }
  }
}

TEST(SingleBytePages, DefaultAndUnknownPagesAreWestern) {
  for (const unsigned page : {static_cast<unsigned>(kDefault), 1U, 437U, 99999U}) {
    EXPECT_EQ(wide(page, "\x80\xE5"), WIDE("\u20AC\u00E5"));
    EXPECT_EQ(narrowed(page, WIDE("\u20AC\u00E5")), "\x80\xE5");
  }
}

TEST(SingleBytePages, CharacterWithoutPlaceIsAQuestionMark) {
  bool lost = false;
  EXPECT_EQ(narrowed(kWindows1252, WIDE("a\u0416z"), 100, &lost), "a?z");
  EXPECT_TRUE(lost);
  EXPECT_EQ(narrowed(kWindows1252, WIDE("\uFFFD")), "?");
  EXPECT_EQ(narrowed(kWindows1257, WIDE("\uFFFD")), "?");
  EXPECT_EQ(narrowed(kWindows1251, WIDE("\u0081")), "?") << "0x81 is a letter there";
}

TEST(SingleBytePages, SurrogatePairIsTwoQuestionMarksBothOrNone) {
  EXPECT_EQ(narrowed(kWindows1252, WIDE("a\U0001F600z")), "a??z");
  EXPECT_EQ(narrowed(kWindows1252, WIDE("a\U0001F600z"), 2), "a");
  EXPECT_EQ(narrowed(kWindows1252, WIDE("a\U0001F600z"), 3), "a??");
  EXPECT_EQ(narrowed(kWindows1252, {0xD83D, WIDE('z')}), "?z");
  EXPECT_EQ(narrowed(kWindows1252, {0xDE00, 0xD83D}), "??");
}

TEST(SingleBytePages, NothingIsWrittenBehindTheCapacity) {
  std::array<tavd_wchar, 4> out = {WIDE('#'), WIDE('#'), WIDE('#'), WIDE('#')};
  EXPECT_EQ(widen(kWindows1252, "abcdef", 6, out.data(), 3), 3U);
  EXPECT_EQ(out[3], WIDE('#'));
  EXPECT_EQ(widen(kWindows1252, "abcdef", 6, out.data(), 0), 0U);
  std::array<char, 4> bytes = {'#', '#', '#', '#'};
  EXPECT_EQ(narrow(kWindows1252, WIDE("abcdef"), 6, bytes.data(), 3), 3U);
  EXPECT_EQ(bytes[3], '#');
}

TEST(Utf8, CharactersOfEveryLength) {
  const std::string text = "z\xC2\x80\xDF\xBF\xE0\xA0\x80\xEF\xBF\xBF\xF0\x90\x80\x80\xF4\x8F\xBF\xBF";
  const tavdtest::Wide expected = WIDE("z\u0080\u07FF\u0800\uFFFF\U00010000\U0010FFFF");
  EXPECT_EQ(wide(kUtf8, text), expected);
  EXPECT_EQ(narrowed(kUtf8, expected), text);
}

TEST(Utf8, EveryCharacterGoesThereAndBack) {
  for (char32_t character = 1; character <= 0x10FFFF; ++character) {
    if (character >= 0xD800 && character <= 0xDFFF) continue;
    tavdtest::Wide text(1, static_cast<tavd_wchar>(character));
    if (character >= 0x10000) {
      text = {static_cast<tavd_wchar>(0xD7C0 + (character >> 10)),
              static_cast<tavd_wchar>(0xDC00 + (character & 0x3FF))};
    }
    char bytes[4];
    bool lost = true;
    const std::size_t length = narrow(kUtf8, text.data(), text.size(), bytes, sizeof bytes, &lost);
    tavd_wchar back[2];
    ASSERT_EQ(widen(kUtf8, bytes, length, back, 2), text.size());
    ASSERT_EQ(tavdtest::Wide(back, text.size()), text);
    ASSERT_FALSE(lost);
  }
}

TEST(Utf8, EachLongestBeginningOfACharacterIsOneReplacement) {
  // The Unicode standard's example of substitution by maximal subparts, tables 3-8 to 3-11.
  EXPECT_EQ(wide(kUtf8, "\xC0\xAF\xE0\x80\xBF\xF0\x81\x82\x41"),
            WIDE("\uFFFD\uFFFD\uFFFD\uFFFD\uFFFD\uFFFD\uFFFD\uFFFDA"));
  EXPECT_EQ(wide(kUtf8, "\xED\xA0\x80\xED\xBF\xBF\xED\xAF\x41"),
            WIDE("\uFFFD\uFFFD\uFFFD\uFFFD\uFFFD\uFFFD\uFFFD\uFFFDA"));
  EXPECT_EQ(wide(kUtf8, "\xF4\x91\x92\x93\xFF\x41\x80\xBF\x42"),
            WIDE("\uFFFD\uFFFD\uFFFD\uFFFD\uFFFDA\uFFFD\uFFFDB"));
  EXPECT_EQ(wide(kUtf8, "\xE1\x80\xE2\xF0\x91\x92\xF1\xBF\x41"), WIDE("\uFFFD\uFFFD\uFFFD\uFFFDA"));
}

TEST(Utf8, CutCharacterAtTheEndIsOneReplacement) {
  EXPECT_EQ(wide(kUtf8, "a\xC3"), WIDE("a\uFFFD"));
  EXPECT_EQ(wide(kUtf8, "a\xE2\x82"), WIDE("a\uFFFD"));
  EXPECT_EQ(wide(kUtf8, "a\xF0\x9F\x98"), WIDE("a\uFFFD"));
}

TEST(Utf8, CharacterThatDoesNotFitIsLeftOutWhole) {
  EXPECT_EQ(wide(kUtf8, "a\xF0\x9F\x98\x80z", 2), WIDE("a"));
  EXPECT_EQ(wide(kUtf8, "a\xF0\x9F\x98\x80z", 3), WIDE("a\U0001F600"));
  EXPECT_EQ(narrowed(kUtf8, WIDE("a\u20ACz"), 3), "a");
  EXPECT_EQ(narrowed(kUtf8, WIDE("a\u20ACz"), 4), "a\xE2\x82\xAC");
  EXPECT_EQ(narrowed(kUtf8, WIDE("\U0001F600"), 3), "");
}

TEST(Utf8, LoneSurrogatesAreReplaced) {
  bool lost = false;
  EXPECT_EQ(narrowed(kUtf8, {WIDE('a'), 0xD800, WIDE('z')}, 100, &lost), "a\xEF\xBF\xBDz");
  EXPECT_TRUE(lost);
  EXPECT_EQ(narrowed(kUtf8, {0xDC00}), "\xEF\xBF\xBD");
  EXPECT_EQ(narrowed(kUtf8, {0xD800}), "\xEF\xBF\xBD");
}

TEST(Length, EndsAtTheTerminatorOrTheLimit) {
  EXPECT_EQ(length(WIDE("abc"), 10), 3U);
  EXPECT_EQ(length(WIDE("abc"), 2), 2U);
  EXPECT_EQ(length(WIDE(""), 10), 0U);
  EXPECT_EQ(length(WIDE("abc"), 0), 0U);
}
