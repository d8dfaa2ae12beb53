#include "text/frmcolor.h"

#include "platform/Handlers.h"
#include "text/ColorTables.h"
#include "text/PaletteGrid.h"

#include <QColor>
#include <QKeyEvent>
#include <QPainter>
#include <QVBoxLayout>

#include <cmath>

namespace {

using namespace Qt::StringLiterals;

constexpr int columns = 3;
constexpr QSize swatch(136, 38);

// How bright a colour looks, from 0 to 1.
double luminance(QRgb color)
{
    const auto linear = [](int channel) {
        const double share = channel / 255.0;
        return share <= 0.04045 ? share / 12.92 : std::pow((share + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(qRed(color)) + 0.7152 * linear(qGreen(color)) +
           0.0722 * linear(qBlue(color));
}

// Black or white, whichever stands out more.
QColor readableOn(QRgb color)
{
    const double bright = luminance(color);
    return (bright + 0.05) / 0.05 > 1.05 / (bright + 0.05) ? Qt::black : Qt::white;
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
    setObjectName(u"frmcolor"_s);
    setWindowTitle(u"Select Color"_s);
    setWindowFlags(Qt::Tool | Qt::WindowTitleHint | Qt::WindowCloseButtonHint);

    auto* grid = new PaletteGrid(columns);
    for (const InputColor& color : inputColors()) {
        auto* item = new ColorItem(color);
        grid->add(item);
        handlers.connect(item, &QAbstractButton::clicked, this,
                         [this, &color] { Q_EMIT picked(color.code); });
    }
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(12, 12, 12, 12);
    layout->setSizeConstraint(QLayout::SetFixedSize);
    layout->addWidget(grid);
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
