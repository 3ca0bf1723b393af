// Text to database and back: the same records, the same text.
#include <gtest/gtest.h>

#include <cmath>
#include <fstream>
#include <limits>
#include <random>

#include "db_records.h"
#include "support/database.h"
#include "support/program.h"
#include "tavd/flowdata.h"

namespace {

using clitest::Folder;
using clitest::Outcome;
using clitest::read_file;
using clitest::run_program;
using clitest::stored_records;
using clitest::StoredRecord;
using tavdtest::Database;
using tavdtest::Record;

constexpr float kNaN = std::numeric_limits<float>::quiet_NaN();
constexpr float kInfinity = std::numeric_limits<float>::infinity();

std::string succeed(const std::vector<std::string>& arguments) {
  const Outcome outcome = run_program(arguments);
  EXPECT_EQ(outcome.exit_code, 0) << outcome.err;
  EXPECT_EQ(outcome.err, "");
  return outcome.out;
}

// Makes a database of any records: what is found in them does not matter here.
std::string build(const std::string& source, const std::string& target) {
  const Outcome outcome = run_program({"db", "build", source, "-o", target});
  EXPECT_EQ(outcome.exit_code, 0) << outcome.err;
  return outcome.out;
}

// Dumps `path`, builds the text and dumps that; the records must be the same, and the texts. Returns the
// text.
std::string expect_round_trip(const std::string& path) {
  const Folder folder;
  const std::string text = succeed({"db", "dump", path});
  std::ofstream(folder.file("a.json"), std::ios::binary) << text;
  build(folder.file("a.json"), folder.file("b.tavdb"));
  const std::vector<StoredRecord> before = stored_records(path);
  const std::vector<StoredRecord> after = stored_records(folder.file("b.tavdb"));
  EXPECT_FALSE(before.empty());
  EXPECT_EQ(before.size(), after.size());
  for (std::size_t i = 0; i < std::min(before.size(), after.size()); ++i) {
    EXPECT_EQ(before[i].key, after[i].key);
    EXPECT_EQ(before[i].attributes, after[i].attributes) << before[i].key;
    EXPECT_EQ(before[i].ahm, after[i].ahm) << before[i].key;
  }
  EXPECT_EQ(succeed({"db", "dump", folder.file("b.tavdb")}), text);
  return text;
}

bool contains(const std::string& text, const std::string& part) {
  return text.find(part) != std::string::npos;
}

template <typename Row>
std::string image(const std::vector<Row>& rows) {
  return std::string(reinterpret_cast<const char*>(rows.data()), rows.size() * sizeof(Row));
}

TEST(RoundTrip, SampleCatalogueGivesTheSameRecordsAndText) {
  const Folder folder;
  const std::string database = folder.file("catalogue.tavdb");
  const std::string summary = build(std::string(TAVD_SOURCE_DIR) + "/catalogue", database);
  EXPECT_EQ(summary, database + ": 95 records, no findings\n");
  const std::string text = expect_round_trip(database);
  // Everything in it has a readable form.
  for (const StoredRecord& record : stored_records(database)) {
    for (const auto& [number, bytes] : record.attributes) {
      EXPECT_FALSE(contains(text, '"' + std::to_string(number) + "\": ")) << number;
    }
  }
  EXPECT_FALSE(contains(text, "\"hex\""));
}

TEST(RoundTrip, DumpIntoAFileWritesTheSameTextAsToTheTerminal) {
  const Folder folder;
  Database database;
  Record("ASD", "BOX-1").header(110, 100, 0, 10, 100, 5, 200).save(database.handle());
  const std::string file = folder.file("text.json");
  EXPECT_EQ(succeed({"db", "dump", database.path(), "-o", file}), file + ": 1 record\n");
  EXPECT_EQ(read_file(file), succeed({"db", "dump", database.path()}));
  EXPECT_EQ(folder.names(), std::vector<std::string>{"text.json"});
}

TEST(RoundTrip, TextIsWrittenInItsCanonicalForm) {
  Database database;
  Record record("DMP", "TEST-100");
  record.header(120, 100, 0, 6.5F, 63, 5, 300)
      .rows(1652, std::vector<DamperPoint>{{1, 10, 200}, {2.5F, 20.125F, 0.1F}})
      .rows(1655, std::vector<DlwPoint>{{1, {1, 2, 3, 4, 5, 6, 7, 255}}})
      .words(1150, {-1})
      .words(1110, {101, 100, 50})
      .text(9500, "KOODI \"1\"")
      .text(1562, "CODE")
      .save(database.handle());
  EXPECT_EQ(expect_round_trip(database.path()), R"([
  {
    "class": "DMP",
    "id": "TEST-100",
    "code": {
      "default": "CODE",
      "FIN": "KOODI \"1\""
    },
    "shapedata": [101, 100, 50],
    "sizingmode": -1,
    "flowheader": {"kind": 120, "b": 100, "h": 0, "qvmin": 6.5, "qvmax": 63, "dpmin": 5, "dpmax": 300},
    "damperpoints": [
      [1, 10, 200],
      [2.5, 20.125, 0.1]
    ],
    "dlwpoints": [
      [1, [1, 2, 3, 4, 5, 6, 7, 255]]
    ]
  }
]
)");
}

TEST(RoundTrip, AnEmptyDatabaseIsAnEmptyArray) {
  const Folder folder;
  Database database;
  EXPECT_EQ(succeed({"db", "dump", database.path()}), "[]\n");
  std::ofstream(folder.file("a.json")) << "[]";
  EXPECT_EQ(build(folder.file("a.json"), folder.file("b")), folder.file("b") + ": 0 records, 1 finding\n");
  EXPECT_EQ(succeed({"db", "dump", folder.file("b")}), "[]\n");
}

TEST(RoundTrip, PayloadsThatDoNotDecodeAreWrittenInHex) {
  Database database;
  Record record("BAD", "PAYLOADS");
  record
      .bytes(1650, std::string(44, 'x').data(), 44)  // two headers
      .bytes(1649, "short", 5)
      .bytes(1652, std::string(7, '\1').data(), 7)  // no whole row
      .rows(1657, std::vector<QvDpPoint>(21, QvDpPoint{1, 2}))
      .floats(1651, {kNaN, 1})
      .floats(1302, {kInfinity})
      .bytes(1654, "1234567", 7)
      .words(1670, {1, 2, 3})
      .bytes(1049, "\1", 1)
      .words(1777, {1})
      .bytes(0, "zero", 4)
      .bytes(-7, "\0\xff", 2)
      .bytes(32767, "", 0)
      .bytes(1512, "", 0)
      .save(database.handle());
  const std::string text = expect_round_trip(database.path());
  EXPECT_TRUE(contains(text, "\"1649\": \"73686f7274\"")) << text;
  EXPECT_TRUE(contains(text, "\"-7\": \"00ff\""));
  EXPECT_TRUE(contains(text, "\"0\": \"7a65726f\""));
  EXPECT_TRUE(contains(text, "\"1651\": \"0000c07f0000803f\""));
  EXPECT_TRUE(contains(text, "\"32767\": \"\""));
  for (const char* name :
       {"flowheader", "damperpoints", "qvdppoints", "qvdpref", "lwsizecoef", "dlw", "intpair"}) {
    EXPECT_FALSE(contains(text, name)) << name;
  }
}

TEST(RoundTrip, FloatsAtTheEdgesOfTheirRangeComeBackBitForBit) {
  using Limits = std::numeric_limits<float>;
  Database database;
  Record record("BAD", "FLOATS");
  record.floats(1671, {-0.0F, 16777217.0F})
      .floats(1658, {Limits::max(), -Limits::max(), Limits::min(), 0.1F})
      .rows(1659, std::vector<QvL2Point>{{Limits::denorm_min(), std::nextafter(1.0F, 2.0F)}})
      .save(database.handle());
  const std::string text = expect_round_trip(database.path());
  EXPECT_TRUE(contains(text, "\"floatpair\": [-0, 16777216]")) << text;
  EXPECT_TRUE(contains(text, "\"QvDpLimits\": {\"qvmin\": 3.4028235e+38, \"qvmax\": -3.4028235e+38, "))
      << text;
}

TEST(RoundTrip, PaddingOfParameterValuesSurvives) {
  const auto entry = [](const char(&value)[7]) {
    ParEntry row{};
    std::memcpy(row.value, value, 6);
    return row;
  };
  Database database;
  Record("BAD", "VALUES")
      .rows(1661,
            std::vector<ParEntry>{entry("100   "), entry("100\0\0\0"), entry("100 \0 "), entry("123456"),
                                  entry("\0\0\0\0\0\0"), entry("      "), entry("\"A\"   ")})
      .save(database.handle());
  const std::string text = expect_round_trip(database.path());
  EXPECT_TRUE(contains(text, "[\"100\", 0, 0, 0, 0]")) << text;
  EXPECT_TRUE(contains(text, "[\"100\\u0000\\u0000\\u0000\", 0, 0, 0, 0]"));
  EXPECT_TRUE(contains(text, "[\"123456\", 0, 0, 0, 0]"));
}

TEST(RoundTrip, TextsOfEveryCharsetAreReadable) {
  Database database;
  Record("000", "FILEHEADER").words(1049, {0}).save(database.handle());
  Record record("TXT", "CHARSETS");
  record
      .text(9550, "P\xF6l\xF6")  // windows-1252
      .text(9558, "\xB9\xEA")    // windows-1250
      .text(9567, "\xE2\xF0")    // windows-1257
      .text(9568, "\xCF\xE8")    // windows-1251
      .text(9593, "\xE5\x9C\x86")
      .text(1503, "\x81")  // stands for a control character
      .save(database.handle());
  const std::string text = expect_round_trip(database.path());
  EXPECT_TRUE(contains(text, "\"Finnish\": \"P\u00F6l\u00F6\"")) << text;
  EXPECT_TRUE(contains(text, "\"Polish\": \"\u0105\u0119\""));
  EXPECT_TRUE(contains(text, "\"Lettish\": \"\u0101\u0161\""));
  EXPECT_TRUE(contains(text, "\"Russian\": \"\u041F\u0438\""));
  EXPECT_TRUE(contains(text, "\"Chinese\": \"\u5706\""));
  EXPECT_TRUE(contains(text, "\"szManu\": \"\\u0081\""));
}

TEST(RoundTrip, TextsThatAreNoneAreWrittenInHex) {
  for (const std::int16_t utf8 : std::initializer_list<std::int16_t>{0, 1, 2, 3}) {
    Database database;
    Record("000", "FILEHEADER").words(1049, {utf8}).save(database.handle());
    Record record("TXT", "BROKEN");
    record.text(1503, std::string("a\0b", 3))
        .text(9593, "\xE5\x9C")  // half a character
        .text(9592, "\xC0\x80")
        .text(9591, "\xED\xA0\x80")         // half a surrogate pair
        .text(9570, "\xEF\xBF\xBD")         // U+FFFD itself is a character
        .text(9550, "\xE4\xF6\xE5")         // UTF-8 only where the file header says otherwise
        .text(1501, std::string(300, 'x'))  // longer than is read
        .bytes(1511, std::string(32767, 'y').data(), 32767)
        .save(database.handle());
    const std::string text = expect_round_trip(database.path());
    EXPECT_TRUE(contains(text, "\"1503\": \"610062\""));
    EXPECT_TRUE(contains(text, "\"9593\": \"e59c\""));
    EXPECT_TRUE(contains(text, "\"9592\": \"c080\""));
    EXPECT_TRUE(contains(text, "\"9591\": \"eda080\""));
    EXPECT_TRUE(contains(text, "\"Slovak\": \"\uFFFD\""));
    EXPECT_EQ(contains(text, "\"9550\": \"e4f6e5\""), utf8 == 1);
  }
}

TEST(RoundTrip, KeysOfAnyBytesSurvive) {
  Database database;
  Record("000", "FILEHEADER").words(1049, {1}).save(database.handle());
  for (const char* id : {" LEADING", "Q\"U\\O", "A\nB\tC", "\x01", "\xFF\xFE", "\xC3\xA4", "*",
                         "123456789012345678901234567890"}) {
    Record("KEY", id).words(1150, {1}).save(database.handle());
    Record("\xFF\x01\"", id).words(1150, {1}).save(database.handle());
    Record("A", id).words(1150, {1}).save(database.handle());
  }
  const std::string text = expect_round_trip(database.path());
  EXPECT_TRUE(contains(text, "\"id\": {\"hex\": \"fffe\"}")) << text;
  EXPECT_TRUE(contains(text, "\"class\": {\"hex\": \"ff0122\"}"));
  EXPECT_TRUE(contains(text, "\"class\": \"A  \""));
  EXPECT_TRUE(contains(text, "\"id\": \"A\\u000aB") || contains(text, "\"id\": \"A\\nB"));
}

TEST(RoundTrip, AhmBlocksSurvive) {
  Database database;
  std::string block;
  for (int i = 0; i < 70000; ++i) block += static_cast<char>(i % 256);
  Record record("TVM", "MODEL");
  record.text(1503, "maker");
  tavbsaverecwithahm(database.handle(), record.rec(), block.data(), static_cast<std::int32_t>(block.size()));
  Record("TVM", "PLAIN").save(database.handle());
  const std::string text = expect_round_trip(database.path());
  EXPECT_TRUE(contains(text, "\"ahm\": \"000102030405")) << text.substr(0, 200);
}

// Attributes as they come, most of them with whole items, some not.
TEST(RoundTrip, RecordsOfRandomBytesSurvive) {
  constexpr std::int16_t kNumbers[] = {1049, 1102, 1110, 1150, 1302, 1501, 1503, 1514, 1562, 1604, 1649,
                                       1650, 1651, 1652, 1653, 1654, 1655, 1657, 1658, 1659, 1660, 1661,
                                       1662, 1666, 1670, 1671, 1674, 8500, 8518, 8529, 9515, 9558, 9594};
  constexpr std::size_t kItems[] = {2, 4, 6, 8, 12, 14, 16, 18, 20, 22, 30};
  std::mt19937 random(20240229);
  const auto below = [&](std::size_t bound) { return static_cast<std::size_t>(random() % bound); };
  Database database;
  for (int i = 0; i < 150; ++i) {
    Record record("RND", ("R" + std::to_string(i)).c_str());
    for (int j = 0; j < 12; ++j) {
      std::string bytes(kItems[below(std::size(kItems))] * below(9) + (below(8) == 0 ? 1 : 0), '\0');
      const bool text = below(2) == 0;
      for (char& c : bytes) c = static_cast<char>(text ? 0x20 + below(0x60) : below(256));
      const bool known = below(5) != 0;
      record.text(known ? kNumbers[below(std::size(kNumbers))] : static_cast<int>(random() % 65536) - 32768,
                  bytes);
    }
    record.save(database.handle());
  }
  expect_round_trip(database.path());
}

}  // namespace
