#include "report/report_sights.hpp"

#include <fmt/format.h>

#include <algorithm>

#include "base/geometry.hpp"
#include "base/number_text.hpp"
#include "report/text_table.hpp"
#include "service/faces.hpp"

namespace kavo_app {
namespace {

std::string NameText(const std::string& name) { return name.empty() ? kNone : name; }

// A distance of 0 was not measured, and a target height of 0 is none.
std::string LengthText(double metres) { return metres != 0.0 ? NumberText(metres) : kNone; }

// What the readings make of the sight; what was not read does not show, although the sight counts
// as level, or its slope distance follows from the horizontal one.
std::vector<std::string> SightTexts(const Sight& sight, AngleUnit unit) {
  const auto slope = [](const Reading& reading) { return reading.slopeDist != 0.0; };
  const auto height = [](const Reading& reading) { return reading.heightDiff.has_value(); };
  const bool bySlope = std::ranges::any_of(sight.readings, slope);
  const bool byHeight = !bySlope && std::ranges::any_of(sight.readings, height);
  return {NameText(sight.name),
          AngleText(sight.ha, unit),
          sight.readings.front().va ? AngleText(sight.va, unit) : kNone,
          bySlope ? NumberText(sight.slopeDist) : kNone,
          LengthText(sight.horizDist),
          byHeight ? NumberText(sight.heightDiff) : kNone,
          LengthText(sight.targetHeight),
          sight.code};
}

void AddReading(const Reading& reading, AngleUnit unit, std::vector<std::string>& texts) {
  texts.push_back(AngleText(reading.ha, unit));
  texts.push_back(reading.va ? AngleText(*reading.va, unit) : kNone);
  texts.push_back(LengthText(reading.slopeDist != 0.0 ? reading.slopeDist : reading.horizDist));
}

std::vector<std::string> PairTexts(const Sight& sight, AngleUnit unit) {
  std::vector<std::string> texts{NameText(sight.name)};
  for (const auto& reading : sight.readings) {
    AddReading(reading, unit, texts);
  }
  texts.push_back(ErrorText(sight.errors->collimation, unit));
  texts.push_back(ErrorText(sight.errors->index, unit));
  return texts;
}

// Pairs as they were read.
void PrintPairs(const std::vector<Sight>& sights, AngleUnit unit, TextPage& page) {
  const std::string small(SmallAngleUnit(unit));
  TextTable table({{"both faces", "", Holds::kNames},
                   {"ha face 1", ""},
                   {"va face 1", ""},
                   {"dist face 1", "m"},
                   {"ha face 2", ""},
                   {"va face 2", ""},
                   {"dist face 2", "m"},
                   {"collimation", small},
                   {"index", small}});
  for (const auto& sight : sights) {
    if (sight.errors) {
      table.AddRow(PairTexts(sight, unit));
    }
  }
  table.Print(page);
}

// What the pairs say of the instrument.
void PrintErrors(const FaceSummary& faces, AngleUnit unit, TextPage& page) {
  const auto text = [unit](std::optional<IntAngle> mean, std::optional<IntAngle> spread) {
    return fmt::format("mean {}, spread {}", ErrorWithUnit(mean, unit),
                       ErrorWithUnit(spread, unit));
  };
  page.Item("collimation", text(faces.collimation, faces.collimationSpread));
  if (faces.index) {
    page.Item("index", text(faces.index, faces.indexSpread));
  }
}

}  // namespace

void PrintSights(const std::vector<Sight>& sights, AngleUnit unit, TextPage& page) {
  TextTable table({{"sight", "", Holds::kNames},
                   {"ha", ""},
                   {"va", ""},
                   {"slopeDist", "m"},
                   {"horizDist", "m"},
                   {"heightDiff", "m"},
                   {"th", "m"},
                   {"", "", Holds::kNames, 1}});
  for (const auto& sight : sights) {
    table.AddRow(SightTexts(sight, unit));
  }
  table.Print(page);
  if (const auto faces = SummaryOfFaces(sights); faces.pairs > 0) {
    PrintPairs(sights, unit, page);
    PrintErrors(faces, unit, page);
  }
}

void PrintResiduals(const std::vector<SightResidual>& residuals, AngleUnit unit, TextPage& page) {
  TextTable table({{"sight", "", Holds::kNames},
                   {"direction", std::string(SmallAngleUnit(unit))},
                   {"distance", "mm"},
                   {"elevation", "m"}});
  for (const auto& residual : residuals) {
    table.AddRow({NameText(residual.name), ResidualText(residual.direction, unit),
                  residual.dist ? MillimetresText(*residual.dist) : kNone,
                  residual.elev ? NumberText(*residual.elev) : kNone});
  }
  table.Print(page);
}

}  // namespace kavo_app
