#include "core/exchange/closing_step.h"

#include "core/discovery/identity.h"
#include "core/exchange/exchange.h"
#include "support/text/hex.h"

namespace touch {

namespace {

void writeParameter01(const Access& access, const std::string& firmware,
                      std::optional<ParameterWord>& word) {
  access.session.connected = conMT(access);
  const bool newer = access.session.connected == ModelProbe::newerModel;
  if (!newer || !wantsClosingParameter(firmware)) return;
  if (!word) word = exchange(access, parameterReadFrame("01")).word();
  if (!word) return;
  exchangeAcknowledged(access, parameterWriteFrame("01", hexByte(word->high), hexByte(word->low)));
}

}  // namespace

std::optional<ParameterWord> plcmd(const Access& access, const ShownAtClosing& shown) {
  auto word = shown.parameter01;
  if (shown.listedController.empty()) return word;
  try {
    writeParameter01(access, shown.firmware, word);
  } catch (const MissingOperation&) {
    // Only that part needs it; the lock is sent in every case.
  }
  exchangeUnacknowledged(access, shown.listedController, commandFrame("PL"));
  return word;
}

}  // namespace touch
