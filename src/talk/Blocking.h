#pragma once

#include <QString>

#include <functional>

class ListBox;
struct Room;
struct SessionVariables;

// Who is refused in private talk has a row in the ignore list.

// The rows themselves; asking may load their window.
using BlockedRows = std::function<ListBox&()>;

QString blockedRow(const QString& nick);
bool holdsRow(const ListBox& rows, const QString& text); // case ignored

// Why a nick cannot be blocked at all, as a text for the user; empty if it can.
QString blockRefusal(const QString& nick, const SessionVariables& variables, const Room& room);
// The line that tells a blocked nick so. One word arrives: without a colon the others are
// parameters of their own.
QString ignoredNotice(const QString& nick, const QString& ownNick, QLatin1StringView program);
// That it is blocked already. When that is said, the two ways of blocking disagree.
inline const QString sameNickRefusal = QStringLiteral("Are you trying to add same nick?");
