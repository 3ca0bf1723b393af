#include "db/markets.h"

#include <cstddef>

namespace tavd {

namespace {

// An ASCII literal as UTF-16, whatever the platform's type for that: "Finnish"_w.
template <std::size_t kSize>
struct WideName {
  consteval WideName(const char (&name)[kSize]) {
    for (std::size_t i = 0; i < kSize; ++i) text[i] = static_cast<tavd_wchar>(name[i]);
  }
  tavd_wchar text[kSize] = {};
};

template <WideName kName>
consteval const tavd_wchar* operator""_w() {
  return kName.text;
}

}  // namespace

const MarketRow market_table[] = {
    // market, pcode, pdesc, weblink, lng, language, country
    {"", -1, -1, -1, -1, nullptr, "All"_w},
    {"FIN", 9500, 9550, 8500, 1510, "Finnish"_w, "Finland"_w},
    {"SWE", 9501, 9551, 8501, 1511, "Swedish"_w, "Sweden"_w},
    {"GBR", 9502, 9552, 8502, 1512, "English"_w, "England"_w},
    {"DEU", 9503, 9553, 8503, 1513, "German"_w, nullptr},
    {"NOR", 9504, 9554, 8504, 1514, "Norwegian"_w, "Norway"_w},
    {"FRA", 9505, 9555, 8505, 1515, "French"_w, nullptr},
    {"ESP", 9506, 9556, 8506, 1516, "Spanish"_w, "Spain"_w},
    {"ITA", 9507, 9557, 8507, 1517, "Italian"_w, nullptr},
    {"POL", 9508, 9558, 8508, 1518, "Polish"_w, "Poland"_w},
    {"DNK", 9509, 9559, 8509, 1519, "Danish"_w, "Denmark"_w},
    {"CZE", 9510, 9560, 8510, 1520, "Czech"_w, nullptr},
    {"PRT", 9511, 9561, 8511, 1521, "Portuguese"_w, "Portugal"_w},
    {"HUN", 9512, 9562, 8512, 1522, "Hungarian"_w, nullptr},
    {"NLD", 9513, 9563, 8513, 1523, "Dutch"_w, "The Netherlands"_w},
    {"BEL", 9533, -1, 8533, -1, nullptr, "Belgium"_w},
    {"ISL", 9514, 9564, 8514, 1524, "Icelandic"_w, "Iceland"_w},
    {"EST", 9515, 9565, 8515, 1525, "Estonian"_w, "Estonia"_w},
    {"LTU", 9516, 9566, 8516, 1526, "Lithuanian"_w, "Lithuania"_w},
    {"LVA", 9517, 9567, 8517, 1527, "Lettish"_w, "Latvia"_w},
    {"RUS", 9518, 9568, 8518, 1528, "Russian"_w, "Russia"_w},
    {"FL", -1, 9569, -1, 1529, "Flemish"_w, nullptr},
    {"SVK", 9520, 9570, 8520, 1530, "Slovak"_w, nullptr},
    {"BGR", 9521, 9571, 8521, 1531, "Bulgarian"_w, nullptr},
    {"ROU", 9522, 9572, 8522, 1532, "Romanian"_w, nullptr},
    {"BIH", 9523, 9573, 8523, 1533, "Bosnian"_w, nullptr},
    {"HRV", 9524, 9574, 8524, 1534, "Croatian"_w, nullptr},
    {"SVN", 9525, 9590, 8525, 1535, "Slovenian"_w, nullptr},
    {"AR", -1, 9591, -1, 1536, "Arabic"_w, nullptr},
    {"JPN", 9527, 9592, 8527, 1537, "Japanese"_w, nullptr},
    {"TUR", 9528, 9594, 8528, 1538, "Turkish"_w, "Turkey"_w},
    {"CHN", 9526, 9593, 8526, 1539, "Chinese"_w, "China"_w},
    {"AUT", 9532, -1, 8532, -1, nullptr, nullptr},
    {"UKR", 9531, -1, 8531, -1, nullptr, nullptr},
    {"CHE", 9530, -1, 8530, -1, nullptr, nullptr},
    {nullptr, -1, -1, -1, -1, nullptr, nullptr},
};

const CharsetRow charset_table[] = {
    {1562, 1}, {1674, 1}, {8508, 7}, {8510, 7}, {8512, 7}, {8515, 6}, {8516, 6}, {8517, 6}, {8518, 8},
    {8520, 1}, {8521, 1}, {8522, 1}, {8523, 1}, {8524, 1}, {8525, 1}, {8526, 1}, {8527, 1}, {8528, 1},
    {8531, 1}, {8530, 1}, {8532, 1}, {8533, 1}, {9508, 7}, {9510, 7}, {9512, 7}, {9515, 6}, {9516, 6},
    {9517, 6}, {9518, 8}, {9520, 1}, {9521, 1}, {9522, 1}, {9523, 1}, {9524, 1}, {9525, 1}, {9526, 1},
    {9527, 1}, {9528, 1}, {9530, 1}, {9531, 1}, {9532, 1}, {9533, 1}, {9558, 7}, {9560, 7}, {9562, 7},
    {9565, 6}, {9566, 6}, {9567, 6}, {9568, 8}, {9569, 1}, {9570, 1}, {9571, 1}, {9572, 1}, {9573, 1},
    {9574, 1}, {9590, 1}, {9591, 1}, {9592, 1}, {9593, 1}, {9594, 1}, {0, 0},
};

}  // namespace tavd
