#include "service/setup.hpp"

#include "host/instrument.hpp"

namespace kavo_app {

double HeightTerm(const Sight& sight, const Inputs& in) {
  return sight.targetHeight - in.Number("ih", 0.0);
}

std::string SightName(const std::vector<Sight>& sights, std::size_t index) {
  return sights[index].name.empty() ? "sight " + std::to_string(index + 1) : sights[index].name;
}

Value AdjustedOrient(IntAngle orient) { return Referred(Instrument(), Wrapped(orient)); }

std::string FaceNote(const std::vector<Sight>& sights) {
  std::string names;
  for (std::size_t i = 0; i < sights.size(); ++i) {
    if (sights[i].face2) {
      names += (names.empty() ? "" : ", ") + SightName(sights, i);
    }
  }
  return names.empty() ? "" : "readings of face 2 were reduced to face 1: " + names;
}

Value CheckWhere(bool formed, double check) { return formed ? Value{check} : Value{}; }

}  // namespace kavo_app
