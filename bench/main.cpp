#include <benchmark/benchmark.h>

#include <QApplication>
#include <cstdio>
#include <exception>
#include <fstream>

#include "bench/figures/page.h"
#include "bench/subjects.h"
#include "ui/style/colours.h"
#include "ui/style/face_style.h"

// touch_bench [options of the benchmark library] [FILE]: runs the benchmarks, and writes their
// figures to FILE.
int main(int argc, char** argv) try {
  using namespace touch::bench;
  benchmark::Initialize(&argc, argv);
  const QApplication app(argc, argv);
  QApplication::setStyle(new touch::FaceStyle);  // the application owns it
  touch::applyTheme(false);
  registerStart();
  registerDecoder();
  registerDriver();
  registerCanvas();
  registerDrawingFile();
  registerMeasure();
  registerFleet();
  registerExchange();
  registerRawDrawing();
  registerRecording();
  registerFlood();
  registerRest();
  Figures figures;
  benchmark::RunSpecifiedBenchmarks(&figures);
  const std::string chapter = figuresChapter(bars(), figures);
  if (argc > 1 && !(std::ofstream(argv[1]) << chapter)) {
    std::fprintf(stderr, "touch_bench: %s cannot be written\n", argv[1]);
    return 1;
  }
  return figures.failed() ? 1 : 0;
} catch (const std::exception& error) {
  std::fprintf(stderr, "touch_bench: %s\n", error.what());
  return 1;
}
