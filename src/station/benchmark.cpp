// Station elevation from one sight to a benchmark.
#include "kavostdlib.h"

double KavoSTNSeaLevelCalcByBM(double bmElev, double heightTerm, double vertDiff) {
  return (bmElev + heightTerm) - vertDiff;
}
