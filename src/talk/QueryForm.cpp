#include "talk/QueryForm.h"

#include "controls/FormControls.h"
#include "controls/InputNotes.h"
#include "controls/KeyCodes.h"
#include "controls/OneLineField.h"
#include "controls/SvgPicture.h"
#include "platform/PlainText.h"
#include "room/TabCompletion.h"
#include "view/ReadableGround.h"

#include <QAbstractScrollArea>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPainter>
#include <QStyle>
#include <QToolButton>
#include <QVBoxLayout>

namespace {

using namespace Qt::StringLiterals;

constexpr int iconSide = 16;
constexpr int sendSide = 32;
constexpr QSize firstSize{620, 480};
constexpr QSize smallestView{320, 120};
constexpr int smallestName = 160;
constexpr int textMargin = 6;
constexpr int flashMilliseconds = 500;
constexpr double nickScale = 1.7; // of the ordinary size of text

constexpr auto notesOnSlash =
    "This will be read as it stands: no command here begins with \"/\". A password belongs in the sign-in form or under File, Register."_L1;

struct LinkRow
{
    QueryForm::Link link;
    QLatin1StringView name;
    QLatin1StringView caption;
    QLatin1StringView drawing; // empty: text alone
};

// In reading order: beside the peer's name, then above the input line.
constexpr std::array<LinkRow, QueryForm::LinkCount> linkRows{{
    {QueryForm::cmdOptions, "cmdOptions"_L1, "BuddyList"_L1, "buddies"_L1},
    {QueryForm::Label6, "Label6"_L1, "IgnoreList"_L1, "ignore"_L1},
    {QueryForm::Label5, "Label5"_L1, "Author"_L1, {}},
    {QueryForm::Label4, "Label4"_L1, "Close"_L1, {}},
    {QueryForm::LabelAction, "LabelAction"_L1, "Own Action"_L1, "action"_L1},
    {QueryForm::Label7, "Label7"_L1, "Font Settings"_L1, "font"_L1},
    {QueryForm::Label8, "Label8"_L1, "Colour Settings"_L1, "color"_L1},
}};
constexpr std::size_t headerLinks = 4;

// A long text is cut with an ellipsis and does not widen the window.
class CutLabel final : public QLabel
{
public:
    using QLabel::QLabel;

protected:
    void paintEvent(QPaintEvent*) override
    {
        QPainter painter(this);
        style()->drawItemText(
            &painter, rect(), Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine, palette(),
            isEnabled(), fontMetrics().elidedText(text(), Qt::ElideRight, width()),
            foregroundRole());
    }
};

QLabel* newLabel(const QString& name, const QString& caption, QWidget* parent)
{
    auto* label = new CutLabel(caption, parent);
    label->setObjectName(name);
    label->setTextFormat(Qt::PlainText); // the text is a stranger's
    label->setMinimumWidth(smallestName);
    label->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
    return label;
}

} // namespace

QueryForm::QueryForm(std::shared_ptr<ViewLook> look)
    : m_lblNick(newLabel(u"lblNick"_s, u"Chatter"_s, this))
    , m_lblHost(newLabel(u"lblHost"_s, u"user@host"_s, this))
    , m_dataIn(new ChatView(this, std::move(look)))
    , m_smileys(*m_dataIn)
    , m_dataOut(new QLineEdit(this))
    , m_inputKeys(*m_dataIn, *m_dataOut)
    , m_image2(new SvgPicture(u":/forms/send.svg"_s, this))
{
    setMouseTracking(true);
    setEscape(Escape::IsNoKey); // a conversation would be lost by one key
    // A stranger's message must not take the keyboard from what the user is typing elsewhere.
    setAttribute(Qt::WA_ShowWithoutActivating);

    m_dataIn->setObjectName(u"DataIn"_s);
    m_dataIn->setAccessibleName(u"Conversation"_s);
    m_dataIn->setMinimumSize(smallestView);
    m_smileys.keepUp();

    m_dataOut->setObjectName(u"DataOut"_s);
    m_dataOut->setAccessibleName(u"Message"_s);
    m_dataOut->setTextMargins(textMargin, 0, textMargin, 0);
    m_dataOut->setMouseTracking(true);
    new TabCompletion(m_dataOut, [this] { return m_names ? m_names() : QStringList(); });
    m_dataOut->installEventFilter(this);
    keepToOneLine(m_dataOut);

    m_image2->setObjectName(u"Image2"_s);
    m_image2->setAccessibleName(u"Send"_s);
    m_image2->setToolTip(u"Send"_s);
    m_image2->setCursor(Qt::PointingHandCursor);
    m_image2->setFixedSize(sendSide, sendSide);
    m_image2->makeButton();
    m_image2->setMouseTracking(true);
    m_image2->installEventFilter(this);

    m_flsh.setObjectName(u"flsh"_s);
    m_flsh.setParent(this);
    m_flsh.setInterval(flashMilliseconds);

    createLinks();
    arrange();
    m_dataOut->setFocus();
}

void QueryForm::createLinks()
{
    for (const LinkRow& row : linkRows) {
        auto* link = new QToolButton(this);
        link->setObjectName(row.name);
        link->setText(row.caption);
        link->setAutoRaise(true);
        link->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
        link->setFocusPolicy(Qt::TabFocus); // a click leaves the focus where the user types
        link->setCursor(Qt::PointingHandCursor);
        if (!row.drawing.isEmpty()) {
            link->setIcon(QIcon(":/forms/"_L1 + row.drawing + ".svg"_L1));
            link->setIconSize({iconSide, iconSide});
        }
        link->installEventFilter(this);
        m_links[row.link] = link;
    }
}

void QueryForm::arrange()
{
    makeHeading(m_lblNick, nickScale);
    auto* header = new QHBoxLayout;
    header->setSpacing(formSpacing / 2);
    header->addWidget(m_lblNick, 1);
    auto* tools = new QHBoxLayout;
    tools->setSpacing(formSpacing / 2);
    for (std::size_t place = 0; place < linkRows.size(); ++place)
        (place < headerLinks ? header : tools)->addWidget(m_links[linkRows[place].link]);
    tools->addStretch();

    auto* input = new QHBoxLayout;
    input->setSpacing(formSpacing);
    input->addWidget(m_dataOut, 1);
    input->addWidget(m_image2);

    auto* layout = new QVBoxLayout(this);
    setFormMargins(layout);
    layout->addLayout(header);
    layout->addWidget(m_lblHost);
    layout->addWidget(m_dataIn, 1);
    layout->addLayout(tools);
    layout->addWidget(new InputNotes(m_dataOut, notesOnSlash));
    layout->addLayout(input);
    m_dataOut->setMinimumHeight(sendSide);
    resize(firstSize);

    // From the conversation to where the user types, then what stands around.
    QWidget* last = m_dataIn;
    const auto then = [&last](QWidget* next) {
        setTabOrder(last, next);
        last = next;
    };
    for (std::size_t place = headerLinks; place < linkRows.size(); ++place)
        then(m_links[linkRows[place].link]);
    then(m_dataOut);
    then(m_image2);
    for (std::size_t place = 0; place < headerLinks; ++place)
        then(m_links[linkRows[place].link]);
}

void QueryForm::setCaption(const QString& caption)
{
    m_caption = caption;
    setPlainTitle(*this, caption);
}

void QueryForm::setNickLabel(const QString& nick)
{
    m_lblNick->setText(forShow(nick));
    setPlainToolTip(*m_lblNick, nick);
}

void QueryForm::setHostLabel(const QString& host)
{
    m_lblHost->setText(forShow(host));
    setPlainToolTip(*m_lblHost, host);
}

void QueryForm::setInputColor(QRgb color)
{
    setReadableColor(*m_dataOut, color);
}

void QueryForm::setConnected(bool connected)
{
    m_dataOut->setPlaceholderText(connected ? QString()
                                            : u"Not connected: nobody hears what you type here"_s);
    m_image2->setDimmed(!connected);
}

void QueryForm::setPointerShape(Qt::CursorShape shape)
{
    m_dataIn->setPointerShape(shape);
}

bool QueryForm::event(QEvent* event)
{
    const bool done = Form::event(event);
    if (event->type() == QEvent::WindowActivate)
        Q_EMIT Activate();
    return done;
}

void QueryForm::focusInEvent(QFocusEvent* event)
{
    Form::focusInEvent(event);
    Q_EMIT Activate();
}

void QueryForm::mouseMoveEvent(QMouseEvent* event)
{
    Form::mouseMoveEvent(event);
    Q_EMIT MouseMove();
}

bool QueryForm::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::MouseMove && (watched == m_dataOut || watched == m_image2))
        Q_EMIT MouseMove();
    if (watched == m_dataOut && event->type() == QEvent::KeyPress) {
        const auto& key = *static_cast<QKeyEvent*>(event);
        announceKey(key);
        if (m_inputKeys.take(key))
            return true;
    }
    if (watched == m_dataOut && event->type() == QEvent::InputMethod) {
        for (const QChar c : static_cast<QInputMethodEvent*>(event)->commitString())
            Q_EMIT KeyPress(c.unicode());
    }
    if (auto* link = qobject_cast<QToolButton*>(watched);
        link && event->type() == QEvent::KeyPress) {
        const int key = static_cast<QKeyEvent*>(event)->key();
        if (key == Qt::Key_Return || key == Qt::Key_Enter) {
            link->click();
            return true;
        }
    }
    return Form::eventFilter(watched, event);
}

void QueryForm::announceKey(const QKeyEvent& event)
{
    const int code = key_codes::keyCodeOf(event);
    if (code == key_codes::Up || code == key_codes::Down)
        Q_EMIT KeyDown(code);
    else if (const int character = key_codes::characterOf(event); character != 0)
        Q_EMIT KeyPress(character);
}
