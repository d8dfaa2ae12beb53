#pragma once

#include "settings/Keyring.h"

#include <QObject>
#include <QTimer>

class UserStore;

// The password that is to be remembered: in the desktop's keyring when there is one, in the
// per-user store when there is none or it does not answer in time. What the store holds goes
// before the keyring and moves there when it is kept again. A keyring is asked for only once a
// password has been kept, so that who remembers none never meets it.
class RememberedPassword final : public QObject
{
    Q_OBJECT
public:
    using AskKeyring = std::function<Keyring*()>; // no keyring: nullptr
    using Found = std::function<void(const QString& password)>;

    RememberedPassword(const UserStore& store, AskKeyring askKeyring);

    // What the store holds.
    QString known() const;
    // Asks the keyring if it has the password; the answer, empty when it gives none, comes later
    // and not at all when something else is kept before. False when there is nothing to wait for.
    bool recall(Found found);
    bool isAwaited() const { return m_found != nullptr; }

    // An empty one forgets what was kept.
    void keep(const QString& password);
    // The program ends: what the keyring has not taken yet goes to the store.
    void settle();

    void setTimeLimit(int milliseconds) { m_limit.setInterval(milliseconds); }

private:
    enum class Step { None, Reading, Writing, Removing };

    void ask(Step step);
    void take(Step step, Keyring::Answer answer, const QString& password);
    void tookRead(const QString& password);
    void tookWrite(Keyring::Answer answer);
    void tookRemoval(Keyring::Answer answer);
    void saveInStore(const QString& password) const;
    QString place() const;
    void setPlace(const QString& place) const;

    const UserStore& m_store;
    const AskKeyring m_askKeyring;
    Step m_step = Step::None;
    quint64 m_question = 0; // an answer to an older one comes too late
    QString m_keeping;      // the password that the keyring is being given
    QString m_placeBefore;
    QString m_held; // the password that the keyring is known to have
    Found m_found;
    QTimer m_limit;
};
