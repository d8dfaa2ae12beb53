#pragma once

#include "platform/Form.h"

class QPlainTextEdit;

// The raw traffic. No menu leads here; it is written while it is visible.
class DebugWin final : public Form
{
    Q_OBJECT
public:
    DebugWin();

    // Chunks as they arrive, not lines; the text starts anew before it gets too long.
    void received(const QString& data);
    // Never starts the text anew.
    void sent(const QString& line);

private:
    void append(const QString& text);

    QPlainTextEdit* txtDataIn;
};
