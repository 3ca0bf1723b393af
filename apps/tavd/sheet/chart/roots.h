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

// Sets the roots. `differences` takes a place for each bracket, in their order, and answers what the function
// differs there from the sought value. Ends where all are within the tolerance, or no longer come nearer.
template <typename Function>
void find_roots(std::vector<Bracket>& brackets, double tolerance, const Function& differences) {
  constexpr int kMostRounds = 40;
  bool done = brackets.empty();
  std::vector<double> places(brackets.size());
  for (int round = 0; round < kMostRounds && !done; ++round) {
    for (std::size_t i = 0; i < brackets.size(); ++i) {
      const Bracket& b = brackets[i];
      const double step = b.at_from / (b.at_from - b.at_to);
      places[i] = b.from + (b.to - b.from) * (std::isfinite(step) ? step : 0.5);
    }
    const std::vector<double> found = differences(places);
    done = true;
    for (std::size_t i = 0; i < brackets.size(); ++i) {
      Bracket& b = brackets[i];
      b.root = places[i];
      if (!(std::abs(found[i]) > tolerance)) {
        b.from = b.to = places[i];
        continue;
      }
      done = false;
      // The end that stays counts half, so that the other one does not creep (the Illinois method).
      if ((found[i] < 0) == (b.at_from < 0)) {
        b.from = places[i];
        b.at_from = found[i];
        b.at_to /= 2;
      } else {
        b.to = places[i];
        b.at_to = found[i];
        b.at_from /= 2;
      }
    }
  }
}

}  // namespace tavdhost
