// Matrices and vectors of the adjustment: each is created for an inclusive range of indices, is
// indexed with the indices of that range, and is released by whoever created it.
//
// Handles are small and copied freely; a copy designates the same elements. A failed creation is a
// null handle, which callers turn into kEngineNoMemory after releasing what they had made.
#pragma once

#include <concepts>
#include <cstdint>

namespace kavo {

/// An index, a bound or a count of the engine.
using Index = std::int32_t;

/// Codes that the engine's routines return.
inline constexpr std::int32_t kEngineOk = 0;
inline constexpr std::int32_t kEngineNoMemory = 2;
inline constexpr std::int32_t kEngineSingular = 3;

/// What the engine takes for nothing: the spacing of doubles at 1.0, 2.220446049250313e-16.
inline constexpr double kNegligible = 0x1p-52;

/// Handle of elements that are indexed from any lower bound. They begin in the second slot of their
/// block; the first slot is never used. An index becomes an offset into the block, so that no
/// pointer is ever formed outside it, whatever the lower bound.
template <class Element>
class Indexed {
 public:
  /// The null handle.
  Indexed() noexcept = default;

  /// @param block  of one element more than are indexed, or null.
  /// @param lower  index of the block's second element.
  Indexed(Element* block, Index lower) noexcept
      : block_(block), offset_(1 - static_cast<std::int64_t>(lower)) {}

  /// @param i  within the range of the handle, which is not tested.
  Element& operator[](Index i) const noexcept { return block_[offset_ + i]; }

  /// False for the null handle.
  explicit operator bool() const noexcept { return block_ != nullptr; }

  /// Start of the block, one slot before the first element.
  [[nodiscard]] Element* Block() const noexcept { return block_; }

 private:
  Element* block_ = nullptr;
  std::int64_t offset_ = 0;
};

using Vector = Indexed<double>;
using IntVector = Indexed<std::int32_t>;

/// Rows of a matrix: m[i] is row i, m[i][j] an element. The elements of all rows lie one after
/// another in a block of their own.
using Matrix = Indexed<Vector>;

/// A symmetric matrix over 1..n in which only neighbours are coupled: all that is neither on the
/// diagonal nor beside it is zero, and takes no memory.
struct Band {
  Vector diagonal;  ///< [i] is element (i, i); over 1..n.
  Vector coupling;  ///< [i] is elements (i, i + 1) and (i + 1, i); over 1..n-1.

  /// False for the null handle.
  explicit operator bool() const noexcept { return static_cast<bool>(coupling); }
};

/// The two ways to hold the weights of observations. Products with either give the same bits.
template <class Weights>
concept WeightMatrix = std::same_as<Weights, Matrix> || std::same_as<Weights, Band>;

/// A matrix, its elements undefined: two requests to the heap, row handles and then elements.
/// @param nrl,nrh  first and last row; none when nrh < nrl.
/// @param ncl,nch  first and last column; none when nch < ncl.
/// @return null when a block cannot be had. Row handles without elements are lost (meant so).
Matrix MatAlloc(Index nrl, Index nrh, Index ncl, Index nch) noexcept;

/// Releases a matrix: the elements, then the row handles.
/// @param m  not null.
/// @param nrl  first row, as it was created; the other bounds are not looked at.
void MatFree(Matrix m, Index nrl, Index nrh, Index ncl) noexcept;

/// A real vector over nl..nh, its elements undefined; null when it cannot be had.
Vector VecAlloc(Index nl, Index nh) noexcept;

/// Releases a vector, which is not null. Its bounds are not looked at: the handle knows its block.
void VecFree(Vector v, Index nl, Index nh) noexcept;

/// A vector of integers over nl..nh, its elements undefined; null when it cannot be had.
IntVector IVecAlloc(Index nl, Index nh) noexcept;

/// Releases a vector of integers, as VecFree does.
void IVecFree(IntVector v, Index nl, Index nh) noexcept;

/// A band over 1..n, its elements undefined: two requests to the heap, all or none; null when it
/// cannot be had.
Band BandAlloc(Index n) noexcept;

/// Releases a band, which is not null: the coupling, then the diagonal.
void BandFree(const Band& band) noexcept;

/// One name for the release of what is indexed from 1.
inline void Release(Matrix m) noexcept { MatFree(m, 1, 1, 1); }
inline void Release(Vector v) noexcept { VecFree(v, 1, 1); }
inline void Release(IntVector v) noexcept { IVecFree(v, 1, 1); }
inline void Release(const Band& band) noexcept { BandFree(band); }

/// Owns what is indexed from 1 and releases it at the end of the scope: several owners in a scope
/// release in the reverse order of their creation, on every way out.
template <class Handle>
class Owner {
 public:
  /// @param handle  what to own, or null.
  explicit Owner(Handle handle) noexcept : handle_(handle) {}
  Owner(const Owner&) = delete;
  Owner& operator=(const Owner&) = delete;
  ~Owner() {
    if (handle_) {
      Release(handle_);
    }
  }

  explicit operator bool() const noexcept { return static_cast<bool>(handle_); }

  /// The handle, still owned.
  const Handle& operator*() const noexcept { return handle_; }

  /// Hands the ownership over to the caller.
  Handle Disown() noexcept {
    const Handle handle = handle_;
    handle_ = Handle{};
    return handle;
  }

 private:
  Handle handle_;
};

/// Creates the work arrays of one adjustment, all or none.
/// @param[out] a  design matrix, equations by unknowns.
/// @param[out] l  constant terms, of the equations.
/// @param[out] dx  solution, of the unknowns.
/// @param[out] v  residuals, of the equations.
/// @param[out] qxx  cofactors, unknowns by unknowns.
/// @param unknowns,equations  counts.
/// @return kEngineOk; kEngineNoMemory with the failed handle null, those before it released and not
///         to be used, those after it untouched.
std::int32_t LsqAllocWork(Matrix& a, Vector& l, Vector& dx, Vector& v, Matrix& qxx, Index unknowns,
                          Index equations) noexcept;

/// Releases everything that an adjustment works with, the last argument first. No handle may be
/// null.
/// @param obs  observations.
/// @param weights  their weights, in either form.
/// @param x0  approximate values of the unknowns.
/// @param a,l,dx,v,qxx  from LsqAllocWork.
/// @param unknowns,equations  counts; not needed for the release.
template <WeightMatrix Weights>
void LsqFreeWork(Vector obs, const Weights& weights, Vector x0, Matrix a, Vector l, Vector dx,
                 Vector v, Matrix qxx, Index unknowns, Index equations) noexcept;

}  // namespace kavo
