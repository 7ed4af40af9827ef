#include "console/doctor/doctor.h"

#include <nlohmann/json.hpp>

#include "console/doctor/diagnostics_file.h"
#include "console/doctor/doctor_report.h"
#include "core/driver/trace.h"
#include "support/text/personal_names.h"
#include "tests/app/child_process.h"
#include "tests/console/parameters/parameter_controller.h"

namespace touch::test {
namespace {

using nlohmann::json;
using enum FindingState;

class Doctor : public ParameterDesk {
 protected:
  Doctor() {
    script.replies["UT"] = {replyOf("QRMV0301")};
    script.replies["OI"] = {replyOf("M0130100")};
    patient.workFolder = folder.path();
    patient.driverPath = ATTACHED_LIBRARY;
    patient.access.emplace(access());
    patient.screens.emplace();
    patient.versions = {"Program 1"};
  }

  /// The findings of a topic, as "state: what".
  Lines found(std::string_view topic) {
    Lines lines;
    for (const Finding& finding : examine(patient).findings) {
      if (finding.topic == topic)
        lines.push_back(std::string(stateName(finding.state)) + ": " + finding.what);
    }
    return lines;
  }
  std::string unpacked(const std::string& entry) const {
    return runProgram("/usr/bin/unzip", {"-p", file, entry}).output;
  }

  const fs::path file = folder.path() / "d.zip";
  Patient patient;
};

TEST_F(Doctor, SaysWhichControllersAnswerAndChangesNothing) {
  session.controllerName = "the current one";
  script.names = {"DEVICE USB", "RS232 DEVICE 1", "USB DEVICE 2"};
  // Each controller is asked twice at most.
  script.replies["UT"] = {Bytes{}, Bytes{}, replyOf("QMRV1000")};
  script.replies["OI"] = {Bytes{}};
  EXPECT_EQ(found("controllers"),
            (Lines{"note: RS232 DEVICE 1 is known to the driver, but does not answer.",
                   "note: The driver also knows of DEVICE USB.",
                   "ok: USB DEVICE 2 answers, unit type QMRV1000."}));
  EXPECT_THAT(journal, Each(AnyOf("GetExistControllers", StartsWith("GetControllerName"),
                                  StartsWith("OpenController"), "CloseController", "WriteBuffer UT",
                                  "WriteBuffer OI", "ReadBuffer 10", "delay 100")));
  EXPECT_EQ(session.controllerName, "the current one");
}

TEST_F(Doctor, LooksWithoutAskingAControllerOrWriting) {
  const Diagnosis diagnosis = look(patient);
  EXPECT_EQ(journal, Lines{});
  EXPECT_TRUE(fs::is_empty(folder.path()));
  EXPECT_EQ(summary(diagnosis), "Controllers not asked yet");
  EXPECT_EQ(diagnosis.findings.front().what, "The controllers are not asked yet.");
  for (const Finding& finding : diagnosis.findings)
    EXPECT_NE(finding.topic, "folder") << "to see whether it can be written takes writing";
}

TEST_F(Doctor, LooksAtTheLibrary) {
  const auto incomplete = std::move(*NexapiDriver::bind(INCOMPLETE_LIBRARY));
  patient.access.emplace(Access{session, *incomplete, clock});
  const auto lacks = [](const char* what) {
    return AllOf(StartsWith("problem: "), HasSubstr(what));
  };
  EXPECT_THAT(found("library"),
              ElementsAre(lacks("lacks CloseCOMPort."), lacks("lacks GetRotation."),
                          lacks("lacks SetRotation."), lacks("lacks IsPenUp."),
                          HasSubstr("It runs in this program.")));
  EXPECT_EQ(examine(patient).findings[3].why, "The screen cannot be calibrated.");
  const auto scant = std::move(*NexapiDriver::bind(SCANT_LIBRARY));
  patient.access.emplace(Access{session, *scant, clock});
  std::string all;
  for (const auto& line : found("library"))
    all += line;
  for (const auto missing : scant->missing())
    EXPECT_THAT(all, HasSubstr(std::string(missing))) << "whatever is missing is told";
  EXPECT_EQ(found("controllers"),
            Lines{"note: The controllers were not asked. The touch driver library lacks the "
                  "operation GetExistControllers."});

  patient.access.reset();
  patient.refused = NexapiDriver::bind(std::nullopt).error();
  EXPECT_THAT(found("library"),
              ElementsAre(HasSubstr("library nexapi cannot be used: libnexapi.so: cannot"),
                          HasSubstr(programFolder().string())));
}

TEST_F(Doctor, LooksAtFolderScreensAndPorts) {
  EXPECT_THAT(found("folder").front(), StartsWith("ok: "));
  EXPECT_TRUE(fs::is_empty(folder.path())) << "nothing is left behind";
  fs::create_directory(folder.path() / "tmp");
  fs::create_symlink("tmp", folder.path() / "backup");
  EXPECT_THAT(
      found("folder"),
      ElementsAre(
          AllOf(StartsWith("problem: "), HasSubstr("backup: expected"), HasSubstr("found a link")),
          AllOf(StartsWith("note: "), HasSubstr("tmp: expected a folder")), StartsWith("ok: ")));
  fs::remove(folder.path() / "backup");
  fs::create_directory(folder.path() / "backup");
  EXPECT_EQ(found("folder").size(), 2u) << "it can be written";
  EXPECT_TRUE(fs::is_empty(folder.path() / "backup") && fs::is_empty(folder.path() / "tmp"));
  patient.workFolder = folder.path() / "none";
  EXPECT_THAT(found("folder").front(), AllOf(StartsWith("problem: "), HasSubstr("No such file")));

  patient.screens = {{"DP-1", 1920, 1080, 100}, {"DP-2", 640, 400, 200}};
  EXPECT_EQ(found("screens"), (Lines{"note: DP-2: 640 x 400 pixels at 200 %, which is little.",
                                     "ok: DP-1: 1920 x 1080 pixels at 100 %."}));
  patient.ports.assign("5=/dev/full");
  // It opens no port to see.
  EXPECT_THAT(found("ports"), Contains(StartsWith("ok: COM5 (/dev/full): this user may open it")));
}

TEST_F(Doctor, LooksAtTheOptionalFiles) {
  const std::tuple<const char*, std::string, std::string, const char*> files[] = {
      {"errmsg.txt", std::string(100, '\n'), "one\n", "expected 100 lines"},
      {"zevrik.fmt", "wide 8 5A 5B le16@2,4\n", "wide 8\n", "zevrik.fmt, line 1: expected"},
      {"zevrik.fmt", "", "a\nb\nc\nd\ne\nf\ng\nh\ni\nj\nk\nl\n",
       "; 12 problems in all; these are the first 10."},
      {"pic01.jpg", std::string("GIF89a\1\0\1\0\0\0\0;", 14), "text",
       "expected a picture, found \"text\""},
      {"cursoroff.txt", "note", std::string(2'000'000, 'x'), "expected at most 1048576 bytes"},
  };
  for (const auto& [name, sound, damaged, complaint] : files) {
    SCOPED_TRACE(name);
    EXPECT_THAT(found("files"), ElementsAre(HasSubstr(name))) << "it is not needed";
    folder.write(name, sound);
    EXPECT_THAT(found("files"), Contains(AnyOf("ok: " + std::string(name) + " is sound.",
                                               "ok: The structure of pic01.jpg is sound; it was "
                                               "not decoded.")));
    folder.write(name, damaged);
    EXPECT_THAT(found("files").front(), AllOf(StartsWith("problem: "), HasSubstr(complaint)));
    fs::remove(folder.path() / name);
  }
  fs::create_symlink("nowhere", folder.path() / "zevrik.fmt");
  EXPECT_THAT(found("files").front(), AllOf(StartsWith("problem: "), HasSubstr("a file")));
}

TEST_F(Doctor, ReportsForPeopleAndForPrograms) {
  const Diagnosis diagnosis{{{problem, "library", "It is \"bad\".", "It matters.", "Mend it."},
                             {note, "ports", "Odd \xFC.", "", ""}},
                            {}};
  EXPECT_EQ(findingsAsText(diagnosis),
            "problem  It is \"bad\".\n         It matters.\n         Next: Mend it.\n"
            "note     Odd \u00FC.\n\n1 problem, 1 note.\n");
  EXPECT_EQ(json::parse(findingsAsJson(diagnosis))["findings"][1],
            json::parse(
                R"({"state": "note", "topic": "ports", "what": "Odd ü.", "why": "", "next": ""})"));
  EXPECT_EQ(summary({}), "Nothing is wrong");
}

TEST_F(Doctor, SavesAllThatAHelperNeedsAndChangesNothing) {
  script.results["GetReportMode"] = 77;  // what reading the settings elsewhere would put right
  Trace trace;
  ASSERT_EQ(whyNot(trace.start(folder.path() / "t.jsonl")), "");
  trace.write("\"call\":\"kept\"");
  const auto diagnosis = examine(patient);
  EXPECT_THAT(
      diagnosticsContents(patient, diagnosis, trace),
      HasSubstr("contain doctor.txt, doctor.json, versions.txt, settings-1-RS232_DEVICE_1.json, "
                "parameters-1-RS232_DEVICE_1.vrq, trace.jsonl: "));
  fs::remove(folder.path() / "t.jsonl");
  folder.write("t.jsonl", "somebody else's");
  const auto saved = saveDiagnostics(file, patient, diagnosis, trace);
  EXPECT_EQ(saved.describe(file), "The diagnostics are saved in " + file.string() + '.');
  EXPECT_THAT(journal, Each(Not(AnyOf(StartsWith("Set"), StartsWith("Enable"),
                                      StartsWith("WriteBuffer SP"), HasSubstr("COMPort")))));
  const std::pair<const char*, const char*> parts[] = {
      {"doctor.txt", "RS232 DEVICE 1 answers, unit type QRMV0301, firmware M0130100."},
      {"doctor.json", "\"problems\": 0"},
      {"versions.txt", "Program 1\nDriver library " ATTACHED_LIBRARY},
      {"settings-1-RS232_DEVICE_1.json", "\"GetReportMode\": 77"},
      {"parameters-1-RS232_DEVICE_1.vrq", "1000\r\n1001\r\n"},
      {"trace.jsonl", "\"call\":\"kept\""},
  };
  for (const auto& [name, content] : parts)
    EXPECT_THAT(unpacked(name), HasSubstr(withoutPersonalNames(content, personalNames()))) << name;
  EXPECT_EQ(unpacked("trace.jsonl").find("somebody"), std::string::npos);
}

TEST(PersonalNames, AreLeftOutWhereTheyStandAlone) {
  const PersonalNames names{{"/home/ann", "C:\\Users\\Ann", "/home/j\u00FCrg"}, "desk"};
  EXPECT_EQ(withoutPersonalNames("/home/ann/a.so /home/anna C:\\Users\\Ann\\x "
                                 "\"C:\\\\Users\\\\Ann\\\\y\" //desk/share desktop "
                                 "/home/j\u00FCrg/z \"/home/j\\u00fcrg/z\"",
                                 names),
            "~/a.so /home/anna ~\\x \"~\\\\y\" //(this computer)/share desktop ~/z \"~/z\"");
  EXPECT_EQ(withoutPersonalNames("on pc", {{}, "pc"}), "on pc");

  const TemporaryFolder folder;
  fs::create_directory_symlink(folder.path(), folder.path() / "link");
  const char* const had = std::getenv("HOME");
  const std::string home = had == nullptr ? "" : had;
  setenv("HOME", (folder.path() / "link").c_str(), 1);
  EXPECT_EQ(withoutPersonalNames(folder.path().string() + "/z", personalNames()), "~/z");
  setenv("HOME", home.c_str(), 1);
}

TEST_F(Doctor, SavesTheRestWhenAPartFails) {
  memory.erase(3);
  script.names.push_back("USB DEVICE 2");
  script.replies["UT"] = {replyOf("QRMV0301"), Bytes{}};
  script.replies["OI"] = {replyOf("M0130100"), Bytes{}};
  const auto saved = saveDiagnostics(file, patient, examine(patient), Trace());
  EXPECT_EQ(saved.failed, (Lines{"parameters-1-RS232_DEVICE_1.vrq", "settings-2-USB_DEVICE_2.json",
                                 "parameters-2-USB_DEVICE_2.vrq"}));
  EXPECT_THAT(saved.describe(file), HasSubstr("reason in their place: parameters-1"));
  EXPECT_THAT(unpacked("parameters-1-RS232_DEVICE_1.vrq"),
              StartsWith("This part is missing: Word 03: "));
  EXPECT_THAT(unpacked("settings-1-RS232_DEVICE_1.json"), HasSubstr("GetRotation"));

  const auto breaks = []() -> Result<std::string, Missing> { throw std::runtime_error("broken"); };
  const auto packed = packParts({{"thrown", breaks}}, {});
  folder.write("d.zip", packed.archive);
  EXPECT_EQ(packed.failed, Lines{"thrown"});
  EXPECT_EQ(unpacked("thrown"), "This part is missing: broken.\n");

  const auto nowhere = folder.path() / "none" / "d.zip";
  EXPECT_THAT(saveDiagnostics(nowhere, patient, {}, Trace()).describe(nowhere),
              StartsWith("The diagnostics are not saved: "));
}

}  // namespace
}  // namespace touch::test
