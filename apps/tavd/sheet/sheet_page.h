// A data sheet on its page.
#pragma once

#include <cstddef>
#include <functional>

#include "sheet/contents.h"
#include "sheet/page_writer.h"

namespace tavdhost {

struct PageNumber {
  std::size_t number, of;
};

// `sketch` draws the dimensioned sketch into its box, where there is one.
using DrawSketch = std::function<void(const Box& box)>;
void draw_sheet(Painter& painter, const SheetSubject& subject, const SheetContents& contents,
                const SheetForm& form, PageNumber page, const DrawSketch& sketch);

// Where the foot of a sheet has the number of the page, as it stands on the page.
Box page_number_box(const SheetForm& form);

// The foot of any page: the database, its time, the number of the page.
void draw_foot(const PageWriter& writer, const Box& box, const SheetForm& form, PageNumber page);

}  // namespace tavdhost
