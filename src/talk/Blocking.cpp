#include "talk/Blocking.h"

#include "common/ControlCharacters.h"
#include "common/SessionVariables.h"
#include "controls/ListBox.h"
#include "room/Room.h"

using namespace Qt::StringLiterals;

QString blockedRow(const QString& nick)
{
    return nick + " - Blocked"_L1;
}

bool holdsRow(const ListBox& rows, const QString& text)
{
    const QString wanted = text.toLower();
    for (int row = 0; row < rows.ListCount(); ++row) {
        if (rows.List(row).toLower() == wanted)
            return true;
    }
    return false;
}

QString blockRefusal(const QString& nick, const SessionVariables& variables, const Room& room)
{
    if (nick == variables.ownNick())
        return u"You can't block yourself?"_s;
    if (room.nicks.isOp(nick) || room.nicks.isHalfOp(nick))
        return u"You can't block a Operator"_s;
    return {};
}

QString ignoredNotice(const QString& nick, const QString& ownNick, QLatin1StringView program)
{
    return "PRIVMSG "_L1 % nick % u' ' % strColor % u'4' % strBold % "You've been ignored by "_L1 %
           ownNick % program;
}
