// How much a test does again and again. Under the sanitizers each step takes some ten times as long, and what
// they find they find in the first of them.
#pragma once

// So many, or under the sanitizers a tenth of them.
constexpr int often(int count) {
  return TAVD_SANITIZED ? count / 10 : count;
}
