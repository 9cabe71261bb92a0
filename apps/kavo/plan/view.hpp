// What one sheet shows.
#pragma once

#include <string>
#include <vector>

#include "scene/scene.hpp"

namespace kavo_app {

/// A part that another sheet shows larger.
struct Inset {
  Extent extent;
  std::string name;
  bool isTile = false;  ///< One of the sheets that all of the scene is cut into.
};

/// A scene, or a part of it, on a sheet of its own.
struct View {
  const Scene* scene;  ///< All views of a scene share it; it must outlive them.
  std::string title;
  Extent window;                ///< The part to be shown.
  std::vector<Inset> insets{};  ///< Here names are left to their own sheets.
  std::size_t undetailed = 0;   ///< Crowds that have no detail, for there would be too many.
};

}  // namespace kavo_app
