#include "plan/drawing.hpp"

#include <fmt/format.h>

#include <algorithm>

#include "plan/details.hpp"
#include "plan/sheet_drawer.hpp"
#include "plan/sheet_style.hpp"

namespace kavo_app {
namespace {

std::vector<std::string> RemarksOf(const Job& job, const std::vector<Outcome>& outcomes) {
  std::vector<std::string> remarks;
  const auto bad = std::ranges::count_if(outcomes, [](const auto& o) { return !o.Good(); });
  if (bad > 0) {
    remarks.push_back(fmt::format("{} of {} steps not good: see the report", bad, outcomes.size()));
  }
  if (!job.source.empty()) {
    remarks.push_back(job.source);
  }
  return remarks;
}

void WriteClip(std::string_view name, const Sheet& sheet, SvgWriter& svg) {
  svg.Raw(fmt::format("<clipPath id=\"{}\">", name));
  svg.Box("frame", sheet.frame);
  svg.Raw("</clipPath>\n");
}

void WriteHead(const std::string& heading, double width, double height, SvgWriter& svg) {
  svg.Raw(
      fmt::format("<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"{0}mm\" height=\"{1}mm\" "
                  "viewBox=\"0 0 {0} {1}\">\n<title>{2}</title>\n",
                  width, height, XmlText(heading)));
  svg.Raw(kSheetStyle);
  WriteClip("landscape", kLandscape, svg);
  WriteClip("portrait", kPortrait, svg);
}

void WriteSheets(const std::vector<View>& views, const std::string& heading,
                 const std::vector<std::string>& remarks, SvgWriter& svg) {
  double top = 0.0;
  for (const auto& view : views) {
    SheetDrawer drawer(view);
    svg.Open("sheet", fmt::format("transform=\"translate(0 {})\"", top));
    svg.Box("paper", {0.0, 0.0, drawer.Paper().width, drawer.Paper().height});
    drawer.Draw(heading, remarks, svg);
    svg.Close();
    top += drawer.Paper().height;
  }
}

}  // namespace

std::string SvgDrawing(const Job& job, const std::vector<Outcome>& outcomes) {
  auto scenes = ScenesOf(job, outcomes);
  if (scenes.empty()) {
    scenes.emplace_back().title = "No step of this job has a place to show";
  }
  double width = 0.0;
  double height = 0.0;
  const auto views = ViewsOf(scenes);
  for (const auto& view : views) {
    const auto& sheet = Projection(view.window).Paper();
    width = std::max(width, sheet.width);
    height += sheet.height;
  }
  const auto heading = job.title.empty() ? job.file : job.title;
  SvgWriter svg;
  WriteHead(heading, width, height, svg);
  WriteSheets(views, heading, RemarksOf(job, outcomes), svg);
  svg.Raw("</svg>\n");
  return svg.Take();
}

}  // namespace kavo_app
