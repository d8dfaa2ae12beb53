#include "view/NewMessagesChip.h"

#include "view/ReadableGround.h"

#include <QPainter>

using namespace Qt::StringLiterals;

namespace {

constexpr int chipHeight = 30;
constexpr int padding = 12;
constexpr int gap = 8;
constexpr int badgeHeight = 20;
constexpr QSize arrow(9, 5);
constexpr qsizetype largestShown = 999;

} // namespace

NewMessagesChip::NewMessagesChip(QWidget* parent)
    : QToolButton(parent)
{
    setObjectName(u"unseenNotice"_s);
    setText(u"New messages below"_s);
    setFocusPolicy(Qt::NoFocus);
    setCursor(Qt::PointingHandCursor);
    hide();
}

bool NewMessagesChip::setCount(qsizetype count)
{
    if (count == m_count)
        return false;
    m_count = count;
    setAccessibleName(count == 0 ? text() : QString(text() + ": "_L1 + countText()));
    update();
    setVisible(count > 0);
    return true;
}

QSize NewMessagesChip::sizeHint() const
{
    const int words = fontMetrics().horizontalAdvance(text());
    return {2 * padding + arrow.width() + gap + words + gap + badgeWidth(), chipHeight};
}

void NewMessagesChip::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QPalette paper = parentWidget()->palette(); // the words of a button are for the frame
    const QColor accent = paper.color(QPalette::Highlight);
    const QColor base = paper.color(QPalette::Base);
    const double tint = isDown() ? 0.32 : underMouse() ? 0.22 : 0.12;
    painter.setPen(QPen(mixed(base, accent, 0.7), 1));
    painter.setBrush(mixed(base, accent, tint));
    const QRectF frame = QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5);
    painter.drawRoundedRect(frame, frame.height() / 2, frame.height() / 2);

    const int middle = rect().center().y();
    const int left = padding;
    const int top = middle - arrow.height() / 2;
    painter.setPen(QPen(paper.color(QPalette::Text), 1.6, Qt::SolidLine, Qt::RoundCap));
    painter.drawPolyline(QPolygonF{QPointF(left, top),
                                   QPointF(left + arrow.width() / 2.0, top + arrow.height()),
                                   QPointF(left + arrow.width(), top)});
    QRect words = rect();
    words.setLeft(left + arrow.width() + gap);
    painter.drawText(words, Qt::AlignVCenter | Qt::AlignLeft, text());

    const QRectF badge(width() - padding / 2.0 - badgeWidth(), (chipHeight - badgeHeight) / 2.0,
                       badgeWidth(), badgeHeight);
    painter.setPen(Qt::NoPen);
    painter.setBrush(accent);
    painter.drawRoundedRect(badge, badgeHeight / 2.0, badgeHeight / 2.0);
    painter.setPen(paper.color(QPalette::HighlightedText));
    painter.drawText(badge, Qt::AlignCenter, countText());
}

QString NewMessagesChip::countText() const
{
    return m_count > largestShown ? QString::number(largestShown) + u'+' : QString::number(m_count);
}

int NewMessagesChip::badgeWidth() const
{
    return std::max(fontMetrics().horizontalAdvance(countText()) + 12, badgeHeight);
}
