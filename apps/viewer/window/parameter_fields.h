// The two combo boxes of parameter values, each with its label, hidden where the product has no use for it.
#pragma once

#include <windows.h>

#include <array>
#include <string>
#include <vector>

#include "model/product.h"

namespace viewer {

class ParameterFields {
 public:
  explicit ParameterFields(HWND host);

  // Lists the values of a product whose drawings have just been built, and chooses again what was chosen of
  // the same parameter. The library forgets the choices of its drawings on the way.
  void fill(const Product& product);

  void clear();

  // What is chosen now. The choice of a throw line goes by the name "G".
  std::vector<Choice> choices() const;
  std::string throw_value() const;

  void take_back();

  // The one combo box, for Escape. Whether there was a choice.
  bool take_back(HWND combo);

 private:
  struct Field {
    int label, combo;  // ids
    std::string name;  // of the parameter; empty: the field is hidden
  };

  void show(Field& field, const std::string& name, const std::wstring& title);
  void list_rows(const Field& field, const ParTable& table);
  void select(const Field& field, const std::vector<Choice>& wanted);
  std::string chosen(const Field& field) const;

  HWND host_;
  std::array<Field, 2> fields_;
};

}  // namespace viewer
