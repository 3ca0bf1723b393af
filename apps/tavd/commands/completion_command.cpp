// tavd completion: what a shell needs to complete commands and options, made of what the parser knows.
#include <CLI/App.hpp>
#include <iostream>
#include <memory>
#include <string>
#include <vector>

#include "commands/commands.h"

namespace tavdhost {
namespace {

std::string joined_words(const std::vector<std::string>& words) {
  std::string text;
  for (const std::string& word : words) text += (text.empty() ? "" : " ") + word;
  return text;
}

std::vector<std::string> names_of(const CLI::App& app) {
  std::vector<std::string> names;
  for (const CLI::App* command : app.get_subcommands({})) names.push_back(command->get_name());
  return names;
}

std::vector<std::string> options_of(const CLI::App& command) {
  std::vector<std::string> names;
  for (const CLI::Option* option : command.get_options()) {
    for (const std::string& name : option->get_lnames()) names.push_back("--" + name);
    for (const std::string& name : option->get_snames()) names.push_back("-" + name);
  }
  return names;
}

// A line of the script's table for a command, and for those inside it: "db build" is two words.
void print_command(const CLI::App& command, const std::string& prefix) {
  const std::string name = prefix + command.get_name();
  std::cout << "    \"" << name << "\") inside=\"" << joined_words(names_of(command)) << "\" options=\""
            << joined_words(options_of(command)) << "\" ;;\n";
  for (const CLI::App* inner : command.get_subcommands({})) print_command(*inner, name + " ");
}

// Where neither a command nor an option is asked for, the shell offers files.
void print_bash(const CLI::App& app) {
  std::cout << "# Completion of tavd for bash: source <(tavd completion bash)\n"
               "_tavd() {\n"
               "  local current=${COMP_WORDS[COMP_CWORD]} command= inside options=\n"
               "  inside=\""
            << joined_words(names_of(app))
            << " help\"\n"
               "  local words=(\"${COMP_WORDS[@]:1:COMP_CWORD-1}\") word\n"
               "  if [ \"${words[0]:-}\" = help ]; then words=(\"${words[@]:1}\"); fi\n"
               "  for word in \"${words[@]}\"; do\n"
               "    case \" $inside \" in\n"
               "      *\" $word \"*) command=\"${command:+$command }$word\" ;;\n"
               "      *) inside=; break ;;\n"
               "    esac\n"
               "    case $command in\n";
  for (const CLI::App* command : app.get_subcommands({})) print_command(*command, "");
  std::cout << "    *) inside= ;;\n"
               "    esac\n"
               "  done\n"
               "  case $current in\n"
               "    -*) COMPREPLY=($(compgen -W \"${options:---help --version}\" -- \"$current\")) ;;\n"
               "    *) COMPREPLY=($(compgen -W \"$inside\" -- \"$current\")) ;;\n"
               "  esac\n"
               "}\n"
               "complete -o default -F _tavd tavd\n";
}

}  // namespace

void add_completion_command(CLI::App& app) {
  CLI::App* command =
      app.add_subcommand("completion", "Writes what bash needs to complete commands and options");
  command->footer("In this shell: source <(tavd completion bash)");
  auto shell = std::make_shared<std::string>();
  command->add_option("SHELL", *shell, "bash")->required()->check(CLI::IsMember({"bash"}));
  command->callback([&app, shell] { print_bash(app); });
}

}  // namespace tavdhost
