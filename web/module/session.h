// What the page works on: one open database, and what is kept of it from one question to the next.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "product/chosen.h"
#include "product/database.h"
#include "select/catalogue.h"

namespace tavdweb {

class Session {
 public:
  // Opens the file in place of the last one, with these texts. Throws UserError, and then the last one stays
  // open.
  void open(const std::string& path, const tavdhost::TextChoice& texts);

  // These throw UserError while nothing is open.
  const tavdhost::Database& database() const;
  const tavdhost::TextChoice& texts() const { return texts_; }
  tavdhost::ProductChooser& chooser();
  // The products of these classes, empty for all, to select from: read when others were asked for last.
  tavdhost::SelectCatalogue& catalogue(const std::vector<std::string>& classes, bool without_end_reflection);

 private:
  std::string path_;
  tavdhost::TextChoice texts_;
  std::unique_ptr<tavdhost::Database> database_;
  std::unique_ptr<tavdhost::ProductChooser> chooser_;
  std::unique_ptr<tavdhost::SelectCatalogue> catalogue_;
  std::vector<std::string> catalogue_classes_;
  bool catalogue_without_end_reflection_ = false;
};

}  // namespace tavdweb
