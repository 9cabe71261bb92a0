#include "replay.hpp"

#include <algorithm>
#include <cstdio>
#include <fstream>
#include <iterator>
#include <map>
#include <sstream>
#include <string_view>
#include <utility>

namespace kavo_test {
namespace {

using Line = std::vector<std::string>;

// Parentheses, and the semicolon between two calls, are words even without blanks around them.
Line Split(const std::string& text) {
  std::string spaced;
  for (const char c : text) {
    const bool isWord = std::string_view("();").find(c) != std::string_view::npos;
    spaced += isWord ? std::string{' ', c, ' '} : std::string(1, c);
  }
  std::istringstream words(spaced);
  return {std::istream_iterator<std::string>(words), {}};
}

class Replayer {
 public:
  explicit Replayer(std::span<const Export> functions) : functions_(functions) {}

  void ReplayFile(const std::string& path) {
    path_ = path;
    spelling_ = path.ends_with(".rows") ? Spelling::kReadable : Spelling::kBits;
    names_.clear();
    const int before = passed_ + failed_;
    std::ifstream file(path);
    number_ = 0;
    rowNumber_ = 1;
    for (std::string text; std::getline(file, text);) {
      ++number_;
      TakeLine(text);
    }
    Replay();
    if (passed_ + failed_ == before) {
      Complain(path, "no row to be read");
      ++failed_;
    }
  }

  [[nodiscard]] bool Conclude() const {
    const Deviations& seen = yardstick_.Seen();
    std::printf(
        "%d exact outputs, %d library outputs, other bits %d, beyond 2 ulp %d, turned %d, "
        "worst %.1f ulp, %.1f units of turn, %d units of angle, %d other refusals\n",
        seen.exactOutputs, seen.libraryOutputs, seen.otherBits, seen.beyondFewUlps, seen.turned,
        seen.worstUlps, seen.worstTurn, seen.worstUnits, seen.otherRefusals);
    std::printf("%d passed, %d failed\n", passed_, failed_);
    if (!yardstick_.StraysSeldom()) {
      std::printf("too many outputs differ by more than 2 ulp\n");
      return false;
    }
    return failed_ == 0 && passed_ > 0;
  }

 private:
  // An indented line goes on with the row above it.
  void TakeLine(const std::string& text) {
    if (!text.starts_with(' ')) {
      Replay();
    }
    if (text.empty() || text.front() == '#') {
      comment_ = text.empty() ? "" : text.substr(1) + ':';
      return;
    }
    if (row_.empty()) {
      rowNumber_ = number_;
    }
    Append(text);
  }

  void Append(const std::string& text) {
    for (const std::string& word : Split(text)) {
      const auto named = names_.find(word);
      if (named == names_.end()) {
        row_.push_back(word);
      } else {
        row_.insert(row_.end(), named->second.begin(), named->second.end());
      }
    }
  }

  // Replays the row that is complete by now, if there is one, or keeps what `let NAME WORD...`
  // names.
  void Replay() {
    Line row = std::exchange(row_, {});
    if (row.empty()) {
      return;
    }
    if (row.front() == "let" && row.size() > 2) {
      names_['$' + row[1]] = Line(row.begin() + 2, row.end());
      return;
    }
    if (row.front() == "reference") {
      if (!kIsReferenceMachine) {
        comment_.clear();
        return;
      }
      row.erase(row.begin());
    }
    bool passed = true;
    yardstick_.BeginRow();
    for (auto begin = row.begin();;) {
      const auto end = std::find(begin, row.end(), ";");
      passed = ReplayCall(Line(begin, end)) && passed;
      if (end == row.end()) {
        break;
      }
      begin = end + 1;
    }
    ++(passed ? passed_ : failed_);
    comment_.clear();
  }

  bool ReplayCall(const Line& call) {
    const auto equals = std::find(call.begin(), call.end(), "=");
    const std::string name = call.empty() ? "" : call.front();
    const auto function = std::find_if(functions_.begin(), functions_.end(),
                                       [&](const Export& known) { return known.name == name; });
    if (function == functions_.end() || equals == call.end()) {
      Complain(name, "no call of an export");
      return false;
    }
    yardstick_.BeginCall(name);
    NoteOutputs(equals + 1, call.end());
    Words inputs(Line(call.begin() + 1, equals), spelling_, yardstick_);
    Words outputs(Line(equals + 1, call.end()), spelling_, yardstick_);
    Complaints complaints;
    function->replay(inputs, outputs, complaints);
    if (complaints.empty() && !outputs.AreUsedUp()) {
      complaints.emplace_back("malformed outputs");
    }
    for (const std::string& complaint : complaints) {
      Complain(name, complaint);
    }
    return complaints.empty();
  }

  // All at once, so that the order of the outputs has no part in how they are judged.
  void NoteOutputs(Line::const_iterator begin, Line::const_iterator end) {
    for (; spelling_ == Spelling::kBits && begin != end; ++begin) {
      yardstick_.NoteOutput(Number<double>(*begin, spelling_).value_or(0.0));
    }
  }

  void Complain(const std::string& name, const std::string& complaint) const {
    std::printf("%s:%d:%s %s: %s\n", path_.c_str(), rowNumber_, comment_.c_str(), name.c_str(),
                complaint.c_str());
  }

  std::span<const Export> functions_;
  std::string path_;
  Spelling spelling_ = Spelling::kBits;
  std::map<std::string, Line> names_;
  int number_ = 0;
  Line row_;
  int rowNumber_ = 1;
  std::string comment_;
  Yardstick yardstick_;
  int passed_ = 0;
  int failed_ = 0;
};

}  // namespace

bool ReplayFiles(std::span<char* const> paths, std::span<const Export> functions) {
  Replayer replayer(functions);
  for (const char* path : paths) {
    replayer.ReplayFile(path);
  }
  return replayer.Conclude();
}

}  // namespace kavo_test
