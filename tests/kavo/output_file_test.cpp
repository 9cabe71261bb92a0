#include "base/output_file.hpp"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <vector>

#include "base/user_error.hpp"

namespace {

using namespace kavo_app;
namespace fs = std::filesystem;

// What takes a file's name while the results are computed keeps it from being written; the
// complaint says which files are new, and nothing is left beside them.
TEST(OutputFile, SaysWhatIsWrittenWhenALaterOneCannotBe) {
  std::string folder = fs::temp_directory_path() / "kavo-output-XXXXXX";
  ASSERT_NE(nullptr, mkdtemp(folder.data()));
  const auto path = [&](const char* name) { return (fs::path(folder) / name).string(); };
  std::vector<OutputFile> files;
  for (const auto* name : {"a.csv", "b.json", "c.svg", "d.json"}) {
    files.emplace_back(path(name), "new");
  }
  fs::create_directory(path("c.svg"));
  try {
    OutputFile::KeepAll(files);
    ADD_FAILURE() << "a folder was replaced";
  } catch (const UserError& error) {
    EXPECT_EQ(path("c.svg") + ": cannot be written: Is a directory; these are written already: " +
                  path("a.csv") + ", " + path("b.json"),
              error.what());
  }
  files.clear();
  EXPECT_TRUE(fs::exists(path("b.json")));
  EXPECT_EQ(3, std::distance(fs::directory_iterator(folder), {}));
  fs::remove_all(folder);
}

}  // namespace
