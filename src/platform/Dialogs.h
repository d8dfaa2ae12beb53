#pragma once

#include <QString>

// Boxes that wait for the user. Events go on behind them.
class Dialogs
{
public:
    enum class Icon { None, Exclamation, Question, Critical };

    virtual ~Dialogs() = default;

    virtual void MsgBox(const QString& text, const QString& title, Icon icon = Icon::None) = 0;
    // Yes and No with the question icon; closing the box is No.
    virtual bool askYesNo(const QString& text, const QString& title) = 0;
    // One line; Cancel is the empty text.
    virtual QString InputBox(const QString& prompt, const QString& title) = 0;
    virtual void Beep() = 0;
};
