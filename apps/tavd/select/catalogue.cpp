#include "select/catalogue.h"

#include <algorithm>
#include <new>
#include <set>
#include <utility>

#include "base/progress.h"
#include "base/text.h"
#include "product/languages.h"

namespace tavdhost {
namespace {

constexpr std::size_t kMostSets = 100;  // each has products prepared anew
constexpr const char* kEveryValue = "*";

std::vector<tavdn_value> values_of(const ChosenValues& chosen) {
  std::vector<tavdn_value> values;
  for (const auto& [name, value] : chosen) {
    values.push_back({name.c_str(), value == kEveryValue ? nullptr : value.c_str()});
  }
  return values;
}

struct Reading {
  Progress progress{"Reading records", 0};
  std::size_t told = 0;
};

int step(void* context, std::size_t records) {
  Reading& reading = *static_cast<Reading*>(context);
  reading.progress.step(records - reading.told);
  reading.told = records;
  return 0;
}

}  // namespace

SelectCatalogue::SelectCatalogue(const std::string& path, const CatalogueChoice& choice,
                                 std::vector<std::string> classes)
    : database_(path, Database::Open::kExisting, choice.texts),
      language_(choice.texts.language.empty() ? language_of_market(choice.texts.market)
                                              : language_number(choice.texts.language)),
      choice_(choice),
      classes_(std::move(classes)) {
  const std::vector<std::string> known = database_.classes();
  for (const std::string& class_id : classes_) {
    if (std::ranges::find(known, class_id) == known.end()) throw database_.unknown_class(class_id);
  }
}

void SelectCatalogue::open() {
  std::vector<std::vector<tavdn_value>> values;
  std::vector<tavdn_values> sets;
  for (const ChosenValues& set : sets_) {
    const std::vector<tavdn_value>& of_set = values.emplace_back(values_of(set));
    sets.push_back({of_set.data(), static_cast<std::int32_t>(of_set.size())});
  }
  std::vector<const char*> classes;
  for (const std::string& class_id : classes_) classes.push_back(class_id.c_str());
  tavdn_catalogue_options options{};
  options.size = sizeof options;
  options.classes = classes.data();
  options.nclasses = static_cast<std::int32_t>(classes.size());
  options.market = choice_.texts.market.c_str();
  options.language = language_;
  options.sets = sets.data();
  options.nsets = static_cast<std::int32_t>(sets.size());
  options.without_end_reflection = choice_.without_end_reflection ? 1 : 0;
  Reading reading;
  options.progress = step;
  options.context = &reading;
  catalogue_.reset();
  tavdn_catalogue* opened = nullptr;
  if (tavdn_catalogue_open(database_.handle(), &options, &opened) != TAVDN_OK) throw std::bad_alloc();
  catalogue_.reset(opened);
  check_service();
  held_classes_.clear();
  for (std::size_t i = 0; i < count(); ++i) {
    const char* const class_id = tavdn_catalogue_product(opened, i)->class_id;
    if (held_classes_.empty() || held_classes_.back() != class_id) held_classes_.emplace_back(class_id);
  }
  refuse_unknown_parameters();
}

// A name that no product knows is a mistake: it would choose nothing without a word.
void SelectCatalogue::refuse_unknown_parameters() const {
  std::set<std::string> known;
  for (std::size_t i = 0; i < count(); ++i) {
    const FlowData& fd = *tavdn_flowdata(tavdn_catalogue_variant(get(), i, 0));
    for (int table = 0; table < fd.npar; ++table) known.insert(lower(fd.par[table].name));
  }
  for (const ChosenValues& set : sets_) {
    for (const auto& [name, value] : set) {
      if (known.contains(lower(name))) continue;
      std::string names;
      for (const std::string& one : known) names += (names.empty() ? "" : ", ") + printable(one);
      throw UserError("no product in " + path() + " has a parameter " + in_quotes(name) +
                      (names.empty() ? "" : "; there are " + names));
    }
  }
}

bool SelectCatalogue::has_class(const std::string& class_id) const {
  return std::ranges::find(held_classes_, class_id) != held_classes_.end();
}

void SelectCatalogue::check_classes(const Request& request) const {
  for (const std::string& class_id : request.classes) {
    if (has_class(class_id)) continue;
    const std::vector<std::string> known = database_.classes();
    if (std::ranges::find(known, class_id) == known.end()) throw database_.unknown_class(class_id);
    throw UserError("class " + in_quotes(class_id) + " in " + path() + " has no products with flow data");
  }
}

void SelectCatalogue::complete(std::vector<Request>& requests) {
  bool is_known = catalogue_ != nullptr;
  for (Request& request : requests) {
    auto found = std::ranges::find(sets_, request.values);
    if (found == sets_.end()) {
      if (sets_.size() == kMostSets) {
        throw UserError("more than " + std::to_string(kMostSets) +
                        " different choices of parameter values, expected fewer: divide the schedule");
      }
      sets_.push_back(request.values);
      found = sets_.end() - 1;
      is_known = false;
    }
    request.duty.values = static_cast<std::int32_t>(found - sets_.begin());
  }
  if (!is_known) open();
  classes_of_duties_.clear();
  for (Request& request : requests) {
    std::vector<const char*>& classes = classes_of_duties_.emplace_back();
    for (const std::string& class_id : request.classes) classes.push_back(class_id.c_str());
    request.duty.classes = classes.data();
    request.duty.nclasses = static_cast<std::int32_t>(classes.size());
  }
}

}  // namespace tavdhost
