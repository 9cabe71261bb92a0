// Requests as kavo pipe answers them: any bytes are a line.
#include <nlohmann/json.hpp>

#include "pipe/pipe_answer.hpp"
#include "readers.hpp"

namespace kavo_fuzz {
namespace {

using namespace kavo_app;

constexpr std::string_view kOther =
    R"({"service":"line-point","point":{"north":1,"east":2},"angles":"gon",)"
    R"("set":{"service":"line-set","from":{"north":0,"east":0},"to":{"north":9,"east":0}},)"
    R"("settings":{"azimuth-from":"south"}})";

std::string AnswerTo(LineAnswerer& answerer, std::string_view line) {
  std::string answer;
  const bool good = answerer.Answer(line, 1, answer);
  Hold(answer.ends_with('\n') && answer.find('\n') + 1 == answer.size(), "Answer", "is one line",
       answer);
  const auto json = nlohmann::json::parse(answer, nullptr, false);
  Hold(json.is_object() && json.contains("error") != json.contains("outputs"), "Answer",
       "has an error or outputs", answer);
  Hold(!good || json.contains("outputs"), "Answer", "has outputs when it is good", answer);
  return answer;
}

}  // namespace
}  // namespace kavo_fuzz

// What comes before a line makes nothing of its answer.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace kavo_fuzz;
  static LineAnswerer answerer;
  const std::string line(data, data + size);
  const auto first = AnswerTo(answerer, line);
  AnswerTo(answerer, kOther);
  LineAnswerer fresh;
  Hold(AnswerTo(answerer, line) == first && AnswerTo(fresh, line) == first, "Answer",
       "depends on its own line alone", line);
  return 0;
}
