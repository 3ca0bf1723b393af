// The command line host: parses the arguments, runs one command and reports how it ended.
#include <CLI/CLI.hpp>
#include <exception>
#include <iostream>
#include <sstream>
#include <string>
#include <vector>

#include "base/errors.h"
#include "base/platform.h"
#include "base/sink.h"
#include "base/text.h"
#include "commands/commands.h"

namespace {

constexpr int kFailed = 1;     // the program's own failure
constexpr int kUserError = 2;  // what was asked for cannot be done

constexpr std::size_t kLineCharacters = 5000;      // of a message, which may name a long path
constexpr std::size_t kArgumentsCharacters = 400;  // of what is reported of the arguments

// Whatever is named in it, a message does to a terminal nothing but be read.
int report(const std::string& text, int exit_code) {
  std::cout.flush();
  std::cerr << "tavd: ";
  std::istringstream lines(text);
  for (std::string line; std::getline(lines, line);) {
    std::cerr << tavdhost::shortened_inside(line, kLineCharacters) << '\n';
  }
  return exit_code;
}

// "tavd calc --help tells more": of the command that was named, as far as one was.
std::string where_to_look(const CLI::App& app) {
  std::string command = app.get_name();
  for (const CLI::App* at = &app; !at->get_subcommands().empty();) {
    at = at->get_subcommands().front();
    command += " " + at->get_name();
  }
  return " (" + command + " --help tells more)";
}

bool names_unknown_command(const CLI::App& app, const std::vector<const char*>& arguments) {
  return arguments.size() > 1 && arguments[1][0] != '-' && app.get_subcommands().empty();
}

// What is wrong with the arguments, in one line.
std::string explain(const CLI::App& app, const CLI::Error& error, const std::vector<const char*>& arguments) {
  if (!names_unknown_command(app, arguments)) {
    return tavdhost::shortened_inside(error.what(), kArgumentsCharacters) + where_to_look(app);
  }
  std::string known;
  for (const CLI::App* command : app.get_subcommands({}))
    known += (known.empty() ? "" : ", ") + command->get_name();
  return "no command " + tavdhost::in_quotes(arguments[1]) + "; there are " + known + where_to_look(app);
}

// "tavd" alone asks for help, and "tavd help db build" is "tavd db build --help".
std::vector<const char*> with_help(std::vector<const char*> arguments) {
  if (arguments.size() > 1 && std::string(arguments[1]) == "help") {
    arguments.erase(arguments.begin() + 1);
    arguments.push_back("--help");
  } else if (arguments.size() == 1) {
    arguments.push_back("--help");
  }
  return arguments;
}

int run(const std::vector<const char*>& arguments, const tavdhost::StandardOutput& output) {
  CLI::App app("Calculates, lists and draws ventilation products from a product database.", "tavd");
  app.allow_windows_style_options(false);  // "/x" is a path on every platform
  tavdhost::add_commands(app);
  app.footer(
      "Every command has its own help: tavd help calc, or tavd calc --help\n"
      "Exit codes: 0 done, 2 what was asked for cannot be done, 3 tavd db check has found something, 1 the\n"
      "program failed.");
  int exit_code = 0;
  try {
    app.parse(static_cast<int>(arguments.size()), arguments.data());
  } catch (const tavdhost::EndWith& end) {
    exit_code = end.exit_code;
  } catch (const CLI::Success& done) {  // --help, --version
    if (names_unknown_command(app, arguments)) return report(explain(app, done, arguments), kUserError);
    app.exit(done);
  } catch (const CLI::ParseError& error) {
    return report(explain(app, error, arguments), kUserError);
  }
  std::cout.flush();
  if (!std::cout) return report("cannot write to standard output: " + output.reason(), kFailed);
  return exit_code;
}

}  // namespace

int main(int argc, char** argv) {
  tavdhost::set_up_streams();
  const tavdhost::StandardOutput output;
  try {
    const std::vector<std::string> texts = tavdhost::arguments(argc, argv);
    std::vector<const char*> arguments;
    arguments.reserve(texts.size());
    for (const std::string& text : texts) arguments.push_back(text.c_str());
    return run(with_help(arguments), output);
  } catch (const tavdhost::UserError& error) {
    return report(error.what(), kUserError);
  } catch (const std::exception& error) {
    return report(error.what(), kFailed);
  }
}
