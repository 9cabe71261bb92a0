// kavo: the command-line host of the library.
#include <fmt/format.h>

#include <CLI/CLI.hpp>
#include <algorithm>
#include <cstdio>
#include <exception>
#include <string>

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
  for (const auto& service : Services()) {
    fmt::print("{:<22} {}\n", service.name, service.summary);
  }
  return kAllGood;
}

void PrintField(const Field& field) {
  const auto& info = InfoOf(field.kind);
  const auto unit =
      info.unit == "angle" || info.unit.empty() ? std::string() : fmt::format(" [{}]", info.unit);
  fmt::print("  {:<12} {}{}{}\n", field.name, field.meaning, unit,
             field.need == Need::kOptional ? " (optional)" : "");
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
  pipe->add_option("--first-line", firstLine, "Number of the first line, in messages")
      ->capture_default_str();
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
  if (pipe->parsed()) {
    return AnswerLines(firstLine) ? kAllGood : kNotGood;
  }
  return help->parsed() ? Help(service) : Run(job, json);
}

}  // namespace

int main(int argc, char** argv) {
  try {
    return Dispatch(argc, argv);
  } catch (const UserError& error) {
    fmt::print(stderr, "{}\n", error.what());
  } catch (const std::exception& error) {
    fmt::print(stderr, "kavo: {}\n", error.what());
  }
  return kBadInput;
}
