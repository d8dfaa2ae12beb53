#pragma once

#include "controls/ListBoxWidget.h"
#include "platform/Clock.h"
#include "platform/Dialogs.h"
#include "room/RoomForm.h"
#include "support/MemoryView.h"
#include "wire/LineSink.h"
#include "wire/Winsock.h"

#include <QtCore>

// What tests of one class and tests of the whole program stand on alike.

// What has happened, in order, one entry for each thing.
class Journal final
{
public:
    // An entry in pieces; a truth value reads "true" or "false".
    template<typename... Pieces>
    void operator()(const Pieces&... pieces)
    {
        m_entries.append(QString((QString() + ... + text(pieces))));
    }
    // What has happened since the last call.
    QStringList take() { return std::exchange(m_entries, {}); }

private:
    static QString text(const char* piece) { return QString::fromLatin1(piece); }
    static QString text(const QString& piece) { return piece; }
    static QString text(bool piece) { return text(piece ? "true" : "false"); }
    template<std::integral Number>
    static QString text(Number piece)
    {
        return QString::number(piece);
    }

    QStringList m_entries;
};

// Where what went and what should are not the same, line by line; else nothing.
inline QString difference(const QStringList& went, const QString& should)
{
    const auto lines = [](const QString& text) { return text.split(u'\n', Qt::SkipEmptyParts); };
    const QStringList left = lines(went.join(u'\n'));
    const QStringList right = lines(should);
    for (qsizetype i = 0; i < std::max(left.size(), right.size()); ++i) {
        if (left.value(i) != right.value(i))
            return QStringLiteral("after %1 came %2, not %3")
                .arg(left.value(i - 1), left.value(i), right.value(i));
    }
    return {};
}

// Boxes that answer by themselves and remember what they said, "title|text". In a journal their
// kind stands before it: "box|", "question|" or "prompt|".
class ScriptedDialogs final : public Dialogs
{
public:
    explicit ScriptedDialogs(Journal* journal = nullptr)
        : m_journal(journal)
    {
    }

    void MsgBox(const QString& text, const QString& title, Icon icon) override
    {
        lastIcon = icon;
        show("box|", title + u'|' + text);
    }
    bool askYesNo(const QString& text, const QString& title) override
    {
        lastIcon = Icon::Question;
        show("question|", title + u'|' + text);
        return answerYes;
    }
    QString InputBox(const QString& prompt, const QString& title) override
    {
        show("prompt|", title + u'|' + prompt);
        return answerText;
    }
    void Beep() override
    {
        ++beeps;
        if (m_journal)
            (*m_journal)("Beep");
    }

    QStringList shown;
    Icon lastIcon = Icon::None;
    bool answerYes = true;
    QString answerText;
    int beeps = 0;
    std::function<void()> whileOpen; // what goes on behind the next box

private:
    void show(const char* kind, const QString& what)
    {
        shown += what;
        if (m_journal)
            (*m_journal)(kind, what);
        if (whileOpen)
            std::exchange(whileOpen, {})();
    }

    Journal* m_journal;
};

struct StoppedClock final : Clock
{
    QDateTime now() const override { return time; }

    QDateTime time{QDate(2003, 4, 5), QTime(6, 7, 8)};
};

// A server that hears lines and says nothing.
struct Server final : ServerLink
{
    void SendData(const QString& line) override { sent += line; }
    int sockState() const override { return state; }
    QString remoteHost() const override { return {}; }
    int remotePort() const override { return 0; }

    int state = Winsock::Connected;
    QStringList sent;
};

struct RoomWindow final : RoomForm
{
    RichTextBox& DataIn() override { return view; }
    RichTextBox& rtbTopic() override { return topic; }
    ListBox& lstNicks() override { return nicks; }
    void setCmdCount(const QString&) override {}
    void setVisible(bool) override {}

    MemoryView view;
    MemoryView topic;
    ListBoxWidget nicks{ListBoxWidget::Order::Sorted};
};
