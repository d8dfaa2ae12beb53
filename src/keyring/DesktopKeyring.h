#pragma once

#include "settings/Keyring.h"

#include <QObject>

namespace QKeychain {
class Job;
}

// The keyring of the desktop that the program runs on.
class DesktopKeyring final : public QObject, public Keyring
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID QH_Keyring_iid)
    Q_INTERFACES(Keyring)

public:
    void read(const QString& name, Told told) override;
    void write(const QString& name, const QString& password, Told told) override;
    void remove(const QString& name, Told told) override;

private:
    static void start(QKeychain::Job* job, const QString& name, Told told);
};
