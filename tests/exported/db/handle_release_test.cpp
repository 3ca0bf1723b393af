// Every function of the database families gives back what it takes from the service, whichever way it ends.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fstream>
#include <functional>
#include <limits>
#include <set>
#include <string>
#include <vector>

#include "exported/db/handle_work.h"
#include "exported/db/service_spy.h"
#include "support/messages.h"
#include "support/wide.h"
#include "tavd/tavd.h"
#include "tavd/tavdsrv.h"

namespace {

using tavdtest::handles_out;
using tavdtest::handles_taken;
using tavdtest::Work;

constexpr DuctSize kRound = {0, 125, 125};

// One call. Handles count records, attribute blocks and ahm blocks.
struct Case {
  const char* function;
  const char* path;   // the way that it takes through the function
  int result;         // of the call; 0 for functions without one
  std::size_t taken;  // handles that the service hands out for it
  int kept;           // by how many more are out behind it: only id sets keep any
  std::function<int(Work&)> call;
  std::function<void(Work&)> before = {};
};

void read_set(Work& w) {
  ASSERT_EQ(tavdidset_read(&w.set, w.db, "ASD", "SET-1"), 0);
}

void adjust_set(Work& w) {
  read_set(w);
  ASSERT_EQ(tavdidset_adjust(&w.set, w.db, "SET-1"), 0);
}

template <typename Call>
auto quiet(Call call) {
  return [call](Work& w) {
    call(w);
    return 0;
  };
}

std::vector<Case> core_cases() {
  return {
      {"tavdcore_init", "", 0, 0, 0, quiet([](Work&) { tavdcore_init(1510, "FIN", "a"); })},
      {"tavdcore_initw", "", 0, 0, 0, quiet([](Work&) { tavdcore_initw(1510, "FIN", WIDE("a")); })},
      {"tavdcore_set_market_area", "", 0, 0, 0, quiet([](Work&) { tavdcore_set_market_area("FIN"); })},
      {"tavdcore_set_user_lng", "", 0, 0, 0, quiet([](Work&) { tavdcore_set_user_lng(1510); })},
      {"tavdcore_vlkFilename", "", 0, 0, 0, quiet([](Work&) { tavdcore_vlkFilename(); })},
      {"tavdcore_vlkFilenamew", "", 0, 0, 0, quiet([](Work&) { tavdcore_vlkFilenamew(); })},
      {"tavdcore_marketArea", "", 0, 0, 0, quiet([](Work&) { tavdcore_marketArea(); })},
      {"tavdcore_pcodeAttId", "", 9500, 0, 0, [](Work&) { return tavdcore_pcodeAttId(); }},
      {"tavdcore_pdescAttId", "", 9550, 0, 0, [](Work&) { return tavdcore_pdescAttId(); }},
      {"tavdcore_weblinkAttId", "", 8500, 0, 0, [](Work&) { return tavdcore_weblinkAttId(); }},
      {"tavdf_charsetId", "", 1, 0, 0, [](Work&) { return tavdf_charsetId(1562); }},
  };
}

template <typename Call>
void add_record_cases(std::vector<Case>& cases, const char* function, Call call) {
  cases.push_back({function, "full record", 0, 0, 0, quiet([call](Work& w) { call(w, w.full); })});
  cases.push_back(
      {function, "record without attributes", 0, 0, 0, quiet([call](Work& w) { call(w, w.bare); })});
  cases.push_back({function, "no record", 0, 0, 0, quiet([call](Work& w) { call(w, nullptr); })});
}

std::vector<Case> record_cases() {
  std::vector<Case> cases = {
      {"tavdf_open_database", "missing file", -1, 0, 0,
       [](Work&) { return tavdf_open_database("missing", 0); }},
      {"tavdf_open_databasew", "missing file", -1, 0, 0,
       [](Work&) { return tavdf_open_databasew(WIDE("missing"), 0); }},
      {"tavdf_open_database", "opened", 0, 0, 0,
       [](Work& w) { return tavdsrv_closedatabase(tavdf_open_database(w.destination.path().c_str(), 0)); }},
      {"tavdf_open_databasew", "opened", 0, 0, 0,
       [](Work& w) {
         const std::string& path = w.destination.path();
         return tavdsrv_closedatabase(
             tavdf_open_databasew(tavdtest::Wide(path.begin(), path.end()).c_str(), 0));
       }},
      {"tavdf_check_shapedata", "", 0, 0, 0,
       [](Work& w) { return tavdf_check_shapedata(w.words, &w.count, &kRound); }},
  };
  add_record_cases(cases, "tavdf_load_ductsize",
                   [](Work& w, tavb_rec rec) { tavdf_load_ductsize(w.db, rec, &w.ds); });
  add_record_cases(cases, "tavdf_load_shapedata",
                   [](Work& w, tavb_rec rec) { tavdf_load_shapedata(w.db, rec, &kRound, w.words, 16); });
  add_record_cases(cases, "tavdf_load_installationdef", [](Work& w, tavb_rec rec) {
    tavdf_load_installationdef(w.db, rec, w.text, sizeof w.text);
    tavdf_load_installationdef(w.db, rec, w.text, 0);
    tavdf_load_installationdef(w.db, rec, nullptr, 0);
  });
  const auto add_text = [&](const char* function, auto* copy) {
    add_record_cases(cases, function,
                     [copy](Work& w, tavb_rec rec) { copy(w.db, rec, w.text, sizeof w.text); });
  };
  add_text("tavdf_copyproductcode", tavdf_copyproductcode);
  add_text("tavdf_copyproductdesc", tavdf_copyproductdesc);
  add_text("tavdf_copyweblink", tavdf_copyweblink);
  const auto add_wide = [&](const char* function, auto* copy) {
    add_record_cases(cases, function, [copy](Work& w, tavb_rec rec) { copy(w.db, rec, w.wide, 256); });
  };
  add_wide("tavdf_copyproductcodew", tavdf_copyproductcodew);
  add_wide("tavdf_copyproductdescw", tavdf_copyproductdescw);
  add_wide("tavdf_copyweblinkw", tavdf_copyweblinkw);
  add_record_cases(cases, "tavd_build_productId_ds", [](Work& w, tavb_rec rec) {
    tavd_build_productId_ds(w.db, w.text, rec, &kRound, nullptr);  // the template fails
    tavd_build_productId_ds(w.db, w.text, rec, &w.ds, nullptr);
  });
  add_record_cases(cases, "tavd_build_productId_ds2", [](Work& w, tavb_rec rec) {
    tavd_build_productId_ds2(w.db, w.text, sizeof w.text, rec, &kRound, nullptr);
    tavd_build_productId_ds2(w.db, w.text, sizeof w.text, rec, &w.ds, nullptr);
  });
  add_record_cases(cases, "tavd_build_productId_dsw", [](Work& w, tavb_rec rec) {
    tavd_build_productId_dsw(w.db, w.wide, rec, &kRound, nullptr);
  });
  add_record_cases(cases, "tavd_build_productId_dsw2", [](Work& w, tavb_rec rec) {
    tavd_build_productId_dsw2(w.db, w.wide, 256, rec, &kRound, nullptr);
  });
  return cases;
}

std::vector<Case> code_cases() {
  return {
      {"tavd_build_code_ds", "", 0, 0, 0,
       [](Work& w) { return tavd_build_code_ds(w.text, "A{D}", &kRound, &kRound); }},
      {"tavd_build_code_ds2", "fault", -3, 0, 0,
       [](Work& w) { return tavd_build_code_ds2(w.text, 30, "A{D:", &kRound, &kRound); }},
      {"tavd_build_code_dsw", "", 0, 0, 0,
       [](Work& w) { return tavd_build_code_dsw(w.wide, WIDE("A{D}"), &kRound, &kRound); }},
      {"tavd_build_code_dsw2", "fault", -3, 0, 0,
       [](Work& w) { return tavd_build_code_dsw2(w.wide, 256, WIDE("A{D:"), &kRound, &kRound); }},
  };
}

std::vector<Case> copy_cases() {
  const auto copy = [](const char* id) {
    return [id](Work& w) { return tavdf_copy_recs(w.db, w.to, "ASD", id); };
  };
  const auto remove = [](const char* id) {
    return [id](Work& w) { return tavdf_delete_recs(w.db, "ASD", id); };
  };
  return {
      {"tavdf_copy_recs", "no class", -1, 0, 0,
       [](Work& w) { return tavdf_copy_recs(w.db, w.to, nullptr, "A"); }},
      {"tavdf_copy_recs", "no id", -1, 0, 0,
       [](Work& w) { return tavdf_copy_recs(w.db, w.to, "ASD", nullptr); }},
      {"tavdf_copy_recs", "no such record", -1, 0, 0, copy("GONE")},
      {"tavdf_copy_recs", "no model named", 0, 1, 0, copy("NONE")},
      {"tavdf_copy_recs", "model not found", 0, 1, 0, copy("SINGLE")},
      {"tavdf_copy_recs", "model without block", 0, 2, 0, copy("ONE")},
      // The record, its model and block; the list; each member, the model it inherits and its block.
      {"tavdf_copy_recs", "family by pattern", 0, 3 + 5 + 2 * 3, 0, copy("FAM-*")},
      {"tavdf_copy_recs", "family by name", 0, 1 + 4 + 2, 0, copy("LIST")},
      {"tavdf_copy_recs", "family without members", 0, 1 + 1, 0, copy("LIST-EMPTY")},
      // From here on families are gone, so this is the last table.
      {"tavdf_delete_recs", "no class", -1, 0, 0,
       [](Work& w) { return tavdf_delete_recs(w.db, nullptr, "A"); }},
      {"tavdf_delete_recs", "no id", -1, 0, 0,
       [](Work& w) { return tavdf_delete_recs(w.db, "ASD", nullptr); }},
      {"tavdf_delete_recs", "no such record", -1, 0, 0, remove("GONE")},
      {"tavdf_delete_recs", "single", 0, 1, 0, remove("ONE")},
      {"tavdf_delete_recs", "family without members", 0, 1 + 1, 0, remove("LIST-EMPTY")},
      {"tavdf_delete_recs", "family by pattern", 0, 1 + 5, 0, remove("FAM-*")},
      {"tavdf_delete_recs", "family by name, members gone", 0, 1 + 2, 0, remove("LIST")},
  };
}

// The narrow and the wide functions of one table row.
template <typename List, typename Member>
struct Lists {
  List Work::*list;
  Member Work::*member;
  std::vector<const char*> names;  // init, reset, release, read, add, get, is_member
  void (*init)(List*);
  void (*reset)(List*);
  void (*release)(List*);
  int32_t (*read)(List*, int16_t, const char*, const char*);
  int32_t (*add)(List*, int16_t, tavb_rec);
  int32_t (*get)(const List*, int32_t, Member*);
  int32_t (*is_member)(const List*, const char*);
};

template <typename List, typename Member>
void add_family_cases(std::vector<Case>& cases, const Lists<List, Member>& form) {
  const auto list = form.list;
  const auto member = form.member;
  const auto filled = [list, read = form.read](Work& w) { read(&(w.*list), w.db, "ASD", "FAM-*"); };
  const auto read = [list, read = form.read](const char* id, const char* class_id = "ASD") {
    return [=](Work& w) { return read(&(w.*list), w.db, class_id, id); };
  };
  const char* name = form.names[3];
  const std::vector<Case> rows = {
      {form.names[0], "", 0, 0, 0, quiet([=, f = form.init](Work& w) { f(&(w.*list)); })},
      {form.names[1], "filled", 0, 0, 0, quiet([=, f = form.reset](Work& w) { f(&(w.*list)); }), filled},
      {form.names[2], "filled", 0, 0, 0, quiet([=, f = form.release](Work& w) { f(&(w.*list)); }), filled},
      {name, "no list", 0, 0, 0, [f = form.read](Work& w) { return f(nullptr, w.db, "ASD", "FAM-*"); }},
      {name, "no class", 0, 0, 0, read("FAM-*", nullptr)},
      {name, "no id", 0, 0, 0, read(nullptr)},
      {name, "no such record", 0, 0, 0, read("GONE")},
      {name, "single, mode 0", 1, 1, 0, read("ONE")},
      {name, "single, mode 3", 1, 1, 0, read("SINGLE")},
      {name, "mode below 0", 0, 1, 0, read("NONE")},
      // The main record; the walk over it, two members and the record that ends it.
      {name, "pattern up to the next prefix", 2, 1 + 4, 0, read("FAM-*")},
      {name, "pattern up to the next class", 1, 1 + 3, 0, read("ZED-*")},
      {name, "pattern up to the end", 1, 1 + 2, 0, read("Z-*", "ZZZ")},
      {name, "named, one of them gone", 2, 1 + 1 + 2, 0, read("LIST")},
      {name, "named, without names", 0, 1, 0, read("LIST-EMPTY")},
      {form.names[4], "full record", 0, 0, 0,
       [=, f = form.add](Work& w) { return f(&(w.*list), w.db, w.full); }},
      {form.names[4], "no record", -1, 0, 0,
       [=, f = form.add](Work& w) { return f(&(w.*list), w.db, nullptr); }},
      {form.names[4], "no list", -1, 0, 0, [f = form.add](Work& w) { return f(nullptr, w.db, w.full); }},
      {form.names[5], "found", 0, 0, 0, [=, f = form.get](Work& w) { return f(&(w.*list), 1, &(w.*member)); },
       filled},
      {form.names[5], "outside", -1, 0, 0,
       [=, f = form.get](Work& w) { return f(&(w.*list), 9, &(w.*member)); }, filled},
      {form.names[6], "member", 0, 0, 0, [=, f = form.is_member](Work& w) { return f(&(w.*list), "FAM-1"); },
       filled},
  };
  cases.insert(cases.end(), rows.begin(), rows.end());
}

std::vector<Case> family_cases() {
  std::vector<Case> cases = {
      {"tavfm_is_codeparam_separator", "", 1, 0, 0, [](Work&) { return tavfm_is_codeparam_separator('-'); }}};
  add_family_cases<FamilyList, FamilyMember>(
      cases, {&Work::list,
              &Work::member,
              {"tavfm_init", "tavfm_reset", "tavfm_release", "tavfm_read", "tavfm_add", "tavfm_get",
               "tavfm_is_member"},
              tavfm_init,
              tavfm_reset,
              tavfm_release,
              tavfm_read,
              tavfm_add,
              tavfm_get,
              tavfm_is_member});
  add_family_cases<FamilyListW, FamilyMemberW>(
      cases, {&Work::listw,
              &Work::memberw,
              {"tavfm_initw", "tavfm_resetw", "tavfm_releasew", "tavfm_readw", "tavfm_addw", "tavfm_getw",
               "tavfm_is_memberw"},
              tavfm_initw,
              tavfm_resetw,
              tavfm_releasew,
              tavfm_readw,
              tavfm_addw,
              tavfm_getw,
              tavfm_is_memberw});
  return cases;
}

std::vector<Case> set_cases() {
  const auto read = [](const char* id, const char* class_id = "ASD") {
    return [=](Work& w) { return tavdidset_read(&w.set, w.db, class_id, id); };
  };
  const auto adjust = [](const char* id) {
    return [=](Work& w) { return tavdidset_adjust(&w.set, w.db, id); };
  };
  const auto find = [](int16_t attribute) {
    return
        [=](Work& w) { return tavdidset_findatt(&w.set, w.db, attribute, &w.count, w.text, sizeof w.text); };
  };
  return {
      {"tavdidset_init", "", 0, 0, 0, quiet([](Work& w) { tavdidset_init(&w.set); })},
      {"tavdidset_set_wildchars", "", 0, 0, 0, [](Work& w) { return tavdidset_set_wildchars(&w.set, "#"); },
       read_set},
      {"tavdidset_set_separators", "", -1, 0, 0,
       [](Work& w) { return tavdidset_set_separators(&w.set, "_"); }, read_set},
      {"tavdidset_read", "no set", -1, 0, 0,
       [](Work& w) { return tavdidset_read(nullptr, w.db, "ASD", "SET-1"); }},
      {"tavdidset_read", "no class", -1, 0, 0, read("SET-1", nullptr)},
      {"tavdidset_read", "no id", -1, 0, 0, read(nullptr)},
      {"tavdidset_read", "no separator", -1, 0, 0, read("SET")},
      {"tavdidset_read", "no separator, on a set that was read", -1, 0, -3, read("SET"), read_set},
      // The walk over main record, two sub records and another one; SETTLED-1 ends it.
      {"tavdidset_read", "up to the next prefix", 0, 5, 3, read("SET-1")},
      {"tavdidset_read", "a second time", 0, 5, 0, read("SET-1"), read_set},
      {"tavdidset_read", "a second time, adjusted", 0, 5, -1, read("SET-1"), adjust_set},
      {"tavdidset_read", "up to the next class", 0, 3, 0, read("ZED-1")},
      {"tavdidset_read", "up to the end", 0, 2, 0, read("Z-1", "ZZZ")},
      {"tavdidset_read", "nothing behind", 0, 0, 0, read("ZZ-1", "ZZZ")},
      {"tavdidset_read", "no such product", 0, 1, 0, read("A-1")},
      // The one that is lost: the second main record.
      {"tavdidset_read", "two main records", -1, 3, 1, read("TWO-1")},
      {"tavdidset_read", "out of memory", -1, 3, 0,
       [](Work& w) {
         tavdtest::at_call("next", [&w] {
           tavdtest::at_call("next", [&w] { w.set.subs.itemsize = std::numeric_limits<int32_t>::max(); });
         });
         return tavdidset_read(&w.set, w.db, "ASD", "SET-1");
       }},
      {"tavdidset_adjust", "no set", -1, 0, 0,
       [](Work& w) { return tavdidset_adjust(nullptr, w.db, "SET-1"); }},
      {"tavdidset_adjust", "no main record", -1, 0, 0, adjust("SET-1")},
      {"tavdidset_adjust", "does not fit", -3, 0, 0, adjust("SET-1-2"), read_set},
      {"tavdidset_adjust", "does not fit, adjusted before", -3, 0, -1, adjust("SET-1-2"), adjust_set},
      {"tavdidset_adjust", "no exact record", 0, 0, 0, adjust("SET-9"), read_set},
      {"tavdidset_adjust", "no exact record, one before", 0, 0, -1, adjust("SET-9"), adjust_set},
      {"tavdidset_adjust", "exact record", 0, 1, 1, adjust("SET-2"), read_set},
      {"tavdidset_adjust", "exact record, one before", 0, 1, 0, adjust("SET-2"), adjust_set},
      {"tavdidset_findatt", "no main record", -1, 0, 0, find(1501)},
      {"tavdidset_findatt", "not adjusted", -3, 0, 0, find(1501), read_set},
      {"tavdidset_findatt", "found", 1, 0, 0, find(1501), adjust_set},
      {"tavdidset_findatt", "not found", 0, 0, 0, find(1507), adjust_set},
      {"tavdidset_findatt", "no buffer", 1, 0, 0,
       [](Work& w) { return tavdidset_findatt(&w.set, w.db, 1501, &w.count, nullptr, 0); }, adjust_set},
      {"tavdidset_reset", "empty", 0, 0, 0, quiet([](Work& w) { tavdidset_reset(&w.set); })},
      {"tavdidset_reset", "read", 0, 0, -3, quiet([](Work& w) { tavdidset_reset(&w.set); }), read_set},
      {"tavdidset_reset", "adjusted", 0, 0, -4, quiet([](Work& w) { tavdidset_reset(&w.set); }), adjust_set},
      {"tavdidset_release", "adjusted", 0, 0, -4, quiet([](Work& w) { tavdidset_release(&w.set); }),
       adjust_set},
  };
}

std::vector<Case> all_cases() {
  std::vector<Case> all;
  for (const auto& table :
       {core_cases(), record_cases(), code_cases(), family_cases(), set_cases(), copy_cases()}) {
    all.insert(all.end(), table.begin(), table.end());
  }
  return all;
}

TEST(HandleRelease, EveryWayThroughEveryFunctionGivesBackWhatItTook) {
  Work work;
  const tavdtest::Messages messages(0);  // of the two main records
  for (const Case& one : all_cases()) {
    SCOPED_TRACE(std::string(one.function) + ": " + one.path);
    const std::size_t at_rest = handles_out();
    if (one.before) one.before(work);
    const std::size_t taken = handles_taken();
    const auto out = static_cast<int>(handles_out());
    EXPECT_EQ(one.call(work), one.result);
    EXPECT_EQ(handles_taken() - taken, one.taken);
    EXPECT_EQ(static_cast<int>(handles_out()) - out, one.kept);
    work.end();
    work.start();
    if (std::string(one.path) == "two main records") {
      EXPECT_TRUE(tavdtest::release_last_record()) << "the only handle that is lost";
    }
    EXPECT_EQ(handles_out(), at_rest);
  }
  EXPECT_EQ(messages.texts.size(), 1U);
  tavdcore_init(0, nullptr, nullptr);
}

TEST(HandleRelease, EveryFunctionOfTheDatabaseFamiliesHasACase) {
  std::ifstream exports(TAVD_EXPORTS);
  std::set<std::string> missing;
  int functions = 0;
  for (std::string name; exports >> name;) {
    for (const char* family : {"tavdcore_", "tavdf_", "tavfm_", "tavdidset_", "tavd_build_"}) {
      if (name.rfind(family, 0) != 0) continue;
      missing.insert(name);
      ++functions;
    }
  }
  EXPECT_EQ(functions, 10 + 15 + 15 + 8 + 8);
  for (const Case& one : all_cases()) missing.erase(one.function);
  EXPECT_THAT(missing, testing::IsEmpty());
}

}  // namespace
