// The parts of tavd gallery.
#pragma once

#include <filesystem>
#include <memory>
#include <set>
#include <string>
#include <vector>

#include "drafts/drafts.h"
#include "drawing/picture.h"
#include "product/database.h"
#include "product/product.h"

namespace tavdhost {

// shapes.png and a shapes file of the vector form in the folder: every shape with its number, each `each`
// large. Throws UserError, and makes no folder, if the sheet would be too large for a PNG.
void draw_shapes(const std::filesystem::path& folder, PictureSize each);

// One picture with small diagrams: the first product of each kind, and a throw diagram.
void draw_diagram_sheet(const Database& database, const std::string& path);

// Draws every product of the database into a folder, on so many threads, with the page, and tells on standard
// output what was drawn. Throws UserError, and leaves the folder as it was, if something cannot be written.
void draw_products(const Database& database, const std::string& folder_name, unsigned threads);

// A product as the page shows it.
struct GalleryItem {
  Product product;
  // Names of files beside the page; empty: the product has no such drawing.
  std::string flow, throw_length, shape;
};

// The page with all items, which are in the order of their classes.
std::string gallery_page(const std::string& database_name, const std::vector<GalleryItem>& items);

// Names for the files of products that are safe in every file system and in links, and different even where
// case does not count: letters, digits, "-" and "." stay, any other byte becomes "_" and two hex digits.
class GalleryNames {
 public:
  // "DMP-QZDA-160", "HTR-QZHA-125_2F0.9".
  std::string name(const RecordKey& key);

 private:
  std::set<std::string> taken_;  // in lower case
};

// A folder that gets all of its new files or none. They are written beside their places first; files of other
// names stay. Moved into a folder that is there, they come one by one, the page last; a file that is replaced
// keeps its permissions, and a link stays one.
class GalleryFolder {
 public:
  // Throws UserError if there can be no such folder.
  explicit GalleryFolder(std::filesystem::path target);
  ~GalleryFolder();
  GalleryFolder(const GalleryFolder&) = delete;
  GalleryFolder& operator=(const GalleryFolder&) = delete;

  // Where to write a file of this name now; asked by any thread.
  std::string draft_of(const std::string& name) const;
  // Names a file that is to get into its place.
  void add(const std::string& name) { names_.push_back(name); }
  // What to report if that fails: the file is named where it is to be.
  UserError named_in_place(const UserError& error) const;
  // Puts all files into their places, in the order in which they were named. Throws UserError if they cannot
  // be moved there.
  void finish();

 private:
  std::filesystem::path target_;
  std::unique_ptr<drafts::Folder> draft_;
  std::vector<std::string> names_;
};

}  // namespace tavdhost
