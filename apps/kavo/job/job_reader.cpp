#include <fmt/format.h>

#include <array>
#include <iterator>
#include <string>

#include "base/input_file.hpp"
#include "base/plain_text.hpp"
#include "job/control_points.hpp"
#include "job/field_rules.hpp"
#include "job/job.hpp"
#include "job/job_settings.hpp"
#include "job/names.hpp"
#include "job/step_reader.hpp"
#include "job/toml_reader.hpp"

namespace kavo_app {
namespace {

constexpr std::array<std::string_view, 7> kJobKeys = {"title",  "source",  "angles", "settings",
                                                      "points", "control", "step"};

// The parser may quote the file at any length.
constexpr std::size_t kMostOfComplaint = 200;

toml::table ParseToml(const std::filesystem::path& path) {
  auto file = OpenInput(path, "a job file");
  // Read whole first: the parser would seek, which it cannot in what is piped in.
  const std::string text(std::istreambuf_iterator<char>(file), {});
  try {
    return toml::parse(text, path.string());
  } catch (const toml::parse_error& error) {
    const auto complaint = Shown(error.description(), kMostOfComplaint);
    const bool twice = complaint.find("redefine") != std::string::npos;
    throw UserError({path.string(), error.source().begin.line}, "",
                    fmt::format("is not valid TOML: {}; {}", complaint,
                                twice ? "give each name and each key once"
                                      : "text and DMS angles stand in quotation marks, decimals "
                                        "have a point"));
  }
}

class JobReader {
 public:
  explicit JobReader(const std::filesystem::path& path)
      : path_(path), table_(ParseToml(path)), top_(table_, path.string(), "") {}

  Job Read() {
    top_.Only(kJobKeys);
    job_.file = path_.string();
    job_.readFiles = {path_};
    job_.title = top_.Text("title");
    job_.source = top_.Text("source");
    ReadAngles();
    ReadSettings(top_, job_);
    ReadPoints();
    ReadControl();
    ReadSteps();
    return std::move(job_);
  }

 private:
  void ReadAngles() {
    const auto* node = top_.Find("angles");
    if (node == nullptr) {
      return;
    }
    const auto unit = AngleUnitNamed(top_.TextOf(*node, "angles"));
    if (!unit) {
      top_.FailAt("angles", NoUnitAdvice(top_.Text("angles")));
    }
    job_.angles = *unit;
  }

  void ReadPoints() {
    const auto* node = top_.Find("points");
    if (node == nullptr) {
      return;
    }
    for (const auto& [key, point] : top_.TableOf(*node, "points")) {
      const std::string name(key.str());
      const auto label = "points." + Shown(name);
      const auto fields = top_.Inner(top_.TableOf(point, label), label);
      fields.Only(kPointKeys);
      if (name.empty()) {
        top_.Fail(point, "points", "a point has no name; give it one");
      }
      names_.AddPoint({name, ReadPointFields(fields), fields.PlaceOfAll()});
    }
  }

  void ReadControl() {
    const auto* node = top_.Find("control");
    if (node == nullptr) {
      return;
    }
    for (const auto& point : ReadControlPoints(job_.FileNamed(top_.TextOf(*node, "control")))) {
      if (const auto taken = names_.TakenAdvice(point.name); !taken.empty()) {
        throw UserError(point.place, "point " + Shown(point.name), taken);
      }
      names_.AddPoint(point);
    }
  }

  void ReadSteps() {
    const auto* node = top_.Find("step");
    if (node == nullptr) {
      top_.FailMissing("step", "a job has at least one [[step]]");
    }
    StepReader steps(job_, names_);
    for (const auto& element : top_.ArrayOf(*node, "step")) {
      steps.Read(top_.TableOf(element, "step"));
    }
  }

  std::filesystem::path path_;
  toml::table table_;
  TomlReader top_;
  Names names_;
  Job job_;
};

}  // namespace

Job ReadJob(const std::filesystem::path& path) { return JobReader(path).Read(); }

}  // namespace kavo_app
