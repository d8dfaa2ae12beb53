#include "text/PaletteGrid.h"

#include <QGridLayout>
#include <QKeyEvent>
#include <QPainter>
#include <QVBoxLayout>

#include <algorithm>

namespace {

constexpr qreal cornerRadius = 5;
constexpr int ringWidth = 2;
constexpr int margin = 3; // between the ring and the content
constexpr int aroundPalette = 12;

} // namespace

PaletteItem::PaletteItem(const QSize& size)
    : m_size(size)
{
    setFocusPolicy(Qt::NoFocus);
    setAttribute(Qt::WA_Hover);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
}

void PaletteItem::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    QColor tint = palette().color(QPalette::Highlight);
    const QRectF ring = QRectF(rect()).adjusted(1, 1, -1, -1);
    if (underMouse() || isDown()) {
        tint.setAlphaF(isDown() ? 0.45F : 0.2F);
        painter.setPen(Qt::NoPen);
        painter.setBrush(tint);
        painter.drawRoundedRect(ring, cornerRadius, cornerRadius);
    }
    if (hasFocus()) {
        painter.setPen(QPen(palette().color(QPalette::Highlight), ringWidth));
        painter.setBrush(Qt::NoBrush);
        painter.drawRoundedRect(ring, cornerRadius, cornerRadius);
    }
    paintContent(painter, rect().adjusted(margin, margin, -margin, -margin));
}

void setUpPalette(QWidget& window, const QString& name, const QString& title,
                  std::initializer_list<QWidget*> rows)
{
    window.setObjectName(name);
    window.setWindowTitle(title);
    window.setWindowFlags(Qt::Tool | Qt::WindowTitleHint | Qt::WindowCloseButtonHint);
    auto* layout = new QVBoxLayout(&window);
    layout->setContentsMargins(aroundPalette, aroundPalette, aroundPalette, aroundPalette);
    layout->setSpacing(aroundPalette);
    layout->setSizeConstraint(QLayout::SetFixedSize);
    for (QWidget* row : rows)
        layout->addWidget(row);
}

PaletteGrid::PaletteGrid(int columns, QWidget* parent)
    : QWidget(parent)
    , m_columns(columns)
{
    auto* layout = new QGridLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(2);
    for (int column = 0; column < columns; ++column)
        layout->setColumnStretch(column, 1);
}

void PaletteGrid::add(PaletteItem* item, int columnSpan)
{
    put(item, columnSpan, {});
    m_places.append({item, m_row});
    item->installEventFilter(this);
    if (m_places.size() == 1)
        item->setFocusPolicy(Qt::TabFocus);
}

void PaletteGrid::addOther(QWidget* widget)
{
    put(widget, 1, Qt::AlignCenter);
}

void PaletteGrid::put(QWidget* widget, int columnSpan, Qt::Alignment alignment)
{
    if (m_column + columnSpan > m_columns) {
        ++m_row;
        m_column = 0;
    }
    static_cast<QGridLayout*>(layout())->addWidget(widget, m_row, m_column, 1, columnSpan,
                                                   alignment);
    m_column += columnSpan;
}

bool PaletteGrid::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() != QEvent::KeyPress)
        return false;
    const auto place = std::ranges::find(m_places, watched, &Place::item);
    const auto* key = static_cast<QKeyEvent*>(event);
    switch (key->key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
        if (!key->isAutoRepeat())
            place->item->click();
        return true;
    case Qt::Key_Left:
    case Qt::Key_Right:
    case Qt::Key_Up:
    case Qt::Key_Down:
    case Qt::Key_Home:
    case Qt::Key_End:
        moveTo(neighbour(place - m_places.begin(), key->key()));
        return true;
    default:
        return false;
    }
}

// The item that Tab reaches is the one that had the focus last.
void PaletteGrid::moveTo(PaletteItem* item)
{
    for (const Place& place : std::as_const(m_places))
        place.item->setFocusPolicy(place.item == item ? Qt::TabFocus : Qt::NoFocus);
    item->setFocus(Qt::TabFocusReason);
}

PaletteItem* PaletteGrid::neighbour(qsizetype from, int key) const
{
    const Place& place = m_places[from];
    const int x = place.item->geometry().center().x();
    switch (key) {
    case Qt::Key_Left:
        return m_places[std::max<qsizetype>(from - 1, 0)].item;
    case Qt::Key_Right:
        return m_places[std::min(from + 1, m_places.size() - 1)].item;
    case Qt::Key_Up:
        return nearestInRow(std::max(place.row - 1, 0), x);
    case Qt::Key_Down:
        return nearestInRow(std::min(place.row + 1, m_places.last().row), x);
    case Qt::Key_Home:
        return m_places.first().item;
    default:
        return m_places.last().item;
    }
}

PaletteItem* PaletteGrid::nearestInRow(int row, int x) const
{
    PaletteItem* nearest = nullptr;
    const auto distance = [x](const PaletteItem* item) {
        return std::abs(item->geometry().center().x() - x);
    };
    for (const Place& place : m_places) {
        if (place.row == row && (!nearest || distance(place.item) < distance(nearest)))
            nearest = place.item;
    }
    return nearest;
}
