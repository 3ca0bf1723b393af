// The page of a gallery, in HTML.
#include <string_view>

#include "base/text.h"
#include "drawing/description.h"
#include "drawing/drawings.h"
#include "gallery/gallery.h"

namespace tavdhost {
namespace {

constexpr const char* kHead = R"(<meta charset="utf-8">
<meta name="viewport" content="width=device-width, initial-scale=1">
<style>
:root { color-scheme: light; }
body { margin: 0 auto; padding: 1rem 1.5rem 3rem; max-width: 90rem; background: #f4f5f6; color: #1d2125;
  font: 1rem/1.45 "Liberation Sans", Arial, Helvetica, sans-serif; }
h1 { margin: .5rem 0; font-size: 1.6rem; }
h2 { margin: 2rem 0 .75rem; padding-bottom: .25rem; border-bottom: 2px solid #9aa4ad; font-size: 1.3rem; }
h3 { margin: 0; font-size: 1.1rem; overflow-wrap: anywhere; }
a { color: #0b57a0; }
a:focus-visible { outline: 3px solid #0b57a0; outline-offset: 2px; }
nav ul { display: flex; flex-wrap: wrap; gap: .25rem 1.25rem; margin: 0; padding: 0; list-style: none; }
article { margin: 0 0 1.25rem; padding: 1rem; background: #fff; border: 1px solid #d3d8dc; border-radius: .4rem; }
article p { margin: .2rem 0 .75rem; }
.drawings { display: grid; grid-template-columns: 4fr 4fr 2fr; gap: 1rem; align-items: start; }
figure { margin: 0; min-width: 0; }
figure img { display: block; width: 100%; height: auto; }
figcaption, .none { color: #4a535b; font-size: .9rem; }
.none { margin: 0; padding: 1rem; background: #f4f5f6; }
@media (max-width: 45rem) { .drawings { grid-template-columns: 1fr; } }
@media print { body { background: #fff; } article { break-inside: avoid; } }
</style>
)";

// A drawing that links to its file, or that there is none.
std::string figure(const std::string& file, const DrawingText& text, const char* caption) {
  if (file.empty()) return "<p class=\"none\">No " + lower(caption) + "</p>\n";
  return "<figure><a href=\"" + file + "\"><img src=\"" + file + "\" loading=\"lazy\" alt=\"" +
         markup(text.title + ". " + text.description) + "\"></a><figcaption>" + caption +
         "</figcaption></figure>\n";
}

std::string article(const GalleryItem& item) {
  const Product& product = item.product;
  std::string facts = product.description.empty() ? "" : markup(product.description) + " &middot; ";
  facts += markup(printable(product.key.object_id)) + " &middot; " + markup(kind_text(product.flow));
  const std::string size = size_text(product.size);
  if (!size.empty()) facts += " &middot; " + size + " mm";
  return "<article>\n<h3>" + markup(name_of(product)) + "</h3>\n<p>" + facts +
         "</p>\n<div class=\"drawings\">\n" + figure(item.flow, flow_diagram_text(product), "Flow diagram") +
         figure(item.throw_length, throw_diagram_text(product, "", first_throw_value(product.flow)),
                "Throw diagram") +
         figure(item.shape, shape_picture_text(product), "Picture") + "</div>\n</article>\n";
}

// The items of one class behind each other.
struct Section {
  std::string class_id;
  std::string articles;
  std::size_t count = 0;
};

std::vector<Section> sections_of(const std::vector<GalleryItem>& items) {
  std::vector<Section> sections;
  for (const GalleryItem& item : items) {
    const std::string class_id = printable(item.product.key.class_id);
    if (sections.empty() || sections.back().class_id != class_id) sections.push_back({class_id, "", 0});
    sections.back().articles += article(item);
    ++sections.back().count;
  }
  return sections;
}

std::string counted(std::size_t count) {
  return std::to_string(count) + (count == 1 ? " product" : " products");
}

}  // namespace

std::string gallery_page(const std::string& database_name, const std::vector<GalleryItem>& items) {
  const std::string title = "Products of " + markup(printable(database_name));
  std::string links;
  std::string body;
  int number = 0;  // anchors by number: a class may hold any character
  for (const Section& section : sections_of(items)) {
    const std::string id = "class-" + std::to_string(++number);
    const std::string name = markup(section.class_id);
    links.append("<li><a href=\"#").append(id).append("\">").append(name);
    links.append("</a> (").append(std::to_string(section.count)).append(")</li>\n");
    body.append("<section aria-labelledby=\"").append(id).append("\">\n<h2 id=\"").append(id);
    body.append("\">Class ").append(name).append("</h2>\n").append(section.articles).append("</section>\n");
  }
  const std::string nav =
      links.empty() ? "" : "<nav aria-label=\"Classes\">\n<ul>\n" + links + "</ul>\n</nav>\n";
  return "<!DOCTYPE html>\n<html lang=\"en\">\n<head>\n<title>" + title + "</title>\n" + kHead +
         "</head>\n<body>\n<header>\n<h1>" + title + "</h1>\n<p>" + counted(items.size()) + "</p>\n" + nav +
         "</header>\n<main>\n" + body + "</main>\n</body>\n</html>\n";
}

}  // namespace tavdhost
