#include "lsq/arithmetic.hpp"

#include <gtest/gtest.h>

#include "fake_heap.hpp"
#include "lsq_objects.hpp"

namespace {

using namespace kavo;
using namespace kavo_test;

Rows Transposed(const Rows& rows) {
  Rows out(rows.front().size());
  for (const auto& row : rows) {
    for (std::size_t j = 0; j < row.size(); ++j) {
      out[j].push_back(row[j]);
    }
  }
  return out;
}

using MatrixProduct = void (*)(Matrix, Matrix, Matrix, Index, Index, Index);

Rows Multiply(MatrixProduct product, const Rows& a, const Rows& b, Index r, Index k, Index c) {
  const Owner ownA{MatrixOf(a)};
  const Owner ownB{MatrixOf(b)};
  const Owner out{MatAlloc(1, r, 1, c)};
  product(*ownA, *ownB, *out, r, k, c);
  return RowsOf(*out, r, c);
}

Numbers TimesVector(const Rows& a, const Numbers& x) {
  const Owner ownA{MatrixOf(a)};
  const Owner ownX{VectorOf(x)};
  const Owner y{VecAlloc(1, CountOf(a))};
  MatVecMul(*ownA, *ownX, *y, CountOf(a), CountOf(x));
  return NumbersOf(*y, CountOf(a));
}

double Dot(const Numbers& a, const Numbers& b) {
  const Owner ownA{VectorOf(a)};
  const Owner ownB{VectorOf(b)};
  double sum = kNaN;
  VecDot(*ownA, *ownB, sum, CountOf(a));
  return sum;
}

TEST(Products, OfTwoRectangles) {
  const HeapGuard guard;
  const Rows a{{1, 2, 3}, {4, 5, 6}};
  const Rows b{{7, 8, 9, 1}, {10, 11, 12, 0}, {13, 14, 15, 2}};
  const Rows product{{66, 72, 78, 7}, {156, 171, 186, 16}};
  EXPECT_EQ(product, Multiply(MatMul, a, b, 2, 3, 4));
  EXPECT_EQ(product, Multiply(MatMulTransA, Transposed(a), b, 2, 3, 4));
  EXPECT_EQ(product, Multiply(MatMulTransB, a, Transposed(b), 2, 3, 4));
  EXPECT_EQ((Numbers{-2, -2}), TimesVector(a, {1, 0, -1}));
  EXPECT_EQ((Rows{{0, 0}, {0, 0}}), Multiply(MatMulTransA, {{kNaN}}, {{kNaN}}, 2, 0, 2));
}

TEST(Products, LeaveOutZeroFactorsAndAddInOrder) {
  const HeapGuard guard;
  const struct {
    const char* name;
    Numbers a, b;
    double sum, dot;  // which leaves out nothing
  } table[] = {
      {"infinity and NaN against zeros", {0.0, -0.0, 2}, {kInf, kNaN, 3}, 6, kNaN},
      {"zeros against infinity and NaN", {kInf, kNaN, 2}, {-0.0, 0.0, 3}, 6, kNaN},
      {"a NaN is not zero", {kNaN, 1, 1}, {1, 1, 1}, kNaN, kNaN},
      {"nor is its partner's NaN", {1, 1, 1}, {1, 1, kNaN}, kNaN, kNaN},
      {"an infinity against something small", {kInf, 0, 0}, {1e-300, 0, 0}, kInf, kInf},
      {"the 1 is lost first", {1e16, 1, -1e16}, {1, 1, 1}, 0.0, 0.0},
      {"the 1 comes last", {1e16, -1e16, 1}, {1, 1, 1}, 1.0, 1.0},
      {"from +0", {-0.0, -1e-200, 0.0}, {1, 1e-200, -1}, 0.0, 0.0},
      {"of nothing", {}, {}, 0.0, 0.0},
  };
  for (const auto& [name, a, b, sum, dot] : table) {
    SCOPED_TRACE(name);
    const Index k = CountOf(a);
    const Rows columnA = Transposed({a});
    const Rows columnB = Transposed({b});
    EXPECT_EQ(Text(Rows{{sum}}), Text(Multiply(MatMul, {a}, columnB, 1, k, 1)));
    EXPECT_EQ(Text(Rows{{sum}}), Text(Multiply(MatMulTransA, columnA, columnB, 1, k, 1)));
    EXPECT_EQ(Text(Rows{{sum}}), Text(Multiply(MatMulTransB, {a}, {b}, 1, k, 1)));
    EXPECT_EQ(Text(Numbers{sum}), Text(TimesVector({a}, b)));
    EXPECT_EQ(Text(dot), Text(Dot(a, b)));
  }
}

TEST(Elementwise, ResultsMayTakeThePlaceOfOperands) {
  const HeapGuard guard;
  const Owner a{MatrixOf({{5, 7}, {9, 11}})};
  const Owner b{MatrixOf({{1, 2}, {3, 5}})};
  MatSub(*a, *b, *a, 2, 2);
  EXPECT_EQ((Rows{{4, 5}, {6, 6}}), RowsOf(*a, 2, 2));
  MatSub(*a, *b, *b, 2, 1);  // the second column is not asked for
  EXPECT_EQ((Rows{{3, 2}, {3, 5}}), RowsOf(*b, 2, 2));
  MatCopy(*a, *b, 1, 2);
  EXPECT_EQ((Rows{{4, 5}, {3, 5}}), RowsOf(*b, 2, 2));

  const Owner v{VectorOf({1, -2})};
  const Owner w{VectorOf({10, 20})};
  VecAdd(*v, *w, *w, 2);
  EXPECT_EQ((Numbers{11, 18}), NumbersOf(*w, 2));
  VecScale(*v, *v, -1.0, 2);
  EXPECT_EQ((Numbers{-1, 2}), NumbersOf(*v, 2));
}

}  // namespace
