#include "service/setup.hpp"

#include "host/instrument.hpp"

namespace kavo_app {

double HeightTerm(const Sight& sight, const Inputs& in) {
  return sight.targetHeight - in.Number("ih", 0.0);
}

Value AdjustedOrient(IntAngle orient) { return Referred(Instrument(), Wrapped(orient)); }

std::string FaceNote(const std::vector<Sight>& sights) {
  std::string names;
  for (const auto& sight : sights) {
    if (sight.face2) {
      names += (names.empty() ? "" : ", ") + sight.name;
    }
  }
  return names.empty() ? "" : "readings of face 2 were reduced to face 1: " + names;
}

Value CheckWhere(bool formed, double check) { return formed ? Value{check} : Value{}; }

}  // namespace kavo_app
