#pragma once

#include "platform/Dialogs.h"

#include <functional>
#include <memory>
#include <utility>

// The boxes of another Dialogs. `watch` is asked before a box opens, and what it gives is kept
// until the box has closed.
class WatchedDialogs final : public Dialogs
{
public:
    using Watch = std::function<std::shared_ptr<void>()>;

    WatchedDialogs(Dialogs& dialogs, Watch watch)
        : m_dialogs(dialogs)
        , m_watch(std::move(watch))
    {
    }

    void MsgBox(const QString& text, const QString& title, Icon icon) override
    {
        const auto open = m_watch();
        m_dialogs.MsgBox(text, title, icon);
    }
    bool askYesNo(const QString& text, const QString& title) override
    {
        const auto open = m_watch();
        return m_dialogs.askYesNo(text, title);
    }
    QString InputBox(const QString& prompt, const QString& title) override
    {
        const auto open = m_watch();
        return m_dialogs.InputBox(prompt, title);
    }
    void Beep() override { m_dialogs.Beep(); }

private:
    Dialogs& m_dialogs;
    Watch m_watch;
};
