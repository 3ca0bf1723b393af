// A data sheet on its page.
#pragma once

#include <string>

#include "sheet/contents.h"
#include "sheet/page_writer.h"

namespace tavdhost {

struct PageNumber {
  std::size_t number, of;
};

void draw_sheet(PageSurface& surface, const SheetSubject& subject, const SheetContents& contents,
                const SheetForm& form, PageNumber page);

// Where the foot of a sheet has the number of the page, as it stands on the page.
Box page_number_box(const SheetForm& form);

// The foot of any page: the database, its time, the number of the page.
void draw_foot(const PageWriter& writer, const Box& box, const SheetForm& form, PageNumber page);

}  // namespace tavdhost
