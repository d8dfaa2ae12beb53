#pragma once

// Waiting without blocking: whoever waits lets all other events run, the socket's own included.
class EventLoop
{
public:
    virtual ~EventLoop() = default;

    // Runs what is pending and returns.
    virtual void DoEvents() = 0;
    // Runs events until this many seconds have passed; sleeps when there are none.
    virtual void Pause(double seconds) = 0;
};

class QtEventLoop final : public EventLoop
{
public:
    void DoEvents() override;
    void Pause(double seconds) override;
};
