#pragma once

#include <QString>

class CommandProcessor;
class Connection;
class Dialogs;

// Leaves this server for another, if the user agrees. Nothing in the menus asks for it.
void DoConnect(const QString& server, Dialogs& dialogs, Connection& connection,
               CommandProcessor& commands);
