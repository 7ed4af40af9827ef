#include <benchmark/benchmark.h>

#include <chrono>
#include <cstdint>
#include <cstdio>
#include <fstream>
#include <memory>
#include <span>
#include <string>
#include <vector>

#include "bench/subjects.h"
#include "bench/tools/rounds.h"
#include "bench/tools/scratch_folder.h"
#include "serial/recording/recording.h"
#include "serial/recording/recording_ports.h"
#include "support/files/system_file.h"
#include "support/system_clock.h"

namespace touch::bench {

namespace {

using namespace std::chrono_literals;

constexpr std::size_t packet = 5;
constexpr std::int64_t reportsOfADay = 12'000'000;
constexpr std::chrono::microseconds aDay = 24h;

/// A recording of a day in which a report came every 7.2 ms. It is made when it is asked for first.
class DayRecording {
 public:
  const std::filesystem::path& file() {
    if (!made_) write();
    return file_;
  }

 private:
  void write() {
    constexpr std::chrono::microseconds interval = aDay / reportsOfADay;
    const auto round = rounds();
    std::ofstream stream(file_);
    stream << "touch recording 1\n";
    for (std::int64_t i = 0; i < reportsOfADay; ++i) {
      const std::size_t place = static_cast<std::size_t>(i) * packet % round.size();
      const auto report = std::span(round).subspan(place, packet);
      stream << recordingLine({interval * i, Direction::fromController,
                               std::vector<std::uint8_t>(report.begin(), report.end())})
             << '\n';
    }
    made_ = stream.flush().good();
  }

  ScratchFolder folder_;
  std::filesystem::path file_ = folder_.path() / "day.txt";
  bool made_ = false;
};

/// From opening the file to the first bytes of its last second.
void openAndSeek(benchmark::State& state, const std::filesystem::path& file) {
  const SystemClock clock;
  for (auto _ : state) {
    auto recording = RecordingFile::open(file);
    if (!recording) return state.SkipWithError(recording.error().describe().c_str());
    ReplayPort replay(std::move(*recording), clock);
    if (!replay.open()) return state.SkipWithError("the replay does not open");
    replay.pause(true);
    replay.seek(replay.length() - 1s);
    replay.step();
    if (replay.readAll().size() != packet) return state.SkipWithError("no bytes at its end");
  }
}

/// The bytes of the file are read and counted.
void readPlainly(benchmark::State& state, const std::filesystem::path& file) {
  std::vector<char> piece(std::size_t{64} << 10U);
  for (auto _ : state) {
    const File stream = openForReading(file);
    if (!stream) return state.SkipWithError("the file cannot be read");
    std::size_t bytes = 0;
    while (const std::size_t read = std::fread(piece.data(), 1, piece.size(), stream.get()))
      bytes += read;
    benchmark::DoNotOptimize(bytes);
  }
}

}  // namespace

void registerRecording() {
  const auto day = std::make_shared<DayRecording>();
  const auto add = [day](const char* name,
                         void (*run)(benchmark::State&, const std::filesystem::path&)) {
    benchmark::RegisterBenchmark(name, [day, run](benchmark::State& state) {
      run(state, day->file());
    })->UseRealTime();
  };
  add("recording/open and seek", openAndSeek);
  add("recording/plain", readPlainly);
}

}  // namespace touch::bench
