#pragma once

#include <QString>
#include <QVarLengthArray>

// One server line taken apart (RFC 1459, section 2.3). A run of blanks gives empty parameters,
// and the line's CR stays in the last of them: GetParams takes it out. The parts are views of the
// line, which the message keeps.
struct IRCMessage
{
    QString Line;
    QStringView Prefix; // without its colon
    QString Nick;       // only of a prefix with "!", like Ident
    QStringView Ident;
    QStringView Host; // of a prefix without "!" all of it
    QStringView Command;
    QVarLengthArray<QStringView, 8> Params;
    QStringView ParamText; // all behind the command, as it came

    // One parameter, and all from one on: GetParams in its two usual forms.
    QString word(int index) const;
    QString from(int index) const;
    // One parameter as it came, empty without it.
    QString asItCame(int index) const;
};

IRCMessage ParseMessage(const QString& line);

// Parameters from to to (one-based, both included, -1 for the last) joined by one blank, without
// carriage returns. A range that the line does not have is empty.
QString GetParams(const IRCMessage& message, int from, int to);
