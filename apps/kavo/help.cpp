#include "help.hpp"

#include <fmt/format.h>
#include <fmt/ranges.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <utility>
#include <vector>

#include "service/example.hpp"
#include "service/input_rules.hpp"

namespace kavo_app {
namespace {

std::string Heading(std::string_view text, bool bold) {
  return bold ? fmt::format("\x1b[1m{}\x1b[0m\n", text) : fmt::format("{}\n", text);
}

// Rows with their columns under each other; the last one is broken where it would leave the page.
class HelpTable {
 public:
  explicit HelpTable(std::size_t indent) : indent_(indent) {}

  void Add(std::vector<std::string> cells) { rows_.push_back(std::move(cells)); }

  std::string Text() const {
    const auto widths = Widths();
    std::string text;
    for (const auto& row : rows_) {
      std::string line(indent_, ' ');
      for (std::size_t i = 0; i + 1 < row.size(); ++i) {
        line += fmt::format("{:<{}}  ", row[i], widths[i]);
      }
      const auto left = line.size();
      text += line + Broken(row.back(), left) + '\n';
    }
    return text;
  }

 private:
  static constexpr std::size_t kPageWidth = 80;

  std::vector<std::size_t> Widths() const {
    std::vector<std::size_t> widths(rows_.empty() ? 0 : rows_.front().size());
    for (const auto& row : rows_) {
      for (std::size_t i = 0; i < row.size(); ++i) {
        widths[i] = std::max(widths[i], row[i].size());
      }
    }
    return widths;
  }

  // The text in lines that begin at `left`, but for the first, which goes on where it is.
  static std::string Broken(std::string_view text, std::size_t left) {
    std::string out;
    const std::size_t room = kPageWidth - left;
    while (text.size() > room) {
      auto end = text.rfind(' ', room);
      end = end == text.npos ? std::min(text.find(' ', room), text.size()) : end;
      out.append(text.substr(0, end)).append("\n").append(left, ' ');
      text.remove_prefix(std::min(end + 1, text.size()));
    }
    return out.append(text);
  }

  std::size_t indent_;
  std::vector<std::vector<std::string>> rows_;
};

// What takes a field's place.
std::string OthersOf(const Service& service, const Field& field) {
  std::vector<std::string_view> others;
  for (const auto& other : service.inputs) {
    if (other.need == field.need && other.name != field.name) {
      others.push_back(other.name);
    }
  }
  return fmt::format("{}", fmt::join(others, " or "));
}

constexpr std::size_t kIndent = 2;

std::string InputLines(const Service& service) {
  HelpTable table(kIndent);
  for (const auto& field : service.inputs) {
    table.Add({std::string(field.name), std::string(InfoOf(field.kind).word),
               std::string(field.meaning) + ConditionsOf(service, field)});
  }
  return table.Text();
}

constexpr std::string_view kResultOf = "@step.field";

// How each kind of input is written, once.
std::string WritingLines(const Service& service) {
  HelpTable table(kIndent);
  std::vector<std::string_view> told;
  bool refers = false;
  for (const auto& field : service.inputs) {
    const auto& info = InfoOf(field.kind);
    refers = refers || info.writing.find(kResultOf) != info.writing.npos;
    if (std::ranges::find(told, info.word) == told.end()) {
      told.push_back(info.word);
      table.Add({std::string(info.word), std::string(info.writing)});
    }
  }
  if (refers) {
    table.Add({std::string(kResultOf), "a result of an earlier step, such as \"@P1.orient\""});
  }
  return table.Text();
}

std::string OutputLines(const Service& service) {
  HelpTable table(kIndent);
  for (const auto& field : service.outputs) {
    table.Add({std::string(field.name), std::string(InfoOf(field.kind).word),
               std::string(field.meaning)});
  }
  return table.Text();
}

std::string StatusLines(const Service& service) {
  HelpTable table(kIndent);
  for (const auto& status : service.statuses) {
    table.Add({fmt::format("{} [{}{}{}]", status.sentence, status.code,
                           status.name.empty() ? "" : " ", status.name)});
  }
  return table.Text();
}

// A check that is not passed has a status that no export returns.
std::string StatusHeading(const Service& service) {
  const bool checks = !std::ranges::all_of(service.statuses, &StatusRow::good);
  return fmt::format("what may come of it [status of {}{}]", service.exportName,
                     checks && service.exportName != "kavo" ? ", or of kavo's check" : "");
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

std::string ConditionsOf(const Service& service, const Field& field) {
  std::vector<std::string> conditions;
  if (field.need == Need::kOneOf) {
    conditions.push_back("this or " + OthersOf(service, field));
  } else if (field.need == Need::kOrZero) {
    conditions.emplace_back("0 when absent");
  } else if (field.need != Need::kRequired) {
    conditions.emplace_back("optional");
  }
  if (field.need == Need::kOneAtMost) {
    conditions.push_back("not with " + OthersOf(service, field));
  }
  if (field.limit.holds != nullptr) {
    conditions.emplace_back(field.limit.words);
  }
  for (const auto& need : NeedsOf(service, field)) {
    conditions.push_back("needs " + need);
  }
  return conditions.empty() ? "" : fmt::format(" ({})", fmt::join(conditions, "; "));
}

std::string ServiceList() {
  HelpTable table(0);
  for (const auto& service : Services()) {
    table.Add({std::string(service.name), std::string(service.summary)});
  }
  return table.Text();
}

std::string ServiceHelp(const Service& service, bool bold) {
  auto help = Heading(fmt::format("{}: {}", service.name, service.summary), bold);
  help += '\n' + Heading("inputs", bold) + InputLines(service);
  help += '\n' + Heading("written in a job", bold) + WritingLines(service);
  help += '\n' + Heading("outputs", bold) + OutputLines(service);
  help += '\n' + Heading(StatusHeading(service), bold) + StatusLines(service);
  help += '\n' + Heading("example, in a job", bold) + Indented(ExampleSteps(service));
  help += '\n' + Heading("example, as a request to kavo pipe", bold);
  return help + Indented(ExampleRequest(service) + '\n');
}

bool MayColour() {
  const char* none = std::getenv("NO_COLOR");
  return (none == nullptr || *none == '\0') && isatty(STDOUT_FILENO) == 1;
}

}  // namespace kavo_app
