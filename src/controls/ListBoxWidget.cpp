#include "controls/ListBoxWidget.h"

#include "controls/Collation.h"

#include <QContextMenuEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QScopedValueRollback>
#include <QStyledItemDelegate>

#include <algorithm>

namespace {

constexpr int hintMargin = 16;

// A row may be as long as a line of the server; what nobody can read is not drawn.
class ShortRows final : public QStyledItemDelegate
{
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    QString displayText(const QVariant& value, const QLocale& locale) const override
    {
        constexpr qsizetype readable = 300;
        return QStyledItemDelegate::displayText(value, locale).left(readable);
    }
};

} // namespace

ListBoxWidget::ListBoxWidget(Order order, QWidget* parent)
    : QListWidget(parent)
    , m_order(order)
{
    setUniformItemSizes(true);
    setItemDelegate(new ShortRows(this));
    setSelectionMode(QAbstractItemView::SingleSelection);
}

void ListBoxWidget::setHint(const QString& hint)
{
    m_hint = hint;
    setAccessibleDescription(hint);
    viewport()->update();
}

void ListBoxWidget::paintEvent(QPaintEvent* event)
{
    QListWidget::paintEvent(event);
    if (count() > 0 || m_hint.isEmpty())
        return;
    QPainter painter(viewport());
    painter.setPen(palette().color(QPalette::PlaceholderText));
    painter.drawText(viewport()->rect().adjusted(hintMargin, hintMargin, -hintMargin, -hintMargin),
                     Qt::AlignHCenter | Qt::AlignTop | Qt::TextWordWrap, m_hint);
}

void ListBoxWidget::AddItem(const QString& text)
{
    const int selected = ListIndex();
    const int place = m_order == Order::Sorted ? placeOf(text) : count();
    m_rows.insert(place, text);
    insertItem(place, text);
    // The toolkit makes the first row current by itself; only the user selects.
    setListIndex(selected >= place && selected != -1 ? selected + 1 : selected);
}

void ListBoxWidget::RemoveItem(int index)
{
    if (index < 0 || index >= count())
        return;
    const int selected = ListIndex();
    m_rows.removeAt(index);
    delete takeItem(index);
    setListIndex(selected == index ? -1 : selected > index ? selected - 1 : selected);
}

void ListBoxWidget::Clear()
{
    m_rows.clear();
    clear();
}

int ListBoxWidget::ListCount() const
{
    return count();
}

QString ListBoxWidget::List(int index) const
{
    return m_rows.value(index);
}

int ListBoxWidget::find(const std::function<bool(const QString& row)>& isIt) const
{
    const auto found = std::ranges::find_if(m_rows, isIt);
    return found == m_rows.end() ? -1 : static_cast<int>(found - m_rows.begin());
}

void ListBoxWidget::setList(int index, const QString& text)
{
    if (QListWidgetItem* row = item(index)) {
        m_rows[index] = text;
        row->setText(text);
    }
}

int ListBoxWidget::ListIndex() const
{
    const QModelIndexList rows = selectionModel()->selectedIndexes();
    return rows.isEmpty() ? -1 : rows.first().row();
}

void ListBoxWidget::setListIndex(int index)
{
    if (index == ListIndex() && index == currentRow())
        return;
    setCurrentRow(index);
}

void ListBoxWidget::setEnabled(bool enabled)
{
    QListWidget::setEnabled(enabled);
}

void ListBoxWidget::timerEvent(QTimerEvent* event)
{
    const QScopedValueRollback onTime(m_isOnTime, true);
    QListWidget::timerEvent(event);
}

// Whoever yields after each of many changes would have all rows placed and painted anew each time.
// They wait for the next frame, and for one that is far enough away when there are very many.
void ListBoxWidget::doItemsLayout()
{
    constexpr qint64 frame = 16;
    const qint64 rest = std::max(frame, 8 * m_layoutTime);
    if (m_isOnTime && m_sinceLayout.isValid() && m_sinceLayout.elapsed() < rest) {
        setUpdatesEnabled(false);
        scheduleDelayedItemsLayout();
        return;
    }
    m_sinceLayout.start();
    QListWidget::doItemsLayout();
    m_layoutTime = m_sinceLayout.restart();
    setUpdatesEnabled(true);
}

void ListBoxWidget::mousePressEvent(QMouseEvent* event)
{
    if (event->button() == Qt::RightButton) {
        Q_EMIT RightButtonDown(event->globalPosition().toPoint());
        return;
    }
    QListWidget::mousePressEvent(event);
}

void ListBoxWidget::mouseDoubleClickEvent(QMouseEvent* event)
{
    QListWidget::mouseDoubleClickEvent(event);
    if (event->button() == Qt::LeftButton)
        Q_EMIT DblClick();
}

void ListBoxWidget::keyPressEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
        Q_EMIT DblClick(); // the keyboard's double click
        return;
    }
    QListWidget::keyPressEvent(event);
}

void ListBoxWidget::contextMenuEvent(QContextMenuEvent* event)
{
    // The mouse has had its menu on the press; this is the menu key.
    if (event->reason() == QContextMenuEvent::Keyboard)
        Q_EMIT RightButtonDown(event->globalPos());
}

int ListBoxWidget::placeOf(const QString& text) const
{
    // Behind its equals. Rows that were overwritten in place may break the order; any place that
    // the search then finds is as good as another.
    int from = 0;
    int to = count();
    while (from < to) {
        const int middle = (from + to) / 2;
        if (collate(text, m_rows[middle]) < 0)
            to = middle;
        else
            from = middle + 1;
    }
    return from;
}
