#include "window/products_tree.h"

namespace viewer {
namespace {

std::wstring label_of(const Listed& product) {
  return product.description.empty() ? product.code : product.code + L"  " + product.description;
}

}  // namespace

void ProductsTree::show(const Database& database) {
  clear();
  database_ = &database;
  for (const std::string& class_id : database.classes()) {
    add(TVI_ROOT, Level::kClass, {class_id, ""}, wide(class_id), true);
  }
}

void ProductsTree::clear() {
  database_ = nullptr;
  TreeView_DeleteAllItems(control_);
  nodes_.clear();
}

void ProductsTree::select(const RecordKey& family) {
  HTREEITEM first_class = TreeView_GetRoot(control_);
  HTREEITEM found_class = child_with(nullptr, {family.class_id, ""});
  HTREEITEM branch = found_class != nullptr ? found_class : first_class;
  if (branch == nullptr) return;
  fill(branch);
  TreeView_Expand(control_, branch, TVE_EXPAND);
  HTREEITEM item = child_with(branch, family);
  if (item == nullptr) item = TreeView_GetChild(control_, branch);
  TreeView_SelectItem(control_, item != nullptr ? item : branch);
}

std::optional<TreeChoice> ProductsTree::select_product(const RecordKey& product) {
  HTREEITEM branch = child_with(nullptr, {product.class_id, ""});
  HTREEITEM item = branch != nullptr ? find_product(branch, product) : nullptr;
  if (item == nullptr) return std::nullopt;
  TreeView_EnsureVisible(control_, item);  // opens the branches
  TreeView_SelectItem(control_, item);
  const std::optional<TreeChoice> chosen = choice();
  return chosen ? std::optional(TreeChoice{chosen->family, product}) : std::nullopt;
}

void ProductsTree::fill(const NMTREEVIEWW& branch) {
  if (branch.action == TVE_EXPAND) fill(branch.itemNew.hItem);
}

std::optional<TreeChoice> ProductsTree::choice() const {
  HTREEITEM item = TreeView_GetSelection(control_);
  const std::optional<std::size_t> index = index_of(item);
  if (!index || nodes_[*index].level == Level::kClass) return std::nullopt;
  if (nodes_[*index].level == Level::kFamily) return TreeChoice{nodes_[*index].key, {}};
  const std::optional<std::size_t> family = index_of(TreeView_GetParent(control_, item));
  if (!family) return std::nullopt;
  return TreeChoice{nodes_[*family].key, nodes_[*index].key};
}

HTREEITEM ProductsTree::add(HTREEITEM parent, Level level, const RecordKey& key, const std::wstring& text,
                            bool opens) {
  std::wstring shown = text;
  TVINSERTSTRUCTW insert{};
  insert.hParent = parent;
  insert.hInsertAfter = TVI_LAST;
  insert.item.mask = TVIF_TEXT | TVIF_PARAM | TVIF_CHILDREN;
  insert.item.pszText = shown.data();
  insert.item.lParam = static_cast<LPARAM>(nodes_.size());
  insert.item.cChildren = opens ? 1 : 0;
  nodes_.push_back({level, key, !opens});
  return TreeView_InsertItem(control_, &insert);
}

void ProductsTree::fill(HTREEITEM item) {
  const std::optional<std::size_t> index = index_of(item);
  if (database_ == nullptr || !index || nodes_[*index].filled) return;
  nodes_[*index].filled = true;
  const Node node = nodes_[*index];  // adding moves the nodes
  if (node.level == Level::kClass) {
    for (const Listed& product : database_->products(node.key.class_id)) {
      add(item, Level::kFamily, product.key, label_of(product), product.family);
    }
  } else {
    for (const Listed& size : database_->sizes(node.key)) add(item, Level::kSize, size.key, size.code, false);
  }
}

std::optional<std::size_t> ProductsTree::index_of(HTREEITEM item) const {
  TVITEMW known{};
  known.mask = TVIF_PARAM;
  known.hItem = item;
  if (item == nullptr || TreeView_GetItem(control_, &known) == FALSE) return std::nullopt;
  const auto index = static_cast<std::size_t>(known.lParam);
  return index < nodes_.size() ? std::optional(index) : std::nullopt;
}

// The families that are looked into stay filled, so that each is read once.
HTREEITEM ProductsTree::find_product(HTREEITEM class_branch, const RecordKey& product) {
  fill(class_branch);
  HTREEITEM item = child_with(class_branch, product);
  for (HTREEITEM family = TreeView_GetChild(control_, class_branch); item == nullptr && family != nullptr;
       family = TreeView_GetNextSibling(control_, family)) {
    fill(family);
    item = child_with(family, product);
  }
  return item;
}

// A null parent: among the classes.
HTREEITEM ProductsTree::child_with(HTREEITEM parent, const RecordKey& key) const {
  HTREEITEM item = parent != nullptr ? TreeView_GetChild(control_, parent) : TreeView_GetRoot(control_);
  for (; item != nullptr; item = TreeView_GetNextSibling(control_, item)) {
    const std::optional<std::size_t> index = index_of(item);
    if (index && nodes_[*index].key == key) return item;
  }
  return nullptr;
}

}  // namespace viewer
