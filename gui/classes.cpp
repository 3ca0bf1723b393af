// Modules and the window classes that they register.
#include <algorithm>
#include <cstring>
#include <limits>

#include "gui/ascii.h"
#include "gui/guard.h"
#include "gui/window.h"

using tgui::alive;
using tgui::guarded;
using tgui::WindowClass;

namespace {

using Classes = std::vector<std::shared_ptr<WindowClass>>;

// Sizes that the record has on the platform whose interface this one follows.
constexpr std::uint32_t kRecordSizes[] = {0x48, 0x50};
constexpr std::int32_t kMostExtraBytes = 256;
constexpr std::size_t kLongestName = 63;

Classes& classes();
bool is_good(const tgui_class* window_class);
bool same_name(std::string_view a, std::string_view b);
Classes::iterator find_of_module(std::string_view name, const tgui_module* module);
tgui_module* module_or_main(tgui_module* module);

}  // namespace

tgui_module* tgui_main_module(void) {
  static tgui::Immortal<tgui_module> main_module;
  return &main_module.value;
}

tgui_module* tgui_module_create(const char* name) {
  return guarded<tgui_module*>(nullptr, [&] {
    auto module = std::make_unique<tgui_module>();
    module->name = name == nullptr ? "" : name;
    tgui::registry<tgui_module>().add(module.get());
    return module.release();
  });
}

void tgui_module_destroy(tgui_module* module) {
  if (!alive(module)) {
    return;
  }
  guarded([&] {
    // Windows of these classes keep them until they go.
    std::erase_if(classes(), [module](const auto& each) { return each->record.module == module; });
    tgui::registry<tgui_module>().remove(module);
    delete module;
  });
}

uint32_t tgui_register_class(const tgui_class* window_class) {
  if (!is_good(window_class)) {
    return 0;
  }
  return guarded<std::uint32_t>(0, [&]() -> std::uint32_t {
    static std::uint32_t last_id = 0;
    tgui_module* const module = module_or_main(window_class->module);
    if (module == nullptr || find_of_module(window_class->name, module) != classes().end() ||
        last_id == std::numeric_limits<std::uint32_t>::max()) {
      return 0;
    }
    auto added = std::make_shared<WindowClass>(WindowClass{*window_class, window_class->name, last_id + 1});
    added->record.name = added->name.c_str();
    added->record.module = module;
    classes().push_back(added);
    return ++last_id;
  });
}

int32_t tgui_unregister_class(const char* name, tgui_module* module) {
  if (name == nullptr) {
    return 0;
  }
  return guarded<std::int32_t>(0, [&] {
    const auto found = find_of_module(name, module_or_main(module));
    // Each window of the class shares it with the table.
    if (found == classes().end() || found->use_count() > 1) {
      return 0;
    }
    classes().erase(found);
    return 1;
  });
}

int32_t tgui_get_class(const char* name, tgui_module* module, tgui_class* window_class) {
  if (name == nullptr) {
    return 0;
  }
  return guarded<std::int32_t>(0, [&] {
    const auto found = tgui::find_class(name, module, false);
    if (found != nullptr && window_class != nullptr) {
      *window_class = found->record;
    }
    return found == nullptr ? 0 : 1;
  });
}

namespace tgui {

std::shared_ptr<WindowClass> find_class(std::string_view name, tgui_module* module, bool any) {
  auto found = find_of_module(name, module_or_main(module));
  if (found == classes().end() && any) {
    found = std::find_if(classes().begin(), classes().end(),
                         [name](const auto& each) { return same_name(each->name, name); });
  }
  return found == classes().end() ? nullptr : *found;
}

}  // namespace tgui

namespace {

Classes& classes() {
  static tgui::Immortal<Classes> all;
  return all.value;
}

bool is_good(const tgui_class* window_class) {
  if (window_class == nullptr ||
      std::ranges::find(kRecordSizes, window_class->size) == std::end(kRecordSizes) ||
      window_class->procedure == nullptr || window_class->name == nullptr) {
    return false;
  }
  const std::size_t length = strnlen(window_class->name, kLongestName + 1);
  return length > 0 && length <= kLongestName && window_class->class_extra >= 0 &&
         window_class->window_extra >= 0 && window_class->window_extra <= kMostExtraBytes;
}

bool same_name(std::string_view a, std::string_view b) {
  return std::ranges::equal(a, b,
                            [](char x, char y) { return tgui::ascii_upper(x) == tgui::ascii_upper(y); });
}

Classes::iterator find_of_module(std::string_view name, const tgui_module* module) {
  return std::find_if(classes().begin(), classes().end(), [&](const auto& each) {
    return each->record.module == module && same_name(each->name, name);
  });
}

// Null stands for the main module; null comes back for a module that was destroyed.
tgui_module* module_or_main(tgui_module* module) {
  if (module == nullptr || module == tgui_main_module()) {
    return tgui_main_module();
  }
  return alive(module) ? module : nullptr;
}

}  // namespace
