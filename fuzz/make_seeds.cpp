// Writes the seeds of all targets, made from a folder of catalogue sources, into a folder for each target.
#include <algorithm>
#include <filesystem>
#include <fstream>
#include <initializer_list>
#include <iostream>
#include <iterator>
#include <sstream>
#include <string>
#include <vector>

#include "catalogue/entry.h"
#include "catalogue/source.h"
#include "fuzz/record_bytes.h"
#include "product/text_codec.h"
#include "tavd/tavdsrv.h"

namespace {

namespace fs = std::filesystem;
using tavdhost::Entry;

constexpr std::int16_t kAttTemplate = 1511;

// The first products of each source stand for the others.
constexpr std::size_t kProductsOfASource = 2;
constexpr std::size_t kLongestText = 8000;  // of a product as JSON

struct Product {
  Entry entry;
  std::string text;
};

struct Target {
  fs::path folder;
  void write(const std::string& name, const std::string& bytes) const {
    fs::create_directories(folder);
    std::ofstream(folder / name, std::ios::binary) << bytes;
  }
};

std::vector<Product> products_of(const fs::path& file, std::int16_t db) {
  std::ostringstream text;
  text << std::ifstream(file, std::ios::binary).rdbuf();
  const tavdhost::Source source(file.filename().string(), text.str());
  tavdhost::TextCodec codec(db);
  tavdhost::Faults faults;
  Json::Value root;
  tavdhost::parse(source, root, faults);
  std::vector<Product> products;
  for (const Json::Value& value : root) {
    auto entry = tavdhost::read_entry(codec, source, value, faults);
    if (!entry) continue;
    std::string again = entry_text(codec, *entry);
    products.push_back({*std::move(entry), std::move(again)});
  }
  return products;
}

std::string packed(const Entry& entry) {
  std::string bytes = fuzz::begin_record(entry.class_id, entry.object_id);
  for (const auto& [number, value] : entry.attributes) bytes += fuzz::attribute(number, value);
  return bytes;
}

template <typename Number>
std::string raw(Number number) {
  return {reinterpret_cast<const char*>(&number), sizeof number};
}

std::string counted(const std::string& text) {
  return static_cast<char>(text.size()) + text;
}

// What stands in front of the records: see the targets.
std::string question(float qv, float dp) {
  return raw(qv) + raw(dp) + counted("blade") + counted("100") + counted("colour") + counted("A") + '\2' +
         counted("FIN");
}

std::string settings(std::size_t serial) {
  std::string bytes;
  bytes += static_cast<char>(serial % 8);
  bytes += static_cast<char>(serial % 5);
  bytes += static_cast<char>(serial % 4);
  bytes += '\4';
  for (const std::int16_t side : std::initializer_list<std::int16_t>{0, 0, 700, 500}) bytes += raw(side);
  for (const float number : {25.0F, 45.0F, 5.0F, 50.0F, 60.0F, 30.0F, 80.0F, 2.0F}) bytes += raw(number);
  for (const char* text : {"", "dB(A)", "pos.", "label %d", "blade", "100"}) bytes += counted(text);
  return bytes;
}

std::string database_of(const std::vector<Product>& products) {
  const fs::path path = fs::temp_directory_path() / "tavd-fuzz-seed.tavdb";
  fs::remove(path);
  const std::int16_t db = tavbopendatabase(nullptr, path.c_str(), 1);
  for (const Product& product : products) {
    tavb_rec rec = tavdsrv_newrec(product.entry.class_id.c_str(), product.entry.object_id.c_str());
    for (const auto& [number, value] : product.entry.attributes) {
      tavbinsertatt(db, &rec, number, value.data(), static_cast<std::int16_t>(value.size()));
    }
    tavbsaverec(db, rec);
    tavbreleaserec(rec);
  }
  tavdsrv_closedatabase(db);
  std::ostringstream bytes;
  bytes << std::ifstream(path, std::ios::binary).rdbuf();
  fs::remove(path);
  return bytes.str();
}

void write_templates(const Target& target, const Product& product, std::size_t& serial) {
  const auto found = product.entry.attributes.find(kAttTemplate);
  if (found == product.entry.attributes.end()) return;
  std::string bytes;
  for (const std::int16_t word : std::initializer_list<std::int16_t>{0, 160, 160, 1, 400, 200})
    bytes += raw(word);
  bytes += static_cast<char>(40);
  bytes += static_cast<char>(serial % 16);
  target.write("template-" + std::to_string(serial++), bytes + found->second);
}

std::string name_of(const Entry& entry) {
  std::string name = entry.class_id + "-" + entry.object_id;
  std::replace_if(
      name.begin(), name.end(), [](char c) { return std::isalnum(static_cast<unsigned char>(c)) == 0; }, '-');
  return name;
}

}  // namespace

int main(int count, char** arguments) {
  if (count != 3) {
    std::cerr << "usage: make_seeds CATALOGUE FOLDER\n";
    return 2;
  }
  const fs::path folder = arguments[2];
  const Target records = {folder / "records"};
  const Target drawings = {folder / "drawings"};
  const Target templates = {folder / "templates"};
  const Target catalogue = {folder / "catalogue"};
  const Target databases = {folder / "databases"};
  const fs::path scratch = fs::temp_directory_path() / "tavd-fuzz-scratch.tavdb";
  const std::int16_t db = tavbopendatabase(nullptr, scratch.c_str(), 1);
  fs::remove(scratch);

  std::vector<fs::path> files(fs::directory_iterator(arguments[1]), {});
  std::sort(files.begin(), files.end());
  std::size_t serial = 0;
  std::size_t templates_written = 0;
  databases.write("empty.tavdb", database_of({}));
  for (const fs::path& file : files) {
    std::vector<Product> products = products_of(file, db);
    for (const Product& product : products) write_templates(templates, product, templates_written);
    std::erase_if(products, [](const Product& product) { return product.text.size() > kLongestText; });
    if (products.size() > kProductsOfASource) products.resize(kProductsOfASource);
    std::string family;
    for (const Product& product : products) family += packed(product.entry);
    for (const Product& product : products) {
      const std::string name = name_of(product.entry);
      records.write(name, question(50, 60) + packed(product.entry));
      drawings.write(name, settings(serial++) + packed(product.entry));
      catalogue.write(name + ".json", product.text);
    }
    records.write(file.stem().string() + "-family", question(80, 100) + family);
    if (file.stem() == "supply-diffuser" || file.stem() == "fileheader") {
      databases.write(file.stem().string() + ".tavdb", database_of(products));
    }
  }
  tavdsrv_closedatabase(db);
  return 0;
}
