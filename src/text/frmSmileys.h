#pragma once

#include "platform/Form.h"

class Handlers;

// The palette of smileys. It stays in sight while the user types elsewhere; its owner adds what
// is picked to the input line.
class frmSmileys final : public Form
{
    Q_OBJECT
public:
    explicit frmSmileys(const Handlers& handlers, QWidget* parent = nullptr);

Q_SIGNALS:
    void picked(const QString& code);

protected:
    void changeEvent(QEvent* event) override;
};
