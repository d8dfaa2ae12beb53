#pragma once

#include <QString>

// One entry of a menu as logic sees it. Its caption can be a state: "&Connect" against "&Cancel".
class MenuEntry
{
public:
    virtual ~MenuEntry() = default;

    virtual QString Caption() const = 0;
    virtual void setCaption(const QString& caption) = 0;
    virtual bool Enabled() const = 0;
    virtual void setEnabled(bool enabled) = 0;
    virtual bool Checked() const = 0;
    virtual void setChecked(bool checked) = 0;
};
