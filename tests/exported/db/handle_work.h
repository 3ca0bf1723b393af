// A filled database, and all that the calls of the handle tests work on.
#pragma once

#include <string>

#include "support/database.h"
#include "tavd/tavd.h"

namespace tavdtest {

inline std::string raw(const std::string& id) {
  return id + std::string(30 - id.size(), ' ');
}

// Families of each kind, layered products, and models.
inline void fill(std::int16_t db) {
  const struct {
    const char* id;
    std::int16_t sizingmode;
  } plain[] = {{"FAM-1", 12}, {"FAM-2", 12},   {"FAN-1", 12}, {"LIST-EMPTY", 2}, {"NONE", -1},
               {"SET-*", 10}, {"SET-*-A", 11}, {"SET-1", 11}, {"SET-2", 12},     {"SETTLED-1", 11},
               {"TWO-*", 10}, {"TWO-*-B", 11}, {"TWO-1", 10}, {"ZED-*", 1},      {"ZED-1", 12}};
  for (const auto& [id, sizingmode] : plain) {
    Record("ASD", id).words(1150, {sizingmode}).text(1501, id).save(db);
  }
  Record("ASD", "FAM-*").words(1150, {1}).text(1503, "Maker").text(1525, "MODEL").save(db);
  Record("ASD", "LIST").words(1150, {2}).text(1604, raw("FAM-1") + raw("GONE") + raw("FAM-2")).save(db);
  Record("ASD", "ONE").text(1669, "BARE").save(db);
  Record("ASD", "SINGLE").words(1150, {3}).text(1525, "GONE").save(db);
  Record("ZZZ", "Z-*").words(1150, {1}).save(db);
  Record("ZZZ", "Z-1").save(db);
  Record("TVM", "BARE").save(db);
  const Record model("TVM", "MODEL");
  char block[] = "block";
  tavbsaverecwithahm(db, model.rec(), block, sizeof block);
}

// What the calls work on.
struct Work {
  Work() {
    fill(db);
    full_record.header(20, 300, 200, 1, 2, 3, 4).words(1110, {104, 1, 2, 3, 4, 5, 6, 7});
    full_record.text(1511, "A-{B}").text(1513, "duct").text(9500, "code");
    full = full_record.rec();
    start();
  }
  ~Work() { end(); }
  Work(const Work&) = delete;
  Work& operator=(const Work&) = delete;

  void start() {
    tavfm_init(&list);
    tavfm_initw(&listw);
    tavdidset_init(&set);
  }
  void end() {
    tavfm_release(&list);
    tavfm_releasew(&listw);
    tavdidset_release(&set);
  }

  const Database database;
  const Database destination;
  const std::int16_t db = database.handle();
  const std::int16_t to = destination.handle();
  Record full_record{"ASD", "FULL"};
  const Record bare_record{"ASD", "BARE"};
  tavb_rec full = nullptr;  // records of the host's
  const tavb_rec bare = bare_record.rec();
  FamilyList list;
  FamilyListW listw;
  IdSet set;
  FamilyMember member;
  FamilyMemberW memberw;
  DuctSize ds = {};
  int16_t count = 0;
  int16_t words[16] = {};
  char text[64];
  tavd_wchar wide[256];  // the room that the fixed wide forms need
};

}  // namespace tavdtest
