#include "codepage/codepage.h"

namespace codepage {

std::size_t length(const tavd_wchar* wide, std::size_t limit) {
  std::size_t count = 0;
  while (count < limit && wide[count] != 0) ++count;
  return count;
}

}  // namespace codepage
