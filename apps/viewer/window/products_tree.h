// The tree of products: classes, their families and single products, and the sizes of families. A branch is
// read from the database when it is first opened.
#pragma once

#include <windows.h>

#include <commctrl.h>

#include <optional>
#include <vector>

#include "model/database.h"

namespace viewer {

// What is selected in the tree.
struct TreeChoice {
  RecordKey family;  // or a product without sizes
  RecordKey size;    // empty ids: the family as such
};

class ProductsTree {
 public:
  explicit ProductsTree(HWND control) : control_(control) {}

  // Lists the classes. `database` must stay until the next call, or clear().
  void show(const Database& database);
  void clear();

  // Selects a family and opens the branches to it; the first of all where the key is empty, or unknown.
  void select(const RecordKey& family);

  // Selects a product, or a size of a family, and opens the branches to it. None if the tree has no such one.
  std::optional<TreeChoice> select_product(const RecordKey& product);

  // For the notification that a branch is about to be opened.
  void fill(const NMTREEVIEWW& branch);

  // None for a class, or where nothing is selected.
  std::optional<TreeChoice> choice() const;

 private:
  enum class Level { kClass, kFamily, kSize };
  struct Node {
    Level level;
    RecordKey key;
    bool filled;
  };

  HTREEITEM add(HTREEITEM parent, Level level, const RecordKey& key, const std::wstring& text, bool opens);
  void fill(HTREEITEM item);
  std::optional<std::size_t> index_of(HTREEITEM item) const;
  HTREEITEM find_product(HTREEITEM class_branch, const RecordKey& product);
  HTREEITEM child_with(HTREEITEM parent, const RecordKey& key) const;

  HWND control_;
  const Database* database_ = nullptr;
  std::vector<Node> nodes_;  // the items' parameters are indices
};

}  // namespace viewer
