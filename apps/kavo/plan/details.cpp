#include "plan/details.hpp"

#include <fmt/format.h>

#include <algorithm>
#include <functional>
#include <iterator>
#include <utility>

#include "plan/crowds.hpp"
#include "plan/projection.hpp"
#include "plan/tiles.hpp"

namespace kavo_app {
namespace {

constexpr double kCrowded = 6.0;         // points nearer than this are, millimetres on the sheet
constexpr std::size_t kLeastPoints = 4;  // that make a crowd
constexpr double kLeastGain = 2.0;       // by which a detail must be larger
constexpr int kDeepest = 2;              // details of details
// More sheets help nobody to find a point.
constexpr std::size_t kMostDetails = 24;  // of one sheet
constexpr std::size_t kMostTiles = 48;    // of one sheet
constexpr std::size_t kMostSheets = 100;  // of one scene, beside that of all of it

// With a margin, and large enough for a place where points coincide.
Extent Widened(const Extent& crowd) {
  constexpr double kMargin = 0.05;       // of its size
  constexpr double kLeastMargin = 0.25;  // metres
  const double size = std::max(crowd.right - crowd.left, crowd.top - crowd.bottom);
  const double margin = std::max(kMargin * size, kLeastMargin);
  return {crowd.left - margin, crowd.right + margin, crowd.bottom - margin, crowd.top + margin};
}

// The places that a sheet shows, each once.
std::vector<Spot> PlacesOn(const View& view, const Projection& projection) {
  std::vector<Spot> shown;
  for (const auto& point : view.scene->points) {
    if (projection.Shows(point.at)) {
      shown.push_back(point.at);
    }
  }
  const auto place = [](Spot spot) { return std::pair(spot.right, spot.up); };
  std::ranges::sort(shown, {}, place);
  const auto same = [&place](Spot a, Spot b) { return place(a) == place(b); };
  shown.erase(std::unique(shown.begin(), shown.end(), same), shown.end());
  return shown;
}

// The crowds that gain by being drawn alone, as points at one place do not; with their margins.
std::vector<Crowd> DetailsOf(const View& view, const Projection& projection) {
  std::vector<Crowd> details;
  for (const auto& crowd : CrowdsOf(PlacesOn(view, projection), projection.Metres(kCrowded))) {
    const auto window = Widened(crowd.extent);
    if (crowd.points >= kLeastPoints &&
        Projection(window).Denominator() * kLeastGain <= projection.Denominator()) {
      details.push_back({window, crowd.points});
    }
  }
  return details;
}

// Where there are too many, those with the most points.
std::vector<Extent> MostOf(std::vector<Crowd> details, std::size_t most) {
  if (details.size() > most) {
    std::ranges::stable_sort(details, std::ranges::greater(), &Crowd::points);
    details.resize(most);
  }
  std::vector<Extent> windows;
  std::ranges::transform(details, std::back_inserter(windows), &Crowd::extent);
  return windows;
}

// Parts of a view on sheets of their own, which the view shows as insets from now on.
std::vector<View> Cut(View& view, const std::vector<Extent>& windows, const char* word,
                      bool isTile) {
  const auto insets = view.insets;
  std::vector<View> parts;
  for (const auto& window : windows) {
    const auto name =
        windows.size() == 1 ? std::string(word) : fmt::format("{} {}", word, parts.size() + 1);
    parts.push_back({view.scene, view.title + ", " + name, window, insets});
    view.insets.push_back({window, name, isTile});
  }
  return parts;
}

// The sheets of one scene: where what is left of a view is too full for one, it is cut into sheets,
// and these no further.
class SheetCutter {
 public:
  explicit SheetCutter(std::vector<View>& views) : views_(views) {}

  void Add(View view, int depth) {
    const Projection projection(view.window);
    std::vector<View> details;
    std::vector<View> tiles;
    if (depth < kDeepest) {
      const auto crowds = DetailsOf(view, projection);
      const auto windows = MostOf(crowds, std::min(kMostDetails, left_));
      view.undetailed = crowds.size() - windows.size();
      details = Taken(Cut(view, windows, "detail", false));
    }
    tiles = Taken(Cut(view, TilesOf(view, projection, std::min(kMostTiles, left_)), "sheet", true));
    views_.push_back(std::move(view));
    for (auto& detail : details) {
      Add(std::move(detail), depth + 1);
    }
    std::ranges::move(tiles, std::back_inserter(views_));
  }

 private:
  std::vector<View> Taken(std::vector<View> parts) {
    left_ -= parts.size();
    return parts;
  }

  std::vector<View>& views_;
  std::size_t left_ = kMostSheets;
};

}  // namespace

std::vector<View> ViewsOf(const std::vector<Scene>& scenes) {
  std::vector<View> views;
  for (const auto& scene : scenes) {
    SheetCutter(views).Add({&scene, scene.title, ExtentOf(scene)}, 0);
  }
  return views;
}

}  // namespace kavo_app
