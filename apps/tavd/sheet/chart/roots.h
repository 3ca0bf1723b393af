// Where a function takes a value, between two places at which it lies on both sides of it; for many at once.
#pragma once

#include <cmath>
#include <cstddef>
#include <vector>

namespace tavdhost {

struct Bracket {
  double from, to;        // places
  double at_from, at_to;  // the function there, less the value that is sought
  double root = 0;
};

// Sets the roots. `differences` takes numbers of brackets and a place for each of them, and answers what the
// function differs there from the value that is sought. Ends where all are within the tolerance, or no longer
// come nearer.
template <typename Function>
void find_roots(std::vector<Bracket>& brackets, double tolerance, const Function& differences) {
  constexpr int kMostRounds = 40;
  std::vector<std::size_t> open(brackets.size());
  for (std::size_t i = 0; i < open.size(); ++i) open[i] = i;
  for (int round = 0; round < kMostRounds && !open.empty(); ++round) {
    std::vector<double> places;
    for (const std::size_t i : open) {
      Bracket& b = brackets[i];
      const double step = b.at_from / (b.at_from - b.at_to);
      b.root = b.from + (b.to - b.from) * (std::isfinite(step) ? step : 0.5);
      places.push_back(b.root);
    }
    const std::vector<double> found = differences(open, places);
    std::vector<std::size_t> still_open;
    for (std::size_t k = 0; k < open.size(); ++k) {
      if (!(std::abs(found[k]) > tolerance)) continue;
      Bracket& b = brackets[open[k]];
      // The end that stays counts half, so that the other one does not creep (the Illinois method).
      if ((found[k] < 0) == (b.at_from < 0)) {
        b.from = b.root;
        b.at_from = found[k];
        b.at_to /= 2;
      } else {
        b.to = b.root;
        b.at_to = found[k];
        b.at_from /= 2;
      }
      still_open.push_back(open[k]);
    }
    open = still_open;
  }
}

}  // namespace tavdhost
