#include "help.hpp"

#include <fmt/format.h>
#include <unistd.h>

#include <cstdlib>

#include "service/example.hpp"

namespace kavo_app {
namespace {

std::string Heading(std::string_view text, bool bold) {
  return bold ? fmt::format("\x1b[1m{}\x1b[0m\n", text) : fmt::format("{}\n", text);
}

std::string_view NeedText(Need need) {
  switch (need) {
    case Need::kRequired:
      break;
    case Need::kOptional:
      return " (optional)";
    case Need::kOneOf:
      return " (one of these)";
    case Need::kOneAtMost:
      return " (one of these at most)";
  }
  return "";
}

std::string FieldLine(const Field& field) {
  const auto& info = InfoOf(field.kind);
  const auto unit =
      info.unit == "angle" || info.unit.empty() ? std::string() : fmt::format(" [{}]", info.unit);
  return fmt::format("  {:<12} {}{}{}\n", field.name, field.meaning, unit, NeedText(field.need));
}

std::string Indented(std::string_view lines) {
  std::string out;
  while (!lines.empty()) {
    const auto length = std::min(lines.find('\n'), lines.size() - 1) + 1;
    const auto line = lines.substr(0, length);
    out += line == "\n" ? "" : "  ";
    out += line;
    lines.remove_prefix(length);
  }
  return out;
}

}  // namespace

std::string ServiceList() {
  std::string list;
  for (const auto& service : Services()) {
    list += fmt::format("{:<22} {}\n", service.name, service.summary);
  }
  return list;
}

std::string ServiceHelp(const Service& service, bool bold) {
  auto help = Heading(fmt::format("{}: {}", service.name, service.summary), bold);
  help += '\n' + Heading("inputs", bold);
  for (const auto& field : service.inputs) {
    help += FieldLine(field);
    help += fmt::format("  {:<12}   {}\n", "", InfoOf(field.kind).writing);
  }
  help += '\n' + Heading("outputs", bold);
  for (const auto& field : service.outputs) {
    help += FieldLine(field);
  }
  help += '\n' + Heading(fmt::format("statuses of {}", service.exportName), bold);
  for (const auto& status : service.statuses) {
    help += fmt::format("  {:<6} {:<19} {}\n", status.code, status.name, status.sentence);
  }
  help += '\n' + Heading("example, in a job", bold) + Indented(ExampleSteps(service));
  help += '\n' + Heading("example, as a request to kavo pipe", bold);
  return help + Indented(ExampleRequest(service) + '\n');
}

bool MayColour() {
  const char* none = std::getenv("NO_COLOR");
  return (none == nullptr || *none == '\0') && isatty(STDOUT_FILENO) == 1;
}

}  // namespace kavo_app
