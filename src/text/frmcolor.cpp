#include "text/frmcolor.h"

#include "platform/Handlers.h"
#include "text/ColorTables.h"
#include "text/PaletteGrid.h"
#include "view/ReadableGround.h"

#include <QColor>
#include <QKeyEvent>
#include <QPainter>

namespace {

using namespace Qt::StringLiterals;

constexpr int columns = 3;
constexpr QSize swatch(136, 38);

// Black or white, whichever stands out more.
QColor readableOn(QRgb color)
{
    const QColor black = Qt::black;
    const QColor white = Qt::white;
    return contrast(color, black.rgb()) > contrast(color, white.rgb()) ? black : white;
}

class ColorItem final : public PaletteItem
{
public:
    explicit ColorItem(const InputColor& color)
        : PaletteItem(swatch)
        , m_color(color)
    {
        setObjectName("lblcin"_L1 + color.code);
        setText(color.label);
        // Two of them have the same caption.
        setAccessibleDescription("colour "_L1 + color.code);
    }

protected:
    void paintContent(QPainter& painter, const QRect& room) override
    {
        painter.setPen(Qt::NoPen);
        painter.setBrush(QColor(m_color.value));
        painter.drawRoundedRect(room, 4, 4);
        painter.setPen(readableOn(m_color.value));
        painter.drawText(room, Qt::AlignCenter | Qt::TextSingleLine, text());
    }

private:
    const InputColor& m_color;
};

} // namespace

frmcolor::frmcolor(const Handlers& handlers, QWidget* parent)
    : Form(parent)
{
    auto* grid = new PaletteGrid(columns);
    for (const InputColor& color : inputColors()) {
        auto* item = new ColorItem(color);
        grid->add(item);
        handlers.connect(item, &QAbstractButton::clicked, this,
                         [this, &color] { Q_EMIT picked(color.code); });
    }
    setUpPalette(*this, u"frmcolor"_s, u"Select Color"_s, {grid});
}

void frmcolor::keyPressEvent(QKeyEvent* event)
{
    if (event->matches(QKeySequence::Cancel))
        hide();
    else
        Form::keyPressEvent(event);
}

void frmcolor::changeEvent(QEvent* event)
{
    Form::changeEvent(event);
    if (event->type() == QEvent::ActivationChange && !isActiveWindow())
        hide();
}
