#include "sheet/charts.h"

#include "drawing/drawings.h"

namespace tavdhost {

SheetParts parts_of(const SheetSubject& subject, const SheetContents& contents) {
  return {subject.sketch.has_value(), contents.sound_power.has_value(),
          contents.sound_power.has_value() || contents.attenuation.has_value(),
          has_throw_data(subject.chosen.product.flow)};
}

void draw_band_chart(const PageWriter& writer, const Box& box, const SheetSubject& /*subject*/,
                     const SheetForm& /*form*/) {
  writer.rule({box.left, box.top, box.width, 0.2}, 0xC8C8C8);
}

void draw_flow_chart(const PageWriter& writer, const Box& box, const SheetSubject& /*subject*/,
                     const SheetForm& /*form*/) {
  writer.rule({box.left, box.top, box.width, 0.2}, 0xC8C8C8);
}

void draw_throw_chart(const PageWriter& writer, const Box& box, const SheetSubject& /*subject*/,
                      const SheetForm& /*form*/) {
  writer.rule({box.left, box.top, box.width, 0.2}, 0xC8C8C8);
}

}  // namespace tavdhost
