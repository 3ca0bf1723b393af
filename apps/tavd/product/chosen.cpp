#include "product/chosen.h"

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <map>
#include <string_view>

#include "base/errors.h"
#include "base/text.h"
#include "product/codes_text.h"
#include "product/record_layout.h"
#include "tavd/attributes.h"
#include "tavd/tavca.h"
#include "tavd/tavdsrv.h"

namespace tavdhost {
namespace {

// All that is loaded of a record behind its ids. A load clears the record first, so the same data are the
// same bytes.
std::string_view data_bytes(const FlowData& flow) {
  constexpr std::size_t kIds = offsetof(FlowData, isvelocity);
  return {reinterpret_cast<const char*>(&flow) + kIds, sizeof flow - kIds};
}

bool same_flow_data(const FlowData& a, const FlowData& b) {
  return a.nhdd != 0 && data_bytes(a) == data_bytes(b);
}

// Notes the family, and takes the code of the size whose data the main record has.
void follow_family(const Database& database, Chosen& chosen) {
  const hosts::FamilyMembers sizes(database.handle(), chosen.product.key);
  chosen.origin.sizes = static_cast<std::size_t>(std::max(sizes.count(), 0));
  for (std::int32_t i = 0; i < sizes.count(); ++i) {
    const FamilyMemberW member = sizes.member(i);
    const std::string id = hosts::trimmed_id({member.objId, sizeof member.objId});
    const Record record = database.find(chosen.product.key.class_id, id);
    if (!record) continue;
    const Product size = load_product(database, record);
    if (!same_flow_data(chosen.product.flow, size.flow)) continue;
    chosen.origin.data_of = id;
    chosen.product.code = size.code;
    return;
  }
}

// Puts the attributes of a layer into the record, over those of the layers before it.
void put_layer(const Database& database, const Layer& layer, std::size_t place, Record& record,
               std::map<std::int16_t, std::size_t>& answering) {
  const std::int32_t count = tavdsrv_attributecount(layer.record);
  for (std::int32_t i = 0; i < count; ++i) {
    std::int16_t number = 0;
    const void* data = nullptr;
    std::int32_t length = 0;
    tavdsrv_attributeat(layer.record, i, &number, &data, &length);
    tavbinsertatt(database.handle(), record.address(), number, data, static_cast<std::int16_t>(length));
    if (std::ranges::find(kFlowDataAttributes, number) != std::end(kFlowDataAttributes))
      answering[number] = place;
  }
}

// The variant as one record, which is never saved, and the layers that its attributes come from.
Record put_together(const Database& database, const RecordKey& key, const std::vector<Layer>& asked,
                    std::vector<AnsweringLayer>& layers) {
  Record record(tavdsrv_newrec(key.class_id.c_str(), key.object_id.c_str()));
  std::map<std::int16_t, std::size_t> answering;
  for (std::size_t i = asked.size(); i-- > 0;) put_layer(database, asked[i], i, record, answering);
  for (const Layer& layer : asked) layers.push_back({layer.kind, layer.object_id, {}});
  for (const auto& [number, place] : answering) layers[place].attributes.push_back(number);
  return record;
}

}  // namespace

bool Origin::is_main_record() const {
  return mode == TAVD_SIZING_PATTERN || mode == TAVD_SIZING_LIST;
}

Layers& ProductChooser::layers_of(const std::string& class_id, const std::string& id) {
  const std::string key = hosts::padded_class(class_id);
  const std::string beginning = key + id.substr(0, id.find_first_of("-+") + 1);
  if (layers_ == nullptr || read_for_ != beginning) {
    layers_ = std::make_unique<Layers>(database_, key, id);
    read_for_ = beginning;
  }
  return *layers_;
}

// Whether the id is one of a layered product; `chosen` is then what its layers answer.
bool ProductChooser::follow_layers(const std::string& class_id, const std::string& id, Chosen& chosen) {
  if (class_id.size() > hosts::kClassChars || id.size() > hosts::kIdChars || !has_separator(id)) return false;
  Layers& layers = layers_of(class_id, id);
  if (layers.main_id().empty() || !layers.adjust(id)) return false;
  const RecordKey key{hosts::padded_class(class_id), id};
  const Record record = put_together(database_, key, layers.asked(), chosen.origin.layers);
  chosen.product = load_product(database_, record);
  return true;
}

Chosen ProductChooser::choose(const std::string& class_id, const std::string& object_id) {
  Chosen chosen;
  const std::string id(trim_end(object_id));
  const Record record = database_.find(class_id, id);
  if (record) chosen.origin.mode = hosts::sizing_mode(database_.handle(), record);
  if (chosen.origin.is_main_record() || !follow_layers(class_id, id, chosen)) {
    chosen.product = load_product(database_, database_.product(class_id, id));
  }
  if (chosen.origin.is_main_record()) follow_family(database_, chosen);
  chosen.product.code = filled_code(chosen.product.code, chosen.product.size);
  return chosen;
}

void settle_end_reflection(Chosen& chosen, bool take_off) {
  FlowData without = chosen.product.flow;
  tavca_check_end_reflection(&without);
  if (data_bytes(without) == data_bytes(chosen.product.flow)) return;
  chosen.end_reflection = take_off ? EndReflection::kTakenOff : EndReflection::kInTable;
  if (take_off) chosen.product.flow = without;
}

void refuse_without_flow_data(const Chosen& chosen, const Database& database) {
  if (chosen.product.flow.nhdd != 0) return;
  const RecordKey& key = chosen.product.key;
  throw UserError(printable(key.class_id) + " " + printable(key.object_id) + " in " + database.path() +
                  " has no flow data to calculate with");
}

std::string data_of(const Chosen& chosen) {
  if (chosen.origin.is_main_record()) return chosen.origin.data_of;
  for (const AnsweringLayer& layer : chosen.origin.layers) {
    for (const std::int16_t header : {TAVD_ATT_FLOW_HEADER, TAVD_ATT_OLD_HEADER}) {
      if (std::ranges::find(layer.attributes, header) != layer.attributes.end()) return layer.object_id;
    }
  }
  return {};
}

}  // namespace tavdhost
