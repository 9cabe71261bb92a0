// kavo: the command-line host of the library.
#include <fmt/format.h>

#include <CLI/CLI.hpp>
#include <algorithm>
#include <csignal>
#include <cstdio>
#include <exception>
#include <string>

#include "output_file.hpp"
#include "run_command.hpp"
#include "service.hpp"
#include "user_error.hpp"

namespace {

using namespace kavo_app;

// Exit codes.
constexpr int kAllGood = 0;
constexpr int kNotGood = 1;   // a step failed, was skipped or is out of tolerance
constexpr int kBadInput = 2;  // nothing was run

int List() {
  for (const auto& service : Services()) {
    fmt::print("{:<22} {}\n", service.name, service.summary);
  }
  return kAllGood;
}

void PrintField(const Field& field) {
  const auto& info = InfoOf(field.kind);
  const auto unit =
      info.unit == "angle" || info.unit.empty() ? std::string() : fmt::format(" [{}]", info.unit);
  const std::string_view need = field.need == Need::kOptional ? " (optional)"
                                : field.need == Need::kOneOf  ? " (one of these)"
                                                              : "";
  fmt::print("  {:<12} {}{}{}\n", field.name, field.meaning, unit, need);
}

int Help(const std::string& name) {
  const auto* service = FindService(name);
  if (service == nullptr) {
    throw UserError({"kavo help", 0}, name, "is no service; kavo list names them");
  }
  fmt::print("{}: {}\n\ninputs\n", service->name, service->summary);
  for (const auto& field : service->inputs) {
    PrintField(field);
    fmt::print("  {:<12}   {}\n", "", InfoOf(field.kind).writing);
  }
  fmt::print("\noutputs\n");
  std::ranges::for_each(service->outputs, PrintField);
  fmt::print("\nstatuses of {}\n", service->exportName);
  for (const auto& status : service->statuses) {
    fmt::print("  {:<12} {}\n", status.code, status.sentence);
  }
  return kAllGood;
}

void AddRunOptions(CLI::App& run, RunOptions& options) {
  run.add_option("JOB", options.job, "Job file (TOML)")->required();
  run.add_flag("--json{-}", options.json, "Print the report as JSON; --json=FILE writes it");
  run.add_option("--csv", options.csv, "Write the computed points as a list")->type_name("FILE");
  run.add_option("--geojson", options.geojson, "Write points, lines and areas in grid coordinates")
      ->type_name("FILE");
  run.add_option("--svg", options.svg, "Draw plans, facades and sections")->type_name("FILE");
  run.footer("A FILE of - stands for standard output, in place of the report.");
}

int Dispatch(int argc, char** argv) {
  CLI::App app{"Computes survey jobs with the kavostdlib library."};
  app.require_subcommand(1);
  RunOptions options;
  std::string service;
  auto* run = app.add_subcommand("run", "Run a job and print its report");
  AddRunOptions(*run, options);
  auto* list = app.add_subcommand("list", "List the services");
  auto* help = app.add_subcommand("help", "Show a service's fields, units and statuses");
  help->add_option("SERVICE", service, "Name of the service")->required();
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
  return help->parsed() ? Help(service) : RunCommand(options) ? kAllGood : kNotGood;
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
