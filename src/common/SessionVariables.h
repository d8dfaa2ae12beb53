#pragma once

#include "common/Int16.h"
#include "common/TextHelpers.h"

#include <QString>

// What one running program knows of its session, shared by reference by whoever needs it.
// Texts that come from the settings file keep their padding of code 0 characters: they go to
// the wire with it. beforeNul() gives the part to compare or to show.
struct SessionVariables
{
    QString ServerHost;
    QString Charset;         // of the wire
    QString AuthoritiesFile; // PEM, for TLS
    QString MyNick;
    QString AltNick; // only a nick collision touches it, so the first collision clears MyNick
    QString FullName;
    QString IdentName;
    QString AutoJoin;
    QString QuitMsg;
    bool Reconnect = false;
    bool WhoisQuery = false;
    bool ListFetching = false; // a ban, exception or invitation list has been asked for
    Int16 MaxTextHistory;

    QString FontName;
    Int16 FontSize;

    // What another nick is compared with: until the welcome MyNick still has its padding.
    QString ownNick() const { return beforeNul(MyNick); }
};
