// Hostile records: loading them, and every calculation with what was loaded.
#include <initializer_list>
#include <string>
#include <vector>

#include "fuzz/input.h"
#include "fuzz/records.h"
#include "tavd/tavd.h"

namespace {

using fuzz::Input;
using fuzz::Records;
using fuzz::require;

struct Question {
  float qv, dp;
  std::string names[2], values[2];
};

void ask_pressure(const FlowData& fd, const Question& question) {
  float a = 0;
  float b = 0;
  float c = 0;
  tavca_qminqmax(&fd, &a, &b);
  tavca_floating_dp(&fd, question.qv);
  tavca_fan_dp(&fd, question.qv, &a, &b, &c);
  tavca_fan_op_check(&fd, question.qv, question.dp);
  tavca_minmaxdptot(&fd, question.qv, &a, &b);
  tavca_damper_pos(&fd, question.qv, question.dp, &a);
  tavca_damper_pos_fixed(&fd, question.qv, question.dp, &b);
  tavca_dptot_damperpos(&fd, question.qv, a);
}

void ask_sound_and_throw(const FlowData& fd, const Question& question) {
  float lw[TAVD_BANDS] = {};
  const DuctSize duct = {static_cast<int16_t>(fd.h > 0 ? 1 : 0), fd.b, fd.h};
  tavca_lw(&fd, question.qv, question.dp, lw, &duct);
  tavca_LpA(lw);
  tavca_lw(&fd, question.qv, question.dp, lw, nullptr);
  tavca_dlw(&fd, question.qv, question.dp, lw);
  for (const std::string& value : question.values) tavca_L2_isothermal(&fd, question.qv, value.c_str());
  FlowData quieter = fd;
  tavca_check_end_reflection(&quieter);
}

void calculate(std::int16_t db, tavb_rec rec, const Question& question) {
  FlowData fd;
  tavca_load_flowdata(db, rec, &fd);
  ask_pressure(fd, question);
  ask_sound_and_throw(fd, question);
  for (int i = 0; i < 2; ++i) {
    tavca_param_setvalue(&fd, question.names[i].c_str(), question.values[i].c_str());
    tavca_param_setvalue(&fd, fd.par[i].name, question.values[i].c_str());
  }
  ask_pressure(fd, question);
  ask_sound_and_throw(fd, question);
}

void read_texts(std::int16_t db, tavb_rec rec) {
  std::vector<char> narrow(80);
  std::vector<tavd_wchar> wide(80);
  for (auto* copy : {tavdf_copyproductcode, tavdf_copyproductdesc, tavdf_copyweblink})
    copy(db, rec, narrow.data(), 80);
  for (auto* copy : {tavdf_copyproductcodew, tavdf_copyproductdescw, tavdf_copyweblinkw})
    copy(db, rec, wide.data(), 80);
  tavdf_load_installationdef(db, rec, narrow.data(), 80);
}

void read_sizes(std::int16_t db, tavb_rec rec) {
  DuctSize size = {};
  tavdf_load_ductsize(db, rec, &size);
  for (const int16_t most : std::initializer_list<int16_t>{0, 3, 50}) {
    std::vector<int16_t> shape(50);
    require(tavdf_load_shapedata(db, rec, &size, shape.data(), most) <= most);
  }
}

void read_family(std::int16_t db, const char* class_id, const char* object_id) {
  FamilyList list;
  tavfm_init(&list);
  const int32_t count = tavfm_read(&list, db, class_id, object_id);
  FamilyMember member;
  for (int32_t i = 0; i < count; ++i) require(tavfm_get(&list, i, &member) == 0);
  tavfm_is_member(&list, object_id);
  tavfm_release(&list);
  FamilyListW listw;
  tavfm_initw(&listw);
  require(tavfm_readw(&listw, db, class_id, object_id) == count);
  tavfm_is_memberw(&listw, object_id);
  tavfm_releasew(&listw);
}

void read_layers(std::int16_t db, const char* class_id, const char* object_id) {
  IdSet set;
  tavdidset_init(&set);
  tavdidset_read(&set, db, class_id, object_id);
  tavdidset_adjust(&set, db, object_id);
  std::vector<unsigned char> value(240);
  for (const int16_t number : std::initializer_list<int16_t>{1511, 1650, 1652}) {
    int16_t count = 0;
    tavdidset_findatt(&set, db, number, &count, value.data(), 240);
  }
  tavdidset_release(&set);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  Input input(data, size);
  Question question = {input.number<float>(), input.number<float>(), {}, {}};
  for (int i = 0; i < 2; ++i) {
    question.names[i] = input.text();
    question.values[i] = input.text();
  }
  tavdcore_set_user_lng(static_cast<int16_t>(1510 + input.number<std::uint8_t>() % 32));
  tavdcore_set_market_area(input.text().c_str());
  const Records records(input);
  for (tavb_rec rec : records.all()) {
    const std::string class_id = Records::class_id(rec);
    const std::string object_id = Records::object_id(rec);
    calculate(records.db(), rec, question);
    read_texts(records.db(), rec);
    read_sizes(records.db(), rec);
    read_family(records.db(), class_id.c_str(), object_id.c_str());
    read_layers(records.db(), class_id.c_str(), object_id.c_str());
  }
  return 0;
}
