// Short ways to ask the service, for its tests.
#pragma once

#include <gtest/gtest.h>

#include <string>

#include "tavd/tavb.h"

namespace tavdtest {

inline constexpr std::int16_t kExact = 0;
inline constexpr std::int16_t kAtOrAfter = 1;

// A record handle that gives itself back.
class Held {
 public:
  explicit Held(tavb_rec rec) : rec_(rec) {}
  ~Held() { tavbreleaserec(rec_); }
  Held(const Held&) = delete;
  Held& operator=(const Held&) = delete;
  tavb_rec get() const { return rec_; }
  explicit operator bool() const { return rec_ != nullptr; }
  // Goes on to the record that follows in the database; to none after the last.
  void go_on(std::int16_t db) {
    tavb_rec next = tavbnextrec(db, rec_);
    tavbreleaserec(rec_);
    rec_ = next;
  }

 private:
  tavb_rec rec_;
};

// "ASD:PIPE-100", or "none".
inline std::string name_of(tavb_rec rec) {
  if (rec == nullptr) return "none";
  char class_id[8];
  char object_id[32];
  char text[31];
  tavbgetID(0, rec, class_id, object_id);
  tavbobjIDtosz(0, object_id, text);
  return std::string(class_id) + ":" + text;
}

inline std::string found(std::int16_t db, const char* class_id, const char* object_id, std::int16_t mode) {
  const Held rec(tavbfindrec(db, class_id, object_id, mode));
  return name_of(rec.get());
}

// A text attribute as it is stored, or "absent".
inline std::string text_of(tavb_rec rec, std::int16_t attribute) {
  char buffer[256];
  if (tavbcopyatt(0, rec, attribute, nullptr, buffer, sizeof buffer) == nullptr) return "absent";
  return buffer;
}

inline std::string stored_text(std::int16_t db, const char* class_id, const char* object_id,
                               std::int16_t attribute) {
  const Held rec(tavbfindrec(db, class_id, object_id, kExact));
  return text_of(rec.get(), attribute);
}

}  // namespace tavdtest
