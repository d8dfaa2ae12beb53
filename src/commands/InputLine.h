#pragma once

#include "text/TextHistory.h"

#include <QString>

class Dialogs;
class LineSink;
class TextWriter;
struct OwnTextStyle;
struct Room;
struct SessionVariables;

// The box that the user types into.
class InputBox
{
public:
    virtual ~InputBox() = default;

    virtual QString text() const = 0;
    virtual void setText(const QString& text) = 0;
    virtual void setTypeface(const QString& family, int points) = 0;
};

// Sends what is typed: as a message in the user's own style, without it for bots ("!" in front),
// or straight to the server ("IRC " in front). A slash means nothing here.
class InputLine final
{
public:
    struct Parts
    {
        const SessionVariables& variables;
        const OwnTextStyle& style;
        const Room& room;
        InputBox& DataOut;
        LineSink& server;
        const TextWriter& writer;
        Dialogs& dialogs;
    };

    static constexpr int maxLength = 1100;

    explicit InputLine(const Parts& parts)
        : m_parts(parts)
    {
    }

    // What the box is to take for the character or key code; 0 for nothing.
    int KeyPress(int character);
    int KeyDown(int keyCode);
    // For the arrow keys, as if it had been sent.
    void remember(const QString& text);

private:
    void sendForBots(const QString& text);
    void sendFormatted(const QString& text);
    void DoHistory();

    Parts m_parts;
    TextHistory m_history;
};
