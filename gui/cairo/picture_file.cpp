#include "gui/cairo/picture_file.h"

#include "drafts/drafts.h"

namespace tavdcairo {

bool write_whole_file(const std::string& path, const std::string& bytes, std::string& reason) {
  drafts::File file(path);
  if (file.write(bytes) && file.finish()) return true;
  reason = path + ": " + file.reason();
  return false;
}

}  // namespace tavdcairo
