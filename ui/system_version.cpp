#include "ui/system_version.h"

#include <QOperatingSystemVersion>
#include <QSysInfo>

namespace touch {

std::optional<int> windowsVersion() {
  // By name: from Qt 6.8 on the type is no longer compared with QOperatingSystemVersion::Windows.
  if (QSysInfo::kernelType() != QLatin1String("winnt")) return std::nullopt;
  return QOperatingSystemVersion::current().majorVersion();
}

}  // namespace touch
