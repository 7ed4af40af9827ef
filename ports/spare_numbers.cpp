#include "ports/spare_numbers.h"

#include <algorithm>
#include <cstddef>
#include <memory>
#include <string>
#include <utility>

#include "ports/port_holders.h"
#include "ports/serial_device.h"

namespace touch {

namespace {

/// The devices that were seen, by spare number.
class SeenDevices {
 public:
  SeenDevices(std::vector<std::string> others, std::function<std::vector<std::string>()> list)
      : others_(std::move(others)), list_(std::move(list)) {}

  /// Empty while none has it, or it is not there.
  std::string device(std::size_t place) {
    const auto there = list_ ? list_() : serialDevices();
    const auto isIn = [](const std::vector<std::string>& devices, const std::string& device) {
      return std::ranges::find(devices, device) != devices.end();
    };
    for (const std::string& device : there)
      if (!isIn(others_, device) && !isIn(seen_, device)) seen_.push_back(device);
    return place < seen_.size() && isIn(there, seen_[place]) ? seen_[place] : std::string();
  }

 private:
  std::vector<std::string> others_;  ///< have a number
  std::function<std::vector<std::string>()> list_;
  std::vector<std::string> seen_;
};

}  // namespace

void addSpareNumbers(ComPorts& ports, std::function<std::vector<std::string>()> devices) {
  const bool platformNumbersAll =
      serial_device::defaultName(firstSpareNumber) == "COM" + std::to_string(firstSpareNumber);
  if (platformNumbersAll) return;
  std::vector<std::string> others;
  for (const int number : ports.assignedNumbers())
    others.push_back(ports.device(number));
  for (int number = 1; number < firstSpareNumber; ++number)
    others.push_back(ports.device(number));
  const auto seen = std::make_shared<SeenDevices>(std::move(others), std::move(devices));
  std::size_t place = 0;
  for (int number = firstSpareNumber; place < spareNumbers; ++number) {
    if (ports.isGiven(number)) continue;
    ports.assignUnlessGiven(number, [seen, place] { return seen->device(place); });
    ++place;
  }
}

}  // namespace touch
