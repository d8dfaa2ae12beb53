#include "keyring/DesktopKeyring.h"

#include <qt6keychain/keychain.h>

#include <utility>

namespace {

const QString service = QStringLiteral("Quill Harbor Messenger");

Keyring::Answer answerOf(QKeychain::Error error)
{
    switch (error) {
    case QKeychain::NoError:
        return Keyring::Answer::Done;
    case QKeychain::EntryNotFound:
        return Keyring::Answer::NoEntry;
    default:
        return Keyring::Answer::Unavailable;
    }
}

} // namespace

void DesktopKeyring::read(const QString& name, Told told)
{
    start(new QKeychain::ReadPasswordJob(service), name, std::move(told));
}

void DesktopKeyring::write(const QString& name, const QString& password, Told told)
{
    auto* job = new QKeychain::WritePasswordJob(service);
    job->setTextData(password);
    start(job, name, std::move(told));
}

void DesktopKeyring::remove(const QString& name, Told told)
{
    start(new QKeychain::DeletePasswordJob(service), name, std::move(told));
}

void DesktopKeyring::start(QKeychain::Job* job, const QString& name, Told told)
{
    job->setKey(name);
    job->setInsecureFallback(false); // without a keyring the program has a place of its own
    connect(job, &QKeychain::Job::finished, job,
            [told = std::move(told)](QKeychain::Job* finished) {
                const auto* reading = qobject_cast<const QKeychain::ReadPasswordJob*>(finished);
                told(answerOf(finished->error()), reading ? reading->textData() : QString());
            });
    job->start();
}
