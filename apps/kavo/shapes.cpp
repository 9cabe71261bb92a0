#include "shapes.hpp"

#include <cmath>

#include "geometry.hpp"

namespace kavo_app {

Sight Reduced(Sight sight) {
  sight.va = Wrapped(sight.va);
  sight.face2 = sight.va > ANGLE_HALF_CIRCLE;
  if (sight.face2) {
    sight.va = ANGLE_FULL_CIRCLE - sight.va;
    sight.ha += ANGLE_HALF_CIRCLE;
  }
  sight.ha = Wrapped(sight.ha);
  if (sight.slopeDist != 0.0) {
    sight.horizDist = sight.slopeDist * std::sin(Radians(sight.va));
    sight.heightDiff = sight.slopeDist * std::cos(Radians(sight.va));
  } else {
    sight.slopeDist = std::hypot(sight.horizDist, sight.heightDiff);
  }
  return sight;
}

}  // namespace kavo_app
