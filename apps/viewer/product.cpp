#include "product.h"

#include <algorithm>
#include <iterator>

#include "tavd/tavca.h"
#include "tavd/tavdf.h"

namespace viewer {
namespace {

struct Kind {
  std::int16_t number;
  const wchar_t* text;
};

constexpr Kind kKinds[] = {
    {10, L"fixed resistance"},
    {11, L"fixed resistance by air velocity"},
    {12, L"fixed resistance measured at several flows"},
    {13, L"pressure range"},
    {20, L"adjustable damper"},
    {22, L"adjustable damper by air velocity"},
    {30, L"device for a pressure range"},
    {40, L"fan"},
};

}  // namespace

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

const wchar_t* kind_text(const Product& product) {
  if (!has_flow_data(product)) return L"no flow data";
  const std::int16_t kind = product.flow.kind;
  const auto* found =
      std::find_if(std::begin(kKinds), std::end(kKinds), [&](const Kind& k) { return k.number == kind; });
  return found == std::end(kKinds) ? L"unknown kind" : found->text;
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
