// The opened database, the product that is shown, and the point it is shown at. Reads the controls of the
// main window, and writes what follows into them.
#pragma once

#include <windows.h>

#include <memory>
#include <string>
#include <vector>

#include "drawing/page.h"
#include "model/database.h"
#include "model/product.h"
#include "model/results.h"
#include "model/selection.h"
#include "window/drawing_panes.h"
#include "window/parameter_fields.h"
#include "window/products_tree.h"

namespace viewer {

class Session {
 public:
  // `host` has its controls already; the drawings' windows are made here.
  Session(HWND host, HINSTANCE module);

  // Opens a database, and shows its first product, or the same as before if it has that too. Throws
  // UserError, and then leaves what was open as it was.
  void open(const std::wstring& path);

  // Opens the same file again.
  void reload();

  // Path of the database, empty while there is none.
  std::wstring path() const { return database_ ? database_->path() : std::wstring(); }

  // The open database's products to select from, read when they are first asked for. Throws UserError if
  // no database is open.
  const Catalogue& catalogue();
  std::vector<std::string> classes() const;

  // Shows a product that was found, at its point and without parameter values. Throws UserError if the
  // database has no such product.
  void show(const Found& found);

  // The point as the fields show it, for products whose flow is no velocity, and the units.
  DutyTexts suggested_duty() const;

  // The user has selected, chosen or typed something.
  void tree_opens(const NMTREEVIEWW& branch) { tree_.fill(branch); }
  void tree_selected();
  void size_selected();
  void value_chosen();
  void unit_chosen();
  void flow_typed();
  void pressure_typed();

  // Goes back to the suggested point and to no parameter values.
  void take_back();

  // Takes back what was typed or chosen in one field. False if there was nothing of the kind.
  bool take_back(HWND field);

  bool has_product() const { return static_cast<bool>(record_); }
  const DrawingPanes& panes() const { return panes_; }
  PageContents page() const;
  const std::vector<ResultLine>& lines() const { return lines_; }

 private:
  void show_family(const TreeChoice& choice);
  void show_selected_size();
  void build();
  void list_flow_units();
  void suggest();
  void show_point();
  void update();
  void show_captions();
  DrawingSettings settings() const;
  const Unit& flow_unit() const;
  const Unit& pressure_unit() const;

  HWND host_;
  DrawingPanes panes_;
  ParameterFields fields_;
  ProductsTree tree_;
  std::unique_ptr<Database> database_;
  std::unique_ptr<Catalogue> catalogue_;  // of the database, once it was needed
  RecordKey family_key_;
  std::vector<Listed> sizes_;  // rows of the list box
  Record record_;              // the size that is shown
  Product product_{};
  OperatingPoint point_;
  bool flow_typed_ = false;  // otherwise it is a suggestion, which follows the product
  bool pressure_typed_ = false;
  int flow_unit_ = 0;
  int pressure_unit_ = 0;
  std::vector<ResultLine> lines_;
  bool writing_ = false;  // into the controls, whose notifications then are our own
};

}  // namespace viewer
