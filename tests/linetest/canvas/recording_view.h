#pragma once

#include "linetest/canvas/canvas.h"
#include "tests/linetest/canvas/recording_surface.h"

namespace touch::test {

/// Remembers what is shown.
class RecordingView final : public CanvasView {
 public:
  RecordingSurface drawing;
  std::map<CanvasPanel, TwipsPoint> corners;
  Lines results;
  ResultsSheet sheet;
  std::string banner;
  std::string caption;
  std::string escape;
  fs::path chosen;
  int left = 0;

  Surface& surface() override { return drawing; }
  TwipsSize sizeOf(CanvasPanel) const override { return {3000, 1000}; }
  void place(CanvasPanel panel, TwipsPoint corner) override { corners[panel] = corner; }
  std::vector<TwipsRect> tools() const override { return {}; }
  void show(CanvasPanel, bool) override {}
  void setHelp(std::span<const std::string>) override {}
  void setBanner(std::string_view text) override { banner = text; }
  void setCaption(std::string_view text) override { caption = text; }
  void setEscape(std::string_view hint) override { escape = hint; }
  void setResultsList(std::span<const std::string> lines) override {
    results.assign(lines.begin(), lines.end());
  }
  void setResultsTable(const ResultsSheet& table) override { sheet = table; }
  void showTolerance(Percent) override {}
  fs::path askSaveName(const fs::path&, std::string_view) override { return chosen; }
  fs::path askOpenName(const fs::path&, std::string_view) override { return chosen; }
  void leave() override { ++left; }
};

}  // namespace touch::test
