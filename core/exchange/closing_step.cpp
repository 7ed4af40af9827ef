#include "core/exchange/closing_step.h"

#include "core/discovery/discovery.h"
#include "core/discovery/identity.h"
#include "core/exchange/exchange.h"
#include "support/text/hex.h"

namespace touch {

std::optional<ParameterWord> plcmd(const Access& access, const ShownAtClosing& shown) {
  auto word = shown.parameter01;
  if (shown.listedController.empty()) return word;
  access.session.connected = conMT(access);
  const bool newer = access.session.connected == ModelProbe::newerModel;
  if (newer && wantsClosingParameter(shown.firmware)) {
    if (!word) word = exchange(access, parameterReadFrame("01")).word();
    if (word) {
      exchangeAcknowledged(access,
                           parameterWriteFrame("01", hexByte(word->high), hexByte(word->low)));
    }
  }
  exchangeUnacknowledged(access, shown.listedController, commandFrame("PL"));
  return word;
}

}  // namespace touch
