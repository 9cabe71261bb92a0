#include "report/report_sights.hpp"

#include <fmt/format.h>

#include "base/geometry.hpp"
#include "base/number_text.hpp"
#include "job/faces.hpp"

namespace kavo_app {
namespace {

void AddReading(const Reading& reading, AngleUnit unit, std::vector<Cell>& cells) {
  const double dist = reading.slopeDist != 0.0 ? reading.slopeDist : reading.horizDist;
  const std::string face = reading.face2 ? " face 2" : " face 1";
  cells.push_back({"ha" + face, "", AngleText(reading.ha, unit)});
  cells.push_back({"va" + face, "", reading.va ? AngleText(*reading.va, unit) : kNone});
  cells.push_back({"dist" + face, "m", dist != 0.0 ? NumberText(dist) : kNone});
}

// Pairs as they were read, and what they say of the instrument.
void PrintFaces(const std::vector<Sight>& sights, AngleUnit unit, TextPage& page) {
  std::vector<std::vector<Cell>> rows;
  for (const auto& sight : sights) {
    if (!sight.errors) {
      continue;
    }
    std::vector<Cell> cells{{"both faces", "", sight.name}};
    for (const auto& reading : sight.readings) {
      AddReading(reading, unit, cells);
    }
    cells.push_back({"collimation", "\"", SecondsText(sight.errors->collimation)});
    cells.push_back({"index", "\"", SecondsText(sight.errors->index)});
    cells.push_back({"", "", ""});
    rows.push_back(std::move(cells));
  }
  if (rows.empty()) {
    return;
  }
  page.Rows(rows);
  const auto summary = SummaryOfFaces(sights);
  page.Item("collimation", fmt::format("mean {}\", spread {}\"", SecondsText(summary.collimation),
                                       SecondsText(summary.collimationSpread)));
  if (summary.index) {
    page.Item("index", fmt::format("mean {}\", spread {}\"", SecondsText(summary.index),
                                   SecondsText(summary.indexSpread)));
  }
}

}  // namespace

void PrintSights(const Outcome& outcome, AngleUnit unit, TextPage& page) {
  for (const auto& input : outcome.inputs) {
    const auto* sights = std::get_if<std::vector<Sight>>(&input);
    if (sights == nullptr || sights->empty()) {
      continue;
    }
    std::vector<std::vector<Cell>> rows;
    for (const auto& sight : *sights) {
      const bool withDist = sight.slopeDist != 0.0;
      rows.push_back({{"sight", "", sight.name},
                      {"ha", "", AngleText(sight.ha, unit)},
                      {"va", "", AngleText(sight.va, unit)},
                      {"slopeDist", "m", withDist ? NumberText(sight.slopeDist) : kNone},
                      {"horizDist", "m", withDist ? NumberText(sight.horizDist) : kNone},
                      {"th", "m", NumberText(sight.targetHeight)},
                      {"", "", sight.code}});
    }
    page.Rows(rows);
    PrintFaces(*sights, unit, page);
  }
}

void PrintResiduals(const Outcome& outcome, TextPage& page) {
  for (const auto& output : outcome.outputs) {
    const auto* residuals = std::get_if<std::vector<SightResidual>>(&output);
    if (residuals == nullptr || residuals->empty()) {
      continue;
    }
    std::vector<std::vector<Cell>> rows;
    for (const auto& residual : *residuals) {
      rows.push_back({{"sight", "", residual.name},
                      {"direction", "\"", fmt::format("{:.2f}", ArcSeconds(residual.direction))},
                      {"distance", "mm", residual.dist ? MillimetresText(*residual.dist) : kNone},
                      {"elevation", "m", residual.elev ? NumberText(*residual.elev) : kNone},
                      {"", "", ""}});
    }
    page.Rows(rows);
  }
}

}  // namespace kavo_app
