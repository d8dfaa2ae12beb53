#pragma once

#include <QToolButton>

// Stands over the newest lines of a chat view while the reader is further up: tells how many have
// come and leads to them.
class NewMessagesChip final : public QToolButton
{
    Q_OBJECT
public:
    explicit NewMessagesChip(QWidget* parent);

    // Of lines; hidden at 0. True: its size may have changed.
    bool setCount(qsizetype count);

    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QString countText() const;
    int badgeWidth() const;

    qsizetype m_count = 0;
};
