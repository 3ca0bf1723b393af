// A database as products to select from.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "product/database.h"
#include "select/request.h"

namespace tavdhost {

struct CatalogueChoice {
  TextChoice texts;
  bool without_end_reflection = false;
};

// An open catalogue. Values of parameters that it was not opened with have it opened anew.
class SelectCatalogue {
 public:
  // Throws UserError if the database cannot be opened, or does not hold a class of the list; empty: all.
  SelectCatalogue(const std::string& path, const CatalogueChoice& choice, std::vector<std::string> classes);

  // Makes duties of requests that can be asked: their classes and values in `duty` are filled in. A request
  // stays where it is until its duty has been asked. Throws UserError for what a request cannot be asked of
  // this database.
  void complete(std::vector<Request>& requests);
  // The classes alone. Throws UserError for one that the database does not hold or has no flow data of.
  void check_classes(const Request& request) const;

  const tavdn_catalogue* get() const { return catalogue_.get(); }
  std::size_t count() const { return tavdn_catalogue_count(catalogue_.get()); }
  const std::string& path() const { return database_.path(); }
  const Database& database() const { return database_; }

 private:
  struct Closing {
    void operator()(tavdn_catalogue* catalogue) const { tavdn_catalogue_close(catalogue); }
  };

  void open();
  void refuse_unknown_parameters() const;
  bool has_class(const std::string& class_id) const;

  Database database_;
  std::int16_t language_;
  CatalogueChoice choice_;
  std::vector<std::string> classes_;
  std::vector<ChosenValues> sets_;
  std::unique_ptr<tavdn_catalogue, Closing> catalogue_;
  std::vector<std::string> held_classes_;                    // of the products, rising
  std::vector<std::vector<const char*>> classes_of_duties_;  // that the last duties point to
};

}  // namespace tavdhost
