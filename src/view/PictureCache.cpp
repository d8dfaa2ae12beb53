#include "view/PictureCache.h"

#include "view/RichTextBox.h"

#include <QPainter>
#include <QSvgRenderer>

const QPixmap& PictureCache::pixmap(const InlinePicture& picture, qreal devicePixelRatio)
{
    const QSize pixels = (QSizeF(picture.size) * devicePixelRatio).toSize();
    QPixmap& pixmap = m_pixmaps[{picture.resource, pixels}];
    if (!pixmap.isNull() || pixels.isEmpty())
        return pixmap;
    pixmap = QPixmap(pixels);
    pixmap.fill(Qt::transparent);
    QSvgRenderer renderer(picture.resource);
    if (renderer.isValid()) {
        QPainter painter(&pixmap);
        renderer.render(&painter);
    }
    pixmap.setDevicePixelRatio(devicePixelRatio);
    return pixmap;
}
