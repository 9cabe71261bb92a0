/* Due north is half a circle for a host whose azimuths count from south. */
#include <kavostdlib.h>

int main(void) {
  const CoordPt station = {.flags = COORD_HAS_NE};
  const CoordPt north = {.north = 1.0, .flags = COORD_HAS_NE};
  AngDistRec polar;
  return KavoCogoCoordToAngDist(&station, &north, &polar) == STATUS_OK &&
                 polar.azimuth == ANGLE_HALF_CIRCLE
             ? 0
             : 1;
}
