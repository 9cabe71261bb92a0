// One sheet of a drawing.
#pragma once

#include <string>
#include <vector>

#include "plan/legend.hpp"
#include "plan/sheet_labels.hpp"

namespace kavo_app {

class SheetDrawer {
 public:
  /// @param view  what is drawn; it must outlive this.
  explicit SheetDrawer(const View& view)
      : view_(view),
        scene_(*view.scene),
        projection_(view.window),
        enlargement_(scene_),
        labels_(view, projection_) {}
  SheetDrawer(const SheetDrawer&) = delete;
  SheetDrawer& operator=(const SheetDrawer&) = delete;

  const Sheet& Paper() const { return projection_.Paper(); }

  /// Draws all of the sheet; once.
  /// @param heading  the job's title; `remarks` what stands under the view's title.
  void Draw(const std::string& heading, std::vector<std::string> remarks, SvgWriter& svg);

 private:
  void DrawPaths(SvgWriter& svg);
  void DrawPath(const ScenePath& path, SvgWriter& svg);
  void DrawChainages(SvgWriter& svg);
  void DrawTick(const Chainage& chainage, double along, SvgWriter& svg);
  void DrawInsets(SvgWriter& svg);
  bool IsDot(const ScenePoint& point) const;
  void BlockSymbols();
  void DrawPoints(SvgWriter& svg);
  void DrawPoint(const ScenePoint& point, SvgWriter& svg);
  void DrawResiduals(SvgWriter& svg);
  void DrawDeviations(SvgWriter& svg);

  const View& view_;
  const Scene& scene_;
  const Projection projection_;
  const Enlargement enlargement_;
  SheetLabels labels_;
  Drawn drawn_;
};

}  // namespace kavo_app
