#include "base/whole_file.h"

#include <iostream>

#include "base/paths.h"
#include "base/platform.h"
#include "base/sink.h"
#include "base/text.h"
#include "drafts/drafts.h"

namespace tavdhost {

UserError cannot_write(const std::string& path, const std::string& reason) {
  return UserError("cannot write " + path_in_quotes(path) + ": " + printable(reason));
}

UserError without_draft(const UserError& error, const std::string& draft, const std::string& target) {
  const std::string text = with_replaced(error.what(), draft, target);
  return UserError(with_replaced(text, printable(draft), printable(target)));
}

bool is_standard_output(const std::string& path) {
  return path == "-" || names_standard_output(path);
}

void write_output(const std::string& path, std::string_view bytes) {
  if (is_standard_output(path)) {
    std::cout << bytes;
    return;
  }
  drafts::File file(to_path(path));
  if (!file.write(bytes) || !file.finish()) throw cannot_write(path, file.reason());
}

class OutputFile::Buffer : public SinkBuffer {
 public:
  explicit Buffer(const std::string& path) : file(to_path(path)) {}

  drafts::File file;

 protected:
  bool take(std::string_view bytes) override { return file.write(bytes); }
};

OutputFile::OutputFile(const std::string& path)
    : path_(path), buffer_(std::make_unique<Buffer>(path)), stream_(buffer_.get()) {
  if (!buffer_->file.reason().empty()) throw cannot_write(path_, buffer_->file.reason());
}

OutputFile::~OutputFile() = default;

std::ostream& OutputFile::stream() {
  return stream_;
}

void OutputFile::finish() {
  stream_.flush();
  if (!stream_ || !buffer_->file.finish()) throw cannot_write(path_, buffer_->file.reason());
}

}  // namespace tavdhost
