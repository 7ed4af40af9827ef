#pragma once

#include <memory>

namespace touch {

/// Makes the program's text UTF-8 for as long as it lives: the command line, and what is printed.
/// It comes first in main(), whose arguments it replaces where they are not.
class SystemText {
 public:
  SystemText(int& argc, char**& argv);
  SystemText(const SystemText&) = delete;
  SystemText& operator=(const SystemText&) = delete;
  ~SystemText();

 private:
  class Translation;
  std::unique_ptr<Translation> translation_;
};

}  // namespace touch
