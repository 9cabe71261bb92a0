// Readings on the two faces of an instrument: reduced, meaned, and what they say of its errors.
#pragma once

#include <optional>
#include <vector>

#include "service/service.hpp"

namespace kavo_app {

/// True for a zenith reading of face 2.
bool IsFace2(IntAngle va);

/// The sight on face 1 that its readings make, which are one, or one on each face; a pair is
/// meaned. Distances are completed: the horizontal part of a slope distance, or the slope of a
/// horizontal one.
/// @param[in,out] sight  has its readings; receives everything that follows from them.
void ReduceReadings(Sight& sight);

/// What keeps two readings from being one sight on both faces, because they differ by far more than
/// an instrument's errors; empty when nothing does.
std::string FaceTrouble(const Reading& one, const Reading& other);

/// The sight that the inputs of one pointing make, and what is wrong with them; or empty.
struct Pointing {
  Sight sight;
  std::string trouble;
  std::string note;  ///< What a pair says of the instrument; "face 2" for one reading there.
};

/// The inputs of a pointing, for a service's table: its readings on one face or both.
inline constexpr Field kHa{"ha", Kind::kAzimuth, "horizontal reading"};
inline constexpr Field kVa{
    "va", Kind::kZenith,
    "zenith reading, either face; without it the sight is level and gives no "
    "elevation",
    Need::kOptional};
inline constexpr Limit kOneOrTwo{[](double face) { return face == 1.0 || face == 2.0; }, "1 or 2"};
inline constexpr Field kFace{"face", Kind::kRatio, "face of the reading; told by va when absent",
                             Need::kOptional, kOneOrTwo};
inline constexpr Field kHa2{"ha2", Kind::kAzimuth, "reading on the other face, to be meaned",
                            Need::kOptional};
inline constexpr Field kVa2{"va2", Kind::kZenith, "zenith reading on the other face",
                            Need::kOptional};

inline constexpr Rule kPairNeedsHa2{"va2", "ha2"};
inline constexpr Rule kPairNeedsVa{"va2", "va"};

/// Reads those inputs, slopeDist, horizDist and th.
Pointing PointingOf(const Inputs& in);

/// The errors of the instrument from several pairs: their means, and largest less smallest.
struct FaceSummary {
  std::size_t pairs = 0;
  IntAngle collimation = 0;
  IntAngle collimationSpread = 0;
  std::optional<IntAngle> index;  ///< None without zenith readings, as the next.
  std::optional<IntAngle> indexSpread;
};
FaceSummary SummaryOfFaces(const std::vector<Sight>& sights);

}  // namespace kavo_app
