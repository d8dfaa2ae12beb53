#include "settings/RememberedPassword.h"

#include "settings/UserStore.h"

#include <QPointer>

#include <utility>

namespace {

using namespace Qt::StringLiterals;

constexpr auto application = "QuillHarbor"_L1;
constexpr auto section = "main"_L1;
constexpr auto passwordKey = "pass"_L1;

// What is known of the keyring without asking it. A removal that it has not confirmed is asked for
// again, never read.
constexpr auto placeKey = "passplace"_L1;
constexpr auto inKeyring = "keyring"_L1;
constexpr auto toBeRemoved = "remove"_L1;

constexpr auto entryName = "remembered password"_L1;

// The desktop may show a box and wait for its user.
constexpr int patience = 30'000;

} // namespace

RememberedPassword::RememberedPassword(const UserStore& store, AskKeyring askKeyring)
    : m_store(store)
    , m_askKeyring(std::move(askKeyring))
{
    m_limit.setSingleShot(true);
    m_limit.setInterval(patience);
    connect(&m_limit, &QTimer::timeout, this, [this] {
        const Step step = m_step;
        if (step == Step::Writing)
            m_placeBefore = inKeyring; // it may get there yet
        take(step, Keyring::Answer::Unavailable, {});
    });
}

QString RememberedPassword::known() const
{
    return m_store.GetSetting(application, section, passwordKey);
}

bool RememberedPassword::recall(Found found)
{
    const bool changing = m_step == Step::Writing || m_step == Step::Removing;
    if (changing || !known().isEmpty() || place() != inKeyring)
        return false;
    m_found = std::move(found);
    if (m_step == Step::None)
        ask(Step::Reading);
    return true;
}

void RememberedPassword::keep(const QString& password)
{
    m_found = nullptr;
    const bool beingKept = m_step == Step::Writing && m_keeping == password;
    const bool kept = m_step == Step::None && m_held == password && known().isEmpty();
    if (!password.isEmpty() && (beingKept || kept))
        return;
    m_held.clear();
    if (password.isEmpty()) {
        saveInStore({});
        if (place().isEmpty())
            return;
        setPlace(toBeRemoved);
        ask(Step::Removing);
        return;
    }
    m_keeping = password;
    ask(Step::Writing);
}

void RememberedPassword::settle()
{
    if (m_step == Step::Writing)
        saveInStore(m_keeping);
}

void RememberedPassword::ask(Step step)
{
    const quint64 question = ++m_question;
    m_step = step;
    m_placeBefore = place();
    Keyring* keyring = m_askKeyring ? m_askKeyring() : nullptr;
    if (!keyring) {
        take(step, Keyring::Answer::Unavailable, {});
        return;
    }
    m_limit.start();
    if (step == Step::Writing)
        setPlace(
            inKeyring); // it may be there from now on, even if the program ends before it tells
    const auto told = [self = QPointer(this), question, step](Keyring::Answer answer,
                                                              const QString& password) {
        if (self && self->m_question == question && self->m_step == step)
            self->take(step, answer, password);
    };
    const QString name = entryName;
    switch (step) {
    case Step::Reading:
        keyring->read(name, told);
        break;
    case Step::Writing:
        keyring->write(name, m_keeping, told);
        break;
    case Step::Removing:
        keyring->remove(name, told);
        break;
    case Step::None:
        break;
    }
}

void RememberedPassword::take(Step step, Keyring::Answer answer, const QString& password)
{
    m_limit.stop();
    m_step = Step::None;
    if (step == Step::Reading)
        tookRead(password);
    else if (step == Step::Writing)
        tookWrite(answer);
    else if (step == Step::Removing)
        tookRemoval(answer);
}

void RememberedPassword::tookRead(const QString& password)
{
    m_held = password;
    if (const Found found = std::exchange(m_found, nullptr))
        found(password);
}

void RememberedPassword::tookWrite(Keyring::Answer answer)
{
    const QString password = std::exchange(m_keeping, {});
    if (answer == Keyring::Answer::Done) {
        m_held = password;
        saveInStore({});
        return;
    }
    saveInStore(password);
    if (place() != m_placeBefore)
        setPlace(m_placeBefore);
}

void RememberedPassword::tookRemoval(Keyring::Answer answer)
{
    if (answer != Keyring::Answer::Unavailable)
        setPlace({});
}

void RememberedPassword::saveInStore(const QString& password) const
{
    m_store.SaveSetting(application, section, passwordKey, password);
}

QString RememberedPassword::place() const
{
    return m_store.GetSetting(application, section, placeKey);
}

void RememberedPassword::setPlace(const QString& place) const
{
    m_store.SaveSetting(application, section, placeKey, place);
}
