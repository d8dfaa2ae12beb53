#include "controls/SvgPicture.h"

#include <QMouseEvent>
#include <QPainter>
#include <QPixmapCache>
#include <QSvgRenderer>

namespace {

constexpr qreal dimmedOpacity = 0.35;

} // namespace

QPixmap svgPixmap(const QString& resource, const QSize& size, qreal devicePixelRatio)
{
    const QString key = QStringLiteral("%1 %2 %3 %4")
                            .arg(resource)
                            .arg(size.width())
                            .arg(size.height())
                            .arg(devicePixelRatio);
    QPixmap pixmap;
    if (QPixmapCache::find(key, &pixmap))
        return pixmap;
    pixmap = QPixmap(size * devicePixelRatio);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    QSvgRenderer(resource).render(&painter);
    painter.end();
    pixmap.setDevicePixelRatio(devicePixelRatio);
    QPixmapCache::insert(key, pixmap);
    return pixmap;
}

SvgPicture::SvgPicture(const QString& resource, QWidget* parent)
    : QWidget(parent)
    , m_resource(resource)
    , m_sizeHint(QSvgRenderer(resource).defaultSize())
{
}

void SvgPicture::setDimmed(bool dimmed)
{
    if (m_dimmed == dimmed)
        return;
    m_dimmed = dimmed;
    update();
}

void SvgPicture::paintEvent(QPaintEvent*)
{
    if (size().isEmpty())
        return;
    QPainter painter(this);
    if (m_dimmed)
        painter.setOpacity(dimmedOpacity);
    painter.drawPixmap(rect(), svgPixmap(m_resource, size(), devicePixelRatioF()));
}

void SvgPicture::mouseReleaseEvent(QMouseEvent* event)
{
    if (event->button() == Qt::LeftButton && rect().contains(event->pos()))
        Q_EMIT Click();
}
