#include "synth/groups.h"

#include <algorithm>
#include <array>
#include <string>
#include <utility>

#include "product/record_layout.h"
#include "synth/product.h"
#include "tavd/attributes.h"

namespace tavdhost {
namespace {

constexpr std::size_t kPerModel = 100;  // records to one model record
constexpr int kLargestFamily = 40;      // members
constexpr int kFirstSize = 100;         // mm
constexpr int kSizeStep = 25;           // mm

// sizingmode

enum class Group { kFamily, kList, kSet, kSingle };

// How often a kind of group comes, of 20 groups.
constexpr std::array<std::pair<Group, int>, 4> kGroups = {{
    {Group::kFamily, 9},
    {Group::kList, 3},
    {Group::kSet, 4},
    {Group::kSingle, 4},
}};
constexpr int kGroupsInAll = 20;

constexpr std::array kFamilySizes = {2, 4, 6, 8, 12, 20, kLargestFamily};

std::string padded(std::size_t number, std::size_t digits) {
  const std::string text = std::to_string(number);
  return std::string(digits - std::min(digits, text.size()), '0') + text;
}

std::string size_text(int size) {
  return padded(static_cast<std::size_t>(size), 4);
}

int size_at(int index) {
  return kFirstSize + kSizeStep * index;
}

// Fills one class, group by group, until it has as many records as it is to have.
class ClassWriter {
 public:
  ClassWriter(const ProductMaker& maker, const SynthClass& kind, std::size_t records, std::size_t models,
              std::uint64_t seed, const std::function<void(const Entry&)>& take)
      : maker_(maker), kind_(kind), left_(records), models_(models), dice_(seed), take_(take) {}

  void write() {
    for (std::size_t serial = 0; left_ > 0; ++serial) {
      traits_ = draw_traits(serial);
      const std::string prefix = "Q" + padded(serial, 7);
      write_group(serial == 0 ? Group::kFamily : draw_group(), prefix,
                  serial == 0 ? kLargestFamily : kFamilySizes[dice_.below(kFamilySizes.size())]);
    }
  }

 private:
  void write_group(Group group, const std::string& prefix, int members) {
    const bool has_room = left_ > 1;
    members = static_cast<int>(std::min<std::size_t>(static_cast<std::size_t>(members), left_ - 1));
    if (group == Group::kFamily && has_room) return write_family(prefix, members);
    if (group == Group::kList && has_room) return write_list(prefix, members);
    if (group == Group::kSet) return write_set(prefix, std::min(members, 6));
    emit(maker_.product(kind_, traits_, prefix, size_at(0)));
  }

  void write_family(const std::string& prefix, int members) {
    Entry main = maker_.product(kind_, traits_, prefix + "-*", size_at(members / 2));
    put_word(main, TAVD_ATT_SIZING_MODE, TAVD_SIZING_PATTERN);
    emit(main);
    write_members(prefix, members);
  }

  void write_list(const std::string& prefix, int members) {
    Entry main = maker_.product(kind_, traits_, prefix, size_at(members / 2));
    put_word(main, TAVD_ATT_SIZING_MODE, TAVD_SIZING_LIST);
    std::string& ids = main.attributes[TAVD_ATT_MEMBER_IDS];
    for (int i = 0; i < members; ++i) {
      std::string id = prefix + "-" + size_text(size_at(i));
      id.resize(hosts::kIdChars, ' ');
      ids += id;
    }
    emit(main);
    write_members(prefix, members);
  }

  void write_members(const std::string& prefix, int members) {
    for (int i = 0; i < members; ++i) {
      emit(maker_.product(kind_, traits_, prefix + "-" + size_text(size_at(i)), size_at(i)));
    }
  }

  // Two code parameters, size and model year. The main record has everything; a sub record for a size has its
  // measured data, one for a year its texts, an exact record an attenuation of its own.
  void write_set(const std::string& prefix, int sizes) {
    Entry main = maker_.product(kind_, traits_, prefix + "-*-*", size_at(sizes / 2));
    put_word(main, TAVD_ATT_SIZING_MODE, TAVD_SIZING_MAIN_LAYER);
    emit(main);
    for (const char* year : {"20", "30"}) {
      Entry sub = maker_.texts(kind_, prefix + "-*-" + year);
      put_word(sub, TAVD_ATT_SIZING_MODE, TAVD_SIZING_SUB_LAYER);
      emit(sub);
    }
    for (int i = 0; i < sizes; ++i) {
      const std::string of_size = prefix + "-" + size_text(size_at(i));
      Entry sub = maker_.measurements(kind_, traits_, of_size + "-*", size_at(i));
      put_word(sub, TAVD_ATT_SIZING_MODE, TAVD_SIZING_SUB_LAYER);
      emit(sub);
      if (dice_.below(2) == 0) emit(maker_.attenuation(kind_, traits_, of_size + "-20"));
    }
  }

  // A group that is cut off by the end of its class is still one that a host can read.
  void emit(const Entry& entry) {
    if (left_ == 0) return;
    --left_;
    take_(entry);
  }

  Group draw_group() {
    auto number = static_cast<int>(dice_.below(kGroupsInAll));
    for (const auto& [group, share] : kGroups) {
      if (number < share) return group;
      number -= share;
    }
    return Group::kSingle;
  }

  Traits draw_traits(std::size_t serial) {
    Traits traits;
    traits.resistance = 0.7 + 0.1 * static_cast<double>(dice_.below(8));
    traits.noise = static_cast<double>(dice_.below(11)) - 5.0;
    if (models_ > 0) traits.model = model_id(serial % models_);
    return traits;
  }

  const ProductMaker& maker_;
  const SynthClass& kind_;
  std::size_t left_;
  std::size_t models_;
  Dice dice_;
  const std::function<void(const Entry&)>& take_;
  Traits traits_;
};

}  // namespace

void synthesize(const TextCodec& codec, std::size_t records, std::uint64_t seed,
                const std::function<void(const Entry&)>& take) {
  if (records == 0) return;
  take(file_header());
  const std::size_t models = (records - 1) / kPerModel;
  std::size_t left = records - 1 - models;
  const auto classes = synth_classes();
  const ProductMaker maker(codec);
  for (std::size_t i = 0; i < classes.size(); ++i) {
    const std::size_t share = left / (classes.size() - i);
    ClassWriter(maker, classes[i], share, models, seed * classes.size() + i, take).write();
    left -= share;
  }
  Dice dice(seed);
  for (std::size_t i = 0; i < models; ++i) take(model(i, dice));
}

}  // namespace tavdhost
