/* Direction and distance between two survey points, and back again. */
#include <kavostdlib.h>
#include <stdio.h>

static const double kUnitsPerDegree = ANGLE_FULL_CIRCLE / 360.0;

int main(void) {
  const CoordPt station = {.north = 2281.76, .east = 88568.24, .flags = COORD_HAS_NE};
  const CoordPt target = {.north = 3865.36, .east = 84862.54, .flags = COORD_HAS_NE};
  AngDistRec polar;
  CoordPt back;

  if (KavoCogoCoordToAngDist(&station, &target, &polar) != STATUS_OK) {
    fputs("the points coincide\n", stderr);
    return 1;
  }
  printf("azimuth %.5f degrees, distance %.3f m\n", polar.azimuth / kUnitsPerDegree,
         polar.horizDist);

  if (KavoCogoAngDistToCoord(&station, &polar, &back) != STATUS_OK) {
    return 1;
  }
  printf("forward again: north %.3f m, east %.3f m\n", back.north, back.east);
  return 0;
}
