// Matrices, vectors and weights of a test, from numbers and as text.
#pragma once

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <string>
#include <vector>

#include "lsq/observations.hpp"
#include "text.hpp"

namespace kavo_test {

inline constexpr double kInf = std::numeric_limits<double>::infinity();
inline constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

using Numbers = std::vector<double>;
using Rows = std::vector<Numbers>;

inline kavo::Index CountOf(const auto& items) { return static_cast<kavo::Index>(items.size()); }

/// A new vector over 1..n.
inline kavo::Vector VectorOf(const Numbers& numbers) {
  const auto v = kavo::VecAlloc(1, CountOf(numbers));
  std::copy(numbers.begin(), numbers.end(), v.Block() + 1);
  return v;
}

/// A new matrix, indexed from 1.
inline kavo::Matrix MatrixOf(const Rows& rows) {
  const auto m = kavo::MatAlloc(1, CountOf(rows), 1, rows.empty() ? 0 : CountOf(rows.front()));
  kavo::Index i = 1;
  for (const auto& row : rows) {
    std::copy(row.begin(), row.end(), m[i++].Block() + 1);
  }
  return m;
}

inline Numbers NumbersOf(kavo::Vector v, kavo::Index n) {
  return {v.Block() + 1, v.Block() + 1 + n};
}

inline Rows RowsOf(kavo::Matrix m, kavo::Index r, kavo::Index c) {
  Rows rows;
  for (kavo::Index i = 1; i <= r; ++i) {
    rows.push_back(NumbersOf(m[i], c));
  }
  return rows;
}

/// The band written out with all its zeros.
inline Rows RowsOf(const kavo::Band& band, kavo::Index n) {
  Rows rows(static_cast<std::size_t>(n), Numbers(static_cast<std::size_t>(n), 0.0));
  for (std::size_t at = 0; at < rows.size(); ++at) {
    rows[at][at] = band.diagonal[static_cast<kavo::Index>(at + 1)];
    if (at > 0) {
      rows[at][at - 1] = rows[at - 1][at] = band.coupling[static_cast<kavo::Index>(at)];
    }
  }
  return rows;
}

/// Observations and weights as they were built; on a refusal they must be null.
template <kavo::WeightMatrix Weights>
struct Built {
  std::int32_t mode;
  std::int32_t code = -1;
  kavo::Vector obs{};
  Weights w{};
  kavo::Index total = -1;
  kavo::Index nDist = -1;
};

template <kavo::WeightMatrix Weights>
Built<Weights> Build(std::int32_t mode, const std::vector<kavo::MultiResectObs>& recs,
                     const std::array<double, 3>& sigmas = {2.0, 0.002, 2e-6}) {
  Built<Weights> built{mode};
  built.code = LsqBuildWeights(built.mode, CountOf(recs), recs.data(), sigmas[0], sigmas[1],
                               sigmas[2], built.obs, built.w, built.total, built.nDist);
  return built;
}

/// Greatest difference between two objects of one shape; infinite when something is not a number.
inline double Distance(double a, double b) {
  return std::isnan(a - b) ? HUGE_VAL : std::fabs(a - b);
}

template <class Item>
double Distance(const std::vector<Item>& a, const std::vector<Item>& b) {
  double greatest = a.size() == b.size() ? 0.0 : HUGE_VAL;
  for (std::size_t i = 0; i < std::min(a.size(), b.size()); ++i) {
    greatest = std::max(greatest, Distance(a[i], b[i]));
  }
  return greatest;
}

template <class Item>
std::string Text(const std::vector<Item>& items) {
  std::string text;
  for (const auto& item : items) {
    text += Text(item) + "  ";
  }
  return text + '\n';
}

}  // namespace kavo_test
