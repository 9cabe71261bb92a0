// Finds what lies at one place in a long list without going through all of it.
#pragma once

#include <algorithm>
#include <cstddef>
#include <functional>
#include <optional>
#include <unordered_map>

namespace kavo_app {

/// Which elements of a list lie where. Two coordinates are one place only when they are equal.
class PlaceIndex {
 public:
  void Add(double north, double east, std::size_t element) {
    elements_.emplace(HashOf(north, east), element);
  }

  /// The first element at the place, or at one that happens to share its hash, of which `isIt`
  /// holds.
  template <class Predicate>
  std::optional<std::size_t> Find(double north, double east, Predicate isIt) const {
    std::optional<std::size_t> found;
    const auto [first, last] = elements_.equal_range(HashOf(north, east));
    for (auto at = first; at != last; ++at) {
      if (isIt(at->second)) {
        found = std::min(found.value_or(at->second), at->second);
      }
    }
    return found;
  }

 private:
  static std::size_t HashOf(double north, double east) {
    constexpr std::size_t kOdd = 1000003;
    return std::hash<double>()(north) * kOdd + std::hash<double>()(east);
  }

  std::unordered_multimap<std::size_t, std::size_t> elements_;
};

}  // namespace kavo_app
