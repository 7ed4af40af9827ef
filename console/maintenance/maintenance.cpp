#include "console/maintenance/maintenance.h"

#include "console/parameters/parameter_block.h"
#include "core/exchange/exchange.h"
#include "support/prompt.h"

namespace touch {

namespace {

constexpr std::size_t goodReplySize = 3;

bool isGood(const Reply& reply) {
  return reply.size() == goodReplySize && reply.acknowledged();
}

bool carryOut(const Access& access, Prompt& prompt, std::string_view command, Message success,
              Message failure) {
  Connection connection(access);
  connection.flush();
  const bool done = isGood(ask(connection, access.clock, commandFrame(command),
                               {.wait = commandWait, .tries = 2, .isGood = isGood}));
  prompt.message(access.session.messages[done ? success : failure]);
  return done;
}

}  // namespace

bool restoreDefaults(const Access& access, Prompt& prompt) {
  return carryOut(access, prompt, "RD", Message::restoreOk, Message::restoreError);
}

bool resetController(const Access& access, Prompt& prompt) {
  return carryOut(access, prompt, "R", Message::resetOk, Message::resetError);
}

DefaultsRestored defaults(const Access& access, Prompt& prompt, const Backup& backup) {
  DefaultsRestored result;
  const auto block = readBlock(access);
  const auto kept = keep(access, backup, block);
  if (block) result.before = *block;
  if (kept) {
    result.kept = *kept;
  } else {
    result.whyNoBackup = kept.error().why;
  }
  result.restored = restoreDefaults(access, prompt);
  return result;
}

}  // namespace touch
