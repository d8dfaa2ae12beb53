#pragma once

#include <QChar>

// What chat text carries beside its letters: switches of style, and the mark around a CTCP
// request. Templates of messages are put together from these names.
inline constexpr QChar strAction{1};
inline constexpr QChar strBold{2};
inline constexpr QChar strColor{3};
inline constexpr QChar strReverse{22};
inline constexpr QChar strUnderline{31};

// Other clients end all styles with it. For the writer it is strBold once more.
inline constexpr QChar secondBold{15};
