// The jobs of bench_calc.
#include "table.h"

namespace bench {

void add_jobs(std::vector<Job>& jobs) {
  add_calculations(jobs);
  add_loads(jobs);
}

}  // namespace bench
