#include "session/DoConnect.h"

#include "commands/CommandProcessor.h"
#include "platform/Dialogs.h"
#include "session/Connection.h"

using namespace Qt::StringLiterals;

void DoConnect(const QString& server, Dialogs& dialogs, Connection& connection,
               CommandProcessor& commands)
{
    if (!dialogs.askYesNo("Would you really like to connect to the server '"_L1 + server +
                              "'? You will be disconnect from your current one"_L1,
                          u"QuillHarborMessenger"_s))
        return;
    connection.mnu_File_Disconnect_Click();
    // The line goes nowhere: there is no connection that could take it.
    commands.ProcessInput({}, "server "_L1 + server);
}
