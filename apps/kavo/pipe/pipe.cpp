#include "pipe/pipe.hpp"

#include <fmt/format.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <cstdio>
#include <cstring>
#include <string>
#include <string_view>
#include <vector>

#include "base/user_error.hpp"
#include "pipe/pipe_answer.hpp"

namespace kavo_app {
namespace {

// Enough for 32767 sights with every digit.
constexpr std::size_t kLongestLine = std::size_t{8} << 20;
constexpr std::size_t kReadAtOnce = std::size_t{64} << 10;
constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

[[noreturn]] void FailStream(const char* stream, const char* what) {
  throw UserError({stream, 0}, "", fmt::format("{}: {}", what, std::strerror(errno)));
}

// Takes what is there, so that one who writes a line and waits for its answer gets it. Nothing at
// the end.
std::string_view ReadSome(std::vector<char>& buffer) {
  for (;;) {
    const auto count = read(STDIN_FILENO, buffer.data(), buffer.size());
    if (count >= 0) {
      return {buffer.data(), static_cast<std::size_t>(count)};
    }
    if (errno != EINTR) {
      FailStream("standard input", "cannot be read");
    }
  }
}

void WriteAll(std::string_view text) {
  while (!text.empty()) {
    const auto count = write(STDOUT_FILENO, text.data(), text.size());
    if (count >= 0) {
      text.remove_prefix(static_cast<std::size_t>(count));
    } else if (errno != EINTR) {
      FailStream("standard output", "cannot be written");
    }
  }
}

// The line on a terminal that tells how far a long run is; gone when the run ends.
class Progress {
 public:
  Progress() : shown_(isatty(STDERR_FILENO) == 1) {}
  Progress(const Progress&) = delete;
  Progress& operator=(const Progress&) = delete;
  ~Progress() {
    if (told_) {
      fmt::print(stderr, "\r\x1b[K");
    }
  }

  void Tell(std::size_t lines, std::size_t failed) {
    if (!shown_ || Clock::now() < next_) {
      return;
    }
    fmt::print(stderr, "\r{} lines, {} failed", lines, failed);
    std::fflush(stderr);
    told_ = true;
    next_ = Clock::now() + std::chrono::milliseconds(200);
  }

 private:
  using Clock = std::chrono::steady_clock;
  bool shown_;
  bool told_ = false;
  Clock::time_point next_ = Clock::now() + std::chrono::seconds(1);
};

// Cuts what is read into lines and answers them.
class Filter {
 public:
  explicit Filter(std::size_t firstLine) : number_(firstLine) {}

  bool Run() {
    std::vector<char> buffer(kReadAtOnce);
    for (auto read = ReadSome(buffer); !read.empty(); read = ReadSome(buffer)) {
      Take(read);
      Flush();
    }
    if (inLine_) {
      EndLine({});
    }
    Flush();
    return failed_ == 0;
  }

 private:
  void Take(std::string_view read) {
    for (auto end = read.find('\n'); end != read.npos; end = read.find('\n')) {
      EndLine(read.substr(0, end));
      read.remove_prefix(end + 1);
    }
    if (!read.empty()) {
      inLine_ = true;
      Keep(read);
    }
  }

  // Puts the beginning of a line aside; of a line that is too long nothing more.
  void Keep(std::string_view begin) {
    tooLong_ = tooLong_ || line_.size() + begin.size() > kLongestLine;
    if (!tooLong_) {
      line_ += begin;
    }
  }

  // Answers a line, given its end.
  void EndLine(std::string_view end) {
    std::string_view line = end;
    if (inLine_) {
      Keep(end);
      line = line_;
    }
    if (line.starts_with(kByteOrderMark)) {  // on any line, as files are cut and joined
      line.remove_prefix(kByteOrderMark.size());
    }
    if (tooLong_) {
      answerer_.Refuse("the line is longer than 8 MiB", number_, answers_);
      ++failed_;
    } else if (!answerer_.Answer(line, number_, answers_)) {
      ++failed_;
    }
    ++answered_;
    ++number_;
    line_.clear();
    inLine_ = tooLong_ = false;
  }

  void Flush() {
    WriteAll(answers_);
    answers_.clear();
    progress_.Tell(answered_, failed_);
  }

  LineAnswerer answerer_;
  Progress progress_;
  std::size_t number_;  // of the line being read
  std::string line_;    // its beginning, when that came with an earlier read
  bool inLine_ = false;
  bool tooLong_ = false;
  std::string answers_;
  std::size_t answered_ = 0;
  std::size_t failed_ = 0;
};

}  // namespace

bool AnswerLines(std::size_t firstLine) { return Filter(firstLine).Run(); }

}  // namespace kavo_app
