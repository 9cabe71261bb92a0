// kavo: the command-line host of the library.
#include <fmt/format.h>

#include <CLI/CLI.hpp>
#include <algorithm>
#include <csignal>
#include <cstdio>
#include <exception>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "base/near_name.hpp"
#include "base/output_file.hpp"
#include "base/plain_text.hpp"
#include "base/user_error.hpp"
#include "help.hpp"
#include "pipe/pipe.hpp"
#include "run_command.hpp"
#include "service/service.hpp"

namespace {

using namespace kavo_app;

// Exit codes.
constexpr int kAllGood = 0;
constexpr int kNotGood = 1;   // a step failed, was skipped or is out of tolerance
constexpr int kBadInput = 2;  // nothing was run, or a result could not be written

int List() {
  fmt::print("{}", ServiceList());
  return kAllGood;
}

int Help(const CLI::App& app, const std::string& name, bool man) {
  if (man) {
    fmt::print("{}", ManPage(app));
    return kAllGood;
  }
  if (name.empty()) {
    fmt::print("{}", app.help());
    return kAllGood;
  }
  for (const auto* command : app.get_subcommands({})) {
    if (command->check_name(name)) {
      fmt::print("{}", command->help("kavo"));
      return kAllGood;
    }
  }
  const auto* service = FindService(name);
  if (service == nullptr) {
    throw UserError({"kavo help", 0}, "", NoServiceAdvice(name));
  }
  fmt::print("{}", ServiceHelp(*service, MayColour()));
  return kAllGood;
}

class HelpFormatter : public CLI::Formatter {
 public:
  // NOLINTNEXTLINE(readability-identifier-naming): names of CLI11
  std::string make_option_name(const CLI::Option* option, bool /*positional*/) const override {
    return OptionUsage(*option);
  }
  // NOLINTNEXTLINE(readability-identifier-naming): as above
  std::string make_option_opts(const CLI::Option* /*option*/) const override { return {}; }
};

// What help and messages call the value of an option.
void Takes(CLI::Option* option, const std::string& value) {
  option->option_text(value)->type_name(value);
}

void AddRunOptions(CLI::App& run, RunOptions& options) {
  run.add_option("JOB", options.job, "Job file (TOML)")->required();
  run.add_flag("--json{-}", options.json, "Print the report as JSON; --json=FILE writes it")
      ->option_text("FILE");
  Takes(run.add_option("--csv", options.csv, "Write the computed points as a list"), "FILE");
  Takes(run.add_option("--geojson", options.geojson,
                       "Write points, lines and areas in grid coordinates"),
        "FILE");
  Takes(run.add_option("--svg", options.svg, "Draw plans, facades and sections"), "FILE");
  run.add_flag("--strict", options.strict, "End with 1 also for a warning");
  run.footer("A FILE of - stands for standard output, in place of the report.");
}

// What a command line can say.
struct CommandLine {
  CLI::App app{"Computes survey jobs with the kavostdlib library.", "kavo"};
  CLI::App* run = app.add_subcommand("run", "Run a job and print its report");
  CLI::App* pipe = app.add_subcommand("pipe", "Answer requests in JSON, one on each line");
  CLI::App* list = app.add_subcommand("list", "List the services");
  CLI::App* help =
      app.add_subcommand("help", "Show a service's fields, units and statuses, with an example");
  RunOptions options;
  std::size_t firstLine = 1;
  std::string service;
  bool man = false;

  CommandLine() {
    app.footer(
        "A job is made of services: kavo list names them,\n"
        "kavo help SERVICE explains one, with an example.");
    app.formatter(std::make_shared<HelpFormatter>());
    app.set_version_flag("--version", "kavo " KAVO_VERSION, "Print the version and exit");
    app.require_subcommand(1);
    for (auto* command : app.get_subcommands({})) {
      command->formatter(app.get_formatter());
    }
    AddRunOptions(*run, options);
    pipe->footer("kavo help SERVICE shows a request of each service.");
    Takes(pipe->add_option("--first-line", firstLine,
                           "Number of the first line, in messages; 1 when absent"),
          "NUMBER");
    help->add_option("SERVICE", service, "Name of a service or command; the commands when absent");
    help->add_flag("--man", man, "Print the manual page, for man -l -");
  }
};

// The parser would miss a command without looking at what stands in its place.
void RefuseUnknownCommand(const CLI::App& app, const std::string& name) {
  std::vector<std::string> commands;
  for (const auto* command : app.get_subcommands({})) {
    commands.push_back(command->get_name());
  }
  const std::vector<std::string_view> known(commands.begin(), commands.end());
  if (!name.starts_with('-') && std::ranges::find(known, name) == known.end()) {
    throw UserError({"kavo", 0}, "",
                    fmt::format("command {} {}", Quoted(name), UnknownAdvice(name, known)));
  }
}

int Dispatch(int argc, char** argv) {
  CommandLine line;
  if (argc > 1) {
    RefuseUnknownCommand(line.app, argv[1]);
  }
  try {
    line.app.parse(argc, argv);
  } catch (const CLI::Success& success) {
    return line.app.exit(success);
  } catch (const CLI::ParseError& error) {
    throw UserError({"kavo", 0}, "",
                    fmt::format("{}; kavo --help shows the commands", error.what()));
  }
  if (line.list->parsed()) {
    return List();
  }
  if (line.pipe->parsed()) {
    return AnswerLines(line.firstLine) ? kAllGood : kNotGood;
  }
  if (line.help->parsed()) {
    return Help(line.app, line.service, line.man);
  }
  return RunCommand(line.options) ? kAllGood : kNotGood;
}

}  // namespace

int main(int argc, char** argv) {
  std::signal(SIGPIPE, SIG_IGN);  // what reads our output may stop early: then writing fails
  try {
    const int code = Dispatch(argc, argv);
    PrintOut("");
    return code;
  } catch (const UserError& error) {
    fmt::print(stderr, "{}\n", error.what());
  } catch (const std::exception& error) {
    fmt::print(stderr, "kavo: {}\n", error.what());
  }
  return kBadInput;
}
