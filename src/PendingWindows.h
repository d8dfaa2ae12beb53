#pragma once

#include "common/RunTimeError.h"
#include "query/PrivateWindow.h"
#include "session/Ports.h"

// Stand-ins for windows that are still to come.
struct PendingWindows final : ContactList, WebPages, Popup, PrivateWindowFactory
{
    void AddUsers(const QString&) override {}
    void clearOnline() override {}
    bool Visible() const override { return false; }
    void Load() override {}
    void Unload() override {}
    void Show() override {}
    void navigateHome(const QString&) override {}
    void navigateMisc(const QString&) override {}
    void setBody(const QString&) override {}
    PrivateWindow& create() override
    {
        throw RunTimeError(RunTimeError::Number::ObjectVariableNotSet);
    }
};
