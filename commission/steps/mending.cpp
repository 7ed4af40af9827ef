#include "commission/steps/mending.h"

#include <algorithm>

#include "core/discovery/identity.h"
#include "core/driver/connection.h"

namespace touch::commission {

namespace {

bool isSilent(const Diagnosis& diagnosis, const std::string& controller) {
  return std::ranges::any_of(diagnosis.controllers, [&](const ExaminedController& one) {
    return one.name == controller && !one.answers;
  });
}

bool isFolderBad(const Diagnosis& diagnosis) {
  return std::ranges::any_of(diagnosis.findings, [](const Finding& finding) {
    return finding.topic == "folder" && finding.state == FindingState::problem;
  });
}

}  // namespace

std::vector<Mend> mendsFor(const Diagnosis& diagnosis, const std::string& controller,
                           const std::optional<DriverSettings>& reported) {
  std::vector<Mend> mends;
  if (isSerialController(controller) && isSilent(diagnosis, controller))
    mends.push_back(Mend::takePortBack);
  if (reported && !reported->reporting) mends.push_back(Mend::enablePanel);
  if (isFolderBad(diagnosis)) mends.push_back(Mend::chooseFolder);
  return mends;
}

void takePortBack(const Access& access) {
  const Connection connection(access);
  if (connection.isOpen()) access.driver.ReopenCOMPort(connection.handle());
}

}  // namespace touch::commission
