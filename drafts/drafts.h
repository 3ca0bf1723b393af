// Files and folders that appear under their names whole or not at all.
//
// What is being written stands beside its target as a draft: ".NAME.0123456789abcdef.tavd-new", with the
// first 40 bytes of the target's name and digits by chance. Whoever writes it holds a lock on it as long as
// he lives: so the next one who writes the same target recognizes what a crash has left and clears it.
//
// A target that is there keeps its permissions and, where that is allowed, its owner. A target that is a
// symbolic link stays one: what it points to is replaced. Of a file with several names (hard links) this one
// gets the new contents, the others keep the old.
//
// Nothing here throws but for want of memory. Reasons are in words, UTF-8, and name no draft.
#pragma once

#include <filesystem>
#include <memory>
#include <string>
#include <string_view>

namespace drafts {

// A file that takes its target's place when it is finished, and goes away otherwise. A pipe, a terminal or
// another device that takes a stream of bytes is never replaced: it is written straight into.
class File {
 public:
  explicit File(const std::filesystem::path& target);
  ~File();
  File(const File&) = delete;
  File& operator=(const File&) = delete;

  // False, now and from then on, if anything has failed.
  bool write(std::string_view bytes);
  bool finish();
  // The first thing that went wrong; empty if nothing has.
  const std::string& reason() const;

 private:
  class Writing;
  std::unique_ptr<Writing> writing_;
};

// A folder for files that are to appear later, beside its target; removed at the end with the files in it.
// It holds no folders.
class Folder {
 public:
  enum class Use {
    kPrivate,       // no other user looks into it
    kBecomesTarget  // may be finished
  };
  Folder(const std::filesystem::path& target, Use use);
  ~Folder();
  Folder(const Folder&) = delete;
  Folder& operator=(const Folder&) = delete;

  // Empty if the folder could not be made. A short path through the open folder, good as long as this object,
  // where names in the folder would make its own one too long.
  const std::filesystem::path& path() const;
  // Gives the folder its target's name, which must be free. False if that fails.
  bool finish();
  const std::string& reason() const;

 private:
  class Holding;
  std::unique_ptr<Holding> holding_;
};

enum class Added { kDone, kTaken, kFailed };

// An empty file beside its target for others to fill by its path, as SQLite does: all may read it, its owner
// may write it. It goes away at the end, with its journal, unless it was added.
class NewFile {
 public:
  explicit NewFile(const std::filesystem::path& target);
  ~NewFile();
  NewFile(const NewFile&) = delete;
  NewFile& operator=(const NewFile&) = delete;

  // Empty if the file could not be made.
  const std::filesystem::path& path() const;
  // Gives the file its target's name, unless that is taken meanwhile. All others in this process must have
  // closed the file. It is not owned from here on.
  Added add();
  const std::string& reason() const;

 private:
  class Holding;
  std::unique_ptr<Holding> holding_;
};

// Puts a file of the same file system, such as one in a draft folder, into its target's place. False and a
// reason if that fails.
bool replace(const std::filesystem::path& file, const std::filesystem::path& target, std::string& reason);

// Gives a file the name of its target, unless that is taken meanwhile.
Added add(const std::filesystem::path& file, const std::filesystem::path& target, std::string& reason);

// Removes the drafts of this target that no living process owns. What makes a draft does so by itself.
void clear(const std::filesystem::path& target);

// A name that no draft of this target has, beside it; nothing is made there. For a file that loses its name
// as soon as it is open, or with the process.
std::filesystem::path unused_name(const std::filesystem::path& target);

}  // namespace drafts
