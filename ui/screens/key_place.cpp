#include "ui/screens/key_place.h"

#include <QChar>
#include <QKeyEvent>
#include <string_view>

namespace touch {

namespace {

bool isLatin(int code) {
  return (code >= 'A' && code <= 'Z') || (code >= '0' && code <= '9');
}

/// What lies there on an American keyboard; X11 and Wayland count the places of all keyboards
/// alike.
char atPlace(quint32 place) {
  struct Row {
    quint32 first;
    std::string_view keys;
  };
  constexpr Row rows[] = {
      {10, "1234567890"}, {24, "QWERTYUIOP"}, {38, "ASDFGHJKL"}, {52, "ZXCVBNM"}};
  for (const auto& [first, keys] : rows)
    if (place >= first && place - first < keys.size()) return keys[place - first];
  return 0;
}

}  // namespace

int letterOrDigit(const QKeyEvent& key) {
  if (isLatin(key.key())) return key.key();
  // Windows numbers the keys so whatever they type.
  const auto native = static_cast<int>(key.nativeVirtualKey());
  if (isLatin(native)) return native;
  const char there = atPlace(key.nativeScanCode());
  const bool isDigit = there >= '0' && there <= '9';
  if (isDigit) return (key.modifiers() & Qt::ShiftModifier) != 0 ? 0 : there;
  const int typed = key.key();
  const bool isForeign =
      typed > 0x7F && typed < Qt::Key_Escape && QChar::isLetter(static_cast<uint>(typed));
  return isForeign ? there : 0;
}

std::optional<CanvasAction> canvasActionOf(const QKeyEvent& key) {
  constexpr int escapeCode = 27;
  constexpr int f1Code = 112;
  if ((key.modifiers() & ~(Qt::ShiftModifier | Qt::KeypadModifier)) != Qt::NoModifier)
    return std::nullopt;
  switch (key.key()) {
    case Qt::Key_Escape:
      return actionOfKey(escapeCode);
    case Qt::Key_F1:
      return actionOfKey(f1Code);
    default:
      return actionOfKey(letterOrDigit(key));
  }
}

}  // namespace touch
