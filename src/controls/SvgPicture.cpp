#include "controls/SvgPicture.h"

#include <QAccessibleWidget>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QPixmapCache>
#include <QSvgRenderer>

namespace {

constexpr qreal dimmedOpacity = 0.35;

// Made at the first touch, before it is known whether the picture is to be a button.
class AccessiblePicture final : public QAccessibleWidget
{
public:
    explicit AccessiblePicture(SvgPicture* picture)
        : QAccessibleWidget(picture)
    {
    }

    QAccessible::Role role() const override
    {
        return picture()->isButton() ? QAccessible::Button : QAccessible::Graphic;
    }

    QStringList actionNames() const override
    {
        const QStringList names = QAccessibleWidget::actionNames();
        return picture()->isButton() ? QStringList(pressAction()) + names : names;
    }

    void doAction(const QString& name) override
    {
        if (name == pressAction())
            Q_EMIT picture()->Click();
        else
            QAccessibleWidget::doAction(name);
    }

    static QAccessibleInterface* create(const QString&, QObject* object)
    {
        auto* picture = qobject_cast<SvgPicture*>(object);
        return picture ? new AccessiblePicture(picture) : nullptr;
    }

private:
    SvgPicture* picture() const { return static_cast<SvgPicture*>(object()); }
};

} // namespace

QPixmap svgPixmap(const QString& resource, const QSize& size, qreal devicePixelRatio)
{
    const QSize pixels = size * devicePixelRatio;
    const QString key = resource % u' ' % QString::number(pixels.width()) % u' ' %
                        QString::number(pixels.height()) % u' ' % QString::number(devicePixelRatio);
    QPixmap pixmap;
    if (QPixmapCache::find(key, &pixmap) || pixels.isEmpty())
        return pixmap;
    pixmap = QPixmap(pixels);
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
    QAccessible::installFactory(&AccessiblePicture::create);
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
    if (!hasFocus())
        return;
    painter.setOpacity(1);
    painter.setRenderHint(QPainter::Antialiasing);
    // Dark on light, so that it is seen on any picture.
    const QRectF ring = QRectF(rect()).adjusted(1, 1, -1, -1);
    for (const auto& [role, width] : {std::pair(QPalette::Base, 4), std::pair(QPalette::Text, 2)}) {
        painter.setPen(QPen(palette().color(role), width));
        painter.drawRoundedRect(ring, ring.height() / 2, ring.height() / 2);
    }
}

void SvgPicture::makeButton()
{
    m_isButton = true;
    setFocusPolicy(Qt::TabFocus); // a click leaves the focus where the user types
}

void SvgPicture::keyPressEvent(QKeyEvent* event)
{
    const bool presses = event->key() == Qt::Key_Space || event->key() == Qt::Key_Return ||
                         event->key() == Qt::Key_Enter;
    if (m_isButton && presses && !event->isAutoRepeat())
        Q_EMIT Click();
    else
        QWidget::keyPressEvent(event);
}

void SvgPicture::mouseReleaseEvent(QMouseEvent* event)
{
    if (event->button() == Qt::LeftButton && rect().contains(event->pos()))
        Q_EMIT Click();
}
