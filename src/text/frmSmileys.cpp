#include "text/frmSmileys.h"

#include "controls/FormControls.h"
#include "controls/SvgPicture.h"
#include "platform/Handlers.h"
#include "platform/PlainText.h"
#include "text/PaletteGrid.h"
#include "text/SmileyTable.h"

#include <QApplication>
#include <QPainter>

namespace {

using namespace Qt::StringLiterals;

constexpr int columns = 13;
constexpr QSize cell(34, 32);

class SmileyItem final : public PaletteItem
{
public:
    explicit SmileyItem(const Smiley& smiley)
        : PaletteItem(cell)
        , m_smiley(smiley)
    {
        setObjectName(u"imgicon%1"_s.arg(smiley.index));
        setPlainToolTip(*this, smiley.toolTip());
        setAccessibleName(u"smiley "_s + smiley.code);
    }

protected:
    void paintContent(QPainter& painter, const QRect& room) override
    {
        QRect place(QPoint(), m_smiley.size);
        place.moveCenter(room.center());
        painter.drawPixmap(place,
                           svgPixmap(m_smiley.picture(), m_smiley.size, devicePixelRatioF()));
    }

private:
    const Smiley& m_smiley;
};

} // namespace

frmSmileys::frmSmileys(const Handlers& handlers, QWidget* parent)
    : Form(parent)
{
    auto* grid = new PaletteGrid(columns);
    for (const Smiley& smiley : smileys::table) {
        auto* item = new SmileyItem(smiley);
        grid->add(item, smiley.size.width() > cell.width() ? 2 : 1);
        handlers.connect(item, &QAbstractButton::clicked, this,
                         [this, &smiley] { Q_EMIT picked(smiley.code); });
    }
    auto* extra = new SvgPicture(smileys::extra.picture());
    extra->setObjectName(u"Image47"_s);
    setPlainToolTip(*extra, smileys::extra.name);
    extra->setAccessibleName(u"smiley "_s + smileys::extra.name);
    grid->addOther(extra);

    auto* hint = makeLabel(u"Label5"_s,
                           u"Click on the smiley or type the code into the long box at the bottom "
                           "of the main window (Drag Your Mouse to the smileys to see the code)"_s);
    hint->setWordWrap(true);

    setUpPalette(*this, u"frmSmileys"_s, u"Smileys"_s, {grid, hint});
}

void frmSmileys::changeEvent(QEvent* event)
{
    Form::changeEvent(event);
    if (event->type() != QEvent::ActivationChange || isActiveWindow() || !isVisible())
        return;
    show();
    if (QApplication::activeWindow()) // another window of the program, not of the desktop
        raise();
}
