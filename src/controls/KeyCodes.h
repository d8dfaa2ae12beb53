#pragma once

class QKeyEvent;

// Keys as the handlers of input lines know them.
namespace key_codes {

// Characters of KeyPress.
constexpr int Enter = 13;
// Codes of KeyDown.
constexpr int Backspace = 8;
constexpr int Up = 38;
constexpr int Down = 40;
constexpr int Delete = 46;

// The code of a key that some handler asks about; 0 for others.
int keyCodeOf(const QKeyEvent& event);
// The character that a key types; 0 for none.
int characterOf(const QKeyEvent& event);

} // namespace key_codes
