// Which products do what is needed: what is asked, as text that was typed, and what is found.
#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "model/database.h"
#include "model/results.h"
#include "model/units.h"
#include "tavd/tavdn_select.h"

namespace viewer {

enum class DutyField { kFlow, kPressure, kLevel, kDamping, kClass, kWanted };

// What is needed. Numbers are texts as they were typed; flow and pressure are in the units.
struct DutyTexts {
  std::wstring flow, pressure, level, damping, wanted;
  const Unit* flow_unit = &hosts::base_unit(hosts::Quantity::kFlow);
  const Unit* pressure_unit = &hosts::base_unit(hosts::Quantity::kPressure);
  std::string class_id;  // empty: all
  std::int32_t rank = TAVDN_RANK_SOUND;
};

// Something in a field is not as expected.
class FieldError : public UserError {
 public:
  FieldError(DutyField field, std::wstring text) : UserError(std::move(text)), field_(field) {}
  DutyField field() const { return field_; }

 private:
  DutyField field_;
};

// A product that fits.
struct Found {
  RecordKey key;
  OperatingPoint point;
  std::vector<std::wstring> cells;  // in the order of found_titles()
};

struct Selection {
  std::vector<Found> products;  // the best first
  std::wstring told;            // what was found, in a sentence
};

std::vector<std::wstring> found_titles(const Unit& pressure_unit);

// The products of a database, ready to be selected from. It stays as it is when the database is closed.
class Catalogue {
 public:
  // Throws UserError if not all of them can be read.
  explicit Catalogue(const Database& database);

  // Throws FieldError for the first field that is not as expected.
  Selection select(const DutyTexts& texts) const;

 private:
  struct Closing {
    void operator()(tavdn_catalogue* catalogue) const { tavdn_catalogue_close(catalogue); }
  };

  Found found(std::size_t rank, const tavdn_hit& hit, const DutyTexts& texts, float room_damping) const;

  std::unique_ptr<tavdn_catalogue, Closing> catalogue_;
};

}  // namespace viewer
