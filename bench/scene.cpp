#include "scene.h"

#include "tavd/tavca.h"

namespace bench {
namespace {

constexpr std::uint64_t kFilledTables = 1'000'000;  // seeds of the records, above those of the comparison
constexpr std::size_t kTriesPerPoint = 100;

}  // namespace

std::shared_ptr<Scene> scene(std::int16_t kind, std::size_t points) {
  for (std::uint64_t seed = kFilledTables;; ++seed) {
    reference::Random random(seed);
    auto made = std::make_shared<Scene>();
    made->product = random_product(random, kind, reference::Shape::full);
    FlowData& fd = made->product.fd;
    if (fd.npar != 2 || fd.nparL2 == 0) continue;
    tavca_param_setvalue(&fd, "VALVE", "12.5");
    tavca_param_setvalue(&fd, "LEN", "45");
    for (std::size_t tries = 0; tries < kTriesPerPoint * points && made->points.size() < points; ++tries) {
      const reference::Point at = random_point(random, fd, false);
      float bands[TAVD_BANDS];
      float pos;
      const bool sound = tavca_lw(&fd, at.qv, at.dp, bands, &at.duct) == 0;
      const int code = tavca_damper_pos(&fd, at.qv, at.dp, &pos);
      if (sound && (code == 0 || code == 2)) made->points.push_back(at);
    }
    if (made->points.size() == points) return made;
  }
}

}  // namespace bench
