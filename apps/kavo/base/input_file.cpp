#include "base/input_file.hpp"

#include <fmt/format.h>

#include <cerrno>
#include <cstring>

#include "base/user_error.hpp"

namespace kavo_app {

// A folder opens as a file does.
std::ifstream OpenInput(const std::filesystem::path& path, const std::string& what) {
  errno = std::filesystem::is_directory(path) ? EISDIR : 0;
  std::ifstream file;
  if (errno == 0) {
    file.open(path);
  }
  if (!file.is_open()) {
    throw UserError({path.string(), 0}, "",
                    fmt::format("cannot be read: {}; give {}", std::strerror(errno), what));
  }
  return file;
}

}  // namespace kavo_app
