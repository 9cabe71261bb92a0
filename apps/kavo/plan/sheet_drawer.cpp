#include "plan/sheet_drawer.hpp"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>

#include "plan/sheet_frame.hpp"
#include "plan/sheet_style.hpp"

namespace kavo_app {
namespace {

constexpr double kTickSpacing = 20.0;  // of a chainage, at least, millimetres
constexpr double kMostTicks = 1e4;     // of one line
constexpr double kTick = 1.2;          // half a tick, millimetres
constexpr double kInsetBorder = 1.5;   // around an inset's points, millimetres

// Lines are written a little farther than the frame, where they are clipped, and no farther: far
// off, viewers lose their way.
PaperBox Beyond(const PaperBox& frame) {
  constexpr double kFarther = 5.0;  // millimetres
  return {frame.left - kFarther, frame.top - kFarther, frame.right + kFarther,
          frame.bottom + kFarther};
}

}  // namespace

void SheetDrawer::Draw(const std::string& heading, std::vector<std::string> remarks,
                       SvgWriter& svg) {
  if (scene_.northUp) {
    labels_.Block(NorthArrowOn(Paper()));
  }
  DrawGrid(scene_, projection_, svg);
  svg.Open("lines", Paper().width > Paper().height ? "clip-path=\"url(#landscape)\""
                                                   : "clip-path=\"url(#portrait)\"");
  DrawPaths(svg);
  DrawChainages(svg);
  BlockSymbols();
  DrawInsets(svg);
  svg.Close();
  DrawPoints(svg);
  if (enlargement_.Visible()) {
    DrawResiduals(svg);
    DrawDeviations(svg);
  }
  if (const auto missing = labels_.Draw(svg); missing > 0) {
    remarks.push_back(
        fmt::format("{} {} left out for lack of room", missing, missing == 1 ? "label" : "labels"));
  }
  if (view_.undetailed > 0) {
    remarks.push_back(fmt::format("{} more crowded {} without a detail, to keep the sheets few",
                                  view_.undetailed, view_.undetailed == 1 ? "place" : "places"));
  }
  svg.Open("block");
  DrawTitle(view_, Paper(), heading, remarks, svg);
  DrawLegend(drawn_, Paper(), enlargement_, svg);
  DrawScaleAndNorth(scene_, projection_, svg);
  svg.Close();
}

// Areas first, so that their fill covers nothing.
void SheetDrawer::DrawPaths(SvgWriter& svg) {
  for (const auto stroke : {Stroke::kBoundary, Stroke::kSight, Stroke::kConstruction,
                            Stroke::kOffset, Stroke::kReference}) {
    svg.Open(ClassOf(stroke));
    for (const auto& path : scene_.paths) {
      if (path.stroke == stroke) {
        DrawPath(path, svg);
      }
    }
    svg.Close();
  }
}

void SheetDrawer::DrawPath(const ScenePath& path, SvgWriter& svg) {
  std::vector<PaperSpot> vertices;
  for (const auto& vertex : path.vertices) {
    vertices.push_back(projection_.On(vertex));
  }
  if (path.stroke == Stroke::kBoundary) {
    svg.Polyline(ClassOf(path.stroke), AreaIn(Beyond(Paper().frame), vertices));
  } else {
    for (const auto& piece : PiecesIn(Beyond(Paper().frame), vertices)) {
      svg.Polyline(ClassOf(path.stroke), piece);
    }
  }
  if (Crosses(vertices, Paper().frame)) {
    drawn_.lines.insert(path.stroke);
  }
  for (std::size_t i = 1; i < vertices.size() && path.stroke != Stroke::kSight; ++i) {
    labels_.Avoid(vertices[i - 1], vertices[i]);
  }
}

// A tick square to the line at every round chainage, with its value.
void SheetDrawer::DrawChainages(SvgWriter& svg) {
  for (const auto& chainage : scene_.chainages) {
    const double interval =
        RoundUp(std::max(projection_.Metres(kTickSpacing), chainage.length / kMostTicks));
    for (int i = 0; i * interval <= chainage.length; ++i) {
      DrawTick(chainage, i * interval, svg);
    }
  }
}

void SheetDrawer::DrawTick(const Chainage& chainage, double along, SvgWriter& svg) {
  const auto last = chainage.vertices.size() - 1;
  const double place = along / chainage.length * static_cast<double>(last);
  const auto segment = std::min(static_cast<std::size_t>(place), last - 1);
  const double part = place - static_cast<double>(segment);
  const Spot& from = chainage.vertices[segment];
  const Spot& to = chainage.vertices[segment + 1];
  const Spot way{to.right - from.right, to.up - from.up};
  const double length = std::hypot(way.right, way.up);
  const Spot spot{from.right + part * way.right, from.up + part * way.up};
  if (length == 0.0 || !labels_.IsLabelledHere(spot)) {
    return;
  }
  const PaperSpot at = projection_.On(spot);
  const PaperSpot across{way.up / length * kTick, way.right / length * kTick};
  svg.Line("reference", {at.fromLeft - across.fromLeft, at.fromTop - across.fromTop},
           {at.fromLeft + across.fromLeft, at.fromTop + across.fromTop});
  drawn_.ticks = true;
  labels_.AddTick(at, kTick, fmt::format("{}", along));
}

// What another sheet shows larger, with that sheet's name.
void SheetDrawer::DrawInsets(SvgWriter& svg) {
  for (const auto& inset : view_.insets) {
    const auto from = projection_.On({inset.extent.left, inset.extent.top});
    const auto to = projection_.On({inset.extent.right, inset.extent.bottom});
    const double border = inset.isTile ? 0.0 : kInsetBorder;
    const PaperBox box{from.fromLeft - border, from.fromTop - border, to.fromLeft + border,
                       to.fromTop + border};
    svg.Box("inset", box);
    labels_.PlaceInsetName(box, inset.name, inset.isTile);
  }
}

// Where another sheet shows the points larger, there is only room for dots.
bool SheetDrawer::IsDot(const ScenePoint& point) const {
  return point.role < Role::kControl && !labels_.IsLabelledHere(point.at);
}

// No text lies on a symbol, that of an inset as little as others.
void SheetDrawer::BlockSymbols() {
  for (const auto& point : scene_.points) {
    if (projection_.Shows(point.at) && !IsDot(point)) {
      labels_.BlockSymbol(projection_.On(point.at), HalfSize(point.role));
    }
  }
}

// What weighs more over what weighs less.
void SheetDrawer::DrawPoints(SvgWriter& svg) {
  std::vector<const ScenePoint*> points;
  for (const auto& point : scene_.points) {
    if (projection_.Shows(point.at)) {
      points.push_back(&point);
    }
  }
  std::ranges::stable_sort(points, {}, [](const ScenePoint* point) { return point->role; });
  svg.Open("points");
  for (const auto* point : points) {
    DrawPoint(*point, svg);
  }
  svg.Close();
}

// A dot is left out under the name of the sheet that shows the point larger.
void SheetDrawer::DrawPoint(const ScenePoint& point, SvgWriter& svg) {
  const auto at = projection_.On(point.at);
  if (!IsDot(point)) {
    svg.Symbol(SymbolOf(point.role), at, point.name);
    drawn_.symbols.insert(point.role);
  } else if (!labels_.IsUnderName(Around(at, kDotHalfSize))) {
    svg.Symbol(kDot, at, point.name);
    drawn_.dots = true;
    labels_.BlockSymbol(at, kDotHalfSize);
  }
}

void SheetDrawer::DrawResiduals(SvgWriter& svg) {
  for (const auto& residual : scene_.residuals) {
    const auto at = projection_.On(residual.at);
    if (Paper().frame.Holds(at)) {
      const auto end = enlargement_.End(at, residual.size);
      svg.Line("residual", at, end);
      drawn_.residuals = true;
      labels_.Avoid(at, end);
    }
  }
}

void SheetDrawer::DrawDeviations(SvgWriter& svg) {
  for (const auto& deviation : scene_.deviations) {
    const auto at = projection_.On(deviation.at);
    for (const Spot half : {Spot{deviation.size.right, 0.0}, Spot{0.0, deviation.size.up}}) {
      if (Paper().frame.Holds(at)) {
        svg.Line("deviation", enlargement_.End(at, {-half.right, -half.up}),
                 enlargement_.End(at, half));
        drawn_.deviations = true;
      }
    }
  }
}

}  // namespace kavo_app
