#include "synth/product.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <initializer_list>
#include <numbers>
#include <type_traits>

#include "base/errors.h"
#include "product/record_layout.h"
#include "tavd/attributes.h"
#include "tavd/tavdf.h"

namespace tavdhost {
namespace {

// The languages of SynthClass::nouns, in charsets windows-1252, -1250, -1257 and -1251, and UTF-8.
constexpr std::array<std::int16_t, 7> kDescriptions = {
    TAVD_ATT_DESCRIPTION_FINNISH, TAVD_ATT_DESCRIPTION_SWEDISH,  TAVD_ATT_DESCRIPTION_ENGLISH,
    TAVD_ATT_DESCRIPTION_POLISH,  TAVD_ATT_DESCRIPTION_ESTONIAN, TAVD_ATT_DESCRIPTION_RUSSIAN,
    TAVD_ATT_DESCRIPTION_CHINESE};
// Product codes of markets: Finland, Poland, Estonia, China.
constexpr std::array<std::int16_t, 4> kCodes = {TAVD_ATT_CODE_FIN, TAVD_ATT_CODE_POL, TAVD_ATT_CODE_EST,
                                                TAVD_ATT_CODE_CHN};

constexpr SynthClass kClasses[] = {
    {"AEX",
     TAVD_KIND_RESISTANCE_POINTS,
     5,
     {"Poistoilmaventtiili", "Frånluftsventil", "Exhaust valve", "Zawór wywiewny", "Väljatõmbeplafoon",
      "Вытяжной клапан", "排风阀"}},
    {"ASD",
     TAVD_KIND_RESISTANCE,
     4,
     {"Seinähajotin", "Väggdon", "Wall diffuser", "Nawiewnik ścienny", "Seinahajuti", "Настенный диффузор",
      "壁式散流器"}},
    {"CCB",
     TAVD_KIND_RANGE,
     20,
     {"Jäähdytyspalkki", "Kylbaffel", "Chilled beam", "Belka chłodząca", "Jahutustala", "Охлаждающая балка",
      "冷梁"}},
    {"DMP",
     TAVD_KIND_DAMPER,
     0.5,
     {"Säätöpelti", "Reglerspjäll", "Control damper", "Przepustnica regulująca", "Õhuklapp",
      "Регулирующая заслонка", "调节阀"}},
    {"FAN",
     TAVD_KIND_FAN,
     3,
     {"Kanavapuhallin", "Kanalfläkt", "Duct fan", "Wentylator kanałowy", "Kanaliventilaator",
      "Канальный вентилятор", "管道风机"}},
};

constexpr double kLowestVelocity = 0.8;  // m/s in the connection
constexpr double kHighestVelocity = 8;
constexpr double kLowestPressure = 5;  // Pa
constexpr double kHighestPressure = 600;
constexpr double kHalfDensity = 0.6;  // kg/m3: pressure = loss coefficient * kHalfDensity * velocity^2

using Bands = std::array<std::uint8_t, 8>;
constexpr std::array kSpectrum = {-4, -6, -8, -10, -13, -17, -22, -28};  // dB beside the level of all bands
constexpr Bands kDlw = {10, 7, 4, 3, 3, 4, 4, 4};

// The bytes of an attribute, item by item.
class Rows {
 public:
  template <typename... Values>
  Rows& add(Values... values) {
    (append(values), ...);
    return *this;
  }
  std::string take() { return std::move(bytes_); }

 private:
  template <typename Value>
  void append(const Value& value) {
    static_assert(std::is_same_v<Value, std::int16_t> || std::is_same_v<Value, float> ||
                  std::is_same_v<Value, Bands>);
    bytes_.append(reinterpret_cast<const char*>(&value), sizeof value);
  }
  std::string bytes_;
};

// The measured data of one product, as formulas have them.
class Measurements {
 public:
  Measurements(const SynthClass& kind, const Traits& traits, int size)
      : kind_(kind.kind),
        resistance_(kind.resistance * traits.resistance),
        noise_(traits.noise),
        area_(std::numbers::pi / 4 * size * size * 1e-6) {}

  void add_to(Entry& entry) const {
    add_pressures(entry);
    add_sound(entry);
  }
  // l/s
  float flow(double velocity) const { return static_cast<float>(velocity * area_ * 1000); }

 private:
  static constexpr int kSettings = 6;
  static constexpr double kMostThrottled = 250;  // loss coefficient of a damper's first setting

  static float pressure(double resistance, double velocity) {
    return static_cast<float>(resistance * kHalfDensity * velocity * velocity);
  }
  double resistance_of_setting(int setting) const {
    return kMostThrottled * std::pow(resistance_ / kMostThrottled, (setting - 1.0) / (kSettings - 1.0));
  }
  // Pressure that a fan gives.
  static double fan_pressure(double velocity) {
    const double part = velocity / kHighestVelocity;
    return 300 * (1 - part * part);
  }
  Bands sound(double velocity, double pressure) const {
    const double level =
        5 + noise_ + 25 * std::log10(velocity) + 18 * std::log10(pressure) + 10 * std::log10(area_ * 100);
    Bands bands{};
    for (std::size_t i = 0; i < bands.size(); ++i) {
      bands[i] = static_cast<std::uint8_t>(std::clamp(std::lround(level + kSpectrum[i]), 0L, 255L));
    }
    return bands;
  }

  void add_pressures(Entry& entry) const;
  void add_sound(Entry& entry) const;
  static void add_curve(Rows& rows, const Measurements& of, double resistance);

  std::int16_t kind_;
  double resistance_;  // loss coefficient; of a damper when it is open
  double noise_;
  double area_;  // m2
};

void Measurements::add_pressures(Entry& entry) const {
  Rows rows;
  switch (kind_) {
    case TAVD_KIND_RESISTANCE:
      entry.attributes[TAVD_ATT_QVDP_REF] = rows.add(flow(3), pressure(resistance_, 3)).take();
      break;
    case TAVD_KIND_RESISTANCE_POINTS:
      for (const double v : {0.8, 1.6, 3.0, 5.0, 7.0, 9.0}) rows.add(flow(v), pressure(resistance_, v));
      entry.attributes[TAVD_ATT_QVDP_POINTS] = rows.take();
      break;
    case TAVD_KIND_DAMPER:
      for (int setting = 1; setting <= kSettings; ++setting) {
        const double z = resistance_of_setting(setting);
        const double v = std::clamp(std::sqrt(50 / (kHalfDensity * z)), 1.0, 6.0);
        rows.add(static_cast<float>(setting), flow(v), pressure(z, v));
      }
      entry.attributes[TAVD_ATT_DAMPER_POINTS] = rows.take();
      break;
    case TAVD_KIND_FAN:
      for (const double v : {0.0, 2.0, 4.0, 6.0, 8.0}) {
        rows.add(flow(v), static_cast<float>(fan_pressure(v)), 0.0F);
      }
      entry.attributes[TAVD_ATT_FAN_CURVE] = rows.take();
      entry.attributes[TAVD_ATT_QVDP_LIMITS] = Rows().add(0.0F, flow(kHighestVelocity), 0.0F, 320.0F).take();
      break;
    default:
      break;
  }
}

// Points along one curve of resistance, by rising flow, up to the highest pressure.
void Measurements::add_curve(Rows& rows, const Measurements& of, double resistance) {
  const double highest =
      std::min(kHighestVelocity, std::sqrt(kHighestPressure / (kHalfDensity * resistance)));
  for (const double part : {0.25, 0.5, 1.0}) {
    const double v = highest * part;
    rows.add(of.flow(v), pressure(resistance, v), of.sound(v, kHalfDensity * resistance * v * v));
  }
}

void Measurements::add_sound(Entry& entry) const {
  Rows rows;
  switch (kind_) {
    case TAVD_KIND_DAMPER:
      for (int setting = 1; setting <= kSettings; ++setting) {
        add_curve(rows, *this, resistance_of_setting(setting));
      }
      break;
    case TAVD_KIND_RANGE:
      for (const double v : {0.8, 2.0, 4.0, 8.0}) {
        for (const float p : {20.0F, 60.0F, 200.0F, 600.0F}) rows.add(flow(v), p, sound(v, p));
      }
      break;
    case TAVD_KIND_FAN:
      for (const double v : {1.0, 4.0, 6.0}) {
        for (const double part : {0.5, 1.0}) {
          const double p = part * fan_pressure(v);
          rows.add(flow(v), static_cast<float>(p), sound(v, p));
        }
      }
      break;
    default:
      add_curve(rows, *this, resistance_);
      break;
  }
  entry.attributes[TAVD_ATT_LW_POINTS] = rows.take();
}

std::string parameter_table() {
  std::string table;
  const auto row = [&](const char* value, float dk, std::int16_t dlw, float factor) {
    table.append(value, 6);
    table += Rows().add(dk, dlw, std::int16_t{0}, factor).take();
  };
  row("50    ", 0.01F, 6, 0.8F);
  row("75    ", 0.002F, 2, 0.9F);
  row("100   ", 0.0F, 0, 1.0F);
  return table;
}

Entry entry_of(const SynthClass& kind, const std::string& id) {
  return {kind.id, id, {}, {}, {}};
}

}  // namespace

std::uint64_t Dice::next() {
  // splitmix64
  state_ += 0x9E3779B97F4A7C15U;
  std::uint64_t mixed = state_;
  mixed = (mixed ^ (mixed >> 30)) * 0xBF58476D1CE4E5B9U;
  mixed = (mixed ^ (mixed >> 27)) * 0x94D049BB133111EBU;
  return mixed ^ (mixed >> 31);
}

std::span<const SynthClass> synth_classes() {
  return kClasses;
}

// Narrow texts are in the default code page, so that every charset of the service comes to be used.
Entry file_header() {
  Entry entry{TAVD_FILEHEADER_CLASS, TAVD_FILEHEADER_ID, {}, {}, {}};
  put_word(entry, TAVD_ATT_USES_UTF8, 0);
  return entry;
}

std::string model_id(std::size_t serial) {
  return "MODEL-" + std::to_string(serial + 10'000'000).substr(1);
}

Entry model(std::size_t serial, Dice& dice) {
  Entry entry{TAVD_MODEL_CLASS, model_id(serial), {}, {}, {}};
  entry.attributes[TAVD_ATT_MAKER] = "Synthetic Ventilation Works";
  constexpr std::size_t kLargestBlock = 4000;
  std::string block(1 + dice.below(kLargestBlock), '\0');
  for (char& byte : block) byte = static_cast<char>(dice.below(256));
  entry.ahm = std::move(block);
  return entry;
}

void put_word(Entry& entry, std::int16_t attribute, std::int16_t value) {
  entry.attributes[attribute] = Rows().add(value).take();
}

ProductMaker::ProductMaker(const TextCodec& codec) {
  for (const SynthClass& kind : kClasses) {
    std::vector<std::string>& encoded = nouns_.emplace_back();
    for (std::size_t i = 0; i < kDescriptions.size(); ++i) {
      const auto noun = codec.encode(tavdf_charsetId(kDescriptions[i]), kind.nouns[i]);
      if (!noun) throw std::logic_error(std::string(kind.nouns[i]) + " has no place in its charset");
      encoded.push_back(*noun);
    }
  }
}

Entry ProductMaker::product(const SynthClass& kind, const Traits& traits, const std::string& id,
                            int size) const {
  Entry entry = measurements(kind, traits, id, size);
  add_texts(entry, kind);
  auto& attributes = entry.attributes;
  attributes[TAVD_ATT_DLW] = Rows().add(kDlw).take();
  attributes[TAVD_ATT_MAKER] = "Synthetic Ventilation Works";
  if (!traits.model.empty()) attributes[TAVD_ATT_MODEL_ID] = traits.model;
  if (kind.kind != TAVD_KIND_FAN) {
    attributes[TAVD_ATT_PAR_NAMES] = "PLATE";
    attributes[TAVD_ATT_PAR1_TABLE] = parameter_table();
  }
  attributes[TAVD_ATT_INT_PAIR] = Rows().add(std::int16_t{1}, std::int16_t{2}).take();
  attributes[TAVD_ATT_FLOAT_PAIR] = Rows().add(0.5F, 1.5F).take();
  return entry;
}

Entry ProductMaker::texts(const SynthClass& kind, const std::string& id) const {
  Entry entry = entry_of(kind, id);
  add_texts(entry, kind);
  return entry;
}

Entry ProductMaker::measurements(const SynthClass& kind, const Traits& traits, const std::string& id,
                                 int size) const {
  Entry entry = entry_of(kind, id);
  const Measurements measured(kind, traits, size);
  measured.add_to(entry);
  const auto mm = static_cast<std::int16_t>(size);
  const auto edge = static_cast<std::int16_t>(size + 60);
  entry.attributes[TAVD_ATT_FLOW_HEADER] =
      Rows()
          .add(static_cast<std::int16_t>(kind.kind + TAVD_KIND_TOTAL_PRESSURE), mm, std::int16_t{0},
               measured.flow(kLowestVelocity), measured.flow(kHighestVelocity),
               static_cast<float>(kLowestPressure), static_cast<float>(kHighestPressure))
          .take();
  entry.attributes[TAVD_ATT_SHAPE_DATA] =
      Rows().add(std::int16_t{101}, mm, edge, edge, std::int16_t{50}).take();
  entry.attributes[TAVD_ATT_LW_SIZE_COEF] = Rows().add(0.0F).take();
  put_word(entry, TAVD_ATT_DIAMETERS, mm);
  entry.attributes[TAVD_ATT_QV_L2] =
      Rows().add(measured.flow(2), 2.0F).add(measured.flow(4), 4.0F).add(measured.flow(8), 8.0F).take();
  return entry;
}

Entry ProductMaker::attenuation(const SynthClass& kind, const Traits& traits, const std::string& id) const {
  Entry entry = entry_of(kind, id);
  Bands quieter = kDlw;
  for (std::uint8_t& band : quieter) band = static_cast<std::uint8_t>(band + (traits.noise > 0 ? 2 : 1));
  entry.attributes[TAVD_ATT_DLW] = Rows().add(quieter).take();
  return entry;
}

// What is behind a noun, and a code, is ASCII and so the same in every charset.
void ProductMaker::add_texts(Entry& entry, const SynthClass& kind) const {
  auto& attributes = entry.attributes;
  const std::vector<std::string>& nouns = nouns_[static_cast<std::size_t>(&kind - kClasses)];
  for (std::size_t i = 0; i < nouns.size(); ++i) {
    attributes[kDescriptions[i]] = nouns[i] + ' ' + entry.object_id;
  }
  for (const std::int16_t code : kCodes) attributes[code] = entry.object_id;
  for (const auto code : {TAVD_ATT_CODE_SECOND, TAVD_ATT_CODE_THIRD, TAVD_ATT_CODE_DEFAULT}) {
    attributes[code] = entry.object_id;
  }
  attributes[TAVD_ATT_INSTALLATION] = "Duct";
  attributes[TAVD_ATT_WEBLINK_DEFAULT] = "https://ventilation.example/" + entry.object_id;
}

}  // namespace tavdhost
