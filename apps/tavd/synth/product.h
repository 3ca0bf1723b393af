// The attributes of made-up products: what can be calculated, drawn and shown, following simple formulas.
#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <span>
#include <string>
#include <vector>

#include "catalogue/entry.h"
#include "product/text_codec.h"
#include "tavd/attributes.h"

namespace tavdhost {

// Numbers that are the same on every platform, which those of the standard library's distributions are not.
class Dice {
 public:
  explicit Dice(std::uint64_t seed) : state_(seed) {}
  std::size_t below(std::size_t limit) { return static_cast<std::size_t>(next() % limit); }

 private:
  std::uint64_t next();
  std::uint64_t state_;
};

// A class of products and the kind of data that they have.
struct SynthClass {
  const char* id;
  std::int16_t kind;     // TAVD_KIND_
  double resistance;     // loss coefficient of its products, which their pressures follow
  const char* nouns[7];  // what it is, in the languages of the texts
};

// By rising id.
std::span<const SynthClass> synth_classes();

// What one group of products has in common.
struct Traits {
  double resistance = 1;  // factor of the class's
  double noise = 0;       // dB more than usual
  std::string model;      // object id of its model record, or empty
};

Entry file_header();
std::string model_id(std::size_t serial);
Entry model(std::size_t serial, Dice& dice);

void put_word(Entry& entry, std::int16_t attribute, std::int16_t value);

// Makes products for one database, in whose charsets the texts are.
class ProductMaker {
 public:
  explicit ProductMaker(const TextCodec& codec);

  // A whole product of this size (mm): texts, measured data and attenuation, without a sizing mode.
  Entry product(const SynthClass& kind, const Traits& traits, const std::string& id, int size) const;

  // Records with only a part of that, for the layers of product sets.
  Entry texts(const SynthClass& kind, const std::string& id) const;
  Entry measurements(const SynthClass& kind, const Traits& traits, const std::string& id, int size) const;
  Entry attenuation(const SynthClass& kind, const Traits& traits, const std::string& id) const;

 private:
  void add_texts(Entry& entry, const SynthClass& kind) const;
  std::vector<std::vector<std::string>> nouns_;  // encoded, by class and language
};

}  // namespace tavdhost
