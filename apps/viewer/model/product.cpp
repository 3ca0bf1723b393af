#include "model/product.h"

#include "shared/kinds.h"
#include "tavd/tavca.h"
#include "tavd/tavdf.h"

namespace viewer {
Product load_product(const Database& database, const Record& record) {
  Product product{};
  if (!record) return product;
  product.listed = database.listed(record);
  tavca_load_flowdata(database.handle(), record.get(), &product.flow);
  tavca_check_end_reflection(&product.flow);
  tavdf_load_ductsize(database.handle(), record.get(), &product.size);
  return product;
}

bool has_flow_data(const Product& product) {
  return product.flow.nhdd > 0;
}

bool has_throw_lines(const Product& product) {
  return product.flow.nparL2 > 0;
}

std::wstring size_text(const DuctSize& size) {
  if (size.b <= 0) return {};
  if (size.shape == 0) return L"ø" + std::to_wstring(size.b) + L" mm";
  return std::to_wstring(size.b) + L" × " + std::to_wstring(size.h) + L" mm";
}

std::wstring kind_text(const Product& product) {
  if (!has_flow_data(product)) return L"no flow data";
  const char* name = hosts::kind_name(product.flow.kind);
  return wide(name != nullptr ? name : "unknown kind");
}

void choose(Product& product, const std::vector<Choice>& choices) {
  for (const ParTable& table : product.flow.par) {
    const std::string name = table.name;
    tavca_param_setvalue(&product.flow, name.c_str(), "");
  }
  for (const Choice& choice : choices) {
    tavca_param_setvalue(&product.flow, choice.name.c_str(), choice.value.c_str());
  }
}

}  // namespace viewer
