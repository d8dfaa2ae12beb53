#pragma once

#include "session/SessionReport.h"

// What the sign-in form says of the session: what happened last, and what comes. Empty where the
// rest of the form says it. What others worded is cut where it gets long, its codes left out.
QString sessionWords(const SessionReport& report);
