#include "session.h"

#include "base/errors.h"

namespace tavdweb {

using tavdhost::Database;

void Session::open(const std::string& path, const tavdhost::TextChoice& texts) {
  try {
    auto opened = std::make_unique<Database>(path, Database::Open::kExisting, texts);
    catalogue_.reset();
    chooser_ = std::make_unique<tavdhost::ProductChooser>(*opened);
    database_ = std::move(opened);
  } catch (const tavdhost::UserError&) {
    // The library has taken the texts that were asked for; what stays open is told in those that it had.
    if (database_ != nullptr) Database(path_, Database::Open::kExisting, texts_);
    throw;
  }
  path_ = path;
  texts_ = texts;
}

const Database& Session::database() const {
  if (database_ == nullptr) throw tavdhost::UserError("no database is open");
  return *database_;
}

tavdhost::ProductChooser& Session::chooser() {
  database();
  return *chooser_;
}

tavdhost::SelectCatalogue& Session::catalogue(const std::vector<std::string>& classes,
                                              bool without_end_reflection) {
  database();
  const bool is_at_hand = catalogue_ != nullptr && catalogue_classes_ == classes &&
                          catalogue_without_end_reflection_ == without_end_reflection;
  if (!is_at_hand) {
    const tavdhost::CatalogueChoice choice{texts_, without_end_reflection};
    catalogue_ = std::make_unique<tavdhost::SelectCatalogue>(path_, choice, classes);
    catalogue_classes_ = classes;
    catalogue_without_end_reflection_ = without_end_reflection;
  }
  return *catalogue_;
}

}  // namespace tavdweb
