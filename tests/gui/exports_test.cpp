// What the shared library shows to those who link it.
#include <dlfcn.h>
#include <gtest/gtest.h>

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <memory>
#include <regex>
#include <set>
#include <string>

#include "tavdgui/tavdgui.h"

namespace {

std::set<std::string> exported_names() {
  Dl_info info{};
  EXPECT_NE(dladdr(reinterpret_cast<void*>(&tgui_surface_create), &info), 0);
  // A program may have the function's address from a stub of its own; the library's file is then found by
  // name.
  void* const library = dlopen("libtavdgui.so", RTLD_NOW | RTLD_NOLOAD);
  if (library != nullptr) {
    dladdr(dlsym(library, "tgui_surface_create"), &info);
    dlclose(library);
  }
  const std::string command = std::string("nm -D --defined-only '") + info.dli_fname + "'";
  const std::unique_ptr<FILE, int (*)(FILE*)> pipe(popen(command.c_str(), "r"), pclose);
  std::set<std::string> names;
  char line[512];
  while (pipe != nullptr && std::fgets(line, sizeof line, pipe.get()) != nullptr) {
    std::string name(line);
    name.erase(name.find_last_not_of('\n') + 1);
    names.insert(name.substr(name.rfind(' ') + 1));
  }
  return names;
}

std::set<std::string> declared_names() {
  const auto root = std::filesystem::path(__FILE__).parent_path().parent_path().parent_path();
  std::ifstream header(root / "include" / "tavdgui" / "tavdgui.h");
  const std::string text{std::istreambuf_iterator<char>(header), {}};
  static const std::regex kDeclaration(R"(TAVD_API[^(]*?(tgui_\w+)\()");
  std::set<std::string> names;
  for (std::sregex_iterator each(text.begin(), text.end(), kDeclaration), end; each != end; ++each) {
    names.insert((*each)[1]);
  }
  return names;
}

TEST(Exports, AreTheFunctionsOfTheHeaderAndNothingElse) {
  const std::set<std::string> declared = declared_names();
  EXPECT_GT(declared.size(), 70U);
  EXPECT_EQ(exported_names(), declared);
}

}  // namespace
