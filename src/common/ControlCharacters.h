#pragma once

#include <QChar>

// The control characters of chat text (formatting codes and
// the CTCP delimiter). Message templates are composed from these names.
inline constexpr QChar strAction{1};
inline constexpr QChar strBold{2};
inline constexpr QChar strColor{3};
inline constexpr QChar strReverse{22};
inline constexpr QChar strUnderline{31};

// Not a reset here: the writer takes it as a second bold toggle.
inline constexpr QChar secondBold{15};
