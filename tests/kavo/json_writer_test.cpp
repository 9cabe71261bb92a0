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

TEST(JsonWriter, EscapesTextAndReplacesWhatIsNotUtf8) {
  const struct {
    std::string_view text;
    std::string_view json;
  } cases[] = {
      {"", R"("")"},
      {R"(a "b" \c/)", R"("a \"b\" \\c/")"},
      {"\b\f\n\r\t", R"("\b\f\n\r\t")"},
      {{"\0\x01\x1F", 3}, R"("\u0000\u0001\u001f")"},
      {"\x7F", "\"\x7F\""},
      {"123°45'é€𝄞", "\"123°45'é€𝄞\""},
      {"gro\xDF.\n", "\"gro\uFFFD.\\n\""},                   // Latin-1
      {"\xC3", "\"\uFFFD\""},                                // cut off
      {"\xC0\xAF", "\"\uFFFD\uFFFD\""},                      // a slash in too many bytes
      {"\xED\xA0\x80", "\"\uFFFD\uFFFD\uFFFD\""},            // half of a pair
      {"\xF4\x90\x80\x80", "\"\uFFFD\uFFFD\uFFFD\uFFFD\""},  // beyond the last character
      {"\xE2\x82\"", "\"\uFFFD\uFFFD\\\"\""},                // cut off by a quotation mark
  };
  for (const auto& [text, json] : cases) {
    std::string out;
    JsonWriter(out).Text(text);
    EXPECT_EQ(json, out);
  }
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
    std::string out;
    JsonWriter(out).Number(number);
    EXPECT_EQ(json, out);
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
    std::string out;
    JsonWriter(out).Number(number);
    ASSERT_EQ(std::bit_cast<std::uint64_t>(number),
              std::bit_cast<std::uint64_t>(std::strtod(out.c_str(), nullptr)))
        << out;
  }
}

// Something of everything, also what is empty, alone and inside.
void WriteSample(JsonWriter json) {
  auto object = json.Object();
  object.Key("").Integer(9007199254740993);
  object.Key("a\"").Boolean(true);
  object.OptionalText("none", "");
  object.OptionalText("some", "text");
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
  std::string out;
  WriteSample(JsonWriter(out, layout));
  return out;
}

TEST(JsonWriter, NestsOnOneLine) {
  EXPECT_EQ(R"({"":9007199254740993,"a\"":true,"some":"text",)"
            R"("array":[null,{},{"least":-9223372036854775808}],"empty":[],"id":[1.0]})",
            Sample(JsonLayout::kOneLine));
}

TEST(JsonWriter, NestsIndented) {
  EXPECT_EQ(R"({
  "": 9007199254740993,
  "a\"": true,
  "some": "text",
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
