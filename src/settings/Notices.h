#pragma once

#include <QString>

#include <functional>
#include <memory>

// Tells the user what he has to know of his files, a line at a time. Nothing waits for an answer.
// Copies speak with one voice; one without a listener is silent.
class Notices final
{
public:
    using Tell = std::function<void(const QString& line)>;

    explicit Notices(Tell tell = {});

    // Of each file once: neither a full disk nor a missing right goes away by being repeated.
    void notKept(const QString& path, const QString& why, const QString& what) const;
    void notRead(const QString& path, const QString& why) const;
    // Every time, because every sign-in ends by it.
    void notUnderstood(const QString& path, const QString& section, const QString& key,
                       const QString& value) const;

private:
    struct State;

    void tellOnce(const QString& path, const QString& line) const;

    std::shared_ptr<State> m_state;
};
