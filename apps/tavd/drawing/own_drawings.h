// The drawings of a product as it is loaded, each with a state of its own: any number of threads draw at
// once.
#pragma once

#include <cstddef>
#include <memory>
#include <string>

#include "drawing/levels.h"
#include "drawing/picture.h"
#include "drawing/title.h"
#include "product/database.h"
#include "product/product.h"
#include "tavd/tavdn.h"

namespace tavdhost {

// The title of a drawing in the forms that charts take.
struct DrawnTitle {
  std::string text;  // UTF-8, as title_of() tells it
  std::string narrow;
  std::basic_string<tavd_wchar> wide;
};

// How the flow diagrams of a database have their titles, as its file header says. They have none where it
// says of the texts what nobody knows.
enum class TitleForm { kNarrow, kWide, kNone };

// All that drawings need of a record: they ask nothing of the database or of the process after that.
struct DrawingSource {
  DrawingSource(const Database& database, const Record& record, const FlowData& loaded);

  DrawnTitle title;
  TitleForm title_form;  // of the flow diagram
  FlowData flow;         // as it was loaded
  bool has_shape;
  tavdn_shape shape;
};

struct PreparedRelease {
  void operator()(tavdn_product* product) const { tavdn_release(product); }
};
using Prepared = std::unique_ptr<tavdn_product, PreparedRelease>;

// What the drawings have in common.
class OwnDrawing {
 public:
  OwnDrawing(const OwnDrawing&) = delete;
  OwnDrawing& operator=(const OwnDrawing&) = delete;

  // Whether the product's limits make such a drawing.
  bool is_drawable() const;
  // With a title that fits.
  void paint(Picture& picture, const Area& room);
  void paint(Picture& picture) { paint(picture, picture.whole()); }
  // As it is now.
  const hosts::LibraryDrawing& drawing() const { return drawing_; }

 protected:
  OwnDrawing(const hosts::LibraryDrawing& form, const DrawnTitle& title);
  virtual ~OwnDrawing() = default;
  const DrawnTitle& title() const { return title_; }

 private:
  // As the functions of libtavdn draw and answer; null draws nothing.
  virtual int draw(tavd_hdc surface) const = 0;
  void draw_on(tavd_hdc surface) const;

  hosts::LibraryDrawing drawing_;
  DrawnTitle title_;
};

// Pressure over flow.
class OwnFlowDiagram : public OwnDrawing {
 public:
  explicit OwnFlowDiagram(const DrawingSource& source);

  const FlowData& flow() const { return *tavdn_flowdata(product_.get()); }
  void set_levels(const Levels& levels) { levels_ = levels; }

 private:
  int draw(tavd_hdc surface) const override;

  TitleForm title_form_;
  Prepared product_;
  Levels levels_ = {0, 0};
};

// Throw length over flow by the first throw line, for products with has_throw_data().
class OwnThrowDiagram : public OwnDrawing {
 public:
  explicit OwnThrowDiagram(const DrawingSource& source);

 private:
  int draw(tavd_hdc surface) const override;

  std::string value_;  // that selects the line
  Prepared product_;
};

// The dimensioned sketch, for records with a shape.
class OwnShapePicture : public OwnDrawing {
 public:
  explicit OwnShapePicture(const DrawingSource& source);

 private:
  int draw(tavd_hdc surface) const override;

  tavdn_shape shape_;
};

}  // namespace tavdhost
