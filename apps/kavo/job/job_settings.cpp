#include "job/job_settings.hpp"

#include <fmt/format.h>

#include <algorithm>
#include <array>

#include "job/field_rules.hpp"

namespace kavo_app {
namespace {

constexpr std::array<std::string_view, 7> kKeys = {
    "azimuth-from",   "curvature-refraction", "refraction", "sea-level",
    "site-elevation", "scale-factor",         "face"};
constexpr std::array<double, 3> kRefraction = {0.132, 0.133, 0.2};

bool AzimuthFromSouth(const TomlReader& settings) {
  const auto* node = settings.Find("azimuth-from");
  const auto text = settings.Text("azimuth-from");
  if (node != nullptr && text != "north" && text != "south") {
    settings.FailAt("azimuth-from", R"(write "north" or "south")");
  }
  return text == "south";
}

std::int16_t RefractionIndex(const TomlReader& settings) {
  const auto coefficient = settings.Number("refraction", kRefraction[0]);
  const auto row = std::ranges::find(kRefraction, coefficient);
  if (row == kRefraction.end()) {
    settings.FailAt("refraction", "the instrument has 0.132, 0.133 and 0.2");
  }
  return static_cast<std::int16_t>(row - kRefraction.begin());
}

double ScaleFactor(const TomlReader& settings) {
  const auto factor = settings.Number("scale-factor", 1.0);
  if (factor <= 0.0) {
    settings.FailAt("scale-factor", "write a factor above 0, such as 0.9996");
  }
  return factor;
}

// What a correction is made with makes none by itself.
void RefuseIdle(const TomlReader& settings, std::string_view value, std::string_view correction) {
  if (settings.Find(value) != nullptr && settings.Find(correction) == nullptr) {
    settings.FailAt(value, fmt::format("has no effect without {} = true", correction));
  }
}

}  // namespace

void ReadSettings(const TomlReader& top, Job& job) {
  const auto* node = top.Find("settings");
  if (node == nullptr) {
    return;
  }
  const auto& table = top.TableOf(*node, "settings");
  const auto settings = top.Inner(table, "settings");
  settings.Only(kKeys);
  RefuseIdle(settings, "refraction", "curvature-refraction");
  RefuseIdle(settings, "site-elevation", "sea-level");
  job.settings.azimuthFromSouth = AzimuthFromSouth(settings);
  job.settings.curvatureRefraction = settings.Flag("curvature-refraction");
  job.settings.refractionIndex = RefractionIndex(settings);
  job.settings.seaLevel = settings.Flag("sea-level");
  job.settings.siteElev = settings.Number("site-elevation", 0.0);
  job.settings.scaleFactor = ScaleFactor(settings);
  job.settings.face2 = ReadFace2(settings);
  for (const auto& [key, value] : table) {
    value.visit([&job, name = key.str()](const auto& setting) {
      if constexpr (toml::is_string<decltype(setting)> || toml::is_number<decltype(setting)> ||
                    toml::is_boolean<decltype(setting)>) {
        job.settingTexts.push_back(fmt::format("{} {}", name, *setting));
      }
    });
  }
}

}  // namespace kavo_app
