// The drawings of all products of a database, and the page that shows them.
#include <iostream>
#include <mutex>
#include <string>
#include <utility>
#include <vector>

#include "base/errors.h"
#include "base/parallel.h"
#include "base/paths.h"
#include "base/progress.h"
#include "base/whole_file.h"
#include "drawing/description.h"
#include "drawing/drawings.h"
#include "drawing/levels.h"
#include "drawing/own_drawings.h"
#include "drawing/picture.h"
#include "gallery/gallery.h"
#include "tavd/tavdshapepic.h"

namespace tavdhost {
namespace {

constexpr PictureSize kDiagramSize = {800, 600};
constexpr PictureSize kShapeSize = {TAVDSHAPEPIC_WIDTH, TAVDSHAPEPIC_HEIGHT};
constexpr const char* kPage = "index.html";

std::vector<Record> product_records(const Database& database) {
  std::vector<Record> records;
  for (Record record = database.first(); record;) {
    Record next = database.next(record);
    if (hosts::is_product_class(database.key(record).class_id)) records.push_back(std::move(record));
    record = std::move(next);
  }
  check_service();
  return records;
}

// Names the files of the records, one after the other.
std::vector<std::string> names_of(const Database& database, const std::vector<Record>& records) {
  GalleryNames names;
  std::vector<std::string> all;
  all.reserve(records.size());
  for (const Record& record : records) all.push_back(names.name(database.key(record)));
  return all;
}

// Draws the drawings of products into a folder, from any number of threads.
class Drawer {
 public:
  explicit Drawer(const GalleryFolder& folder) : folder_(folder) {}

  GalleryItem draw(const Product& product, const DrawingSource& source, const std::string& name) const;

 private:
  std::string save(OwnDrawing& drawing, const std::string& name, const DrawingText& text,
                   PictureSize size) const;
  void draw_flow(const DrawingSource& source, const std::string& name, GalleryItem& item) const;
  void draw_throw(const DrawingSource& source, const std::string& name, GalleryItem& item) const;

  const GalleryFolder& folder_;
};

std::string Drawer::save(OwnDrawing& drawing, const std::string& name, const DrawingText& text,
                         PictureSize size) const {
  Picture picture(folder_.draft_of(name), size);
  picture.describe(text);
  drawing.paint(picture);
  picture.finish();
  return name;
}

GalleryItem Drawer::draw(const Product& product, const DrawingSource& source, const std::string& name) const {
  GalleryItem item{product, "", "", ""};
  if (product.flow.nhdd != 0) draw_flow(source, name, item);
  if (product.flow.nhdd != 0 && has_throw_data(product.flow)) draw_throw(source, name, item);
  if (source.has_shape) {
    OwnShapePicture shape(source);
    item.shape =
        save(shape, name + "-picture" + kPictureForms.page_ending, shape_picture_text(product), kShapeSize);
  }
  return item;
}

// A product whose limits make no diagram has none; the page says so.
void Drawer::draw_flow(const DrawingSource& source, const std::string& name, GalleryItem& item) const {
  OwnFlowDiagram diagram(source);
  if (!diagram.is_drawable()) return;
  diagram.set_levels(legible_levels(diagram, kDiagramSize));
  item.flow = save(diagram, name + "-flow" + kPictureForms.page_ending, flow_diagram_text(item.product),
                   kDiagramSize);
}

void Drawer::draw_throw(const DrawingSource& source, const std::string& name, GalleryItem& item) const {
  OwnThrowDiagram diagram(source);
  if (!diagram.is_drawable()) return;
  item.throw_length =
      save(diagram, name + "-throw" + kPictureForms.page_ending,
           throw_diagram_text(item.product, "", first_throw_value(item.product.flow)), kDiagramSize);
}

// One thread at a time reads the database, which is not for several at once, and shows the progress.
std::vector<GalleryItem> draw_records(const Database& database, const std::vector<Record>& records,
                                      const GalleryFolder& folder, unsigned threads) {
  const std::vector<std::string> names = names_of(database, records);
  const Drawer drawer(folder);
  std::vector<GalleryItem> items(records.size());
  Progress progress("Drawing", records.size());
  std::mutex one_at_a_time;
  for_each_number(records.size(), threads, [&](std::size_t i) {
    std::unique_lock lock(one_at_a_time);
    const Product product = load_product(database, records[i]);
    const DrawingSource source(database, records[i], product.flow);
    lock.unlock();
    items[i] = drawer.draw(product, source, names[i]);
    lock.lock();
    progress.step();
  });
  return items;
}

struct Counts {
  std::size_t flows = 0, throws = 0, shapes = 0;
};

// Names the files that were drawn, in the order in which they are to be moved.
Counts add_files(const std::vector<GalleryItem>& items, GalleryFolder& folder) {
  Counts counts;
  const auto add = [&folder](const std::string& name, std::size_t& count) {
    if (name.empty()) return;
    folder.add(name);
    ++count;
  };
  for (const GalleryItem& item : items) {
    add(item.flow, counts.flows);
    add(item.throw_length, counts.throws);
    add(item.shape, counts.shapes);
  }
  return counts;
}

}  // namespace

void draw_products(const Database& database, const std::string& folder_name, unsigned threads) {
  GalleryFolder folder(to_path(folder_name));
  std::size_t products = 0;
  Counts counts;
  try {
    const std::vector<GalleryItem> items = draw_records(database, product_records(database), folder, threads);
    products = items.size();
    counts = add_files(items, folder);
    folder.add(kPage);
    write_output(folder.draft_of(kPage), gallery_page(to_text(to_path(database.path()).filename()), items));
  } catch (const UserError& error) {
    throw folder.named_in_place(error);
  }
  folder.finish();
  std::cout << to_text(to_path(folder_name) / kPage) << ": " << products << " products, " << counts.flows
            << " flow diagrams, " << counts.throws << " throw diagrams, " << counts.shapes << " pictures\n";
}

}  // namespace tavdhost
