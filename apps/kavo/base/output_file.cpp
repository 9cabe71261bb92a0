#include "base/output_file.hpp"

#include <fmt/format.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <optional>
#include <utility>

#include "base/user_error.hpp"

namespace kavo_app {
namespace {

[[noreturn]] void Fail(const std::string& path, int error, std::string_view more = "") {
  throw UserError({path, 0}, "",
                  fmt::format("cannot be written: {}{}", std::strerror(error), more));
}

// The file that a link leads to is the one to replace; it may not be there yet.
std::string Resolved(const std::string& path) {
  constexpr int kMostLinks = 40;  // as many as the system follows
  std::error_code failed;
  std::filesystem::path file = path;
  for (int i = 0; i < kMostLinks && std::filesystem::is_symlink(file, failed); ++i) {
    file = file.parent_path() / std::filesystem::read_symlink(file, failed);
  }
  return file.string();
}

bool IsReplaceable(const std::string& path) {
  std::error_code failed;
  const auto status = std::filesystem::status(path, failed);
  return !std::filesystem::exists(status) || std::filesystem::is_regular_file(status);
}

// 0, or what went wrong. A disk may tell that it is full as late as when the file is closed.
int WriteWhole(const std::string& path, const char* mode, std::optional<mode_t> permissions,
               std::string_view content) {
  std::FILE* file = std::fopen(path.c_str(), mode);
  if (file == nullptr) {
    return errno;
  }
  const bool whole = (!permissions || fchmod(fileno(file), *permissions) == 0) &&
                     std::fwrite(content.data(), 1, content.size(), file) == content.size();
  int error = whole ? 0 : errno;
  if (std::fclose(file) != 0 && error == 0) {
    error = errno;
  }
  return error;
}

// Writes what is to take the place of an older file: with its permissions, and only if that may be
// written.
int WriteAside(const std::string& aside, const std::string& path, std::string_view content) {
  struct stat older {};
  if (stat(path.c_str(), &older) != 0) {
    return WriteWhole(aside, "wx", std::nullopt, content);
  }
  if (access(path.c_str(), W_OK) != 0) {
    return errno;
  }
  return WriteWhole(aside, "wx", older.st_mode & ALLPERMS, content);
}

}  // namespace

OutputFile::OutputFile(const std::string& path, std::string_view content)
    : given_(path), path_(path) {
  const bool aside = IsReplaceable(path);
  if (aside) {
    path_ = Resolved(path);
    aside_ = fmt::format("{}.{}.part", path_, getpid());
  }
  const int error =
      aside ? WriteAside(aside_, path_, content) : WriteWhole(path_, "w", std::nullopt, content);
  if (error != 0) {
    if (aside) {
      std::remove(aside_.c_str());
    }
    Fail(path, error);
  }
}

OutputFile::OutputFile(OutputFile&& other) noexcept
    : given_(std::move(other.given_)),
      path_(std::move(other.path_)),
      aside_(std::exchange(other.aside_, {})) {}

OutputFile::~OutputFile() {
  if (!aside_.empty()) {
    std::remove(aside_.c_str());
  }
}

void OutputFile::KeepAll(std::span<OutputFile> files) {
  std::string kept;
  for (auto& file : files) {
    if (const int error = file.Keep(); error != 0) {
      Fail(file.given_, error, kept);
    }
    kept += (kept.empty() ? "; these are written already: " : ", ") + file.given_;
  }
}

int OutputFile::Keep() {
  if (!aside_.empty() && std::rename(aside_.c_str(), path_.c_str()) != 0) {
    return errno;
  }
  aside_.clear();
  return 0;
}

void PrintOut(std::string_view text) {
  const bool whole = std::fwrite(text.data(), 1, text.size(), stdout) == text.size();
  if (!whole || std::fflush(stdout) != 0) {
    Fail("standard output", errno);
  }
}

}  // namespace kavo_app
