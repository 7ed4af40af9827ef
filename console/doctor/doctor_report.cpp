#include "console/doctor/doctor_report.h"

#include <fmt/core.h>

#include <nlohmann/json.hpp>

#include "support/text/language.h"
#include "support/text/text_encoding.h"

namespace touch {

namespace {

std::string countedProblems(std::size_t count) {
  return count == 1 ? say("doctor", "1 problem")
                    : filled(say("doctor", "%1 problems"), {std::to_string(count)});
}

std::string countedNotes(std::size_t count) {
  return count == 1 ? say("doctor", "1 note")
                    : filled(say("doctor", "%1 notes"), {std::to_string(count)});
}

}  // namespace

std::string_view stateName(FindingState state) {
  switch (state) {
    case FindingState::problem:
      return "problem";
    case FindingState::note:
      return "note";
    case FindingState::ok:
      break;
  }
  return "ok";
}

std::string summary(const Diagnosis& diagnosis) {
  const auto problems = diagnosis.count(FindingState::problem);
  const auto notes = diagnosis.count(FindingState::note);
  const std::string noted = notes == 0 ? std::string() : countedNotes(notes);
  if (problems == 0 && !diagnosis.complete) return say("doctor", "Controllers not asked yet");
  if (problems == 0) {
    return say("doctor", "Nothing is wrong") + (noted.empty() ? noted : "; " + noted);
  }
  return countedProblems(problems) + (noted.empty() ? noted : ", " + noted);
}

Notice noticeOf(const Diagnosis& diagnosis) {
  const auto kind = diagnosis.count(FindingState::problem) > 0 ? NoticeKind::error
                    : diagnosis.count(FindingState::note) > 0  ? NoticeKind::remark
                                                               : NoticeKind::success;
  return {kind, summary(diagnosis) + '.'};
}

std::string findingsAsText(const Diagnosis& diagnosis) {
  std::string text;
  for (const Finding& finding : diagnosis.findings) {
    text += fmt::format("{:<8} {}\n", stateName(finding.state), printable(finding.what));
    if (!finding.why.empty()) text += fmt::format("{:<8} {}\n", "", printable(finding.why));
    if (!finding.nextStep.empty()) {
      text += fmt::format("{:<8} {}\n", "",
                          filled(say("doctor", "Next: %1"), {printable(finding.nextStep)}));
    }
  }
  return text + '\n' + summary(diagnosis) + ".\n";
}

std::string findingsAsJson(const Diagnosis& diagnosis) {
  auto findings = nlohmann::ordered_json::array();
  for (const Finding& finding : diagnosis.findings) {
    findings.push_back({{"state", stateName(finding.state)},
                        {"topic", finding.topic},
                        {"what", toUtf8(finding.what)},
                        {"why", toUtf8(finding.why)},
                        {"next", toUtf8(finding.nextStep)}});
  }
  const nlohmann::ordered_json object = {{"problems", diagnosis.count(FindingState::problem)},
                                         {"notes", diagnosis.count(FindingState::note)},
                                         {"findings", std::move(findings)}};
  return object.dump(2, ' ', true) + '\n';
}

}  // namespace touch
