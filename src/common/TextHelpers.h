#pragma once

#include <QString>
#include <QStringList>

// Text helpers that all of the session rests on. Positions and counts are in characters.

// Both results are the whole source when the separator does not occur. The source may be one of
// the two results. The separator is one character long.
void SplitAt(const QString& source, QChar separator, QString& left, QString& right);

// What stands behind, or before, the first separator; the text itself without one.
QString TextAfter(const QString& text, QChar separator);
QString TextBefore(const QString& text, QChar separator);

// The text without its first, or last, count characters; empty when it is not that long.
QString CutLeft(const QString& text, qsizetype count);
QString CutRight(const QString& text, qsizetype count);

// Words first to last (one-based, both included, last -1 for the end) joined by one blank, without
// carriage returns. A range beyond the words is empty.
QString GetWords(const QStringList& words, qsizetype first, qsizetype last);

// CR LF, CR and LF are each one LF.
QString withLineFeeds(QString text);

QString withoutCarriageReturns(QString text);

// Blanks only: tabs and code 0 are characters like any other.
QString trimBlanks(const QString& text);

// Texts from the settings file are padded with code 0: this is the part that is meant.
QString beforeNul(const QString& text);
