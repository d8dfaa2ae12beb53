#pragma once

#include "platform/Form.h"

#include <QTimer>

// The first window: what the program is, for two seconds.
class frmSplash final : public Form
{
    Q_OBJECT
public:
    frmSplash();

    void Form_Load() override;

Q_SIGNALS:
    void finished();

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QTimer Timer1{this};
};
