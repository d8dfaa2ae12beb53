#pragma once

#include <QElapsedTimer>

// Waiting without blocking: whoever waits lets all other events run, the socket's own included.
class EventLoop
{
public:
    virtual ~EventLoop() = default;

    // Runs what is pending and returns.
    virtual void DoEvents() = 0;
    // The same for somebody who does so all the time: what the program has posted to itself runs
    // each time, what comes from outside may be seen a moment later, as if it had come later.
    virtual void DoEventsAgain() { DoEvents(); }
    // Runs events until this many seconds have passed; sleeps when there are none.
    virtual void Pause(double seconds) = 0;
};

class QtEventLoop final : public EventLoop
{
public:
    void DoEvents() override;
    void DoEventsAgain() override;
    void Pause(double seconds) override;

private:
    QElapsedTimer m_sinceOutside; // was looked at
};
