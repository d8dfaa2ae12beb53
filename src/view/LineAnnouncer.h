#pragma once

#include <QWidget>

// Says lines to a screen reader while the keyboard is elsewhere. To the eye there is nothing.
class LineAnnouncer final : public QWidget
{
    Q_OBJECT
public:
    explicit LineAnnouncer(QWidget* parent);

    // Of many lines at once the last ones.
    void announce(const QString& lines);
};
