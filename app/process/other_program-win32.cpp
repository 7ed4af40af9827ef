#include <process.h>

#include "app/process/other_program.h"
#include "core/driver/nexapi.h"

namespace touch {

std::optional<int> runNeighbour(const std::string& name,
                                const std::vector<std::filesystem::path>& arguments) {
  const std::wstring program = (programFolder() / (name + ".exe")).wstring();
  // They become one line, which the other program takes apart at the blanks outside quotes; no path
  // has quotes in it.
  std::vector<std::wstring> words = {L'"' + program + L'"'};
  for (const std::filesystem::path& argument : arguments)
    words.push_back(L'"' + argument.wstring() + L'"');
  std::vector<const wchar_t*> argv;
  argv.reserve(words.size() + 1);
  for (const std::wstring& word : words)
    argv.push_back(word.c_str());
  argv.push_back(nullptr);
  const auto status = _wspawnv(_P_WAIT, program.c_str(), argv.data());
  if (status < 0) return std::nullopt;
  return static_cast<int>(status);
}

}  // namespace touch
