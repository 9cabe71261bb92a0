#include "service/corrections.hpp"

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <algorithm>
#include <string_view>
#include <vector>

#include "base/geometry.hpp"
#include "host/instrument.hpp"

namespace kavo_app {
namespace {

// As a sentence lists them.
std::string Listed(const std::vector<std::string_view>& names) {
  return names.size() < 2
             ? fmt::format("{}", fmt::join(names, ""))
             : fmt::format("{} and {}", fmt::join(names.begin(), names.end() - 1, ", "),
                           names.back());
}

bool HasDistance(const Sight& sight) { return sight.horizDist != 0.0; }

// Without a distance a sight's height is corrected, or there is none.
bool HasHeight(const Sight& sight) {
  return HasDistance(sight) && sight.hasHeight && HasElev(sight.point);
}

bool GivesDistance(const Inputs& in) {
  return in.Has("slopeDist") || in.Has("horizDist") ||
         (in.Has("sights") && std::ranges::any_of(in.Sights("sights"), HasDistance));
}

// By a zenith reading, which where distances are taken needs one, or measured as such.
bool GivesHeight(const Inputs& in) {
  if (in.Has("sights")) {
    return std::ranges::any_of(in.Sights("sights"), HasHeight);
  }
  const bool far = GivesDistance(in) || !FindField(in.Fields(), "horizDist");
  const bool low = in.Has("station") && !HasElev(in.Point("station"));
  return in.Has("vertDiff") || (in.Has("va") && far && !low);
}

// The settings that are on and do nothing.
std::string Idle(const InstrumentSettings& set, bool distances, bool heights) {
  std::vector<std::string_view> names;
  if (distances && set.scaleFactor != 1.0) {
    names.emplace_back("scale-factor");
  }
  if (distances && set.seaLevel) {
    names.emplace_back("sea-level");
  }
  if (heights) {
    names.emplace_back("curvature-refraction");
  }
  return Listed(names);
}

}  // namespace

std::string ServicesThatHeed(SettingSet settings) {
  std::vector<std::string_view> names;
  for (const auto& service : Services()) {
    if (Share(service.settings, settings)) {
      names.push_back(service.name);
    }
  }
  return Listed(names);
}

std::string UncorrectedWarning(const Service& service, const Inputs& in) {
  const auto& set = Instrument();
  const bool measures = Share(service.settings, kTakenAsMeasured);
  const bool distances = measures && (set.scaleFactor != 1.0 || set.seaLevel) && GivesDistance(in);
  const bool heights = measures && set.curvatureRefraction && GivesHeight(in);
  if (!distances && !heights) {
    return {};
  }
  return fmt::format(
      "{}{}{} are taken as measured, without {}: only elevations that {} find from zenith readings "
      "alone are corrected",
      distances ? "distances" : "", distances && heights ? " and " : "", heights ? "heights" : "",
      Idle(set, distances, heights), ServicesThatHeed(kHeedsCorrections));
}

}  // namespace kavo_app
