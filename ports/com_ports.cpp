#include "ports/com_ports.h"

#include <utility>

#include "ports/serial_device.h"
#include "support/text/decimal.h"

namespace touch {

Result<void, std::string> ComPorts::assign(std::string_view text) {
  const auto equals = text.find('=');
  const auto number = parseDecimal(text.substr(0, equals), 1, greatestNumber);
  if (!number || equals == text.npos || equals + 1 == text.size()) {
    return tl::unexpected(
        "\"" + std::string(text) + "\" names no COM port: expected N=DEVICE with N from 1 to " +
        std::to_string(greatestNumber) + ", e.g. 3=" + serial_device::defaultName(3));
  }
  assigned_[*number] = [device = std::string(text.substr(equals + 1))] { return device; };
  given_.insert(*number);
  return {};
}

void ComPorts::assignUnlessGiven(int number, std::function<std::string()> device) {
  if (!assigned_.contains(number)) assigned_[number] = std::move(device);
}

std::vector<int> ComPorts::assignedNumbers() const {
  std::vector<int> numbers;
  for (const auto& [number, device] : assigned_)
    numbers.push_back(number);
  return numbers;
}

std::string ComPorts::device(int number) const {
  const auto found = assigned_.find(number);
  return found == assigned_.end() ? serial_device::defaultName(number) : found->second();
}

std::string ComPorts::describe(int number) const {
  const std::string name = "COM" + std::to_string(number);
  const std::string behind = device(number);
  return behind == name || behind.empty() ? name : name + " (" + behind + ")";
}

}  // namespace touch
