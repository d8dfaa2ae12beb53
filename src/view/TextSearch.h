#pragma once

#include "view/ChatText.h"

#include <optional>

enum class SearchDirection { Forward, Backward };

// The position of the nearest occurrence of a text within a line, case ignored: the first one that
// starts at or behind a position, or the last one that starts before it. Goes round at the ends.
std::optional<qsizetype> findText(const ChatText& text, const QString& wanted, qsizetype from,
                                  SearchDirection direction);
