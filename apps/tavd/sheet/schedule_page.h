// The first pages of a schedule: a table of all duties with their products.
#pragma once

#include <cstddef>
#include <functional>

#include "sheet/page_writer.h"
#include "sheet/schedule_model.h"
#include "sheet/sheet_page.h"

namespace tavdhost {

// How many pages the table takes; at least 1.
std::size_t schedule_pages(const ScheduleModel& model);

// Draws page `index` of the table, from 0. `link` is told of each row's box on the page, and which sheet it
// leads to.
using RowLink = std::function<void(const Box& box, std::size_t sheet)>;
void draw_schedule(Painter& painter, const ScheduleModel& model, std::size_t index, const SheetForm& form,
                   std::size_t pages, const RowLink& link);

}  // namespace tavdhost
