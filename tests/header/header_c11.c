// The header alone, as a C11 program meets it.
#include "kavostdlib.h"

_Static_assert(sizeof(IntAngle) == 4, "IntAngle");
_Static_assert(sizeof(CoordPt) == 32, "CoordPt");
_Static_assert(sizeof(AngDistRec) == 32, "AngDistRec");
_Static_assert(sizeof(SlopeRec) == 16, "SlopeRec");
_Static_assert(sizeof(LineDef) == 72, "LineDef");
