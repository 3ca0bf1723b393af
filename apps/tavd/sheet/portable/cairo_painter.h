// Draws on a context of Cairo whose units are points: pages of PDF and pictures of pixels. Texts stay texts.
#pragma once

#include <memory>
#include <string>

#include "sheet/painter.h"

struct _cairo;

namespace tavdhost {

class CairoPainter : public Painter {
 public:
  // `language` as BCP 47: characters that languages share are drawn as it has them. The context outlives the
  // painter.
  CairoPainter(struct _cairo* context, const std::string& language);
  ~CairoPainter() override;

  using Painter::area;
  void line(std::span<const PagePoint> points, const LineStyle& style) override;
  void area(std::span<const PagePoint> corners, std::uint32_t colour) override;
  void circle(PagePoint centre, double radius, const LineStyle& style) override;
  void disc(PagePoint centre, double radius, std::uint32_t colour) override;
  TextSize measure(const std::string& text, const TextStyle& style) override;

 protected:
  void draw_text(const std::string& text, const TextStyle& style, const TextPlace& place,
                 const TextSize& size) override;

 private:
  struct _cairo* context_;
  std::string language_;
};

}  // namespace tavdhost
