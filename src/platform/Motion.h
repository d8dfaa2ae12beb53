#pragma once

// Whether the user has asked the desktop for less motion, where desktops of today keep that. Read
// once, at the first question.
bool isMotionReduced();
