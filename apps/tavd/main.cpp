// The command line host: parses the arguments, runs one command and tells how it ended.
#include <CLI/CLI.hpp>
#include <cstdio>
#include <exception>
#include <iostream>
#include <string>

#include "commands.h"
#include "errors.h"
#if __has_include("db_commands.h")
#include "db_commands.h"
#endif

namespace {

constexpr int kFailed = 1;     // the program's own failure
constexpr int kUserError = 2;  // what was asked for cannot be done

int report(const char* text, int exit_code) {
  std::cout.flush();
  std::cerr << "tavd: " << text << '\n';
  return exit_code;
}

int run(int argc, char** argv) {
  CLI::App app("Calculates, lists and draws ventilation products from a product database.", "tavd");
  tavdhost::add_commands(app);
#if __has_include("db_commands.h")
  tavdhost::add_db_commands(app);
#endif
  try {
    app.parse(argc, argv);
  } catch (const CLI::Success& done) {  // --help, --version
    app.exit(done);
  } catch (const CLI::ParseError& error) {
    return report((std::string(error.what()) + " (tavd --help tells more)").c_str(), kUserError);
  }
  std::cout.flush();
  if (!std::cout) return report("cannot write to standard output", kFailed);
  return 0;
}

}  // namespace

int main(int argc, char** argv) {
  try {
    return run(argc, argv);
  } catch (const tavdhost::UserError& error) {
    return report(error.what(), kUserError);
  } catch (const std::exception& error) {
    return report(error.what(), kFailed);
  }
}
