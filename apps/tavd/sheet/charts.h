// The charts of a sheet, each in a box of its page.
#pragma once

#include "sheet/contents.h"
#include "sheet/layout.h"
#include "sheet/page_writer.h"

namespace tavdhost {

// What a sheet shows of a subject.
SheetParts parts_of(const SheetSubject& subject, const SheetContents& contents);

void draw_band_chart(const PageWriter& writer, const Box& box, const SheetSubject& subject,
                     const SheetForm& form);
void draw_flow_chart(const PageWriter& writer, const Box& box, const SheetSubject& subject,
                     const SheetForm& form);
void draw_throw_chart(const PageWriter& writer, const Box& box, const SheetSubject& subject,
                      const SheetForm& form);

}  // namespace tavdhost
