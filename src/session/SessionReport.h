#pragma once

#include <QDeadlineTimer>
#include <QMetaType>
#include <QString>

// What happened to the session last. The windows tell it in words; nothing is decided by it.
struct SessionReport
{
    enum class Event {
        SignedOut,
        Connecting,
        Cancelled,
        Failed, // the attempt, or the connection
        Connected,
        NickRefused, // the connection stands
        Welcome,
        RoomRefused,
        Kicked,
        Killed,
        ServerClosed
    };

    Event event = Event::SignedOut;
    QString who = {};    // kicked, or the nick that was refused
    QString reason = {}; // as somebody else worded it; may be empty
    QString server = {};
    QDeadlineTimer nextTry{QDeadlineTimer::Forever}; // Forever: nobody tries

    bool isConnected() const
    {
        return event == Event::Connected || event == Event::NickRefused || event == Event::Welcome;
    }
};
Q_DECLARE_METATYPE(SessionReport)
