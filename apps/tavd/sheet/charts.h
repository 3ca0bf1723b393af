// The charts of a sheet, each in a box of its page, in the words and units of the sheet.
#pragma once

#include <json/value.h>

#include "sheet/contents.h"
#include "sheet/layout.h"
#include "sheet/page_writer.h"

namespace tavdhost {

// What a sheet shows of a subject.
SheetParts parts_of(const SheetSubject& subject, const SheetContents& contents);

// `box` is that of a page which is read from the left.
void draw_sound_chart(const PageWriter& writer, const Box& box, const SheetContents& contents,
                      const SheetForm& form);
void draw_pressure_chart(const PageWriter& writer, const Box& box, const SheetSubject& subject,
                         const SheetForm& form);
void draw_length_chart(const PageWriter& writer, const Box& box, const SheetSubject& subject,
                       const SheetForm& form);

// The curves of the charts as numbers in base units.
Json::Value curves_json(const SheetSubject& subject, const SheetForm& form);

}  // namespace tavdhost
