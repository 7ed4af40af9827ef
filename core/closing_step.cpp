#include "core/closing_step.h"

#include "core/discovery.h"
#include "core/exchange.h"
#include "core/hex.h"
#include "core/identity.h"

namespace touch {

void plcmd(const Access& access, const ShownAtClosing& shown) {
  if (shown.listedController.empty()) return;
  access.session.connected = conMT(access);
  const bool newer = access.session.connected == ModelProbe::newerModel;
  if (newer && wantsClosingParameter(shown.firmware) && shown.parameter01) {
    exchangeAcknowledged(access, parameterWriteFrame("01", hexByte(shown.parameter01->high),
                                                     hexByte(shown.parameter01->low)));
  }
  exchangeUnacknowledged(access, shown.listedController, commandFrame("PL"));
}

}  // namespace touch
