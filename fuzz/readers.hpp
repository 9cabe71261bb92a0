// What the fuzzers of kavo's readers share. A new reader is a file beside angle.cpp and its name in
// CMakeLists.txt.
#pragma once

#include <cstdint>
#include <filesystem>
#include <fstream>
#include <string>
#include <string_view>

#include "base/user_error.hpp"
#include "fail.hpp"

namespace kavo_fuzz {

/// Holds a rule of a reader; what was read is shown when it is broken.
inline void Hold(bool holds, std::string_view who, std::string_view rule,
                 const std::string& given) {
  if (!holds) {
    Fail(who, rule, given);
  }
}

/// A folder for the files of one fuzzer, gone when it ends.
class Folder {
 public:
  Folder() {
    std::string name = std::filesystem::temp_directory_path() / "kavo-fuzz-XXXXXX";
    path_ = mkdtemp(name.data());
  }
  Folder(const Folder&) = delete;
  Folder& operator=(const Folder&) = delete;
  ~Folder() { std::filesystem::remove_all(path_); }

  /// Writes a file and gives its path.
  [[nodiscard]] std::filesystem::path Write(std::string_view name, std::string_view text) const {
    const auto path = path_ / name;
    std::ofstream(path, std::ios::binary) << text;
    return path;
  }

 private:
  std::filesystem::path path_;
};

/// Runs a reader. False when it complains, which it does in one line that begins with the file: by
/// its whole path, and not always one of the folder, because a job may name a list that is
/// elsewhere.
template <class Read>
bool Reads(Read read) {
  try {
    read();
    return true;
  } catch (const kavo_app::UserError& error) {
    const std::string complaint = error.what();
    Hold(complaint.starts_with('/'), "UserError", "begins with the file", complaint);
    Hold(complaint.find('\n') == complaint.npos, "UserError", "is one line", complaint);
    return false;
  }
}

}  // namespace kavo_fuzz
