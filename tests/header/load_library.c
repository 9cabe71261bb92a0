// Loads the library by path, as a program that was not linked against it does, and asks it for an
// inverse: a 3-4-12 box.
#include <dlfcn.h>
#include <stdio.h>
#include <string.h>

#include "kavostdlib.h"

typedef int32_t (*Inverse)(const CoordPt* station, const CoordPt* point, AngDistRec* out);

static int IsRight(Inverse inverse) {
  const CoordPt station = {10, 20, 5, COORD_HAS_NE | COORD_HAS_ELEV, {0}};
  const CoordPt point = {13, 24, 17, COORD_HAS_NE | COORD_HAS_ELEV, {0}};
  AngDistRec out;
  return inverse(&station, &point, &out) == STATUS_OK && out.azimuth == 3060294 &&
         out.zenith == 1302904 && out.slopeDist == 13 && out.horizDist == 5 && out.dElev == 12;
}

int main(int argc, char** argv) {
  if (argc != 2) {
    fprintf(stderr, "usage: load_library LIBRARY\n");
    return 2;
  }
  void* library = dlopen(argv[1], RTLD_NOW | RTLD_LOCAL);
  void* symbol = library != NULL ? dlsym(library, "KavoCogoCoordToAngDist") : NULL;
  if (symbol == NULL) {
    fprintf(stderr, "%s\n", dlerror());
    return 1;
  }
  // C has no conversion from an object pointer to a function pointer.
  Inverse inverse;
  memcpy(&inverse, &symbol, sizeof inverse);
  const int right = IsRight(inverse);
  if (!right) {
    fprintf(stderr, "the inverse is wrong\n");
  }
  return dlclose(library) == 0 && right ? 0 : 1;
}
