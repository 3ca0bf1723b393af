// compare_numbers A B: two outputs of `numbers`, line by line. Tells for every function how many of its lines
// there are and how many differ, by how many units in the last place at most, and the first that does. The
// result is 1 if a line differs, but for those of the C library.
#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <map>
#include <set>
#include <sstream>
#include <string>

namespace {

struct Tally {
  long lines = 0;
  long differ = 0;
  std::int64_t farthest = 0;  // units in the last place
  std::string first, second;  // the first line that differs, in either file
  std::set<std::string> products;
};

std::string field(const std::string& line, int index) {
  std::istringstream fields(line);
  std::string text;
  for (int i = 0; i <= index; ++i) std::getline(fields, text, '|');
  return text;
}

// The place of a float among all floats, or of a double among all doubles, so that neighbours differ by one.
std::int64_t place(const std::string& digits) {
  const std::uint64_t bits = std::strtoull(digits.c_str(), nullptr, 16);
  const bool is_float = digits.size() == 8;
  const std::uint64_t sign = is_float ? std::uint64_t{1} << 31 : std::uint64_t{1} << 63;
  const auto magnitude = static_cast<std::int64_t>(bits & (sign - 1));
  return (bits & sign) != 0 ? -magnitude : magnitude;
}

std::int64_t distance(const std::string& a, const std::string& b) {
  std::istringstream left(field(a, 3));
  std::istringstream right(field(b, 3));
  std::int64_t most = 0;
  std::string x;
  std::string y;
  while (left >> x && right >> y) {
    if (x.size() == y.size() && (x.size() == 8 || x.size() == 16)) {
      most = std::max<std::int64_t>(most, std::abs(place(x) - place(y)));
    }
  }
  return most;
}

void compare(Tally& tally, const std::string& a, const std::string& b) {
  ++tally.lines;
  if (a == b) return;
  if (tally.differ++ == 0) {
    tally.first = a;
    tally.second = b;
  }
  tally.products.insert(field(a, 1));
  tally.farthest = std::max(tally.farthest, distance(a, b));
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 3) {
    std::fputs("usage: compare_numbers A B\n", stderr);
    return 2;
  }
  std::ifstream left(argv[1]);
  std::ifstream right(argv[2]);
  std::map<std::string, Tally> functions;
  std::string a;
  std::string b;
  while (std::getline(left, a)) {
    if (!std::getline(right, b)) b.clear();
    compare(functions[field(a, 0)], a, b);
  }
  if (functions.empty() || std::getline(right, b)) {
    std::fputs("compare_numbers: the two do not have the same lines, or none\n", stderr);
    return 1;
  }
  long lines = 0;
  long differ = 0;
  for (const auto& [name, tally] : functions) {
    const bool ours = !name.starts_with("libm.");
    if (ours) {
      lines += tally.lines;
      differ += tally.differ;
    }
    if (ours && tally.differ == 0) continue;
    std::printf("%s: %ld of %ld lines differ, at %zu products, by %lld in the last place at most\n",
                name.c_str(), tally.differ, tally.lines, tally.products.size(),
                static_cast<long long>(tally.farthest));
    if (tally.differ > 0) std::printf("  %s\n  %s\n", tally.first.c_str(), tally.second.c_str());
  }
  std::printf("%ld of %ld results of %zu functions differ\n", differ, lines, functions.size());
  return differ == 0 ? 0 : 1;
}
