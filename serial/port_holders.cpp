#include "serial/port_holders.h"

namespace touch {

namespace {

std::string described(const PortHolder& holder) {
  if (holder.isThisProgram) return "this program";
  return holder.program + " (process " + std::to_string(holder.process) + ")";
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
    return "it is in use by " + others.names() + ". Close that program and try again.";
  }
  if (!holders.known.empty()) {
    return "this program has it open already, as the touch driver does until it lets go. Close "
           "what uses it and try "
           "again.";
  }
  return std::string("another program is using it. Close that program and try again.") +
         (holders.complete ? "" : " Which one it is, only an administrator can see.");
}

std::string PortPermission::wayOut() const {
  if (granted) return "Ask an administrator: it is not the device's permissions that forbid it.";
  if (group.empty()) return "Ask an administrator: no group of users may open it.";
  if (joined) return "You are in the group " + group + " already: log out and in again.";
  return "Add yourself to the group " + group + " and log in again.";
}

}  // namespace touch
