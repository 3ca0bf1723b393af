// Collects what the error hook is told while it lives.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "base/gwmem.h"

namespace tavdtest {

class ErrorReports {
 public:
  struct Report {
    std::int32_t code;
    std::string text;
  };

  ErrorReports() {
    current() = this;
    tavd::gwSetErrorHook([](std::int32_t code, const char* text) { current()->all.push_back({code, text}); });
  }
  ~ErrorReports() { tavd::gwSetErrorHook(nullptr); }
  ErrorReports(const ErrorReports&) = delete;
  ErrorReports& operator=(const ErrorReports&) = delete;

  std::vector<Report> all;

 private:
  static ErrorReports*& current() {
    static ErrorReports* reports = nullptr;
    return reports;
  }
};

}  // namespace tavdtest
