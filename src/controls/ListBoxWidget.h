#pragma once

#include "controls/ListBox.h"

#include <QElapsedTimer>
#include <QListWidget>

// ListBox on a list widget.
class ListBoxWidget final : public QListWidget, public ListBox
{
    Q_OBJECT
public:
    enum class Order { AsAdded, Sorted };

    explicit ListBoxWidget(Order order, QWidget* parent = nullptr);

    // Painted while there are no rows: what the list is for, and how something comes into it.
    void setHint(const QString& hint);
    QString hint() const { return m_hint; }

    void AddItem(const QString& text) override;
    void RemoveItem(int index) override;
    void Clear() override;
    int ListCount() const override;
    QString List(int index) const override;
    int find(const std::function<bool(const QString& row)>& isIt) const override;
    void setList(int index, const QString& text) override;
    int ListIndex() const override;
    void setListIndex(int index) override;
    void setEnabled(bool enabled) override;

    void doItemsLayout() override;

Q_SIGNALS:
    void DblClick();
    // The right button went down; the selection has not changed by it.
    void RightButtonDown(const QPoint& globalPosition);

protected:
    void timerEvent(QTimerEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    int placeOf(const QString& text) const;

    Order m_order;
    bool m_isOnTime = false;
    QElapsedTimer m_sinceLayout;
    qint64 m_layoutTime = 0; // milliseconds
    QStringList m_rows;      // the same texts: asking the items for them takes its time
    QString m_hint;
};
