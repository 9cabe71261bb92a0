#include "job/job_settings.hpp"

#include <fmt/format.h>

#include <algorithm>
#include <array>

#include "job/field_rules.hpp"
#include "service/corrections.hpp"

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
  constexpr double kLeast = 0.9;
  constexpr double kGreatest = 1.1;
  const auto factor = settings.Number("scale-factor", 1.0);
  if (factor < kLeast || factor > kGreatest) {
    settings.FailAt("scale-factor", "must be 0.9 to 1.1; write a factor such as 0.9996");
  }
  return factor;
}

// What a correction is made with makes none by itself.
void RefuseIdle(const TomlReader& settings, std::string_view value, std::string_view correction) {
  if (settings.Find(value) != nullptr && settings.Find(correction) == nullptr) {
    settings.FailAt(value, fmt::format("has no effect without {} = true", correction));
  }
}

// At sea level itself the correction would be none.
void ReadSeaLevel(const TomlReader& settings, InstrumentSettings& out) {
  RefuseIdle(settings, "site-elevation", "sea-level");
  out.seaLevel = settings.Flag("sea-level");
  if (out.seaLevel && settings.Find("site-elevation") == nullptr) {
    settings.FailAt("sea-level",
                    "needs site-elevation as well: the site's mean elevation in metres");
  }
  out.siteElev = settings.Number("site-elevation", 0.0);
}

// A setting that only some services heed.
struct Effect {
  std::string_view key;
  bool on;
  SettingSet heeds;
  std::string_view effect;
};

std::array<Effect, 4> EffectsOf(const InstrumentSettings& set) {
  constexpr std::string_view kCorrected = "it corrects only elevations from zenith readings";
  return {{{"curvature-refraction", set.curvatureRefraction, kHeedsCorrections, kCorrected},
           {"sea-level", set.seaLevel, kHeedsCorrections, kCorrected},
           {"scale-factor", set.scaleFactor != 1.0, kHeedsCorrections, kCorrected},
           {"face", set.face2, kHeedsFace, "it changes only the readings to aim at a point"}}};
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
  job.settings.azimuthFromSouth = AzimuthFromSouth(settings);
  job.settings.curvatureRefraction = settings.Flag("curvature-refraction");
  job.settings.refractionIndex = RefractionIndex(settings);
  ReadSeaLevel(settings, job.settings);
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

void RefuseIdleSettings(const TomlReader& top, const InstrumentSettings& set, SettingSet heeded,
                        std::string_view calls) {
  for (const auto& row : EffectsOf(set)) {
    if (row.on && !Share(heeded, row.heeds)) {
      const auto settings = top.Inner(top.TableOf(*top.Find("settings"), "settings"), "settings");
      settings.FailAt(row.key, fmt::format("has no effect on {}: {}, in {}; leave it out", calls,
                                           row.effect, ServicesThatHeed(row.heeds)));
    }
  }
}

}  // namespace kavo_app
