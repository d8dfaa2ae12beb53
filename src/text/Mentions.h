#pragma once

#include <QElapsedTimer>
#include <QString>

#include <functional>

class RichTextBox;
struct SessionVariables;

// Whether a text names a nick, as a word of its own and without regard to case. Colours and styles
// of the text do not matter.
bool namesNick(const QString& text, const QString& nick);

// Tells the reader of lines that are meant for him while he is not looking: those that name him,
// and what is said to him alone. Nothing of it touches a text.
class Mentions final
{
public:
    struct Desk
    {
        const SessionVariables& variables;
        std::function<bool(const QString& nick)> isBlocked;
        std::function<void()> attract; // lights up the room's entry in the task bar
        std::function<void(const QString& title, const QString& body)> notify;
        bool notifies = false; // by the desktop, if the user wants that
    };

    explicit Mentions(Desk desk);

    // To be told right after a line of somebody has been written to a view.
    void roomLine(RichTextBox& view, const QString& nick, const QString& text);
    void privateLine(RichTextBox& view, const QString& nick, const QString& text);

private:
    QString ownNick() const;
    bool mark(RichTextBox& view, const QString& nick, const QString& text) const;
    void notify(const QString& nick, const QString& text);

    Desk m_desk;
    QElapsedTimer m_sinceNotice;
};
