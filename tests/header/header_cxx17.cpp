// The header alone, as a C++17 program meets it.
#include "kavostdlib.h"

static_assert(sizeof(IntAngle) == 4);
static_assert(sizeof(CoordPt) == 32);
static_assert(sizeof(AngDistRec) == 32);
static_assert(sizeof(SlopeRec) == 16);
static_assert(sizeof(LineDef) == 72);
