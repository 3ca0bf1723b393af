// One line of the table: a job done by the library and by its yardstick.
#pragma once

#include <functional>
#include <string>
#include <vector>

namespace bench {

// What a line wants to prove; 0 asks for nothing.
struct Wanted {
  double ratio = 0;    // at least so many times as fast as the yardstick
  double beyond = 0;   // at most so many ns more than the yardstick
  double at_most = 0;  // at most so many ns
  bool may_allocate = false;
};

struct Job {
  std::string name;
  std::string detail;               // which product, or empty
  int calls;                        // calls that one run makes
  std::function<void()> library;    // one run
  std::function<void()> yardstick;  // the same calls of the yardstick
  Wanted wanted = {};
  std::string group = {};  // the table that the line stands in
  double unit = 1;         // ns, of the times in the table
};

// The jobs of a program, which each program has of its own.
void add_jobs(std::vector<Job>& jobs);

void add_calculations(std::vector<Job>& jobs);
void add_loads(std::vector<Job>& jobs);
void add_drawings(std::vector<Job>& jobs);

// Times all jobs and prints their tables as Markdown. Returns how many did not reach what they want.
int measure_and_print(const std::vector<Job>& jobs);

}  // namespace bench
