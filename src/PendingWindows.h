#pragma once

#include "session/Ports.h"

// Stand-ins for windows that are still to come.
struct PendingWindows final : WebPages, Popup
{
    void Show() override {}
    void navigateHome(const QString&) override {}
    void navigateMisc(const QString&) override {}
    void setBody(const QString&) override {}
};
