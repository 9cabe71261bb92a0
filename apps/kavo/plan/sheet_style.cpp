#include "plan/sheet_style.hpp"

namespace kavo_app {

std::string_view SymbolOf(Role role) {
  switch (role) {
    case Role::kFoot:
      return "foot";
    case Role::kGiven:
      return "given";
    case Role::kComputed:
      return "computed";
    case Role::kControl:
      return "control";
    case Role::kStation:
      break;
  }
  return "station";
}

double HalfSize(Role role) {
  switch (role) {
    case Role::kFoot:
      return 0.6;
    case Role::kGiven:
    case Role::kComputed:
      return 0.9;
    case Role::kControl:
      return 1.6;
    case Role::kStation:
      break;
  }
  return 1.9;
}

std::string_view ClassOf(Stroke stroke) {
  switch (stroke) {
    case Stroke::kSight:
      return "sight";
    case Stroke::kConstruction:
      return "construction";
    case Stroke::kOffset:
      return "offset";
    case Stroke::kReference:
      return "reference";
    case Stroke::kBoundary:
      break;
  }
  return "boundary";
}

}  // namespace kavo_app
