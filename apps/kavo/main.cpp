// kavo: the command-line host of the library.
#include <fmt/format.h>

#include <CLI/CLI.hpp>
#include <algorithm>
#include <csignal>
#include <cstdio>
#include <exception>
#include <string>

#include "help.hpp"
#include "pipe.hpp"
#include "report.hpp"
#include "run.hpp"
#include "service.hpp"
#include "user_error.hpp"

namespace {

using namespace kavo_app;

// Exit codes.
constexpr int kAllGood = 0;
constexpr int kNotGood = 1;   // a step failed, was skipped or is out of tolerance
constexpr int kBadInput = 2;  // nothing was run

int Run(const std::string& file, bool json) {
  const Job job = ReadJob(file);
  const auto outcomes = RunJob(job);
  fmt::print("{}", json ? JsonReport(job, outcomes) : TextReport(job, outcomes));
  return std::ranges::all_of(outcomes, &Outcome::Good) ? kAllGood : kNotGood;
}

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
    throw UserError({"kavo help", 0}, name, "is no service; kavo list names them");
  }
  fmt::print("{}", ServiceHelp(*service, MayColour()));
  return kAllGood;
}

int Dispatch(int argc, char** argv) {
  CLI::App app{"Computes survey jobs with the kavostdlib library."};
  app.require_subcommand(1);
  std::string job;
  std::string service;
  bool json = false;
  auto* run = app.add_subcommand("run", "Run a job and print its report");
  run->add_option("JOB", job, "Job file (TOML)")->required();
  run->add_flag("--json", json, "Print the report as JSON");
  std::size_t firstLine = 1;
  auto* pipe = app.add_subcommand("pipe", "Answer requests in JSON, one on each line");
  pipe->footer("kavo help SERVICE shows a request of each service.");
  pipe->add_option("--first-line", firstLine, "Number of the first line, in messages")
      ->capture_default_str();
  auto* list = app.add_subcommand("list", "List the services");
  auto* help =
      app.add_subcommand("help", "Show a service's fields, units and statuses, with an example");
  help->add_option("SERVICE", service, "Name of a service or command; the commands when absent");
  bool man = false;
  help->add_flag("--man", man, "Print the manual page, for man -l -");
  try {
    app.parse(argc, argv);
  } catch (const CLI::Success& success) {
    return app.exit(success);
  } catch (const CLI::ParseError& error) {
    throw UserError({"kavo", 0}, "",
                    fmt::format("{}; kavo --help shows the commands", error.what()));
  }
  if (list->parsed()) {
    return List();
  }
  if (pipe->parsed()) {
    return AnswerLines(firstLine) ? kAllGood : kNotGood;
  }
  return help->parsed() ? Help(app, service, man) : Run(job, json);
}

}  // namespace

int main(int argc, char** argv) {
  std::signal(SIGPIPE, SIG_IGN);  // what reads our output may stop early: then writing fails
  try {
    return Dispatch(argc, argv);
  } catch (const UserError& error) {
    fmt::print(stderr, "{}\n", error.what());
  } catch (const std::exception& error) {
    fmt::print(stderr, "kavo: {}\n", error.what());
  }
  return kBadInput;
}
