// Matrices and vectors of a test, from numbers and as text.
#pragma once

#include <algorithm>
#include <cmath>
#include <string>
#include <vector>

#include "lsq/storage.hpp"
#include "text.hpp"

namespace kavo_test {

using Numbers = std::vector<double>;
using Rows = std::vector<Numbers>;

inline kavo::Index CountOf(const auto& items) { return static_cast<kavo::Index>(items.size()); }

/// A new vector over 1..n.
inline kavo::Vector VectorOf(const Numbers& numbers) {
  const auto v = kavo::VecAlloc(1, CountOf(numbers));
  kavo::Index i = 1;
  for (const double number : numbers) {
    v[i++] = number;
  }
  return v;
}

/// A new matrix, indexed from 1.
inline kavo::Matrix MatrixOf(const Rows& rows) {
  const auto m = kavo::MatAlloc(1, CountOf(rows), 1, rows.empty() ? 0 : CountOf(rows.front()));
  kavo::Index i = 1;
  for (const auto& row : rows) {
    kavo::Index j = 1;
    for (const double number : row) {
      m[i][j++] = number;
    }
    i += 1;
  }
  return m;
}

inline Numbers NumbersOf(kavo::Vector v, kavo::Index n) {
  Numbers numbers;
  for (kavo::Index i = 1; i <= n; ++i) {
    numbers.push_back(v[i]);
  }
  return numbers;
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
  for (kavo::Index i = 1; i <= n; ++i) {
    const auto at = static_cast<std::size_t>(i - 1);
    rows[at][at] = band.diagonal[i];
    if (i < n) {
      rows[at][at + 1] = rows[at + 1][at] = band.coupling[i];
    }
  }
  return rows;
}

/// Greatest difference between two objects of one shape; infinite when something is not a number.
inline double Distance(const Numbers& a, const Numbers& b) {
  double greatest = 0.0;
  for (std::size_t i = 0; i < a.size(); ++i) {
    const double difference = std::fabs(a[i] - b.at(i));
    greatest = difference <= greatest ? greatest : std::isnan(difference) ? HUGE_VAL : difference;
  }
  return greatest;
}

inline double Distance(const Rows& a, const Rows& b) {
  double greatest = 0.0;
  for (std::size_t i = 0; i < a.size(); ++i) {
    greatest = std::max(greatest, Distance(a[i], b.at(i)));
  }
  return greatest;
}

inline std::string Text(const Numbers& numbers) {
  std::string text;
  for (const double number : numbers) {
    text += Text(number) + "  ";
  }
  return text;
}

inline std::string Text(const Rows& rows) {
  std::string text;
  for (const auto& row : rows) {
    text += Text(row) + '\n';
  }
  return text;
}

}  // namespace kavo_test
