// The answer to one line of requests.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "base/json_writer.hpp"
#include "pipe/pipe_request.hpp"

namespace kavo_app {

/// Answers lines, one at a time. An answer depends on its own line and on no other.
class LineAnswerer {
 public:
  /// Appends the answer to a line and a line feed to `out`: the result, or what is wrong.
  /// @param line    any bytes without a line feed.
  /// @param number  the line's number, for an answer that says what is wrong.
  /// @return whether there is a result, and a check is passed.
  bool Answer(std::string_view line, std::size_t number, std::string& out);

  /// Appends an answer that says what is wrong with a line that was not read.
  void Refuse(std::string_view complaint, std::size_t number, std::string& out);

 private:
  bool WriteAnswer(const JsonWriter& json, std::string_view line, std::size_t number);

  void AppendAnswer(std::string& out) const;

  RequestReader reader_;
  JsonDocument answer_;
  std::string id_;
};

}  // namespace kavo_app
