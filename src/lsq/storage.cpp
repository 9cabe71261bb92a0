#include "lsq/storage.hpp"

#include <algorithm>
#include <cstddef>
#include <type_traits>

#include "lsq/heap.hpp"

namespace kavo {
namespace {

static_assert(std::is_trivially_copyable_v<Matrix> && std::is_trivially_copyable_v<Band>);

// How many indices there are from `lower` to `upper`.
std::uint64_t Extent(Index lower, Index upper) noexcept {
  return upper < lower ? 0 : static_cast<std::uint64_t>(std::int64_t{upper} - lower) + 1;
}

// A block of rows * cols elements and the unused one before them. A size beyond the address space
// is a block that cannot be had.
template <class Element>
Element* RequestBlock(std::uint64_t rows, std::uint64_t cols) noexcept {
  constexpr std::uint64_t kMost = PTRDIFF_MAX / sizeof(Element) - 1;
  if (cols != 0 && rows > kMost / cols) {
    return nullptr;
  }
  const std::uint64_t count = rows * cols + 1;
  return static_cast<Element*>(HeapAlloc(static_cast<std::size_t>(count) * sizeof(Element)));
}

}  // namespace

// Even a matrix without a row has the handle of its first row: it leads to the elements' block.
Matrix MatAlloc(Index nrl, Index nrh, Index ncl, Index nch) noexcept {
  const std::uint64_t rowCount = Extent(nrl, nrh);
  const std::uint64_t colCount = Extent(ncl, nch);
  const std::uint64_t handleCount = std::max<std::uint64_t>(rowCount, 1);
  auto* rows = RequestBlock<Vector>(handleCount, 1);
  if (rows == nullptr) {
    return {};
  }
  auto* elements = RequestBlock<double>(rowCount, colCount);
  if (elements == nullptr) {
    return {};  // The row handles are not released: meant so, a small loss that is accepted.
  }
  for (std::uint64_t i = 0; i < handleCount; ++i) {
    rows[i + 1] = Vector(elements + i * colCount, ncl);
  }
  return {rows, nrl};
}

void MatFree(Matrix m, Index nrl, Index /*nrh*/, Index /*ncl*/) noexcept {
  HeapFree(m[nrl].Block());
  HeapFree(m.Block());
}

Vector VecAlloc(Index nl, Index nh) noexcept {
  return {RequestBlock<double>(Extent(nl, nh), 1), nl};
}

void VecFree(Vector v, Index /*nl*/, Index /*nh*/) noexcept { HeapFree(v.Block()); }

IntVector IVecAlloc(Index nl, Index nh) noexcept {
  return {RequestBlock<std::int32_t>(Extent(nl, nh), 1), nl};
}

void IVecFree(IntVector v, Index /*nl*/, Index /*nh*/) noexcept { HeapFree(v.Block()); }

Band BandAlloc(Index n) noexcept {
  Owner diagonal{VecAlloc(1, n)};
  if (!diagonal) {
    return {};
  }
  Owner coupling{VecAlloc(1, n - 1)};
  if (!coupling) {
    return {};
  }
  return {diagonal.Disown(), coupling.Disown()};
}

void BandFree(const Band& band) noexcept {
  VecFree(band.coupling, 1, 1);
  VecFree(band.diagonal, 1, 1);
}

std::int32_t LsqAllocWork(Matrix& a, Vector& l, Vector& dx, Vector& v, Matrix& qxx, Index unknowns,
                          Index equations) noexcept {
  Owner ownA{a = MatAlloc(1, equations, 1, unknowns)};
  if (!ownA) {
    return kEngineNoMemory;
  }
  Owner ownL{l = VecAlloc(1, equations)};
  if (!ownL) {
    return kEngineNoMemory;
  }
  Owner ownDx{dx = VecAlloc(1, unknowns)};
  if (!ownDx) {
    return kEngineNoMemory;
  }
  Owner ownV{v = VecAlloc(1, equations)};
  if (!ownV) {
    return kEngineNoMemory;
  }
  qxx = MatAlloc(1, unknowns, 1, unknowns);
  if (!qxx) {
    return kEngineNoMemory;
  }
  ownA.Disown();
  ownL.Disown();
  ownDx.Disown();
  ownV.Disown();
  return kEngineOk;
}

template <WeightMatrix Weights>
void LsqFreeWork(Vector obs, const Weights& weights, Vector x0, Matrix a, Vector l, Vector dx,
                 Vector v, Matrix qxx, Index unknowns, Index equations) noexcept {
  MatFree(qxx, 1, unknowns, 1);
  VecFree(v, 1, equations);
  VecFree(dx, 1, unknowns);
  VecFree(l, 1, equations);
  MatFree(a, 1, equations, 1);
  VecFree(x0, 1, unknowns);
  Release(weights);
  VecFree(obs, 1, equations);
}

template void LsqFreeWork(Vector, const Matrix&, Vector, Matrix, Vector, Vector, Vector, Matrix,
                          Index, Index) noexcept;
template void LsqFreeWork(Vector, const Band&, Vector, Matrix, Vector, Vector, Vector, Matrix,
                          Index, Index) noexcept;

}  // namespace kavo
