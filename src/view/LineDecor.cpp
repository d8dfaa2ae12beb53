#include "view/LineDecor.h"

#include "view/LineNotes.h"
#include "view/ReadableGround.h"

#include <QDateTime>
#include <QFontMetrics>
#include <QLocale>
#include <QPainter>

using namespace Qt::StringLiterals;

namespace {

constexpr double bandTint = 0.16;
constexpr int edgeWidth = 3;
constexpr int timeLeft = 8;
constexpr int timeGap = 8;
constexpr double timeScale = 0.88; // of the view's own font

QFont timeFont(QFont font)
{
    font.setPointSizeF(font.pointSizeF() * timeScale);
    return font;
}

} // namespace

LineDecor::LineDecor(const LineNotes& notes, const QPalette& palette, const QFont& font)
    : m_notes(notes)
    , m_palette(palette)
    , m_font(font)
{
}

int LineDecor::timeWidth(const QFont& font)
{
    return timeLeft + QFontMetrics(timeFont(font)).horizontalAdvance(u"00:00"_s) + timeGap;
}

void LineDecor::drawGround(QPainter& painter, const Line& line) const
{
    if (m_notes.isMarked(line.number)) {
        const QColor base = m_palette.color(QPalette::Base);
        painter.fillRect(line.room, mixed(base, markColor(), bandTint));
        painter.fillRect(QRect(line.room.topLeft(), QSize(edgeWidth, line.room.height())),
                         markColor());
    }
    if (line.number == m_notes.firstUnread())
        painter.fillRect(QRect(line.room.topLeft(), QSize(line.room.width(), 1)),
                         m_palette.color(QPalette::Highlight));
}

void LineDecor::drawTime(QPainter& painter, const Line& line) const
{
    const qint64 seconds = m_notes.times().at(line.number);
    if (seconds == LineTimes::unknown)
        return;
    painter.setFont(timeFont(m_font));
    painter.setPen(mixed(m_palette.color(QPalette::Text), m_palette.color(QPalette::Base), 0.3));
    painter.drawText(QPoint(timeLeft, line.baseline),
                     QDateTime::fromSecsSinceEpoch(seconds).toString(u"HH:mm"_s));
}

QString LineDecor::timeHint(const LineNotes& notes, qsizetype line)
{
    const qint64 seconds = notes.times().at(line);
    if (seconds == LineTimes::unknown)
        return {};
    const QDateTime time = QDateTime::fromSecsSinceEpoch(seconds);
    const QString clock = time.toString(u"HH:mm:ss"_s);
    if (time.date() == QDate::currentDate())
        return clock;
    return QLocale().toString(time.date(), QLocale::ShortFormat) + u' ' + clock;
}
