#pragma once

#include <QString>

// Whether the user has asked the desktop for less motion, where desktops of today keep that. Read
// once, at the first question.
bool isMotionReduced();

// What the files in a folder of settings say of it.
bool isMotionReducedIn(const QString& settingsFolder);
