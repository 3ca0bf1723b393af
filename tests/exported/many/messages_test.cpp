// The headers are walked: every code that they tell of has a text.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <map>
#include <regex>
#include <set>
#include <sstream>
#include <string>
#include <vector>

#include "tavd/tavdn.h"

namespace {

std::string read(const std::filesystem::path& path) {
  std::ifstream file(path, std::ios::binary);
  std::ostringstream text;
  text << file.rdbuf();
  return text.str();
}

std::vector<std::smatch> all(const std::string& text, const std::regex& pattern) {
  return {std::sregex_iterator(text.begin(), text.end(), pattern), std::sregex_iterator()};
}

using Enumerators = std::map<std::string, int>;

// The enumerators of the lists of codes: of enumerations with a negative number.
std::vector<Enumerators> code_lists(const std::string& header) {
  static const std::regex kComment(R"(/\*[^]*?\*/)");
  static const std::regex kEnum(R"(enum \{([^}]*)\})");
  static const std::regex kMember(R"((\w+) = (-?\d+))");
  const std::string code = std::regex_replace(header, kComment, "");
  std::vector<Enumerators> lists;
  for (const std::smatch& list : all(code, kEnum)) {
    const std::string members = list[1];
    if (members.find("= -") == std::string::npos) continue;
    Enumerators& names = lists.emplace_back();
    for (const std::smatch& member : all(members, kMember)) names[member[1]] = std::stoi(member[2]);
  }
  return lists;
}

// A comment and the functions that it tells of.
struct Manual {
  std::string comment;
  std::vector<std::string> functions;
};

std::vector<Manual> manuals(const std::string& header) {
  static const std::regex kPiece(R"(/\*([^]*?)\*/|TAVD_API[^;]*?\b(\w+)\([^;]*;|\n\n)");
  std::vector<Manual> found;
  for (const std::smatch& piece : all(header, kPiece)) {
    if (piece[1].matched) {
      found.push_back({piece[1], {}});
    } else if (piece[2].matched && !found.empty()) {
      found.back().functions.push_back(piece[2]);
    }
  }
  return found;
}

// The codes that a comment lists, "   -1  NAME" and "  -21 to -25  NAME, ..."; and the 0 of "Returns 0". A
// row stands for the numbers of the list that its first name is from, or, without a name, of any list of the
// header: other rows of numbers, such as kinds of shapes, are no codes.
std::set<int> codes_of(const std::string& comment, const std::vector<Enumerators>& lists) {
  static const std::regex kRow(R"(\n \* +(-?\d+)((?: to |, )(-?\d+))?  (\w+))");
  std::set<int> codes;
  for (const std::smatch& row : all(comment, kRow)) {
    const int first = std::stoi(row[1]);
    const int last = row[3].matched ? std::stoi(row[3]) : first;
    const auto named = std::find_if(lists.begin(), lists.end(),
                                    [&](const Enumerators& list) { return list.count(row[4]) != 0; });
    for (const Enumerators& list : lists) {
      if (named != lists.end() && &list != &*named) continue;
      for (const auto& [name, code] : list) {
        if (code >= std::min(first, last) && code <= std::max(first, last)) codes.insert(code);
      }
    }
  }
  if (comment.find("Returns 0,") != std::string::npos || comment.find("Returns 0.") != std::string::npos) {
    codes.insert(0);
  }
  return codes;
}

class Headers : public testing::Test {
 protected:
  Headers() {
    for (const char* family : {"tavca", "codes", "tavdf", "tavfm", "tavdidset", "ewads", "tavdg", "L2dg",
                               "tavdcore", "tavdshapepic", "tavd", "tavdn", "tavdn_select"}) {
      texts[family] = read(std::filesystem::path(TAVD_INCLUDE) / "tavd" / (std::string(family) + ".h"));
    }
  }
  std::map<std::string, std::string> texts;
};

TEST_F(Headers, EveryNamedCodeHasAText) {
  int named = 0;
  for (const auto& [family, text] : texts) {
    std::vector<std::string> functions;
    for (const Manual& manual : manuals(text)) {
      functions.insert(functions.end(), manual.functions.begin(), manual.functions.end());
    }
    if (family == "tavdn") functions.emplace_back("tavdn_results.throw_code");
    for (const Enumerators& list : code_lists(text)) {
      for (const auto& [name, code] : list) {
        ++named;
        const bool has_text =
            std::any_of(functions.begin(), functions.end(), [&, value = code](const auto& function) {
              return tavdn_message(function.c_str(), value) != nullptr;
            });
        EXPECT_TRUE(has_text) << name;
      }
    }
  }
  EXPECT_GT(named, 50);
}

TEST_F(Headers, EveryListedCodeHasATextForItsFunction) {
  int listed = 0;
  for (const auto& [family, text] : texts) {
    const std::vector<Enumerators> lists = code_lists(text);
    for (const Manual& manual : manuals(text)) {
      for (const std::string& function : manual.functions) {
        static const std::set<std::string> kAnswersOfWindows = {"tavdg_diagram_proc", "L2dg_diagram_proc",
                                                                "tavdshapepic_picproc"};
        if (kAnswersOfWindows.count(function) != 0) continue;
        for (const int code : codes_of(manual.comment, lists)) {
          ++listed;
          EXPECT_NE(tavdn_message(function.c_str(), code), nullptr) << function << " " << code;
        }
      }
    }
  }
  EXPECT_GT(listed, 70);
}

// Each constant that a function's comment names with a negative number is one that it returns.
TEST_F(Headers, EveryCodeInAFunctionsCommentHasATextForIt) {
  int met = 0;
  for (const auto& [family, text] : texts) {
    const std::vector<Manual> told = manuals(text);
    for (const Enumerators& list : code_lists(text)) {
      for (const auto& [name, code] : list) {
        const std::regex whole_name("\\b" + name + "\\b");
        for (const Manual& manual : told) {
          if (code >= 0 || !std::regex_search(manual.comment, whole_name)) continue;
          for (const std::string& function : manual.functions) {
            ++met;
            EXPECT_NE(tavdn_message(function.c_str(), code), nullptr) << function << " " << name;
          }
        }
      }
    }
  }
  EXPECT_GT(met, 60);
}

TEST(Messages, TellWhatACodeMeans) {
  EXPECT_STREQ(tavdn_message("tavca_damper_pos", 1), "more throttled than the first setting");
  EXPECT_STREQ(tavdn_message("tavca_lw", -24),
               "the curves of the sound table are not in falling order of resistance");
  EXPECT_STREQ(tavdn_message("tavd_version_nmb", -190), "the library has another interface");
}

TEST(Messages, NoneForWhatIsNoCode) {
  EXPECT_EQ(tavdn_message(nullptr, 0), nullptr);
  EXPECT_EQ(tavdn_message("", 0), nullptr);
  EXPECT_EQ(tavdn_message("tavca_lw", 1), nullptr);
  EXPECT_EQ(tavdn_message("tavca_lwx", 0), nullptr);
  EXPECT_EQ(tavdn_message("tavca_pdyn", 0), nullptr);
}

}  // namespace
