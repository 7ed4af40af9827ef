#include <benchmark/benchmark.h>

#include <array>
#include <cstdio>
#include <cstdlib>
#include <random>

#include "bench/subjects.h"
#include "bench/tools/scratch_folder.h"
#include "linetest/files/drawing_file.h"

namespace touch::bench {

namespace {

constexpr int strokeCount = 1000;
constexpr std::size_t samplesInStroke = 3000;

/// Half of the strokes lie on whole pixels, as those of a mouse do, half between them, as those of
/// a touch panel.
Drawing makeDrawing() {
  std::mt19937 random(1);
  const auto coordinate = [&random](int pixels, bool whole) {
    const float pixel = static_cast<float>(random() % static_cast<unsigned>(pixels));
    const float part = whole ? 0.0F : static_cast<float>(random() % 16384) / 16384.0F;
    return (pixel + part) * twipsPerPixel;
  };
  Drawing drawing;
  for (int i = 0; i < strokeCount; ++i) {
    Stroke stroke;
    for (std::size_t sample = 0; sample < samplesInStroke; ++sample)
      stroke.samples.push_back({coordinate(1920, i % 2 == 0), coordinate(1080, i % 2 == 0)});
    drawing.push_back(std::move(stroke));
  }
  return drawing;
}

struct Material {
  ScratchFolder folder;
  Drawing drawing = makeDrawing();
  std::string numbers = drawingNumbers();

  std::filesystem::path file() const { return folder.path() / "drawing.fdw"; }

 private:
  /// The texts of all coordinates with a blank behind each.
  std::string drawingNumbers() const {
    std::string text;
    std::array<char, 32> buffer;
    for (const Stroke& stroke : drawing)
      for (const TwipsPoint sample : stroke.samples)
        for (const float value : {sample.x, sample.y}) {
          std::snprintf(buffer.data(), buffer.size(), "%.9g ", static_cast<double>(value));
          text += buffer.data();
        }
    return text;
  }
};

// A tenth of a gigabyte, and only made when it is asked for.
const Material& material() {
  static const Material material;
  return material;
}

void write(benchmark::State& state) {
  const Material& from = material();
  for (auto _ : state)
    if (const auto written = writeDrawing(from.file(), from.drawing); !written) {
      return state.SkipWithError(written.error().describe().c_str());
    }
}

void read(benchmark::State& state) {
  const Material& from = material();
  if (const auto written = writeDrawing(from.file(), from.drawing); !written) {
    return state.SkipWithError(written.error().describe().c_str());
  }
  for (auto _ : state) {
    const auto drawing = readDrawing(from.file());
    if (!drawing) return state.SkipWithError(drawing.error().describe().c_str());
    state.PauseTiming();
    if (*drawing != from.drawing) return state.SkipWithError("another drawing was read");
    state.ResumeTiming();
  }
}

// What it takes to get the same number back.
void formatInC(benchmark::State& state) {
  const Material& from = material();
  std::array<char, 32> buffer;
  for (auto _ : state)
    for (const Stroke& stroke : from.drawing)
      for (const TwipsPoint sample : stroke.samples)
        for (const float value : {sample.x, sample.y}) {
          std::snprintf(buffer.data(), buffer.size(), "%.9g", static_cast<double>(value));
          benchmark::DoNotOptimize(buffer);
        }
}

void parseInC(benchmark::State& state) {
  const Material& from = material();
  for (auto _ : state) {
    const char* at = from.numbers.c_str();
    char* end = nullptr;
    for (float value = std::strtof(at, &end); end != at; value = std::strtof(at, &end)) {
      benchmark::DoNotOptimize(value);
      at = end;
    }
  }
}

}  // namespace

void registerDrawingFile() {
  const auto add = [](const char* name, void (*function)(benchmark::State&)) {
    benchmark::RegisterBenchmark(name, function)->Iterations(1);
  };
  add("drawing file/write", write);
  add("drawing file/snprintf", formatInC);
  add("drawing file/read", read);
  add("drawing file/strtof", parseInC);
}

}  // namespace touch::bench
