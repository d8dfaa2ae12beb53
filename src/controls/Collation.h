#pragma once

#include <QStringView>

// The order of a sorted list: whole rows, case ignored, punctuation before digits before letters.
// Negative, zero or positive like strcmp.
int collate(QStringView left, QStringView right);
