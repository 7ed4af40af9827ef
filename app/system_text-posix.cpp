#include "app/system_text.h"

namespace touch {

class SystemText::Translation {};

// It is UTF-8 already, or whatever bytes the user's own programs take for text.
SystemText::SystemText(int&, char**&) {}

SystemText::~SystemText() = default;

}  // namespace touch
