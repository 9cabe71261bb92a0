// A job's scenes as one SVG file: a sheet for each, one below the other.
#include <fmt/format.h>

#include <algorithm>
#include <cmath>

#include "plan/label_placer.hpp"
#include "plan/sheet_frame.hpp"
#include "plan/sheet_style.hpp"
#include "report/report.hpp"

namespace kavo_app {
namespace {

constexpr double kTickSpacing = 20.0;  // of a chainage, at least, millimetres
constexpr double kMostTicks = 1e4;     // of one line
constexpr double kSymbolGap = 0.2;     // between a symbol and other labels, millimetres
constexpr double kTick = 1.2;          // half a tick, millimetres

// Half the size of a symbol, millimetres.
double HalfSize(Role role) {
  return role == Role::kStation ? 1.9 : role == Role::kControl ? 1.6 : 0.9;
}

class SheetDrawer {
 public:
  SheetDrawer(const Scene& scene, SvgWriter& svg)
      : scene_(scene), svg_(svg), projection_(scene), enlargement_(scene), placer_(kFrame) {}

  void Draw(const std::string& heading, std::vector<std::string> remarks) {
    if (scene_.northUp) {
      placer_.Block(kNorthArrow);
    }
    DrawGrid(scene_, projection_, svg_);
    svg_.Open("lines", "clip-path=\"url(#frame)\"");
    DrawPaths();
    DrawChainages();
    DrawInsets();
    svg_.Close();
    DrawPoints();
    DrawEnlarged();
    const auto unnamed = DrawLabels();
    if (unnamed > 0) {
      remarks.push_back(fmt::format("{} {} left out for lack of room", unnamed,
                                    unnamed == 1 ? "label" : "labels"));
    }
    DrawBlock(scene_, projection_, enlargement_, heading, remarks, svg_);
  }

 private:
  // Areas first, so that their fill covers nothing.
  void DrawPaths() {
    for (const auto stroke : {Stroke::kBoundary, Stroke::kSight, Stroke::kConstruction,
                              Stroke::kOffset, Stroke::kReference}) {
      svg_.Open(ClassOf(stroke));
      for (const auto& path : scene_.paths) {
        if (path.stroke == stroke) {
          DrawPath(path);
        }
      }
      svg_.Close();
    }
  }

  void DrawPath(const ScenePath& path) {
    std::vector<PaperSpot> vertices;
    for (const auto& vertex : path.vertices) {
      vertices.push_back(projection_.On(vertex));
    }
    svg_.Polyline(ClassOf(path.stroke), vertices);
    for (std::size_t i = 1; i < vertices.size() && path.stroke != Stroke::kSight; ++i) {
      placer_.Avoid(vertices[i - 1], vertices[i]);
    }
  }

  // A tick square to the line at every round chainage, with its value.
  void DrawChainages() {
    for (const auto& chainage : scene_.chainages) {
      const double interval =
          RoundUp(std::max(projection_.Metres(kTickSpacing), chainage.length / kMostTicks));
      for (int i = 0; i * interval <= chainage.length; ++i) {
        DrawTick(chainage, i * interval);
      }
    }
  }

  void DrawTick(const Chainage& chainage, double along) {
    const auto last = chainage.vertices.size() - 1;
    const double place = along / chainage.length * static_cast<double>(last);
    const auto segment = std::min(static_cast<std::size_t>(place), last - 1);
    const double part = place - static_cast<double>(segment);
    const Spot& from = chainage.vertices[segment];
    const Spot& to = chainage.vertices[segment + 1];
    const Spot way{to.right - from.right, to.up - from.up};
    const double length = std::hypot(way.right, way.up);
    const Spot spot{from.right + part * way.right, from.up + part * way.up};
    if (length == 0.0 || !IsLabelledHere(spot)) {
      return;
    }
    const PaperSpot at = projection_.On(spot);
    const PaperSpot across{way.up / length * kTick, way.right / length * kTick};
    svg_.Line("reference", {at.fromLeft - across.fromLeft, at.fromTop - across.fromTop},
              {at.fromLeft + across.fromLeft, at.fromTop + across.fromTop});
    ticks_.push_back({at, kTick, {fmt::format("{}", along)}, false});
  }

  void DrawEnlarged() {
    if (!enlargement_.Visible()) {
      return;
    }
    for (const auto& residual : scene_.residuals) {
      const auto at = projection_.On(residual.at);
      if (!kFrame.Holds(at)) {
        continue;
      }
      const auto end = enlargement_.End(at, residual.size);
      svg_.Line("residual", at, end);
      placer_.Avoid(at, end);
    }
    for (const auto& deviation : scene_.deviations) {
      const auto at = projection_.On(deviation.at);
      for (const Spot half : {Spot{deviation.size.right, 0.0}, Spot{0.0, deviation.size.up}}) {
        svg_.Line("deviation", enlargement_.End(at, {-half.right, -half.up}),
                  enlargement_.End(at, half));
      }
    }
  }

  void DrawPoints() {
    svg_.Open("points");
    for (const auto& point : scene_.points) {
      const auto at = projection_.On(point.at);
      if (!kFrame.Holds(at)) {
        continue;
      }
      svg_.Symbol(SymbolOf(point.role), at, point.name);
      placer_.Block(Around(at, HalfSize(point.role) + kSymbolGap));
    }
    svg_.Close();
  }

  // What another sheet shows larger, with that sheet's name.
  void DrawInsets() {
    for (const auto& inset : scene_.insets) {
      const auto& extent = inset.extent;
      const auto from = projection_.On({extent.left, extent.top});
      const auto to = projection_.On({extent.right, extent.bottom});
      svg_.Polyline("inset",
                    {from, {to.fromLeft, from.fromTop}, to, {from.fromLeft, to.fromTop}, from});
      captions_.push_back({from, 0.0, {inset.name}, false});
    }
  }

  // Names before areas and lines, these before ticks, which may go without.
  std::size_t DrawLabels() {
    svg_.Open("labels");
    std::size_t missing = 0;
    for (const auto role : {Role::kStation, Role::kControl, Role::kComputed, Role::kGiven}) {
      for (const auto& point : scene_.points) {
        if (point.role == role && IsNamedHere(point)) {
          missing += DrawLabel("label", LabelOf(point)) ? 0U : 1U;
        }
      }
    }
    for (const auto& caption : scene_.captions) {
      if (IsLabelledHere(caption.at)) {
        captions_.push_back({projection_.On(caption.at), 0.0, {caption.text}, true});
      }
    }
    for (const auto& caption : captions_) {
      missing += DrawLabel("caption", caption) ? 0U : 1U;
    }
    for (const auto& tick : ticks_) {
      DrawLabel("tick", tick);
    }
    svg_.Close();
    return missing;
  }

  bool IsNamedHere(const ScenePoint& point) const {
    return !(point.name.empty() && point.details.empty()) && IsLabelledHere(point.at);
  }

  bool IsLabelledHere(Spot spot) const {
    return kFrame.Holds(projection_.On(spot)) &&
           std::ranges::none_of(scene_.insets,
                                [spot](const Inset& inset) { return inset.extent.Holds(spot); });
  }

  Label LabelOf(const ScenePoint& point) const {
    Label label{projection_.On(point.at), HalfSize(point.role), point.details, false};
    if (!point.name.empty()) {
      label.lines.insert(label.lines.begin(), point.name);
    }
    return label;
  }

  bool DrawLabel(std::string_view className, const Label& label) {
    const auto placed = placer_.Place(label);
    if (!placed) {
      return false;
    }
    if (placed->leaderFrom) {
      svg_.Line("leader", *placed->leaderFrom, placed->box.Nearest(*placed->leaderFrom));
    }
    constexpr double kBase = 0.8 * kLabelLeading;
    double base = placed->box.top + kBase;
    for (const auto& line : placed->lines) {
      svg_.Text(className, {placed->box.left, base}, line);
      base += kLabelLeading;
    }
    return true;
  }

  const Scene& scene_;
  SvgWriter& svg_;
  Projection projection_;
  Enlargement enlargement_;
  LabelPlacer placer_;
  std::vector<Label> captions_;
  std::vector<Label> ticks_;
};

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

}  // namespace

std::string SvgDrawing(const Job& job, const std::vector<Outcome>& outcomes) {
  auto scenes = ScenesOf(job, outcomes);
  if (scenes.empty()) {
    scenes.emplace_back().title = "No step of this job has a place to show";
  }
  const auto heading = job.title.empty() ? job.file : job.title;
  const double height = kSheetHeight * static_cast<double>(scenes.size());
  SvgWriter svg;
  svg.Raw(
      fmt::format("<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"{0}mm\" height=\"{1}mm\" "
                  "viewBox=\"0 0 {0} {1}\">\n<title>{2}</title>\n",
                  kSheetWidth, height, XmlText(heading)));
  svg.Raw(kSheetStyle);
  svg.Raw(
      fmt::format("<clipPath id=\"frame\"><rect x=\"{}\" y=\"{}\" width=\"{}\" "
                  "height=\"{}\"/></clipPath>\n",
                  kFrame.left, kFrame.top, kFrame.right - kFrame.left, kFrame.bottom - kFrame.top));
  svg.Raw(fmt::format("<rect class=\"paper\" width=\"{}\" height=\"{}\"/>\n", kSheetWidth, height));
  for (std::size_t i = 0; i < scenes.size(); ++i) {
    svg.Open("sheet",
             fmt::format("transform=\"translate(0 {})\"", kSheetHeight * static_cast<double>(i)));
    SheetDrawer(scenes[i], svg).Draw(heading, RemarksOf(job, outcomes));
    svg.Close();
  }
  svg.Raw("</svg>\n");
  return svg.Take();
}

}  // namespace kavo_app
