// The manual page in the language of man, mdoc.
#include <fmt/format.h>

#include <CLI/CLI.hpp>

#include "help.hpp"
#include "service/example.hpp"

namespace kavo_app {
namespace {

// Text that mdoc takes as it stands: no escapes, and no line that looks like a macro.
std::string Plain(std::string_view text) {
  std::string out;
  for (const char c : text) {
    if (c == '\\') {
      out += "\\e";
    } else if (c == '-') {
      out += "\\-";
    } else {
      out += (out.empty() || out.back() == '\n') && (c == '.' || c == '\'') ? "\\&" : "";
      out += c;
    }
  }
  return out;
}

// A list of terms with what they mean.
class TermList {
 public:
  void Add(std::string_view term, std::string_view meaning) {
    items_ += fmt::format(".It Sy {}\n{}\n", Plain(term), Plain(meaning));
  }
  std::string Text() const { return ".Bl -tag -width Ds\n" + items_ + ".El\n"; }

 private:
  std::string items_;
};

std::string Verbatim(std::string_view text) {
  return fmt::format(".Bd -literal -compact\n{}\n.Ed\n", Plain(text));
}

std::string Commands(const CLI::App& app) {
  std::string text;
  for (const auto* command : app.get_subcommands({})) {
    text += fmt::format(".Ss kavo {}\n{}.\n", Plain(command->get_name()),
                        Plain(command->get_description()));
    TermList options;
    for (const auto* option : command->get_options()) {
      options.Add(OptionUsage(*option), option->get_description());
    }
    text += options.Text();
  }
  return text;
}

// What a field means, in which unit.
std::string Meaning(const Field& field) {
  const auto unit = InfoOf(field.kind).unit;
  return unit.empty() ? std::string(field.meaning) : fmt::format("{}, in {}", field.meaning, unit);
}

std::string InputTerms(const Service& service) {
  TermList terms;
  for (const auto& field : service.inputs) {
    terms.Add(field.name, Meaning(field) + ConditionsOf(service, field));
  }
  return ".Pp\nInputs:\n" + terms.Text();
}

std::string OutputTerms(const Service& service) {
  TermList terms;
  for (const auto& field : service.outputs) {
    terms.Add(field.name, Meaning(field));
  }
  return ".Pp\nOutputs:\n" + terms.Text();
}

std::string ServiceSections() {
  std::string text;
  for (const auto& service : Services()) {
    text += fmt::format(".Ss {}\n{}.\n", Plain(service.name), Plain(service.summary));
    text += InputTerms(service) + OutputTerms(service);
    TermList statuses;
    for (const auto& status : service.statuses) {
      const auto name = status.name.empty() ? "" : fmt::format(" {}", status.name);
      statuses.Add(fmt::format("{}{}", status.code, name), status.sentence);
    }
    text += ".Pp\nStatuses:\n" + statuses.Text();
    text += ".Pp\nExample:\n" + Verbatim(ExampleSteps(service));
  }
  return text;
}

}  // namespace

// A value that need not be given stands in the name, as CLI11 writes it.
std::string OptionUsage(const CLI::Option& option) {
  if (option.get_positional()) {
    return option.get_name(true);
  }
  const auto name = option.get_name(false, true);
  const auto brace = name.find('{');
  const auto& value = option.get_option_text();
  return brace == name.npos ? name + (value.empty() ? "" : ' ' + value)
                            : fmt::format("{}[={}]", name.substr(0, brace), value);
}

std::string ManPage(const CLI::App& app) {
  const Service& first = Services().front();
  return fmt::format(R"(.Dd November 21, 2026
.Dt KAVO 1
.Os
.Sh NAME
.Nm kavo
.Nd compute survey jobs
.Sh SYNOPSIS
.Nm
.Ar command
.Op Ar options
.Sh DESCRIPTION
{}
Lengths are in metres, areas in square metres; angles are in degrees\-minutes\-seconds unless a job
or request says otherwise.
.Sh COMMANDS
{}.Sh REQUESTS
Every line that
.Nm kavo pipe
reads is a JSON object: the name of a
.Sy service ,
its inputs, and where needed
.Sy angles
(dms, gon, deg or raw),
.Sy settings
as in a job,
.Sy set
(the service and inputs that set a base) and
.Sy id ,
which comes back with the answer.
A request:
.Pp
{}.Pp
A line that cannot be answered has an
.Sy error
and its
.Sy line
in place of outputs.
.Sh ENVIRONMENT
.Bl -tag -width NO_COLOR
.It Ev NO_COLOR
When set, nothing is set in bold on a terminal.
.El
.Sh EXIT STATUS
.Bl -tag -width Ds
.It 0
All is good.
.It 1
A step or request failed, or is out of tolerance.
.It 2
The input is wrong, or the output cannot be written.
.El
.Sh SERVICES
{})",
                     Plain(app.get_description()), Commands(app), Verbatim(ExampleRequest(first)),
                     ServiceSections());
}

}  // namespace kavo_app
