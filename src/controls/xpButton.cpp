#include "controls/xpButton.h"

#include "controls/SvgPicture.h"
#include "platform/Twips.h"

#include <QEnterEvent>
#include <QKeyEvent>
#include <QPainter>

#include <array>

namespace {

using namespace Qt::StringLiterals;

struct SizeRow
{
    QLatin1StringView name;
    int width; // twips
    int height;
};

// The place is the value of ButtonSize.
constexpr std::array<SizeRow, 3> sizes{{
    {"Small"_L1, 1095, 315},
    {"Big"_L1, 1170, 420},
    {"Long"_L1, 2070, 420},
}};

constexpr std::array<QLatin1StringView, 5> lookNames{"empty"_L1, "hover"_L1, "down"_L1,
                                                     "disabled"_L1, "focus"_L1};

constexpr int tickMilliseconds = 1;

} // namespace

xpButton::xpButton(const QString& caption, Size size, QWidget* parent)
    : QAbstractButton(parent)
    , m_size(size)
{
    setText(caption);
    setFocusPolicy(Qt::StrongFocus);
    setMouseTracking(true);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    Timer1.setObjectName(u"Timer1"_s);
    Timer1.setInterval(tickMilliseconds);
    connect(&Timer1, &QTimer::timeout, this, &xpButton::Timer1_Timer);
    connect(this, &QAbstractButton::clicked, this, &xpButton::Click);
    ApplySize();
}

void xpButton::setButtonSize(int size)
{
    if (size < 0 || size >= static_cast<int>(sizes.size()))
        return;
    m_size = static_cast<Size>(size);
    ApplySize();
}

void xpButton::setForeColor(const QColor& color)
{
    m_foreColor = color;
    ApplySize();
}

QSize xpButton::sizeHint() const
{
    const SizeRow& row = sizes[m_size];
    return {toPixels(row.width), toPixels(row.height)};
}

void xpButton::ApplySize()
{
    setFixedSize(sizeHint());
    show(isEnabled() ? Look::Empty : Look::Disabled);
    update();
}

void xpButton::show(Look look)
{
    if (m_look == look)
        return; // no repaint without a change
    m_look = look;
    update();
}

void xpButton::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    const QString picture = ":/buttons/"_L1 + lookNames[static_cast<std::size_t>(m_look)] +
                            sizes[m_size].name + ".svg"_L1;
    painter.drawPixmap(rect(), svgPixmap(picture, size(), devicePixelRatioF()));
    painter.setPen(isEnabled() ? m_foreColor : palette().color(QPalette::Disabled, QPalette::Text));
    painter.drawText(rect(), Qt::AlignCenter | Qt::TextHideMnemonic, text());
}

void xpButton::setPointerInside(bool inside)
{
    if (m_pointerInside == inside)
        return;
    m_pointerInside = inside;
    Timer1.start();
}

void xpButton::enterEvent(QEnterEvent* event)
{
    QAbstractButton::enterEvent(event);
    setPointerInside(true);
}

void xpButton::leaveEvent(QEvent* event)
{
    QAbstractButton::leaveEvent(event);
    setPointerInside(false);
}

void xpButton::mouseMoveEvent(QMouseEvent* event)
{
    QAbstractButton::mouseMoveEvent(event);
    setPointerInside(rect().contains(event->pos())); // a held button gets no leave event
}

void xpButton::mousePressEvent(QMouseEvent* event)
{
    QAbstractButton::mousePressEvent(event);
    m_mouseState = MouseState::Pressed;
    Timer1.start();
}

void xpButton::mouseReleaseEvent(QMouseEvent* event)
{
    m_mouseState = MouseState::Idle;
    Timer1.start();
    QAbstractButton::mouseReleaseEvent(event); // its handler may be the end of this button
}

void xpButton::focusInEvent(QFocusEvent* event)
{
    QAbstractButton::focusInEvent(event);
    show(Look::Focus);
}

void xpButton::focusOutEvent(QFocusEvent* event)
{
    QAbstractButton::focusOutEvent(event);
    show(isEnabled() ? Look::Empty : Look::Disabled);
}

void xpButton::keyPressEvent(QKeyEvent* event)
{
    event->ignore();
}

void xpButton::keyReleaseEvent(QKeyEvent* event)
{
    event->ignore();
}

void xpButton::changeEvent(QEvent* event)
{
    QAbstractButton::changeEvent(event);
    if (event->type() != QEvent::EnabledChange)
        return;
    m_mouseState = MouseState::Idle;
    ApplySize();
    Timer1.start(); // the pointer may be there already
}

void xpButton::Timer1_Timer()
{
    if (!isEnabled()) {
        Timer1.stop(); // a disabled window is never under the pointer
        return;
    }
    if (m_pointerInside) {
        if (m_mouseState == MouseState::Idle) {
            show(Look::Hover);
            m_mouseState = MouseState::Hover;
        } else if (m_mouseState == MouseState::Pressed) {
            show(Look::Down);
        }
    } else if (m_mouseState != MouseState::Idle) {
        show(hasFocus() ? Look::Focus : Look::Empty);
        if (m_mouseState != MouseState::Pressed)
            m_mouseState = MouseState::Idle;
    }
    Timer1.stop(); // nothing changes until the next event of the pointer
}

ButtonKeys::ButtonKeys(QWidget* window)
    : QObject(window)
{
    window->installEventFilter(this);
}

bool ButtonKeys::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() != QEvent::KeyPress)
        return false;
    const auto* press = static_cast<QKeyEvent*>(event);
    const int key = press->key();
    auto* button = qobject_cast<xpButton*>(static_cast<QWidget*>(watched)->focusWidget());
    if (!button || (key != Qt::Key_Space && key != Qt::Key_Return && key != Qt::Key_Enter))
        return false;
    if (!press->isAutoRepeat()) // a key that is held is one click
        button->click();
    return true;
}
