// Products, sums and copies of the adjustment's matrices and vectors.
//
// All operands are indexed from 1. A routine uses exactly 1..count of each dimension, whatever
// larger range the operand was created for; a count below 1 is an empty range. Nothing here
// allocates, so nothing can fail.
//
// Every product forms each result element from 0.0, term by term in increasing inner index, and
// leaves out a term of which a factor is exactly zero: an infinite or not-a-number partner of a
// zero does not reach the result. A factor that is not a number is not zero, and does. The result
// of a product must be a different object from both factors.
#pragma once

#include "lsq/storage.hpp"

namespace kavo {

/// C = A B.
/// @param a  r by k.
/// @param b  k by c.
/// @param[out] out  C, r by c.
/// @param r,k,c  counts.
void MatMul(Matrix a, Matrix b, Matrix out, Index r, Index k, Index c) noexcept;

/// The same for a band A: as if it were written out with all its zeros, in the time of its own
/// elements.
void MatMul(const Band& a, Matrix b, Matrix out, Index r, Index k, Index c) noexcept;

/// The same for a band B.
void MatMul(Matrix a, const Band& b, Matrix out, Index r, Index k, Index c) noexcept;

/// C = A^T B.
/// @param a  k by r.
/// @param b  k by c.
/// @param[out] out  C, r by c.
/// @param r,k,c  counts.
void MatMulTransA(Matrix a, Matrix b, Matrix out, Index r, Index k, Index c) noexcept;

/// C = A B^T.
/// @param a  r by k.
/// @param b  c by k.
/// @param[out] out  C, r by c.
/// @param r,k,c  counts.
void MatMulTransB(Matrix a, Matrix b, Matrix out, Index r, Index k, Index c) noexcept;

/// y = A x.
/// @param a  r by c.
/// @param x  of c.
/// @param[out] y  of r.
/// @param r,c  counts.
void MatVecMul(Matrix a, Vector x, Vector y, Index r, Index c) noexcept;

/// The same for a band A.
void MatVecMul(const Band& a, Vector x, Vector y, Index r, Index c) noexcept;

/// C = A - B, element by element.
/// @param a,b  r by c.
/// @param[out] out  C, r by c; may be `a` or `b`.
/// @param r,c  counts.
void MatSub(Matrix a, Matrix b, Matrix out, Index r, Index c) noexcept;

/// Copies r by c elements.
/// @param from  source.
/// @param[out] to  destination.
/// @param r,c  counts.
void MatCopy(Matrix from, Matrix to, Index r, Index c) noexcept;

/// Writes the identity.
/// @param[out] m  n by n.
/// @param n  count.
void MatIdentity(Matrix m, Index n) noexcept;

/// c = a + b.
/// @param a,b  of n.
/// @param[out] out  c, of n; may be `a` or `b`.
/// @param n  count.
void VecAdd(Vector a, Vector b, Vector out, Index n) noexcept;

/// d = s * factor.
/// @param s  of n.
/// @param[out] d  of n; may be `s`.
/// @param factor  no unit.
/// @param n  count.
void VecScale(Vector s, Vector d, double factor, Index n) noexcept;

/// Sum of a[i] * b[i] in increasing i. Unlike the products it adds every term, zero or not.
/// @param a,b  of n.
/// @param[out] out  the sum; 0.0 for none.
/// @param n  count.
void VecDot(Vector a, Vector b, double& out, Index n) noexcept;

}  // namespace kavo
