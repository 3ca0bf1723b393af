// Files that appear whole or not at all, and what else may stand behind -o.
#pragma once

#include <memory>
#include <ostream>
#include <string>
#include <string_view>

#include "base/errors.h"

namespace tavdhost {

UserError cannot_write(const std::string& path, const std::string& reason);

// The same error with the target named where a draft of it was.
UserError without_draft(const UserError& error, const std::string& draft, const std::string& target);

// Whether an output is not a file of that name but standard output: "-", or what the system calls it. A
// failure to write there is reported when the program ends.
bool is_standard_output(const std::string& path);

// Writes a file whole, so that a failure leaves what was there; or straight into a pipe or another device, or
// to standard output. Throws UserError with the reason if it cannot be written.
void write_output(const std::string& path, std::string_view bytes);

// A stream into a file that takes its name with finish(), or into a pipe or another device.
class OutputFile {
 public:
  // Throws UserError with the reason if nothing can be written there.
  explicit OutputFile(const std::string& path);
  ~OutputFile();
  OutputFile(const OutputFile&) = delete;
  OutputFile& operator=(const OutputFile&) = delete;

  // Goes bad as soon as something cannot be written.
  std::ostream& stream();
  // Throws UserError with the first reason if anything could not be written.
  void finish();

 private:
  class Buffer;
  std::string path_;
  std::unique_ptr<Buffer> buffer_;
  std::ostream stream_;
};

}  // namespace tavdhost
