// The steps of one weighted least-squares adjustment by indirect observations.
//
// Everything is indexed from 1; m is the number of observation equations, n of unknowns.
//   A    m by n  derivatives of the constant terms by the unknowns
//   P    m by m  weights, as a matrix or as a band: the results have the same bits
//   l    of m    constant terms, added to A x
//   Qxx  n by n  cofactors of the unknowns
//   x    of n    corrections to the approximate unknowns
//   v    of m    residuals
// Inputs are not changed, and on kEngineNoMemory no result is written unless a step says so.
//
// The signs belong together (meant so): the solution carries the minus, the residuals the plus.
#pragma once

#include "lsq/storage.hpp"

namespace kavo {

/// Qxx = (A^T P A)^-1.
/// @param a,p  A and P.
/// @param[out] qxx  Qxx; the identity when the inversion fails.
/// @param m,n  counts.
/// @return kEngineOk; kEngineNoMemory; kEngineSingular when an unknown occurs in no observation.
template <WeightMatrix Weights>
std::int32_t LsqNormalInverse(Matrix a, const Weights& p, Matrix qxx, Index m, Index n) noexcept;

/// x = -Qxx A^T P l.
/// @param a,qxx,p,l  A, Qxx, P and l.
/// @param[out] x  x.
/// @param m,n  counts.
/// @return kEngineOk or kEngineNoMemory.
template <WeightMatrix Weights>
std::int32_t LsqSolutionVector(Matrix a, Matrix qxx, const Weights& p, Vector l, Vector x, Index m,
                               Index n) noexcept;

/// v = l + A x.
/// @param a,l,x  A, l and x.
/// @param[out] v  v.
/// @param m,n  counts.
/// @return kEngineOk or kEngineNoMemory.
std::int32_t LsqMatVecAdd(Matrix a, Vector l, Vector x, Vector v, Index m, Index n) noexcept;

/// The weighted sum of squares v^T P v.
/// @param p,v  P and v.
/// @param[out] out  the sum.
/// @param m  count.
/// @return kEngineOk or kEngineNoMemory.
template <WeightMatrix Weights>
std::int32_t LsqQuadraticForm(const Weights& p, Vector v, double& out, Index m) noexcept;

}  // namespace kavo
