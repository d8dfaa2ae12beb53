#pragma once

#include "platform/Dialogs.h"

class QtDialogs final : public Dialogs
{
public:
    void MsgBox(const QString& text, const QString& title, Icon icon) override;
    bool askYesNo(const QString& text, const QString& title) override;
    QString InputBox(const QString& prompt, const QString& title) override;
    void Beep() override;
};
