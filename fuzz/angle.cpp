// Angles as kavo reads and prints them.
#include <algorithm>
#include <array>
#include <cstdlib>
#include <cstring>

#include "base/angle_text.hpp"
#include "readers.hpp"

namespace kavo_fuzz {
namespace {

using namespace kavo_app;

constexpr std::array kUnits = {AngleUnit::kDms, AngleUnit::kGon, AngleUnit::kDegrees,
                               AngleUnit::kRaw};

// Either an angle of at most a full circle, which its own text gives back, or a complaint.
void HoldReading(const AngleReading& reading, AngleUnit unit, const std::string& given) {
  Hold(reading.angle.has_value() == reading.complaint.empty(), "ReadAngle",
       "gives an angle or complains", given);
  if (reading.angle) {
    const std::string text = AngleText(*reading.angle, unit);
    Hold(std::abs(*reading.angle) <= ANGLE_FULL_CIRCLE, "ReadAngle", "stays within a circle", text);
    Hold(ReadAngle(text, unit).angle == reading.angle, "AngleText", "reads back as the same angle",
         text);
  }
}

}  // namespace
}  // namespace kavo_fuzz

// The bytes are a text, a number and an angle, each in every notation.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace kavo_fuzz;
  const std::string text(data, data + size);
  double number = 0.0;
  IntAngle angle = 0;
  std::memcpy(&number, text.data(), std::min(size, sizeof number));
  std::memcpy(&angle, text.data(), std::min(size, sizeof angle));
  for (const auto unit : kUnits) {
    HoldReading(ReadAngle(text, unit), unit, text);
    HoldReading(ReadAngle(number, unit), unit, text);
    HoldReading({angle % ANGLE_FULL_CIRCLE, {}}, unit, text);
    Hold(!AngleText(angle, unit).empty(), "AngleText", "has a text for every angle", text);
  }
  return 0;
}
