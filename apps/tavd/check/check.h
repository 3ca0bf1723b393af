// Faults of a database that nothing refuses but that spoil answers: values of the wrong layout, tables out of
// order, records that name others that are not there.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "catalogue/entry.h"
#include "product/database.h"
#include "product/product.h"
#include "product/text_codec.h"

namespace tavdhost {

struct Finding {
  RecordKey record;
  std::optional<std::int16_t> attribute;  // none: the record as a whole
  std::size_t row;                        // of the attribute's table, from 1; 0: the attribute as a whole
  std::string expected;
  std::string found;
};

// Where the checks put what they find about one record.
class Findings {
 public:
  void about(const RecordKey& record) { record_ = record; }
  void add(std::optional<std::int16_t> attribute, std::size_t row, const std::string& expected,
           const std::string& found) {
    all_.push_back({record_, attribute, row, expected, found});
  }
  std::vector<Finding> take() { return std::move(all_); }

 private:
  RecordKey record_;
  std::vector<Finding> all_;
};

// "DMP QZDA-160: damperpoints (1652) row 3: expected ..., found ...".
std::string text_of(const Finding& finding);

// Everything that was found, in record order.
std::vector<Finding> check_database(const Database& database, std::size_t& records);

// The parts of it, each for one record.
// Bytes: whole items, numbers that are numbers, texts in their charset that fit where they are read.
void check_values(TextCodec& codec, const Entry& entry, Findings& findings);
// Header and tables: known kind, rising limits, rows in the order that the calculations rely on.
void check_tables(const Entry& entry, const FlowData& flow, Findings& findings);
// Sound tables: enough rows of enough curves, in order, on the product's own curve.
void check_sound(const FlowData& flow, Findings& findings);
// Mistakes of units: tables that lie outside the limits altogether, and what no product can be.
void check_units(const Entry& entry, const FlowData& flow, Findings& findings);
// What templates make of the product's size.
void check_templates(TextCodec& codec, const Entry& entry, const DuctSize& size, Findings& findings);

// Whether the record is a main or sub record of a layered product: what it lacks may stand in another layer.
bool is_layer(const Entry& entry);

// Families, layered products, model records and the file header, over the whole database.
class LinkCheck {
 public:
  explicit LinkCheck(const Database& database) : database_(database) {}
  // One record, in record order.
  void check(const Record& record, const Entry& entry, Findings& findings);
  // What is only known at the end: model records that no product names, a missing file header.
  void finish(Findings& findings) const;

 private:
  void check_header(const Entry& entry, Findings& findings);
  void check_family(const Record& record, const RecordKey& key, Findings& findings) const;
  void check_layers(int mode, const RecordKey& key, Findings& findings) const;
  void check_model(const Record& record, const Entry& entry, Findings& findings);

  const Database& database_;
  bool has_header_ = false;
  std::vector<std::string> models_;     // object ids of the model records
  std::set<std::string> named_models_;  // that products name
};

}  // namespace tavdhost
