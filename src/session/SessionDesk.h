#pragma once

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
class TextWriter;
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
    const TextWriter& writer;
    const StatusLine& status;
    const ModeLine& modeLine;
    const NickEvents& nickEvents;
    const IncomingText& roomText;
    const Ctcp& ctcp;
    CommandProcessor& commands;
};
