#include "app/database_options.h"

#include <fmt/format.h>

#include <CLI/CLI.hpp>
#include <algorithm>
#include <exception>
#include <iostream>
#include <memory>
#include <sstream>
#include <vector>

#include "app/files.h"
#include "app/stage_timer.h"
#include "app/text.h"

namespace quenfold {
namespace {

constexpr int kWrongCommandLine = 2;

CLI::App* addCommand(CLI::App& program, const std::string& name, const std::string& about) {
  return program.add_subcommand(name, about)->group("Commands");
}

void addQuiet(CLI::App& command, DatabaseOptions& options) {
  command.add_flag("-q,--quiet", options.quiet, "Print no results: the status alone tells");
}

void addCheck(CLI::App& program, DatabaseOptions& options) {
  CLI::App* const command =
      addCommand(program, "check",
                 "Tell what packing a database would lose, or whether a packed one is whole");
  database::CheckRequest& request = options.check;
  command->add_flag("--strict", request.strict, "Count notes as well");
  command->add_flag("--all", request.allPlaces, "Show every place, not the first five");
  command->add_flag("--json", request.json, "Print the findings as JSON");
  addQuiet(*command, options);
  command->add_option("FOLDER", request.folder, "The database")->required();
  command->callback([&options] { options.command = DatabaseOptions::Command::kCheck; });
}

struct ConvertTexts {
  const char* name;
  const char* about;
  const char* source;
  const char* target;
};

void addConvert(CLI::App& program, DatabaseOptions& options, DatabaseOptions::Command which,
                const ConvertTexts& texts) {
  CLI::App* const command = addCommand(program, texts.name, texts.about);
  database::ConvertRequest& request = options.convert;
  command
      ->add_option_function<std::vector<std::string>>(
          "--accept",
          [&request](const std::vector<std::string>& kinds) {
            for (const std::string& kind : kinds) {
              request.accepted.push_back(database::kindOf(kind));
            }
          },
          "Convert in spite of findings of these kinds")
      ->delimiter(',')
      ->type_name("KIND")
      ->option_text("KIND,...")
      ->allow_extra_args(false);
  command->add_flag("--dry-run", request.dryRun, "Show what would be done, and write nothing");
  command->add_flag("--remove-stale", request.removeStale,
                    "Take away files of the target that the source does not have");
  command->add_flag("-v,--verbose", verbose, "Report the stages on standard error");
  addQuiet(*command, options);
  command->add_option(texts.source, request.source, "The database to read")->required();
  command->add_option(texts.target, request.target, "The folder to write, created when missing")
      ->required();
  command->callback([&options, which] { options.command = which; });
}

void addDiff(CLI::App& program, DatabaseOptions& options) {
  CLI::App* const command =
      addCommand(program, "diff", "Tell what differs in meaning between two databases");
  database::DiffRequest& request = options.diff;
  command->add_flag("--all", request.allPlaces, "Show every place, not the first five");
  command->add_flag("--json", request.json, "Print the differences as JSON");
  addQuiet(*command, options);
  command->add_option("A", request.from, "The one database")->required();
  command->add_option("B", request.to, "The other")->required();
  command->callback([&options] { options.command = DatabaseOptions::Command::kDiff; });
}

void addShow(CLI::App& program, DatabaseOptions& options) {
  CLI::App* const command = addCommand(program, "show", "Show what is in a database");
  command->add_flag("--json", options.show.json, "Print it as JSON");
  addQuiet(*command, options);
  command->add_option("FOLDER", options.show.folder, "The database")->required();
  command->callback([&options] { options.command = DatabaseOptions::Command::kShow; });
}

/// What is wrong. The library tells what is missing before what it does not know, and the first may
/// come of the second.
std::string faultText(const CLI::App& program, const CLI::Error& error) {
  const std::vector<std::string> left = program.remaining(true);
  const auto option = std::find_if(left.begin(), left.end(), [](const std::string& argument) {
    return beginsWith(argument, "-");
  });
  if (option != left.end()) {
    return "unknown option: " + *option;
  }
  if (program.get_subcommands().empty()) {
    return left.empty() ? "a command is required" : "unknown command: " + left.front();
  }
  return left.empty() ? error.what() : "unexpected argument: " + left.front();
}

std::string complaint(const CLI::App* program, const CLI::Error& error) {
  const std::vector<CLI::App*> commands = program->get_subcommands();
  return fmt::format("quenfold-db: {}\nSee quenfold-db {}--help.\n", faultText(*program, error),
                     commands.empty() ? std::string() : commands.front()->get_name() + " ");
}

/// The library's words are those of its own world.
void nameThings(CLI::App& program) {
  const std::shared_ptr<CLI::FormatterBase> formatter = program.get_formatter();
  formatter->label("SUBCOMMAND", "COMMAND");
  formatter->label("TEXT", "");
  formatter->label("REQUIRED", "");
  program.failure_message(complaint);
}

}  // namespace

ParsedCommandLine parseDatabaseOptions(int argc, char** argv) {
  ParsedCommandLine parsed;
  CLI::App program("Pack, unpack, compare and check whole databases of the Velmora routing system.",
                   "quenfold-db");
  program.set_version_flag("--version", "quenfold-db " QUENFOLD_VERSION);
  program.require_subcommand(1);
  nameThings(program);
  addCheck(program, parsed.options);
  addConvert(program, parsed.options, DatabaseOptions::Command::kPack,
             {"pack", "Pack a legacy database", "LEGACY", "PACKED"});
  addConvert(program, parsed.options, DatabaseOptions::Command::kUnpack,
             {"unpack", "Unpack a packed database", "PACKED", "LEGACY"});
  addDiff(program, parsed.options);
  addShow(program, parsed.options);
  try {
    program.parse(argc, argv);
    parsed.run = true;
  } catch (const CLI::ParseError& ending) {
    std::ostringstream shown;
    parsed.status = program.exit(ending, shown, std::cerr) == 0 ? 0 : kWrongCommandLine;
    writeStandardOutput(shown.str());
  }
  return parsed;
}

}  // namespace quenfold
