#include "ports/port_holders.h"

#include "support/text/language.h"

namespace touch {

namespace {

std::string described(const PortHolder& holder) {
  if (holder.isThisProgram) return say("ports", "this program");
  if (holder.process == 0) {
    return filled(say("ports", "a program that is just locking it with %1"),
                  {holder.lockFile.string()});
  }
  const std::string process = std::to_string(holder.process);
  if (holder.lockFile.empty())
    return filled(say("ports", "%1 (process %2)"), {holder.program, process});
  return filled(say("ports", "%1 (process %2, by its lock file %3)"),
                {holder.program, process, holder.lockFile.string()});
}

}  // namespace

std::string PortHolders::names() const {
  std::string names;
  for (const PortHolder& holder : known) {
    if (!names.empty()) names += ", ";
    names += described(holder);
  }
  return names;
}

std::string inUseText(const PortHolders& holders) {
  PortHolders others = holders;
  std::erase_if(others.known, [](const PortHolder& holder) { return holder.isThisProgram; });
  if (!others.known.empty()) {
    return filled(say("ports", "it is in use by %1. Close that program and try again."),
                  {others.names()});
  }
  if (!holders.known.empty()) {
    return say("ports",
               "this program has it open already, as the touch driver does until it lets go. Close "
               "what uses it and try again.");
  }
  std::string text = say("ports", "another program is using it. Close that program and try again.");
  if (!holders.complete) {
    text += ' ' + say("ports", "Which one it is, only an administrator can see.");
  }
  return text;
}

std::string sharingText(const PortHolders& holders) {
  PortHolders others = holders;
  std::erase_if(others.known, [](const PortHolder& holder) {
    return holder.isThisProgram || holder.isOtherEnd || !holder.lockFile.empty();
  });
  if (others.known.empty()) return {};
  return filled(others.known.size() == 1 ? say("ports", "%1 has it open too and takes replies.")
                                         : say("ports", "%1 have it open too and take replies."),
                {others.names()});
}

std::string PortPermission::wayOut() const {
  if (granted) {
    return say("ports", "Ask an administrator: it is not the device's permissions that forbid it.");
  }
  if (group.empty()) return say("ports", "Ask an administrator: no group of users may open it.");
  if (joined) {
    return filled(say("ports", "You are in the group %1 already: log out and in again."), {group});
  }
  return filled(say("ports", "Add yourself to the group %1 and log in again."), {group});
}

}  // namespace touch
