// The adjustment's own routines: solver, products, weights, the iteration of a resection.
#include "lsq_objects.hpp"  // first: what the laws show are matrices

#include <array>
#include <cmath>

#include "draw.hpp"
#include "fake_heap.hpp"
#include "judge.hpp"
#include "lsq/arithmetic.hpp"
#include "lsq/solver.hpp"
#include "station/resect_approx.hpp"
#include "station/resect_driver.hpp"

namespace kavo_fuzz {
namespace {

using namespace kavo;

// Numbers as matrices have them: small, zero, and anything.
double Number(Draw& draw) { return draw.Below(4) == 0 ? 0.0 : draw.Metres(); }

Rows DrawRows(Draw& draw, std::size_t rows, std::size_t columns) {
  Rows all(rows, Numbers(columns));
  for (Numbers& row : all) {
    std::ranges::generate(row, [&] { return Number(draw); });
  }
  return all;
}

// Holds that everything came back to the heap but what is lost by design: one block where memory
// ran out or a matrix was singular.
void HoldHeap(std::string_view who, std::int32_t code, int before) {
  const int lost = ReclaimAfter(before);
  Hold(lost == 0 || (lost == 1 && (code == kEngineNoMemory || code == kEngineSingular)), who,
       "gives everything back", code, lost);
  Hold(code != kEngineNoMemory || Heap().refuse != 0, who, "runs out of memory only when it does",
       code);
}

// A system that its diagonal dominates, so that the solution can be put back.
void Solve(Draw& draw) {
  const auto n = static_cast<std::size_t>(1 + draw.Below(5));
  Rows a = DrawRows(draw, n, n);
  const Rows b = DrawRows(draw, n, 2);
  const bool isDominated = draw.IsCalm();
  for (std::size_t i = 0; i < n && isDominated; ++i) {
    a[i][(i + 1) % n] = 5000.0 * static_cast<double>(n);
  }
  const Index count = CountOf(a);
  const Owner lu{MatrixOf(a)};
  const Owner x{MatrixOf(b)};
  const int before = Heap().requests;
  const int refuse = draw.Byte() % 16;
  Heap().refuse = refuse == 0 ? 0 : before + refuse;
  const auto code = MatSolveRefined(*lu, *x, count, 2);
  HoldHeap("MatSolveRefined", code, before);
  Heap().refuse = 0;
  if (code != kEngineOk) {
    Hold(Text(a) == Text(RowsOf(*lu, count, count)) && Text(b) == Text(RowsOf(*x, count, 2)),
         "MatSolveRefined", "changes nothing on a failure", a, b);
    return;
  }
  const Owner again{MatrixOf(a)};
  const Owner product{MatAlloc(1, count, 1, 2)};
  MatMul(*again, *x, *product, count, count, 2);
  Hold(!isDominated || Distance(b, RowsOf(*product, count, 2)) <= 1e-8, "MatSolveRefined",
       "solves the system", a, b, RowsOf(*x, count, 2));
}

// The weights as a band and as a matrix have the same elements, and the same products to the bit.
void MultiplyBand(Draw& draw) {
  const auto n = static_cast<std::size_t>(1 + draw.Below(6));
  const Index count = CountOf(Numbers(n));
  const Rows factor = DrawRows(draw, n, n);
  const Owner band{BandAlloc(count)};
  for (Index i = 1; i <= count; ++i) {
    (*band).diagonal[i] = Number(draw);
    if (i < count) {
      (*band).coupling[i] = Number(draw);
    }
  }
  const Owner dense{MatrixOf(RowsOf(*band, count))};
  const Owner a{MatrixOf(factor)};
  const Owner byBand{MatAlloc(1, count, 1, count)};
  const Owner byDense{MatAlloc(1, count, 1, count)};
  const auto holdSame = [&](std::string_view rule) {
    Hold(Text(RowsOf(*byDense, count, count)) == Text(RowsOf(*byBand, count, count)), "MatMul",
         rule, RowsOf(*dense, count, count), factor);
  };
  MatMul(*band, *a, *byBand, count, count, count);
  MatMul(*dense, *a, *byDense, count, count, count);
  holdSame("is the same by a band from the left");
  MatMul(*a, *band, *byBand, count, count, count);
  MatMul(*a, *dense, *byDense, count, count, count);
  holdSame("is the same by a band from the right");
}

double Measured(Draw& draw) { return draw.Below(5) == 0 ? kValueAbsent : draw.Metres(); }

std::vector<MultiResectObs> DrawSights(Draw& draw) {
  std::vector<MultiResectObs> sights(static_cast<std::size_t>(draw.Below(6)));
  for (MultiResectObs& rec : sights) {
    rec = {draw.Metres(),  draw.Metres(),  Measured(draw), draw.Metres(),
           Measured(draw), Measured(draw), Measured(draw), Measured(draw),
           Measured(draw), kNaN,           kNaN,           kNaN};
  }
  return sights;
}

void Weigh(Draw& draw) {
  const auto sights = DrawSights(draw);
  const std::int32_t mode = 1 + draw.Below(3);
  const std::array sigmas = {draw.Metres(), draw.Metres(), draw.Metres()};
  const int before = Heap().requests;
  const auto dense = Build<Matrix>(mode, sights, sigmas);
  const auto band = Build<Band>(mode, sights, sigmas);
  Hold(dense.code == band.code && dense.mode == band.mode && dense.total == band.total &&
           dense.nDist == band.nDist,
       "LsqBuildWeights", "counts the same for both kinds of weights", dense.code, band.code);
  if (dense.code == kEngineOk) {
    Hold(Text(RowsOf(dense.w, dense.total, dense.total)) == Text(RowsOf(band.w, band.total)) &&
             Text(NumbersOf(dense.obs, dense.total)) == Text(NumbersOf(band.obs, band.total)),
         "LsqBuildWeights", "makes the same weights of both kinds",
         RowsOf(dense.w, dense.total, dense.total), RowsOf(band.w, band.total));
    for (const Vector obs : {band.obs, dense.obs}) {
      Release(obs);
    }
    Release(band.w);
    Release(dense.w);
  }
  HoldHeap("LsqBuildWeights", dense.code, before);
}

// Whatever the sights: a code that there is, the same twice, no memory lost, and on a failure
// nothing written.
void Adjust(Draw& draw) {
  const auto sights = DrawSights(draw);
  const std::int32_t mode = 2 + draw.Below(2);
  const int before = Heap().requests;
  const int refuse = draw.Byte() % 64;
  const auto resect = [&](std::vector<MultiResectObs>& work, ResectSolution& out) {
    Heap().refuse = refuse == 0 ? 0 : Heap().requests + refuse;
    const auto code = LsqResect(mode, CountOf(work), work.data(), 2.0, 0.002, 2e-6, out);
    HoldHeap("LsqResect", code, before);
    return code;
  };
  auto one = sights;
  auto two = sights;
  auto out1 = Untouched<ResectSolution>();
  auto out2 = Untouched<ResectSolution>();
  const auto code = resect(one, out1);
  const auto again = resect(two, out2);
  Heap().refuse = 0;
  Hold(code >= kEngineOk && code <= kEngineSingular, "LsqResect", "answers one of its codes", code);
  Hold(code == again && SameBytes(out1, out2) &&
           std::ranges::equal(one, two, SameBytes<MultiResectObs>),
       "LsqResect", "gives the same again", code, again);
  const bool isWritten = code == kEngineOk || code == kEngineNotConverged;
  Hold(isWritten != IsUntouched(out1) &&
           (isWritten || std::ranges::equal(one, sights, SameBytes<MultiResectObs>)),
       "LsqResect", "writes all or nothing", code);
}

}  // namespace
}  // namespace kavo_fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace kavo_fuzz;
  Draw draw(data, size);
  ReclaimHeap();
  Run(draw, {Solve, MultiplyBand, Weigh, Adjust});
  Hold(ReclaimHeap() == 0, "heap", "gets everything back");
  return 0;
}
