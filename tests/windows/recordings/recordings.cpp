// Draws every record of product databases and writes the operations of each drawing into a file:
//   recordings FILE DATABASE...
#include <cstring>
#include <exception>
#include <fstream>
#include <iostream>
#include <stdexcept>

#include "cases.h"
#include "tavd/tavca.h"
#include "tavd/tavdcore.h"
#include "tavd/tavdf.h"
#include "tavd/tavdsrv.h"

namespace recordings {
namespace {

constexpr std::int16_t kAtOrAfter = 1;  // a mode of tavbfindrec

// A market with a language in other letters, for titles in another code page.
constexpr std::int16_t kRussian = 1528;
constexpr char kRussia[] = "RUS";

std::string name_of(std::int16_t db, tavb_rec record) {
  char class_id[8] = "";
  char object_id[32] = "";
  char text[40] = "";
  tavbgetID(db, record, class_id, object_id);
  tavbobjIDtosz(db, object_id, text);
  return std::string(class_id, strnlen(class_id, 3)) + ' ' + text;
}

void draw_record(Product& product, Report& report) {
  tavca_load_flowdata(product.db, product.record, &product.flow);
  draw_flow_cases(product, report);
  draw_throw_cases(product, report);
  draw_picture_cases(product, report);
}

void draw_database(const char* path, int number, Report& report) {
  const std::int16_t db = tavdf_open_database(path, 0);
  if (db < 0) throw std::runtime_error(std::string(path) + ": " + tavdsrv_lasterror());
  tavb_rec record = tavbfindrec(db, "\x01", "\x01", kAtOrAfter);
  while (record != nullptr) {
    Product product{db, record, std::to_string(number) + ' ' + name_of(db, record), {}};
    tavdcore_init(0, "", "");
    draw_record(product, report);
    tavdcore_init(kRussian, kRussia, "");
    product.name += " in Russia";
    draw_record(product, report);
    tavb_rec const next = tavbnextrec(db, record);
    tavbreleaserec(record);
    record = next;
  }
  if (number == 1) draw_shapes(db, report);
  tavdsrv_closedatabase(db);
}

void run(int argc, char** argv) {
  std::ofstream file(argv[1], std::ios::binary);
  Report report(file);
  for (int index = 2; index < argc; ++index) draw_database(argv[index], index - 1, report);
  file.close();
  if (!file) throw std::runtime_error(std::string("cannot write ") + argv[1]);
  std::cout << report.drawings() << " drawings\n";
}

}  // namespace
}  // namespace recordings

int main(int argc, char** argv) {
  if (argc < 3) {
    std::cerr << "usage: recordings FILE DATABASE...\n";
    return 2;
  }
  try {
    recordings::run(argc, argv);
  } catch (const std::exception& error) {
    std::cerr << "recordings: " << error.what() << '\n';
    return 1;
  }
  return 0;
}
