#include "desktop/frmPopup.h"

#include "controls/FormControls.h"
#include "controls/SvgPicture.h"
#include "platform/EventLoop.h"
#include "platform/Handlers.h"
#include "platform/Motion.h"
#include "platform/Twips.h"

#include <QAccessible>
#include <QGuiApplication>
#include <QMouseEvent>
#include <QScreen>

#include <algorithm>

namespace {

using namespace Qt::StringLiterals;

// The places on the drawing, in pixels.
constexpr QSize drawing(320, 116);
constexpr QRect titlePlace(14, 8, 226, 20);
constexpr QRect bodyPlace(14, 29, 226, 60);
constexpr QColor ink(0x0d, 0x21, 0x35); // the drawing is light in every theme

constexpr double smallestPointSize = 6;

QLabel* makeLabelAt(const QRect& place, const QString& name, QWidget* parent)
{
    QLabel* label = makeLabel(name, {}, parent);
    label->setGeometry(place);
    QPalette palette = label->palette();
    palette.setColor(QPalette::WindowText, ink);
    label->setPalette(palette);
    return label;
}

} // namespace

frmPopup::frmPopup(const Handlers& handlers, EventLoop& events, ShowChannel showChannel)
    : m_handlers(handlers)
    , m_events(events)
    , m_showChannel(std::move(showChannel))
    , m_screen(QGuiApplication::primaryScreen()->geometry())
    , m_slide(toTwips(m_screen.width()), toTwips(m_screen.height()), toTwips(drawing.width()))
{
    setObjectName("frmPopup"_L1);
    setWindowTitle(u"QuillHarbor Messenger"_s);
    setWindowFlags(Qt::Tool | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint |
                   Qt::WindowDoesNotAcceptFocus);
    setAttribute(Qt::WA_ShowWithoutActivating);
    setAttribute(Qt::WA_X11NetWmWindowTypeNotification);
    setFocusPolicy(Qt::NoFocus);
    setEscape(Escape::IsNoKey);

    auto* picture = new SvgPicture(u":/forms/popup.svg"_s, this);
    picture->resize(drawing);
    picture->setAttribute(Qt::WA_TransparentForMouseEvents);

    Label1 = makeLabelAt(titlePlace, u"Label1"_s, this);
    Label1->setText(u"QuillHarbor Messenger"_s);
    QFont bold = Label1->font();
    bold.setBold(true);
    Label1->setFont(bold);
    Label2 = makeLabelAt(bodyPlace, u"Label2"_s, this);
    Label2->setWordWrap(true);
    Label2->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    for (QLabel* label : {Label1, Label2})
        label->installEventFilter(this);
    setBody(u"Messenger is already running! DOUBLE CLICK HERE or Right Click in Harbor Icon in "
            "system tray to chat now."_s);

    m_handlers.connect(&Timer1, &QTimer::timeout, this, [this] { Timer1_Timer(); });
}

void frmPopup::Form_Load()
{
    m_events.DoEvents();
    m_loaded = true;
    follow();
    Timer1.start(PopupSlide::designInterval);
}

void frmPopup::Form_Unload()
{
    m_loaded = false;
    Timer1.stop();
}

void frmPopup::Show()
{
    if (isVisible())
        return;
    show();
    QAccessibleEvent alert(this, QAccessible::Alert);
    QAccessible::updateAccessibility(&alert);
}

void frmPopup::setBody(const QString& text)
{
    Label2->setText(text);
    setAccessibleDescription(text);
    // A long text is written smaller rather than cut.
    QFont fitting = Label1->font();
    fitting.setBold(false);
    const auto fits = [&] {
        return QFontMetrics(fitting)
                   .boundingRect(QRect(QPoint(), bodyPlace.size()), Qt::TextWordWrap, text)
                   .height() <= bodyPlace.height();
    };
    for (double size = fitting.pointSizeF(); size > smallestPointSize && !fits(); size -= 0.5)
        fitting.setPointSizeF(size);
    Label2->setFont(fitting);
}

void frmPopup::Timer1_Timer()
{
    PopupSlide::Outcome outcome = m_slide.Timer1_Timer();
    // Without motion it is there and gone; the steps between are taken unseen.
    while (isMotionReduced() && outcome == PopupSlide::Outcome::GoesOn && !m_slide.isResting())
        outcome = m_slide.Timer1_Timer();
    Timer1.setInterval(m_slide.Interval());
    follow();
    if (outcome == PopupSlide::Outcome::GoesOn)
        return;
    Timer1.stop(); // no tick while we yield may end it a second time
    if (outcome == PopupSlide::Outcome::Broken) {
        m_events.DoEvents();
        hide();
    }
    if (m_loaded)
        Unload();
}

void frmPopup::follow()
{
    setGeometry(m_screen.x() + toPixels(m_slide.Left()), m_screen.y() + toPixels(m_slide.Top()),
                drawing.width(), std::max(toPixels(m_slide.Height()), 1));
}

void frmPopup::mouseDoubleClickEvent(QMouseEvent*)
{
    m_handlers.runOf(this, m_showChannel);
}

bool frmPopup::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::MouseButtonDblClick)
        return true; // of the label, not of the form below it
    if (watched == Label2 && event->type() == QEvent::MouseButtonRelease &&
        static_cast<QMouseEvent*>(event)->button() == Qt::LeftButton)
        m_handlers.runOf(this, m_showChannel);
    return Form::eventFilter(watched, event);
}
