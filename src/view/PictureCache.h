#pragma once

#include <QHash>
#include <QPixmap>

struct InlinePicture;

// Drawings of inline pictures, each rendered once per size and device pixel ratio. Meant to be
// shared by all views of a program.
class PictureCache final
{
public:
    // Transparent where the drawing cannot be read.
    const QPixmap& pixmap(const InlinePicture& picture, qreal devicePixelRatio);

private:
    struct Key
    {
        QString resource;
        QSize pixels;

        bool operator==(const Key&) const = default;
        friend size_t qHash(const Key& key, size_t seed = 0)
        {
            return qHashMulti(seed, key.resource, key.pixels.width(), key.pixels.height());
        }
    };

    QHash<Key, QPixmap> m_pixmaps;
};
