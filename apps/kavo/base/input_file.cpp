#include "base/input_file.hpp"

#include <fmt/format.h>

#include <cerrno>
#include <cstring>
#include <system_error>

namespace kavo_app {

// A folder opens as a file does.
std::ifstream OpenInput(const std::filesystem::path& path, const std::string& what) {
  std::error_code unknown;  // then opening it tells why
  errno = std::filesystem::is_directory(path, unknown) ? EISDIR : 0;
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

void RefuseCutShort(const std::istream& file, const Place& place) {
  if (file.bad()) {
    throw UserError(place, "", "cannot be read further: the disk or the connection to it failed");
  }
}

}  // namespace kavo_app
