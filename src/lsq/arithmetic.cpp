#include "lsq/arithmetic.hpp"

#include <algorithm>

namespace kavo {
namespace {

// The inner indices of one result element.
struct InnerRange {
  Index first;
  Index last;
};

// The neighbours of i within 1..last: where row or column i of a band is not zero.
InnerRange Around(Index i, Index last) noexcept {
  return {std::max<Index>(i - 1, 1), i < last ? i + 1 : last};
}

double Element(const Band& band, Index i, Index j) noexcept {
  return i == j ? band.diagonal[i] : band.coupling[std::min(i, j)];
}

// Terms with a zero factor are left out (meant so): they must not carry an infinity into the sum,
// and they make the mostly empty design matrices cheap. It is also what allows a band to pass over
// its zeros without a trace in the result.
void AddTerm(double& sum, double a, double b) noexcept {
  if (a != 0.0 && b != 0.0) {
    sum = sum + a * b;
  }
}

// The scheme of every product. The order of the sums is part of their result.
template <class Range, class FactorA, class FactorB>
void Product(Matrix out, Index r, Index c, Range inner, FactorA a, FactorB b) noexcept {
  for (Index i = 1; i <= r; ++i) {
    for (Index j = 1; j <= c; ++j) {
      const InnerRange range = inner(i, j);
      double& sum = out[i][j];
      sum = 0.0;
      for (Index t = range.first; t <= range.last; ++t) {
        AddTerm(sum, a(i, t), b(t, j));
      }
    }
  }
}

template <class Range, class Factor>
void VecProduct(Vector x, Vector y, Index r, Range inner, Factor a) noexcept {
  for (Index i = 1; i <= r; ++i) {
    const InnerRange range = inner(i);
    double& sum = y[i];
    sum = 0.0;
    for (Index t = range.first; t <= range.last; ++t) {
      AddTerm(sum, a(i, t), x[t]);
    }
  }
}

}  // namespace

void MatMul(Matrix a, Matrix b, Matrix out, Index r, Index k, Index c) noexcept {
  Product(
      out, r, c,
      [=](Index, Index) {
        return InnerRange{1, k};
      },
      [=](Index i, Index t) { return a[i][t]; }, [=](Index t, Index j) { return b[t][j]; });
}

void MatMul(const Band& a, Matrix b, Matrix out, Index r, Index k, Index c) noexcept {
  Product(
      out, r, c, [=](Index i, Index) { return Around(i, k); },
      [=](Index i, Index t) { return Element(a, i, t); },
      [=](Index t, Index j) { return b[t][j]; });
}

void MatMul(Matrix a, const Band& b, Matrix out, Index r, Index k, Index c) noexcept {
  Product(
      out, r, c, [=](Index, Index j) { return Around(j, k); },
      [=](Index i, Index t) { return a[i][t]; },
      [=](Index t, Index j) { return Element(b, t, j); });
}

void MatMulTransA(Matrix a, Matrix b, Matrix out, Index r, Index k, Index c) noexcept {
  Product(
      out, r, c,
      [=](Index, Index) {
        return InnerRange{1, k};
      },
      [=](Index i, Index t) { return a[t][i]; }, [=](Index t, Index j) { return b[t][j]; });
}

void MatMulTransB(Matrix a, Matrix b, Matrix out, Index r, Index k, Index c) noexcept {
  Product(
      out, r, c,
      [=](Index, Index) {
        return InnerRange{1, k};
      },
      [=](Index i, Index t) { return a[i][t]; }, [=](Index t, Index j) { return b[j][t]; });
}

void MatVecMul(Matrix a, Vector x, Vector y, Index r, Index c) noexcept {
  VecProduct(
      x, y, r,
      [=](Index) {
        return InnerRange{1, c};
      },
      [=](Index i, Index t) { return a[i][t]; });
}

void MatVecMul(const Band& a, Vector x, Vector y, Index r, Index c) noexcept {
  VecProduct(
      x, y, r, [=](Index i) { return Around(i, c); },
      [=](Index i, Index t) { return Element(a, i, t); });
}

void MatSub(Matrix a, Matrix b, Matrix out, Index r, Index c) noexcept {
  for (Index i = 1; i <= r; ++i) {
    for (Index j = 1; j <= c; ++j) {
      out[i][j] = a[i][j] - b[i][j];
    }
  }
}

void MatCopy(Matrix from, Matrix to, Index r, Index c) noexcept {
  for (Index i = 1; i <= r; ++i) {
    for (Index j = 1; j <= c; ++j) {
      to[i][j] = from[i][j];
    }
  }
}

void MatIdentity(Matrix m, Index n) noexcept {
  for (Index i = 1; i <= n; ++i) {
    for (Index j = 1; j <= n; ++j) {
      m[i][j] = i == j ? 1.0 : 0.0;
    }
  }
}

void VecAdd(Vector a, Vector b, Vector out, Index n) noexcept {
  for (Index i = 1; i <= n; ++i) {
    out[i] = a[i] + b[i];
  }
}

void VecScale(Vector s, Vector d, double factor, Index n) noexcept {
  for (Index i = 1; i <= n; ++i) {
    d[i] = s[i] * factor;
  }
}

void VecDot(Vector a, Vector b, double& out, Index n) noexcept {
  out = 0.0;
  for (Index i = 1; i <= n; ++i) {
    out = a[i] * b[i] + out;
  }
}

}  // namespace kavo
