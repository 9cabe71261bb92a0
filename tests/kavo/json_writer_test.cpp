#include "base/json_writer.hpp"

#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <limits>
#include <random>
#include <string>
#include <string_view>

namespace {

using namespace kavo_app;

std::string NumberJson(double number) {
  JsonDocument json;
  json.Start().Number(number);
  return std::string(json.Text());
}

TEST(JsonWriter, WritesTheShortestNumber) {
  constexpr double kInfinity = std::numeric_limits<double>::infinity();
  const struct {
    double number;
    std::string_view json;
  } cases[] = {
      {0.0, "0"},
      {-0.0, "-0"},
      {0.1, "0.1"},
      {500000.0, "500000"},
      {0.1 + 0.2, "0.30000000000000004"},
      {667128.601655601, "667128.601655601"},  // where some print one digit more
      {-5.329070518200751e-15, "-5.329070518200751e-15"},
      {5e-324, "5e-324"},
      {1e23, "1e+23"},
      {9007199254740993.0, "9007199254740992"},  // between two doubles
      {1.7976931348623157e308, "1.7976931348623157e+308"},
      {kInfinity, "null"},
      {-kInfinity, "null"},
      {std::nan(""), "null"},
  };
  for (const auto& [number, json] : cases) {
    EXPECT_EQ(json, NumberJson(number));
  }
}

// Every bit pattern is as likely as any other, so that all exponents come up.
TEST(JsonWriter, EveryNumberReadsBack) {
  std::mt19937_64 bits(1);
  for (int i = 0; i < 100'000; ++i) {
    const auto number = std::bit_cast<double>(bits());
    if (!std::isfinite(number)) {
      continue;
    }
    const auto out = NumberJson(number);
    ASSERT_EQ(std::bit_cast<std::uint64_t>(number),
              std::bit_cast<std::uint64_t>(std::strtod(out.c_str(), nullptr)))
        << out;
  }
}

// Something of everything, also what is empty, alone and inside.
void WriteSample(const JsonWriter& json) {
  auto object = json.Object();
  object.Key("").Integer(9007199254740993);
  object.Key("a\"").Boolean(true);
  object.OptionalText("none", "");
  object.OptionalText("some", "\x1F\n\"é");
  {
    auto array = object.Key("array").Array();
    array.Next().Null();
    static_cast<void>(array.Next());  // a place that nothing is written to
    static_cast<void>(array.Next().Object());
    auto inner = array.Next().Object();
    inner.Key("least").Integer(std::numeric_limits<std::int64_t>::min());
  }
  static_cast<void>(object.Key("empty").Array());
  object.Key("id").Verbatim("[1.0]");
}

std::string Sample(JsonLayout layout) {
  JsonDocument json(layout);
  WriteSample(json.Start());
  return std::string(json.Text());
}

TEST(JsonWriter, NestsOnOneLine) {
  EXPECT_EQ(R"({"":9007199254740993,"a\"":true,"some":"\u001F\n\"é",)"
            R"("array":[null,{},{"least":-9223372036854775808}],"empty":[],"id":[1.0]})",
            Sample(JsonLayout::kOneLine));
}

TEST(JsonWriter, NestsIndented) {
  EXPECT_EQ(R"({
  "": 9007199254740993,
  "a\"": true,
  "some": "\u001F\n\"é",
  "array": [
    null,
    {},
    {
      "least": -9223372036854775808
    }
  ],
  "empty": [],
  "id": [1.0]
})",
            Sample(JsonLayout::kIndented));
}

}  // namespace
