// Names that are not known, and the known ones that were probably meant.
#pragma once

#include <span>
#include <string>
#include <string_view>

namespace kavo_app {

/// The known name that is nearest to a text: the same but for capitals, or but for a slip, or two
/// in a long one. Empty when none is near.
std::string_view NearName(std::string_view text, std::span<const std::string_view> known);

/// What is wrong with a name that is not among the known ones, and which is meant or which there
/// are.
std::string UnknownAdvice(std::string_view name, std::span<const std::string_view> known);

/// What is wrong with a name when another one is missing and was probably meant by it; empty when
/// it was not.
std::string MisspeltAdvice(std::string_view name, std::string_view missing);

}  // namespace kavo_app
