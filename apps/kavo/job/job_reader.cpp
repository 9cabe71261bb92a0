#include <fmt/format.h>

#include <array>
#include <string>

#include "base/plain_text.hpp"
#include "job/control_points.hpp"
#include "job/field_rules.hpp"
#include "job/job.hpp"
#include "job/job_settings.hpp"
#include "job/names.hpp"
#include "job/step_reader.hpp"
#include "job/toml_file.hpp"
#include "job/toml_reader.hpp"

namespace kavo_app {
namespace {

constexpr std::array<std::string_view, 7> kJobKeys = {"title",  "source",  "angles", "settings",
                                                      "points", "control", "step"};

// A name with a dot is one of a table within a table, but in quotation marks.
void RefuseDottedName(const TomlReader& fields, const toml::table& point, const std::string& name) {
  for (const auto& [key, value] : point) {
    if (value.is_table()) {
      fields.Fail(value, Shown(key.str()),
                  fmt::format("a name with a dot stands in quotation marks: \"{}.{}\"", Shown(name),
                              Shown(key.str())));
    }
  }
}

class JobReader {
 public:
  explicit JobReader(const std::filesystem::path& path)
      : path_(path), table_(ReadToml(path)), top_(table_, path.string(), "") {}

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
    RefuseIdle();
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
      const auto& table = top_.TableOf(point, label);
      const auto fields = top_.Inner(table, label);
      RefuseDottedName(fields, table, name);
      fields.Only(kPointKeys);
      if (const auto trouble = names_.NameTrouble(name); !trouble.empty()) {
        top_.Fail(point, label, trouble);
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
      if (const auto trouble = names_.NameTrouble(point.name); !trouble.empty()) {
        throw UserError(point.place, "point " + Shown(point.name), trouble);
      }
      names_.AddPoint(point);
    }
  }

  void ReadSteps() {
    constexpr std::string_view kRule = "a job has at least one [[step]]";
    StepReader steps(job_, names_);
    for (const auto& element : top_.ArrayOf(top_.Required("step", kRule), "step")) {
      steps.Read(top_.TableOf(element, "step"));
    }
    if (job_.steps.empty()) {
      top_.FailMissing("step", std::string(kRule));
    }
  }

  void RefuseIdle() {
    SettingSet heeded = kHeedsNone;
    for (const auto& step : job_.steps) {
      heeded = heeded | step.service->settings;
    }
    RefuseIdleSettings(top_, job_.settings, heeded, "the steps of this job");
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
