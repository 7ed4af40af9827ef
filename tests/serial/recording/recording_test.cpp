#include "serial/recording/recording.h"

#include <sys/stat.h>
#include <unistd.h>

#include "reports/report_splitter.h"
#include "serial/recording/recorded_answers.h"
#include "tests/doubles/small_disk.h"
#include "tests/doubles/temporary_folder.h"
#include "tests/serial/debugger/debugger_bench.h"

namespace touch::test {
namespace {

class RecordingTest : public DebuggerBench {
 protected:
  TemporaryFolder folder;
  fs::path file = folder.path() / "a.rec";
};

TEST_F(RecordingTest, HoldsEverythingThatPassedThePortAndPlaysItAgain) {
  ASSERT_EQ(whyNot(port.take()), "");
  RecordedPort recorded(serial, clock);
  recorded.write(bytesOf("before"));
  serial.received = Bytes{0x20};
  ASSERT_EQ(whyNot(recorded.startRecording(file)), "");
  EXPECT_EQ(recorded.readAll(), Bytes{0x20}) << "come before, and of the recording no part";
  clock.delay(1500ms);
  recorded.write(bytesOf("\x01UT\r"));
  serial.received = Bytes{0x00, 0xFF};
  EXPECT_EQ(recorded.readAll(), (Bytes{0x00, 0xFF}));
  clock.after(19ms, [this] { serial.received = Bytes{0x0A}; });
  clock.delay(100ms);
  EXPECT_EQ(recorded.inBufferCount(), 1u);
  recorded.clearInput();
  recorded.setSettings("9600,n,7,2");
  serial.received = Bytes{0x0B};
  recorded.close();
  EXPECT_EQ(whyNot(recorded.stopRecording()), "");
  EXPECT_THAT(
      folder.read("a.rec"),
      MatchesRegex("touch recording 1\n# Started: [^\n]+\n# Times: [^\n]+\n1.500000 > 01 55 54 0D\n"
                   "1.500000 < 00 FF\n1.520000 < 0A\n# 1.600000 Line: 9600,n,7,2\n"
                   "1.600000 < 0B\n"))
      << "what came while nobody read stands at its time";

  ReplayPort played(std::move(*RecordingFile::open(file)), clock);
  for (int round = 0; round < 2; ++round) {
    played.open();
    EXPECT_EQ(played.inBufferCount(), 2u) << "the silence before it is left out";
    EXPECT_EQ(played.readAll(), (Bytes{0x00, 0xFF}));
    clock.delay(19ms);
    EXPECT_EQ(played.inBufferCount(), 0u);
    EXPECT_FALSE(played.isFinished());
    clock.delay(81ms);
    EXPECT_EQ(played.readAll(), (Bytes{0x0A, 0x0B}));
    EXPECT_TRUE(played.isFinished());
    played.close();
  }
}

TEST_F(RecordingTest, HasTheTimesThatThePortTells) {
  ASSERT_EQ(whyNot(port.take()), "");
  RecordedPort recorded(serial, clock);
  clock.delay(5s);
  recorded.write(bytesOf("before"));
  ASSERT_EQ(whyNot(recorded.startRecording(folder.path() / "other.rec")), "");
  clock.delay(5s);
  recorded.write(bytesOf("before"));
  ASSERT_EQ(whyNot(recorded.startRecording(file)), "") << "its times begin anew";
  const auto begin = clock.now();
  // Nothing is read meanwhile.
  clock.stand(100ms, [](auto) { return false; });
  serial.received = Bytes{0x0A, 0x0B, 0x0C, 0x0D};
  // The second of them came close behind the first, and one goes back in time.
  serial.parts = {{begin + 10ms, 1}, {begin + 11ms, 1}, {begin + 40ms, 1}, {begin + 30ms, 1}};
  recorded.write(bytesOf("Z"));
  EXPECT_EQ(recorded.readAll().size(), 4u);
  EXPECT_EQ(whyNot(recorded.stopRecording()), "");
  EXPECT_THAT(folder.read("a.rec"), testing::HasSubstr("0.011000 < 0A 0B\n0.030000 < 0C 0D\n"));
}

TEST_F(RecordingTest, LosesNothingOfAFloodToASlowReader) {
  ASSERT_EQ(whyNot(port.take()), "");
  RecordedPort recorded(serial, clock);
  Bytes sent;
  Bytes read;
  const auto readOn = [&] {
    const Bytes part = recorded.readAll();
    EXPECT_LE(std::ssize(part), RecordedPort::mostInOneRead);
    std::size_t timed = 0;
    for (const ReadPart& piece : recorded.readParts())
      timed += piece.bytes;
    EXPECT_EQ(timed, part.size()) << "when they came is known of all";
    read.insert(read.end(), part.begin(), part.end());
    return !part.empty();
  };
  for (std::uint8_t i = 0; i < 20; ++i) {
    const Bytes piece(50'001, i);
    sent.insert(sent.end(), piece.begin(), piece.end());
    serial.received.insert(serial.received.end(), piece.begin(), piece.end());
    if (i % 10 == 0) readOn();
    clock.delay(2ms);
  }
  EXPECT_GT(serial.received.size(), 0u) << "the rest waits on the line";
  while (readOn()) {
  }
  EXPECT_TRUE(read == sent) << read.size() << " bytes of " << sent.size();
}

TEST_F(RecordingTest, MayHoldMuchThatIsDueAtOnce) {
  Bytes much;
  for (int i = 0; i < 40'000; ++i)
    much.insert(much.end(), {0xD8, 0x10, 0x20, 0x30, 0x01});
  ReplayPort played(
      std::make_unique<KeptTransfers>(std::vector<Transfer>{
          {0us, Direction::fromController, much}, {0us, Direction::fromController, {0x03}}}),
      clock);
  played.open();
  Bytes all;
  for (Bytes part = played.readAll(); !part.empty(); part = played.readAll()) {
    EXPECT_LE(part.size(), ReplayPort::mostInOneRead);
    all.insert(all.end(), part.begin(), part.end());
    EXPECT_EQ(played.inBufferCount(),
              std::min(ReplayPort::mostInOneRead, much.size() + 1 - all.size()));
  }
  EXPECT_EQ(all, much + Bytes{0x03});
  EXPECT_TRUE(played.isFinished());

  const std::uint8_t* next = nullptr;
  std::size_t moved = 0;
  ReportSplitter(ReportFamily::tablet, {}).feed(all, [&](const TouchReport*, auto bytes) {
    moved += next != nullptr && bytes.data() != next ? 1 : 0;
    next = bytes.data() + bytes.size();
  });
  EXPECT_EQ(moved, 0u) << "moving the rest for each report takes the square of its length";
}

TEST_F(RecordingTest, IsHeldSteppedHurriedAndSoughtAndTellsWhatWasSent) {
  const auto from = Direction::fromController;
  ReplayPort played(
      std::make_unique<KeptTransfers>(std::vector<Transfer>{{1s, Direction::toController, {0x05}},
                                                            {1s, from, {0x01}},
                                                            {2s, Direction::toController, {0x06}},
                                                            {2s, from, {0x02}},
                                                            {9s, from, {0x03}}}),
      clock);
  Lines passed;
  played.onSent = [&](auto bytes) { passed.push_back("> " + hexText(bytes)); };
  const auto readOn = [&] {
    for (Bytes bytes = played.readAll(); !bytes.empty(); bytes = played.readAll())
      passed.push_back("< " + hexText(bytes));
    return std::exchange(passed, {});
  };
  played.open();
  EXPECT_EQ(readOn(), (Lines{"> 05", "< 01"}));
  played.pause(true);
  clock.delay(5s);
  EXPECT_EQ(readOn(), Lines{});
  played.step();
  EXPECT_EQ(readOn(), (Lines{"> 06", "< 02"}));
  EXPECT_EQ(played.position(), 2s);
  played.setSpeed(10);
  played.pause(false);
  clock.delay(699ms);
  EXPECT_EQ(readOn(), Lines{});
  clock.delay(1ms);
  EXPECT_EQ(readOn(), Lines{"< 03"});
  EXPECT_TRUE(played.isFinished());
  played.seek(1500ms);
  EXPECT_FALSE(played.isFinished());
  clock.delay(50ms);
  EXPECT_EQ(readOn(), (Lines{"> 06", "< 02"})) << "in the order in which they passed";
  played.seek(1h);
  EXPECT_EQ(played.position(), 9s);
}

TEST_F(RecordingTest, IsSoughtHoweverLongItIs) {
  std::string text = "touch recording 1\n# made by hand\n";
  for (int i = 0; i < 60'000; ++i)
    text += recordingLine({i * 10ms, Direction::fromController, {0x41}}) + '\n';
  folder.write("a.rec", text + "# its end\n");
  auto read = std::move(*RecordingFile::open(file));
  EXPECT_EQ(read->length(), 599'990ms);
  for (const auto& [wanted, found] : {std::pair{0ms, 0ms},
                                      {1ms, 10ms},
                                      {10ms, 10ms},
                                      {300'001ms, 300'010ms},
                                      {599'990ms, 599'990ms}}) {
    read->seek(wanted);
    EXPECT_EQ(read->next().value().time, found);
  }
  read->seek(600s);
  EXPECT_FALSE(read->next());
  EXPECT_EQ(whyNot(read->error()), "");
  folder.write("a.rec", text + "601.000000 < XX\n");
  read->seek(601s);
  EXPECT_FALSE(read->next());
  EXPECT_THAT(whyNot(read->error()), EndsWith("found \"XX\""));
}

TEST_F(RecordingTest, AnswersAsTheRecordedControllerDid) {
  const auto to = Direction::toController;
  const auto from = Direction::fromController;
  auto read = RecordedAnswers::read(
      std::make_unique<KeptTransfers>(std::vector<Transfer>{{0s, from, {0x99}},
                                                            {1s, to, bytesOf("\x01Z\r\x01GP03\r")},
                                                            {1100ms, from, bytesOf("old")},
                                                            {2s, from, bytesOf("late")},
                                                            {2s, to, bytesOf("\x01")},
                                                            {2s, to, bytesOf("SP\r")},
                                                            {2050ms, from, bytesOf("ok")},
                                                            {3s, from, bytesOf("touch")},
                                                            {4s, to, bytesOf("\x01GP03\r")},
                                                            {4100ms, from, bytesOf("new")}}),
      "a.rec");
  ASSERT_EQ(whyNot(read), "");
  RecordedAnswers& controller = **read;
  ReplayPort answering(std::move(*read), clock);
  answering.open();
  const auto hear = [&](const std::string& command) {
    if (const auto place = controller.take(bytesOf(command))) answering.seek(*place);
  };
  const std::tuple<std::string, std::chrono::milliseconds, std::string> cases[] = {
      {"\x01Z\r", 10s, ""},           {"\x01NO\r", 10s, ""},
      {"\x01GP03\r", 99ms, ""},       {"", 1ms, "old"},
      {"\x01SP\r", 60ms, "ok"},       {"\x01GP03\r", 10s, "new"},
      {"\x01GP03\r", 10s, "oldlate"}, {"\x01SP\r", 10s, "oktouch"},
  };
  for (const auto& [command, wait, answer] : cases) {
    hear(command);
    clock.delay(wait);
    EXPECT_EQ(answering.readAll(), bytesOf(answer)) << command;
  }
  // The place, what is heard then, what is said, and where the next command is waited for.
  const std::tuple<std::chrono::milliseconds, std::string, std::string, std::chrono::milliseconds>
      places[] = {{2500ms, "", "touch", 4000ms},
                  {2500ms, "\x01GP03\r", "new", 4100ms},
                  {500ms, "", "", 1000ms},
                  {500ms, "\x01GP03\r", "oldlate", 2000ms},
                  {4s, "", "new", 4100ms}};
  for (const auto& [place, command, answer, end] : places) {
    answering.seek(place);
    hear(command);
    clock.delay(10s);
    EXPECT_EQ(answering.readAll(), bytesOf(answer)) << place.count() << command;
    EXPECT_EQ(controller.endOfAnswer(), end) << place.count() << command;
  }
  answering.pause(true);
  hear("\x01SP\r");
  for (const auto* const answer : {"ok", "touch", ""}) {
    clock.delay(10s);
    EXPECT_EQ(answering.readAll(), Bytes()) << answer;
    answering.step();
    EXPECT_EQ(answering.readAll(), bytesOf(answer));
  }
  auto silent = std::make_unique<KeptTransfers>(std::vector<Transfer>{{0s, from, {0x99}}});
  EXPECT_EQ(whyNot(RecordedAnswers::read(std::move(silent), "a.rec")),
            "a.rec: expected commands that were sent, found none");
}

TEST_F(RecordingTest, NamesTheLineThatIsWrong) {
  const std::string time = "a time in seconds with six decimals, such as 0.104250, found ";
  const std::string bytes = "bytes of two hexadecimal digits with a blank between, found ";
  const std::string begun =
      "\xEF\xBB\xBF# made by hand\r\n touch recording 1 # first\r\n0.500000 < 00  # why\r\n";
  const std::pair<std::string, std::string> cases[] = {
      {begun + "1 < 00", "4: expected " + time + "\"1\""},
      {begun + "1.-00001 < 00", "4: expected " + time + "\"1.-00001\""},
      {begun + "1000000.000000 < 00", "4: expected " + time + "\"1000000.000000\""},
      {begun + "0.400000 < 00", "4: expected a time not before the one above, found \"0.400000\""},
      {begun + "1.000000 = 00",
       "4: expected > for bytes to the controller or < for bytes from it, found \"=\""},
      {begun + "1.000000 < 0", "4: expected " + bytes + "\"0\""},
      {begun + "1.000000 < 00  01", "4: expected " + bytes + "an empty line"},
      {begun + "1.000000 < 0G", "4: expected " + bytes + "\"0G\""},
      {"", "1: expected \"touch recording 1\", found the end of the file"},
      {"\ntouch recording 2\n", "2: expected \"touch recording 1\", found \"touch recording 2\""},
  };
  for (const auto& [text, problem] : cases) {
    EXPECT_EQ(whyNot(parseRecording(text, "a.rec")), "a.rec, line " + problem);
    folder.write("a.rec", text);
    const auto read = RecordingFile::open(file);
    EXPECT_FALSE(read && (*read)->next() && (*read)->next());
    EXPECT_EQ(read ? whyNot((*read)->error()) : whyNot(read), file.string() + ", line " + problem)
        << "also piece by piece";
  }
}

TEST_F(RecordingTest, IsReadPieceByPieceHoweverLongItIs) {
  constexpr std::size_t transfers = 20'000;
  std::string text = "touch recording 1\n";
  for (std::size_t i = 0; i < transfers; ++i)
    text += i % 2 == 0 ? "0.000000 < D8 10 20 30 01\r\n" : "0.000000 > 00\n";
  folder.write("a.rec", text + "1.000000 < 07");
  const auto opened = RecordingFile::open(file);
  RecordingFile& read = **opened;
  for (int round = 0; round < 2; ++round, read.rewind()) {
    Transfer last;
    std::size_t count = 0;
    for (; auto next = read.next(); ++count)
      last = std::move(*next);
    EXPECT_EQ(count, transfers + 1);
    EXPECT_EQ(last, (Transfer{1s, Direction::fromController, {0x07}}));
    EXPECT_EQ(whyNot(read.error()), "");
  }
  folder.write("a.rec", "touch recording 1\n0.000000 < 00\n# " + std::string(2 << 20, 'x'));
  read.rewind();
  while (read.next()) {
  }
  EXPECT_EQ(whyNot(read.error()),
            file.string() + ", line 3: expected at most 1048576 bytes, found more");
}

TEST_F(RecordingTest, EndsBeforeItIsTooLongToBeReadAgain) {
  const std::string end =
      file.string() + ": expected a recording that can be read again, found a longer one";
  Recorder tooLarge(40);
  ASSERT_EQ(whyNot(tooLarge.start(file, clock.now())), "");
  for (int i = 0; i < 3; ++i)
    tooLarge.add(clock.now(), Direction::fromController, {{0x41}});
  EXPECT_EQ(whyNot(tooLarge.stop()), end);
  EXPECT_EQ(folder.read("a.rec"), "touch recording 1\n0.000000 < 41\n");

  Recorder tooLate;
  ASSERT_EQ(whyNot(tooLate.start(file, clock.now())), "");
  tooLate.add(clock.now() + 1'000'000s, Direction::fromController, {{0x41}});
  EXPECT_EQ(whyNot(tooLate.stop()), end);

  Recorder atOnce;
  ASSERT_EQ(whyNot(atOnce.start(file, clock.now())), "");
  atOnce.add(clock.now(), Direction::fromController, Bytes(500'000, 0x41));
  EXPECT_EQ(whyNot(atOnce.stop()), "");
  std::size_t count = 0;
  const auto opened = RecordingFile::open(file);
  RecordingFile& read = **opened;
  while (const auto next = read.next())
    count += next->bytes.size();
  EXPECT_EQ(count, 500'000u) << "in lines that are not too long";
}

TEST_F(RecordingTest, EndsItselfWhenTheDiskIsFullAndWaitsForNoReader) {
  Recorder recorder;
  EXPECT_NE(whyNot(recorder.start(folder.path() / "no" / "such.rec", clock.now())), "");
  ASSERT_EQ(mkfifo((folder.path() / "pipe").c_str(), S_IRUSR | S_IWUSR), 0);
  alarm(60);
  EXPECT_NE(whyNot(recorder.start(folder.path() / "pipe", clock.now())), "") << "nobody reads it";
  alarm(0);
  {
    const SmallDisk disk(5);
    EXPECT_NE(whyNot(recorder.start(file, clock.now())), "") << "although nothing has come in yet";
    EXPECT_FALSE(recorder.isOn());
  }
  const SmallDisk disk(20);
  ASSERT_EQ(whyNot(recorder.start(file, clock.now())), "");
  recorder.add(clock.now(), Direction::toController, bytesOf("x"));
  EXPECT_FALSE(recorder.isOn());
  EXPECT_NE(whyNot(recorder.stop()), "");
  EXPECT_EQ(folder.read("a.rec"), "touch recording 1\n") << "it ends with a whole line";
}

}  // namespace
}  // namespace touch::test
