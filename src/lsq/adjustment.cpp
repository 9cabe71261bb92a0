#include "lsq/adjustment.hpp"

#include "lsq/arithmetic.hpp"
#include "lsq/solver.hpp"

namespace kavo {

template <WeightMatrix Weights>
std::int32_t LsqNormalInverse(Matrix a, const Weights& p, Matrix qxx, Index m, Index n) noexcept {
  const Owner weighted{MatAlloc(1, m, 1, n)};
  if (!weighted) {
    return kEngineNoMemory;
  }
  const Owner normal{MatAlloc(1, n, 1, n)};
  if (!normal) {
    return kEngineNoMemory;
  }
  MatMul(p, a, *weighted, m, m, n);
  MatMulTransA(a, *weighted, *normal, n, m, n);
  return MatInverse(*normal, qxx, n);
}

template <WeightMatrix Weights>
std::int32_t LsqSolutionVector(Matrix a, Matrix qxx, const Weights& p, Vector l, Vector x, Index m,
                               Index n) noexcept {
  const Owner weighted{MatAlloc(1, n, 1, m)};
  if (!weighted) {
    return kEngineNoMemory;
  }
  const Owner unweighted{MatAlloc(1, n, 1, m)};
  if (!unweighted) {
    return kEngineNoMemory;
  }
  MatMulTransB(qxx, a, *unweighted, n, n, m);
  MatMul(*unweighted, p, *weighted, n, m, m);
  MatVecMul(*weighted, l, x, n, m);
  VecScale(x, x, -1.0, n);
  return kEngineOk;
}

std::int32_t LsqMatVecAdd(Matrix a, Vector l, Vector x, Vector v, Index m, Index n) noexcept {
  const Owner product{VecAlloc(1, m)};
  if (!product) {
    return kEngineNoMemory;
  }
  MatVecMul(a, x, *product, m, n);
  VecAdd(l, *product, v, m);
  return kEngineOk;
}

template <WeightMatrix Weights>
std::int32_t LsqQuadraticForm(const Weights& p, Vector v, double& out, Index m) noexcept {
  const Owner product{VecAlloc(1, m)};
  if (!product) {
    return kEngineNoMemory;
  }
  MatVecMul(p, v, *product, m, m);
  VecDot(v, *product, out, m);
  return kEngineOk;
}

template std::int32_t LsqNormalInverse(Matrix, const Matrix&, Matrix, Index, Index) noexcept;
template std::int32_t LsqNormalInverse(Matrix, const Band&, Matrix, Index, Index) noexcept;
template std::int32_t LsqSolutionVector(Matrix, Matrix, const Matrix&, Vector, Vector, Index,
                                        Index) noexcept;
template std::int32_t LsqSolutionVector(Matrix, Matrix, const Band&, Vector, Vector, Index,
                                        Index) noexcept;
template std::int32_t LsqQuadraticForm(const Matrix&, Vector, double&, Index) noexcept;
template std::int32_t LsqQuadraticForm(const Band&, Vector, double&, Index) noexcept;

}  // namespace kavo
