#pragma once

#include "controls/MenuEntry.h"

#include <QAction>

// MenuEntry on an action of the toolkit.
class ActionEntry final : public QAction, public MenuEntry
{
    Q_OBJECT
public:
    using QAction::QAction;

    QString Caption() const override { return text(); }
    void setCaption(const QString& caption) override { setText(caption); }
    bool Enabled() const override { return isEnabled(); }
    void setEnabled(bool enabled) override { QAction::setEnabled(enabled); }
    bool Checked() const override { return isChecked(); }
    void setChecked(bool checked) override { QAction::setChecked(checked); }
};
