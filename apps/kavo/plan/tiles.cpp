#include "plan/tiles.hpp"

#include <algorithm>
#include <cmath>

namespace kavo_app {
namespace {

constexpr double kRoom = 60.0;      // that a point with its name needs, square millimetres
constexpr double kPerDetail = 2.0;  // points' room for a line under the name
constexpr std::size_t kLeastLabels = 100;

// What must be labelled.
struct Load {
  Extent extent;
  std::size_t labels = 0;
  double room = 0.0;  // that they need, square millimetres

  void Add(Spot at, double needed) {
    extent.Include(at);
    room += needed;
    ++labels;
  }
};

Load LoadOf(const View& view, const Projection& projection) {
  Load load;
  for (const auto& point : view.scene->points) {
    if (point.HasLabel() && IsLabelledOn(view, projection, point.at)) {
      load.Add(point.at, kRoom * (1.0 + kPerDetail * static_cast<double>(point.details.size())));
    }
  }
  for (const auto& caption : view.scene->captions) {
    if (IsLabelledOn(view, projection, caption.at)) {
      load.Add(caption.at, kRoom);
    }
  }
  return load;
}

// On the sheet, square millimetres; beside a row of points there is room too.
double RoomAt(const Extent& extent, const Projection& projection) {
  constexpr double kLeast = 40.0;  // millimetres
  return std::max(projection.Millimetres(extent.right - extent.left), kLeast) *
         std::max(projection.Millimetres(extent.top - extent.bottom), kLeast);
}

struct Grid {
  Spot tile;  // the size of one, metres
  double columns;
  double rows;
};

Grid GridOver(const Extent& extent, double denominator) {
  const auto tile = LargestAt(denominator);
  return {tile, std::max(1.0, std::ceil((extent.right - extent.left) / tile.right)),
          std::max(1.0, std::ceil((extent.top - extent.bottom) / tile.up))};
}

// The largest round scale that is needed, or at which the tiles are not too many.
Grid GridFor(const Extent& extent, double denominator, double enlargement, std::size_t most) {
  double next = RoundDown(denominator / enlargement);
  auto grid = GridOver(extent, next);
  while (grid.columns * grid.rows > static_cast<double>(most)) {
    constexpr double kSmaller = 1.1;
    next = RoundUp(next * kSmaller);
    grid = GridOver(extent, next);
  }
  return grid;
}

// The tiles together lie evenly over the extent.
Extent TileAt(const Extent& extent, const Grid& grid, double row, double column) {
  const double left = (extent.left + extent.right - grid.columns * grid.tile.right) / 2.0;
  const double top = (extent.bottom + extent.top + grid.rows * grid.tile.up) / 2.0;
  return {left + column * grid.tile.right, left + (column + 1.0) * grid.tile.right,
          top - (row + 1.0) * grid.tile.up, top - row * grid.tile.up};
}

}  // namespace

std::vector<Extent> TilesOf(const View& view, const Projection& projection, std::size_t most) {
  const auto load = LoadOf(view, projection);
  const double room = RoomAt(load.extent, projection);
  if (most < 2 || load.labels < kLeastLabels || room > load.room) {
    return {};
  }
  const auto grid =
      GridFor(load.extent, projection.Denominator(), std::sqrt(load.room / room), most);
  std::vector<Extent> tiles;
  for (double i = 0.0; i < grid.rows * grid.columns; ++i) {
    const double row = std::floor(i / grid.columns);
    const auto tile = TileAt(load.extent, grid, row, i - row * grid.columns);
    const auto isHeld = [&tile](const auto& labelled) { return tile.Holds(labelled.at); };
    if (std::ranges::any_of(view.scene->points, isHeld) ||
        std::ranges::any_of(view.scene->captions, isHeld)) {
      tiles.push_back(tile);
    }
  }
  return tiles.size() > 1 ? tiles : std::vector<Extent>{};
}

}  // namespace kavo_app
