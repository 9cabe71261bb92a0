#include "lsq/solver.hpp"

#include <cmath>
#include <utility>

#include "lsq/arithmetic.hpp"

namespace kavo {
namespace {

constexpr double kZeroPivot = 0x1.79ca10c924223p-67;  // 1e-20
constexpr int kMostPasses = 5;

// Reciprocal of the largest magnitude in each row; false when a row has none above zero.
bool ScaleRows(Matrix a, Index n, Vector scale) noexcept {
  for (Index i = 1; i <= n; ++i) {
    double big = 0.0;
    for (Index j = 1; j <= n; ++j) {
      if (std::fabs(a[i][j]) > big) {
        big = std::fabs(a[i][j]);
      }
    }
    if (big == 0.0) {
      return false;
    }
    scale[i] = 1.0 / big;
  }
  return true;
}

// Element (i, j) less the products of the first `terms` elements of its row and its column.
double Reduced(Matrix a, Index i, Index j, Index terms) noexcept {
  double sum = a[i][j];
  for (Index k = 1; k <= terms; ++k) {
    sum = sum - a[i][k] * a[k][j];
  }
  return sum;
}

// Reduces column j and finds its pivot row: the greatest scaled candidate, the later one of equals.
// A column of NaNs has no greatest; its pivot is the diagonal.
Index ReduceColumn(Matrix a, Index n, Index j, Vector scale) noexcept {
  for (Index i = 1; i < j; ++i) {
    a[i][j] = Reduced(a, i, j, i - 1);
  }
  double big = 0.0;
  Index pivotRow = j;
  for (Index i = j; i <= n; ++i) {
    a[i][j] = Reduced(a, i, j, j - 1);
    const double candidate = scale[i] * std::fabs(a[i][j]);
    if (candidate >= big) {
      big = candidate;
      pivotRow = i;
    }
  }
  return pivotRow;
}

void SwapRows(Matrix a, Index n, Index row1, Index row2) noexcept {
  for (Index k = 1; k <= n; ++k) {
    std::swap(a[row1][k], a[row2][k]);
  }
}

// Turns the elements below the pivot of column j into multipliers.
void DivideByPivot(Matrix a, Index n, Index j) noexcept {
  if (a[j][j] == 0.0) {
    a[j][j] = kZeroPivot;
  }
  if (j == n) {
    return;
  }
  const double perPivot = 1.0 / a[j][j];
  for (Index i = j + 1; i <= n; ++i) {
    a[i][j] = a[i][j] * perPivot;
  }
}

// Column c of L Y = B, rows interchanged on the way. Leading zeros of the column are passed over.
void ForwardSubst(Matrix lu, Matrix b, Index n, Index c, IntVector indx) noexcept {
  Index firstNonZero = 0;
  for (Index i = 1; i <= n; ++i) {
    const Index interchanged = indx[i];
    double sum = b[interchanged][c];
    b[interchanged][c] = b[i][c];
    if (firstNonZero != 0) {
      for (Index j = firstNonZero; j < i; ++j) {
        sum = sum - lu[i][j] * b[j][c];
      }
    } else if (sum != 0.0) {
      firstNonZero = i;
    }
    b[i][c] = sum;
  }
}

// Column c of U X = Y.
void BackSubst(Matrix lu, Matrix b, Index n, Index c) noexcept {
  for (Index i = n; i >= 1; --i) {
    double sum = b[i][c];
    for (Index j = i + 1; j <= n; ++j) {
      sum = sum - lu[i][j] * b[j][c];
    }
    b[i][c] = sum / lu[i][i];
  }
}

// Improves x by the solutions of the same system for what A x leaves of b.
void Refine(Matrix a, Matrix b, Matrix lu, IntVector indx, Matrix x, Matrix residual, Index n,
            Index m) noexcept {
  for (int pass = 1; pass <= kMostPasses; ++pass) {
    MatMul(a, x, residual, n, n, m);
    MatSub(residual, b, residual, n, m);
    LuBackSubst(lu, residual, n, m, indx);
    MatSub(x, residual, x, n, m);
    if (MatAllNegligible(residual, n, m)) {
      return;
    }
  }
}

}  // namespace

std::int32_t LuDecompose(Matrix a, Index n, IntVector indx, double& d) noexcept {
  Owner scale{VecAlloc(1, n)};
  if (!scale) {
    return kEngineNoMemory;
  }
  d = 1.0;
  if (!ScaleRows(a, n, *scale)) {
    scale.Disown();  // Not released: meant so, a small loss that is accepted.
    return kEngineSingular;
  }
  for (Index j = 1; j <= n; ++j) {
    const Index pivotRow = ReduceColumn(a, n, j, *scale);
    if (pivotRow != j) {
      SwapRows(a, n, pivotRow, j);
      d = -d;
      (*scale)[pivotRow] = (*scale)[j];
    }
    indx[j] = pivotRow;
    DivideByPivot(a, n, j);
  }
  return kEngineOk;
}

void LuBackSubst(Matrix lu, Matrix b, Index n, Index m, IntVector indx) noexcept {
  for (Index c = 1; c <= m; ++c) {
    ForwardSubst(lu, b, n, c, indx);
    BackSubst(lu, b, n, c);
  }
}

bool MatAllNegligible(Matrix m, Index r, Index c) noexcept {
  for (Index i = 1; i <= r; ++i) {
    for (Index j = 1; j <= c; ++j) {
      if (!(std::fabs(m[i][j]) <= kNegligible)) {
        return false;
      }
    }
  }
  return true;
}

std::int32_t MatSolveRefined(Matrix a, Matrix b, Index n, Index m) noexcept {
  const Owner lu{MatAlloc(1, n, 1, n)};
  if (!lu) {
    return kEngineNoMemory;
  }
  const Owner x{MatAlloc(1, n, 1, m)};
  if (!x) {
    return kEngineNoMemory;
  }
  const Owner residual{MatAlloc(1, n, 1, m)};
  if (!residual) {
    return kEngineNoMemory;
  }
  const Owner indx{IVecAlloc(1, n)};
  if (!indx) {
    return kEngineNoMemory;
  }
  MatCopy(a, *lu, n, n);
  MatCopy(b, *x, n, m);
  double parity = 0.0;
  if (const auto code = LuDecompose(*lu, n, *indx, parity); code != kEngineOk) {
    return code;
  }
  LuBackSubst(*lu, *x, n, m, *indx);
  Refine(a, b, *lu, *indx, *x, *residual, n, m);
  MatCopy(*lu, a, n, n);
  MatCopy(*x, b, n, m);
  return kEngineOk;
}

std::int32_t MatInverse(Matrix a, Matrix inverse, Index n) noexcept {
  MatIdentity(inverse, n);
  return MatSolveRefined(a, inverse, n, n);
}

}  // namespace kavo
