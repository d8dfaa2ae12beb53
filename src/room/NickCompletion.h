#pragma once

#include <QString>
#include <QStringList>

#include <functional>
#include <optional>

class ListBox;
class RichTextBox;

// Completes the name in front of the caret of an input line. Asked again about its own answer it
// goes on to the next name that fits, or back to the one before, round and round.
class NickCompletion final
{
public:
    struct Line
    {
        QString text;
        qsizetype caret = 0;
        bool operator==(const Line&) const = default;
    };
    enum class Direction { Next, Previous };
    // All names, the likeliest first. Asked once for each word.
    using Names = std::function<QStringList()>;

    explicit NickCompletion(Names names);

    // Nothing where no name fits the word, or there is no word.
    std::optional<Line> complete(const Line& line, Direction direction);

private:
    bool startAt(const Line& line);

    Names m_names;
    QStringList m_fitting;
    qsizetype m_chosen = 0;
    Line m_before; // what the user has typed; the word's place in it
    qsizetype m_wordStart = 0;
    Line m_answer;
};

// Who is in the room, whoever spoke last in front, then in the order of the list. Read from what
// the view shows, so that speaking costs nothing.
QStringList namesByLastSpeaker(const RichTextBox& conversation, const ListBox& chatters);
