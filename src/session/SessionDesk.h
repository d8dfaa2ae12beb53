#pragma once

#include "room/Room.h"
#include "text/MainView.h"
#include "text/TextWriter.h"

class ChannelTable;
class CommandProcessor;
class Connection;
class ContactList;
class Ctcp;
class Dialogs;
class EventLoop;
class IncomingText;
class ListsForm;
class MainForm;
class ModeLine;
class NickEvents;
class NickPrompts;
class QueryTable;
class SignInForm;
class StatusLine;
struct SessionVariables;

// Everything that server lines act on.
struct SessionDesk
{
    SessionVariables& variables;
    SignInForm& login;
    MainForm& channel;
    NickPrompts& prompts;
    ContactList& buddies;
    ListsForm& channelInfo;
    Dialogs& dialogs;
    EventLoop& events;
    Connection& connection;
    ChannelTable& channels;
    QueryTable& queries;
    const MainView& mainView;
    const TextWriter& writer;
    const StatusLine& status;
    const ModeLine& modeLine;
    const NickEvents& nickEvents;
    const IncomingText& roomText;
    const Ctcp& ctcp;
    CommandProcessor& commands;

    void writeIn(const Room& room, const QString& text) const
    {
        writer.WriteView(room.form.DataIn(), text);
    }
};
