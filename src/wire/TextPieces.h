#pragma once

#include <QStringList>

class Charset;

// A text in pieces of at most so many bytes. A piece ends before a blank, which begins the next
// one, or at least between two characters, never inside a colour code; the next begins with the
// codes of the colour and style that are in force there. Each piece takes up text, however few
// bytes there are.
QStringList piecesOf(const QString& text, qsizetype bytes, const Charset& charset);

// How many code units of the text fit into so many bytes, cut between two characters.
qsizetype fittingLength(const QString& text, qsizetype bytes, const Charset& charset);
