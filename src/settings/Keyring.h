#pragma once

#include <QString>
#include <QtPlugin>

#include <functional>

// Where the desktop keeps passwords. Each call returns at once; its answer comes once, later,
// through the event loop. Nobody promises that it comes: the desktop may ask its user first.
class Keyring
{
public:
    enum class Answer { Done, NoEntry, Unavailable };
    using Told = std::function<void(Answer answer, const QString& password)>;

    virtual ~Keyring() = default;

    virtual void read(const QString& name, Told told) = 0; // with the password when Done
    virtual void write(const QString& name, const QString& password, Told told) = 0;
    virtual void remove(const QString& name, Told told) = 0;
};

#define QH_Keyring_iid "quillharbor.Keyring/1"
Q_DECLARE_INTERFACE(Keyring, QH_Keyring_iid)
