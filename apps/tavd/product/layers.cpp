#include "product/layers.h"

#include "base/errors.h"
#include "base/text.h"
#include "product/record_layout.h"

namespace tavdhost {

bool has_separator(const std::string& object_id) {
  return object_id.find_first_of("-+") != std::string::npos;
}

Layers::Layers(const Database& database, const std::string& class_id, const std::string& object_id)
    : database_(database) {
  if (!has_separator(object_id)) {
    throw UserError(in_quotes(object_id) +
                    " is no id of a layered product, expected fields with \"-\" or \"+\" between them");
  }
  if (object_id.size() > hosts::kIdChars) {
    throw UserError(in_quotes(object_id) + " has " + std::to_string(object_id.size()) +
                    " characters, expected at most " + std::to_string(hosts::kIdChars));
  }
  tavdidset_init(&set_);
  if (tavdidset_read(&set_, database.handle(), class_id.c_str(), object_id.c_str()) != 0) {
    const std::string prefix = object_id.substr(0, object_id.find_first_of("-+") + 1);
    tavdidset_release(&set_);
    throw UserError(printable(class_id) + " " + printable(prefix) + "... in " + database.path() +
                    " has two main records, expected one with sizing mode 10");
  }
}

Layers::~Layers() {
  tavdidset_release(&set_);
}

bool Layers::adjust(const std::string& object_id) {
  return tavdidset_adjust(&set_, database_.handle(), object_id.c_str()) == 0;
}

std::vector<Layer> Layers::asked() const {
  std::vector<Layer> layers;
  if (set_.curRec != nullptr) layers.push_back({Layer::Kind::kExact, set_.curId, set_.curRec});
  const auto* subs = static_cast<const IdSetItem*>(set_.subs.data);
  for (std::int32_t i = 0; i < set_.subs.count; ++i) {
    if (subs[i].matches == 0) break;  // they are sorted behind all others
    layers.push_back({Layer::Kind::kSub, subs[i].id, subs[i].rec});
  }
  if (set_.mainRec != nullptr) layers.push_back({Layer::Kind::kMain, set_.mainId, set_.mainRec});
  return layers;
}

bool Layers::holds(std::int16_t attribute) {
  std::int16_t count = 0;
  return tavdidset_findatt(&set_, database_.handle(), attribute, &count, nullptr, 0) == TAVDIDSET_FOUND;
}

const char* layer_text(Layer::Kind kind) {
  switch (kind) {
    case Layer::Kind::kExact:
      return "exact record";
    case Layer::Kind::kSub:
      return "sub record";
    case Layer::Kind::kMain:
      break;
  }
  return "main record";
}

}  // namespace tavdhost
