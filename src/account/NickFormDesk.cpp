#include "account/NickFormDesk.h"

#include "common/SessionVariables.h"
#include "session/Ports.h"
#include "wire/LineSink.h"

using namespace Qt::StringLiterals;

void takeNick(const NickFormDesk& desk, const QString& nick)
{
    desk.variables.MyNick = nick;
    desk.server.SendData("NICK "_L1 + nick);
    desk.login.setNickname(nick);
}
