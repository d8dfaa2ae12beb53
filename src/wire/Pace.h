#pragma once

#include <QByteArray>
#include <QList>
#include <QTimer>

#include <functional>

// Lines to a server, no faster than the strictest of them takes them without an end for flooding:
// each costs time by its length, and what is behind by more than an allowance waits its turn.
class Pace final : public QObject
{
public:
    using Write = std::function<void(const QByteArray& line)>;
    using Now = std::function<qint64()>; // milliseconds that only grow

    Pace(Write write, Now now);

    // In the order of the calls.
    void send(const QByteArray& line);
    // Before all that waits: for answers that the server gives little time.
    void sendFirst(const QByteArray& line);
    // All that waits, at once: the end of the session follows.
    void flush();
    // What went out so far costs nothing: a server reckons from its welcome on.
    void forgive() { m_paidUntil = 0; }
    // Nothing waits any more, and the allowance is whole again.
    void clear();

    // What may go by now; a timer sees to it in time.
    void sendWhatMay();

    qsizetype waiting() const { return m_waiting.size(); }

private:
    void write(const QByteArray& line);
    qint64 behind() const;

    Write m_write;
    Now m_now;
    QList<QByteArray> m_waiting;
    qint64 m_paidUntil = 0;
    QTimer m_timer; // runs only while something waits
};
