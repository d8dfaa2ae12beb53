#pragma once

#include <QString>
#include <QStringList>

#include <optional>

// One line to a server of today (RFC 2812), in its parts. Nothing in it holds a code 0 or a line
// end.
struct StandardLine
{
    QString command;
    QStringList middles;
    std::optional<QString> last;

    // All before the text of the last parameter, with its colon where it needs one.
    QString head() const;
    QString text() const { return head() + last.value_or(QString()); }
};

// The same line in the form of today: what the house says in words of its own, or without the
// colon before a text, becomes what every server knows.
StandardLine standardForm(const QString& houseLine);
