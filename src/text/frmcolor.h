#pragma once

#include "platform/Form.h"

class Handlers;

// The palette for the colour of the user's own text. It goes away when another window is used;
// its owner hides it when a colour has been picked.
class frmcolor final : public Form
{
    Q_OBJECT
public:
    explicit frmcolor(const Handlers& handlers, QWidget* parent = nullptr);

Q_SIGNALS:
    void picked(const QString& code);

protected:
    void changeEvent(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
};
