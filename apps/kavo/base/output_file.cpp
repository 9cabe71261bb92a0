#include "base/output_file.hpp"

#include <fmt/format.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <utility>

#include "base/user_error.hpp"

namespace kavo_app {
namespace {

[[noreturn]] void Fail(const std::string& path, int error) {
  throw UserError({path, 0}, "", fmt::format("cannot be written: {}", std::strerror(error)));
}

// The file that a link leads to is the one to replace.
std::string Resolved(const std::string& path) {
  std::error_code failed;
  const auto resolved = std::filesystem::weakly_canonical(path, failed);
  return failed ? path : resolved.string();
}

bool IsReplaceable(const std::string& path) {
  std::error_code failed;
  const auto status = std::filesystem::status(path, failed);
  return !std::filesystem::exists(status) || std::filesystem::is_regular_file(status);
}

// 0, or what went wrong. A disk may tell that it is full as late as when the file is closed.
int WriteWhole(const std::string& path, const char* mode, std::string_view content) {
  std::FILE* file = std::fopen(path.c_str(), mode);
  if (file == nullptr) {
    return errno;
  }
  int error = std::fwrite(content.data(), 1, content.size(), file) == content.size() ? 0 : errno;
  if (std::fclose(file) != 0 && error == 0) {
    error = errno;
  }
  return error;
}

}  // namespace

OutputFile::OutputFile(const std::string& path, std::string_view content) : path_(Resolved(path)) {
  const bool aside = IsReplaceable(path_);
  if (aside) {
    aside_ = fmt::format("{}.{}.part", path_, getpid());
  }
  const int error = WriteWhole(aside ? aside_ : path_, aside ? "wx" : "w", content);
  if (error != 0) {
    if (aside) {
      std::remove(aside_.c_str());
    }
    Fail(path, error);
  }
}

OutputFile::OutputFile(OutputFile&& other) noexcept
    : path_(std::move(other.path_)), aside_(std::exchange(other.aside_, {})) {}

OutputFile::~OutputFile() {
  if (!aside_.empty()) {
    std::remove(aside_.c_str());
  }
}

void OutputFile::Keep() {
  if (!aside_.empty() && std::rename(aside_.c_str(), path_.c_str()) != 0) {
    Fail(path_, errno);
  }
  aside_.clear();
}

void PrintOut(std::string_view text) {
  const bool whole = std::fwrite(text.data(), 1, text.size(), stdout) == text.size();
  if (!whole || std::fflush(stdout) != 0) {
    Fail("standard output", errno);
  }
}

}  // namespace kavo_app
