// The sights of a set-up, from a list in the job or from a CSV file.
#pragma once

#include "job/input_reader.hpp"

namespace kavo_app {

/// Reads sights. Two readings of one point on both faces make one sight.
/// @param inputs  reads points and angles.
/// @param at      the table that has the sights.
/// @param node    a list of tables, or the name of a file with a heading of the same names.
Input ReadSights(const InputReader& inputs, const TomlReader& at, const toml::node& node,
                 const Field& field);

}  // namespace kavo_app
