// Linear systems and inverses: LU decomposition by Crout's method with implicit row scaling and
// partial pivoting, substitution, and iterative refinement (G. H. Golub and C. F. Van Loan, "Matrix
// Computations", chapter 3). Everything is indexed from 1.
//
// A singular matrix is reported only when a whole row of it is zero. Any other zero pivot becomes
// 1e-20 and the computation goes on (meant so): the solution is then meaningless, and finite or
// infinite as the arithmetic gives.
#pragma once

#include "lsq/storage.hpp"

namespace kavo {

/// Replaces a matrix by its LU factors, those of the matrix with rows interchanged: below the
/// diagonal the multipliers of L, whose own diagonal is 1; U on and above it. Of equal pivots the
/// later row is taken.
/// @param[in,out] a  n by n.
/// @param n  count.
/// @param[out] indx  of n: the row that was interchanged with row j at step j.
/// @param[out] d  +1.0 or -1.0, the parity of the interchanges.
/// @return kEngineOk; kEngineNoMemory, all untouched; kEngineSingular when a row has no element but
///         zeros and NaNs: `a` and `indx` untouched, d = 1.0, and one vector of n lost (meant so).
std::int32_t LuDecompose(Matrix a, Index n, IntVector indx, double& d) noexcept;

/// Solves with the factors of LuDecompose.
/// @param lu,indx  n by n and of n, from LuDecompose.
/// @param[in,out] b  n by m, one system a column; replaced by the solutions.
/// @param n,m  counts.
void LuBackSubst(Matrix lu, Matrix b, Index n, Index m, IntVector indx) noexcept;

/// True when no element exceeds kNegligible in magnitude. The bound is absolute; a NaN exceeds it.
/// @param m  r by c.
/// @param r,c  counts; true when one of them is below 1.
bool MatAllNegligible(Matrix m, Index r, Index c) noexcept;

/// Solves A X = B and refines the solution, at least once and at most five times, until the last
/// correction is negligible. Running out of passes is not an error.
/// @param[in,out] a  A, n by n; replaced by its LU factors: pass a copy of what is needed again.
/// @param[in,out] b  B, n by m; replaced by X.
/// @param n,m  counts.
/// @return kEngineOk; kEngineNoMemory or kEngineSingular with `a` and `b` unchanged.
std::int32_t MatSolveRefined(Matrix a, Matrix b, Index n, Index m) noexcept;

/// Inverts a matrix, as the solution of A X = I.
/// @param[in,out] a  n by n; replaced by its LU factors.
/// @param[out] inverse  n by n; holds the identity when the code is not kEngineOk.
/// @param n  count.
/// @return kEngineOk; kEngineNoMemory or kEngineSingular with `a` unchanged.
std::int32_t MatInverse(Matrix a, Matrix inverse, Index n) noexcept;

}  // namespace kavo
