// Random calls of all exports, through a library that is loaded by path. A call is drawn from a
// seed alone, so that it can be made again: in another copy of the library, or on another thread.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>
#include <vector>

namespace kavo_test {

/// Random numbers that cost next to nothing to start: S. Vigna's splitmix64.
class Draws {
 public:
  explicit Draws(std::uint64_t seed) : state_(seed) {}

  std::uint64_t Next();
  std::uint64_t Below(std::uint64_t bound) { return Next() % bound; }
  double Between(double low, double high);

 private:
  std::uint64_t state_;
};

/// All that a call gives, byte by byte: the returned value, then every output in full.
using Answer = std::vector<std::byte>;

/// The functions that share one base.
enum class Family { kNone, kElevation, kSlope, kLine, kArc, kPlane2Pt, kPlane3Pt };
constexpr std::size_t kFamilies = 7;

/// A function of the library. A new one is a row of the table in calls.cpp.
struct Export {
  std::string_view name;
  /// Draws the arguments, calls `function` and appends what it gives.
  void (*call)(void* function, Draws& draws, Answer& answer);
  Family family = Family::kNone;

  /// Whether its success replaces the whole base, whatever that was.
  [[nodiscard]] bool SetsBase() const { return name.find("Set") != std::string_view::npos; }
};

std::span<const Export> Exports();

/// The export that this seed calls.
const Export& Drawn(std::uint64_t seed);

/// A library loaded for as long as this lives, with bases of its own. A path that is loaded
/// already is the same library with the same bases: Copy() makes another one.
class Library {
 public:
  explicit Library(const char* path);
  ~Library();
  Library(const Library&) = delete;
  Library& operator=(const Library&) = delete;

  /// Makes the call that this seed stands for.
  [[nodiscard]] Answer Call(std::uint64_t seed) const;

 private:
  void* handle_;
  std::vector<void*> functions_;  // in the order of Exports()
};

/// Copies a library beside the running program, and gives the path of the copy.
const char* Copy(const char* library);

/// Whether a call of a function that returns a status gave STATUS_OK.
bool Succeeded(const Answer& answer);

}  // namespace kavo_test
