#include "serial/recording.h"

#include "serial/recording_ports.h"
#include "tests/serial/debugger_bench.h"
#include "tests/support/small_disk.h"
#include "tests/support/temporary_folder.h"

namespace touch {
namespace {

using namespace std::chrono_literals;
using test::Bytes;
using test::bytesOf;

class RecordingTest : public test::DebuggerBench {
 protected:
  test::TemporaryFolder folder;
  std::filesystem::path file = folder.path() / "a.rec";
};

TEST_F(RecordingTest, HoldsEverythingThatPassedThePortAndPlaysItAgain) {
  ASSERT_EQ(port.take(), std::nullopt);
  RecordedPort recorded(serial, clock);
  recorded.write(bytesOf("before"));
  terminal().send(Bytes{0x20});
  ASSERT_EQ(recorded.startRecording(file), std::nullopt);
  EXPECT_EQ(recorded.readAll(), Bytes{0x20}) << "come before, and of the recording no part";
  clock.delay(1500ms);
  recorded.write(bytesOf("\x01UT\r"));
  terminal().send(Bytes{0x00, 0xFF});
  EXPECT_EQ(recorded.readAll(), (Bytes{0x00, 0xFF}));
  EXPECT_EQ(recorded.readAll(), Bytes());
  clock.delay(20ms);
  terminal().send(Bytes{0x0A});
  recorded.clearInput();
  EXPECT_EQ(recorded.stopRecording(), std::nullopt);
  EXPECT_EQ(folder.read("a.rec"),
            "touch recording 1\n1.500000 > 01 55 54 0D\n1.500000 < 00 FF\n1.520000 < 0A\n");

  const auto read = readRecording(file);
  ASSERT_TRUE(read);
  ReplayPort replay(*read, clock);
  EXPECT_EQ(replay.readAll(), Bytes());
  for (int round = 0; round < 2; ++round) {
    replay.open();
    clock.delay(1499ms);
    EXPECT_EQ(replay.inBufferCount(), 0u);
    clock.delay(1ms);
    EXPECT_EQ(replay.inBufferCount(), 2u);
    EXPECT_EQ(replay.readAll(), (Bytes{0x00, 0xFF}));
    EXPECT_FALSE(replay.isFinished());
    clock.delay(100ms);
    EXPECT_EQ(replay.readAll(), Bytes{0x0A});
    EXPECT_TRUE(replay.isFinished());
    replay.close();
  }
}

TEST_F(RecordingTest, TakesWhatComesWhenItComesAlsoWhileNobodyReads) {
  ASSERT_EQ(port.take(), std::nullopt);
  RecordedPort recorded(serial, clock);
  ASSERT_EQ(recorded.startRecording(file), std::nullopt);
  const Bytes flood(4000, 0x55);  // nearly what a line holds
  for (int i = 0; i < 3; ++i) {
    clock.after(std::chrono::milliseconds(100 * i + 99), [&] { terminal().send(flood); });
    clock.after(std::chrono::milliseconds(100 * i + 102), [&, i] {
      EXPECT_EQ(recorded.inBufferCount(), flood.size() * static_cast<std::size_t>(i + 1));
    });
  }
  clock.delay(400ms);
  EXPECT_EQ(recorded.readAll().size(), 3 * flood.size()) << "the reader gets it as well";
  terminal().send(Bytes{0x41});
  recorded.close();
  EXPECT_EQ(recorded.stopRecording(), std::nullopt);
  const auto read = readRecording(file);
  ASSERT_TRUE(read);
  ASSERT_EQ(read->size(), 4u);
  for (std::size_t i = 0; i < 3; ++i) {
    EXPECT_EQ(read->at(i).time, std::chrono::milliseconds(100 * i + 100));
    EXPECT_EQ(read->at(i).bytes, flood);
  }
  EXPECT_EQ(read->back().bytes, Bytes{0x41});
}

TEST_F(RecordingTest, IsReadBackAsItWasWritten) {
  Bytes all(256);
  for (std::size_t i = 0; i < all.size(); ++i)
    all[i] = static_cast<std::uint8_t>(i);
  const std::vector<Transfer> transfers = {{0us, Direction::toController, {0x01}},
                                           {1us, Direction::fromController, all},
                                           {999'999'999'999us, Direction::fromController, {0xFF}}};
  std::string text = "\xEF\xBB\xBF# made by hand\r\n\r\ntouch recording 1 # first\r\n";
  for (const Transfer& transfer : transfers)
    text += recordingLine(transfer) + "  # why\r\n\r\n";
  folder.write("a.rec", text);
  const auto read = readRecording(file);
  ASSERT_TRUE(read) << read.error().describe();
  EXPECT_EQ(*read, transfers);
}

TEST_F(RecordingTest, NamesTheLineThatIsWrong) {
  const std::pair<const char*, const char*> cases[] = {
      {"1 < 00", "a time in seconds with six decimals, such as 0.104250, found \"1\""},
      {"-1.000000 < 00",
       "a time in seconds with six decimals, such as 0.104250, found \"-1.000000\""},
      {"1.-00001 < 00",
       "a time in seconds with six decimals, such as 0.104250, found \"1.-00001\""},
      {"1000000.000000 < 00",
       "a time in seconds with six decimals, such as 0.104250, found \"1000000.000000\""},
      {"0.400000 < 00", "a time not before the one above, found \"0.400000\""},
      {"1.000000 = 00", "> for bytes to the controller or < for bytes from it, found \"=\""},
      {"1.000000", "> for bytes to the controller or < for bytes from it, found an empty line"},
      {"1.000000 <", "bytes of two hexadecimal digits with a blank between, found an empty line"},
      {"1.000000 < 0", "bytes of two hexadecimal digits with a blank between, found \"0\""},
      {"1.000000 < 00  01",
       "bytes of two hexadecimal digits with a blank between, found an empty line"},
      {"1.000000 < 0G", "bytes of two hexadecimal digits with a blank between, found \"0G\""},
  };
  for (const auto& [line, problem] : cases) {
    folder.write("a.rec", std::string("touch recording 1\n0.500000 < 00\n\n") + line + "\n");
    const auto read = readRecording(file);
    ASSERT_FALSE(read) << line;
    EXPECT_EQ(read.error().describe(), file.string() + ", line 4: expected " + problem);
  }
  for (const auto& [text, place] :
       {std::pair{"", ", line 1: "}, std::pair{"\ntouch recording 2\n", ", line 2: "}}) {
    folder.write("a.rec", text);
    const auto read = readRecording(file);
    ASSERT_FALSE(read) << text;
    EXPECT_NE(read.error().describe().find(place), std::string::npos) << text;
  }
  EXPECT_FALSE(readRecording(folder.path() / "absent.rec"));
}

TEST_F(RecordingTest, EndsItselfWhenTheDiskIsFull) {
  Recorder recorder;
  EXPECT_TRUE(recorder.start(folder.path() / "no" / "such.rec", clock.now()));
  EXPECT_FALSE(recorder.isOn());
  {
    const test::SmallDisk disk(20);
    ASSERT_EQ(recorder.start(file, clock.now()), std::nullopt);
    recorder.add(clock.now(), Direction::toController, bytesOf("x"));
  }
  EXPECT_FALSE(recorder.isOn());
  EXPECT_TRUE(recorder.stop());
  if (!std::filesystem::exists("/dev/full")) GTEST_SKIP() << "no full disk to be had here";
  EXPECT_TRUE(recorder.start("/dev/full", clock.now())) << "although nothing has come in yet";
  EXPECT_FALSE(recorder.isOn());
  EXPECT_FALSE(recorder.stop());
}

}  // namespace
}  // namespace touch
