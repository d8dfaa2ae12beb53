#pragma once

#include <QToolButton>

// The quiet line of the sign-in form that names the network and leads to the choice of another.
class NetworkLink final : public QToolButton
{
    Q_OBJECT
public:
    explicit NetworkLink(QWidget* parent);

    // The server as it was typed; one that does not answer is told.
    void showServer(const QString& server, bool failed = false);
};
