#include "desktop/Channel.h"

#include "common/TextHelpers.h"
#include "controls/ActionEntry.h"
#include "controls/FormControls.h"
#include "controls/InputNotes.h"
#include "controls/KeyCodes.h"
#include "controls/Named.h"
#include "controls/OneLineField.h"
#include "controls/SvgPicture.h"
#include "desktop/LineLock.h"
#include "platform/Dialogs.h"
#include "platform/FramePace.h"
#include "platform/Handlers.h"
#include "platform/Twips.h"
#include "room/TabCompletion.h"
#include "room/TopicField.h"
#include "text/Links.h"
#include "view/InputKeys.h"
#include "view/ReadableGround.h"

#include <QCloseEvent>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QMenuBar>
#include <QPainter>
#include <QShortcut>
#include <QSplitter>
#include <QStackedWidget>
#include <QVBoxLayout>

namespace {

using namespace Qt::StringLiterals;

constexpr int smallestWidth = 11500; // twips
constexpr int smallestHeight = 7650;
constexpr QSize firstSize{960, 640};

constexpr auto notesOnSlash =
    "Everybody in the room will read this: no command here begins with \"/\". What you can do is in the menus and under the right button on a name; a password belongs in the sign-in form or under File, Register."_L1;

enum Page { HomePage, ChatRoomPage, MiscPage };
constexpr std::array<QLatin1StringView, 3> pageCaptions{"Home"_L1, "ChatRoom"_L1, "Misc"_L1};

QToolButton* toolButton(const QString& name, const QString& text, const QString& icon)
{
    auto* button = named(new QToolButton, name, text);
    button->setText(text);
    button->setToolTip(text);
    button->setIcon(QIcon(icon));
    button->setIconSize({20, 20});
    button->setAutoRaise(true);
    return button;
}

// A label that leads somewhere, reachable by keyboard.
QToolButton* linkButton(const QString& name, const QString& text, const QString& icon = {})
{
    QToolButton* button = toolButton(name, text, icon);
    button->setToolButtonStyle(icon.isEmpty() ? Qt::ToolButtonTextOnly
                                              : Qt::ToolButtonTextBesideIcon);
    button->setProperty("link", icon.isEmpty());
    return button;
}

QIcon colorIcon(const QColor& color)
{
    QPixmap pixmap(svgPixmap(u":/forms/color.svg"_s, {20, 20}, 2.0));
    QPainter painter(&pixmap);
    painter.fillRect(QRectF(2, 16, 16, 3), color);
    return QIcon(pixmap);
}

} // namespace

Channel::Channel(const Handlers& handlers, Dialogs& dialogs, std::shared_ptr<ViewLook> look)
    : m_handlers(handlers)
    , m_dialogs(dialogs)
    , m_menus(new MenuTree(this))
    , TBar(named(new QTabBar(this), u"TBar"_s, u"Pages"_s))
    , m_lock(new LineLock(this))
    , m_pages(new QStackedWidget(this))
    , m_dataIn(named(new ChatView(nullptr, std::move(look)), u"DataIn"_s, u"Conversation"_s))
    , m_smileys(*m_dataIn)
{
    setObjectName(u"Channel"_s);
    setWindowTitle(u"QuillHarbor Messenger 1.0"_s);
    setMinimumSize(toPixelsUp(smallestWidth), toPixelsUp(smallestHeight));
    resize(firstSize);

    for (const QLatin1StringView caption : pageCaptions)
        TBar->addTab(caption);
    TBar->setDrawBase(false);
    TBar->setExpanding(false);
    m_pages->addWidget(new QWidget);
    m_pages->addWidget(buildChatPage());
    m_pages->addWidget(new QWidget);
    TBar->setCurrentIndex(ChatRoomPage);
    m_pages->setCurrentIndex(ChatRoomPage);

    Label7 = makeLabel(u"Label7"_s, {}, this);
    Label7->hide();
    Text1 = named(new QLineEdit(this), u"Text1"_s);
    Text1->hide();

    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(8, 4, 8, 8);
    layout->setSpacing(0);
    layout->setMenuBar(m_menus->bar());
    auto* strip = new QHBoxLayout;
    strip->addWidget(TBar, 1);
    strip->addWidget(m_lock);
    layout->addLayout(strip);
    layout->addWidget(m_pages, 1);
    connectEvents(handlers);
    setInputColor(Qt::black);
    new FramePace(*this);
}

Channel::~Channel() = default;

QWidget* Channel::buildChatPage()
{
    m_dataIn->setLinks({linksIn, {}});
    m_smileys.keepUp();
    m_nicks = named(new ListBoxWidget(ListBoxWidget::Order::Sorted), u"lstNicks"_s, u"Chatters"_s);
    cmdCount = makeLabel(u"cmdCount"_s, u" Total Chatters :  [ 0 ]"_s);

    auto* people = new QWidget;
    auto* peopleLayout = new QVBoxLayout(people);
    peopleLayout->setContentsMargins(0, 0, 0, 0);
    peopleLayout->setSpacing(4);
    peopleLayout->addWidget(cmdCount);
    peopleLayout->addWidget(m_nicks, 1);

    auto* middle = new QSplitter(Qt::Horizontal);
    middle->addWidget(m_dataIn);
    middle->addWidget(people);
    middle->setStretchFactor(0, 1);
    middle->setChildrenCollapsible(false);
    middle->setHandleWidth(8);
    middle->setSizes({720, 200});

    auto* page = named(new QWidget, u"chatPage"_s);
    auto* layout = new QVBoxLayout(page);
    layout->setContentsMargins(8, 8, 8, 8);
    layout->setSpacing(8);
    layout->addWidget(buildTopicRow());
    layout->addWidget(middle, 1);
    layout->addWidget(buildToolRow());
    QWidget* input = buildInputRow();
    layout->addWidget(new InputNotes(DataOut, notesOnSlash));
    layout->addWidget(input);
    return page;
}

QWidget* Channel::buildTopicRow()
{
    m_topic = named(new RichTextBoxWidget, u"rtbTopic"_s, u"Topic"_s);
    m_topic->setLockTest([topic = m_topic] { return TopicField::isLocked(*topic); });
    m_topic->setFixedHeight(32);
    return m_topic;
}

QWidget* Channel::buildToolRow()
{
    check1 = toolButton(u"check1"_s, u"Smileys"_s, u":/forms/smiley.svg"_s);
    check2 = toolButton(u"check2"_s, u"Select Color"_s, u":/forms/color.svg"_s);
    Check3 = named(new QCheckBox(u"Bold"_s), u"Check3"_s);
    Check4 = named(new QCheckBox(u"UnderLine"_s), u"Check4"_s);
    Command3 = toolButton(u"Command3"_s, u"Font Settings"_s, u":/forms/font.svg"_s);
    command1 = toolButton(u"command1"_s, u"IgnoreList"_s, u":/forms/ignore.svg"_s);
    Label1 = linkButton(u"Label1"_s, u"Own Action"_s, u":/forms/action.svg"_s);
    Label4 = linkButton(u"Label4"_s, u"About"_s);
    Label5 = linkButton(u"Label5"_s, u"Author"_s);

    auto* row = new QWidget;
    auto* layout = new QHBoxLayout(row);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(8);
    for (QWidget* control : std::initializer_list<QWidget*>{check1, check2, Check3, Check4,
                                                            Command3, command1, Label1})
        layout->addWidget(control);
    layout->addStretch(1);
    layout->addWidget(Label4);
    layout->addWidget(Label5);
    return row;
}

QWidget* Channel::buildInputRow()
{
    DataOut = named(new QLineEdit, u"DataOut"_s, u"Your message"_s);
    DataOut->setMaxLength(InputLine::maxLength);
    keepToOneLine(DataOut);
    DataOut->setPlaceholderText(u"Type here and press Enter"_s);
    DataOut->setMinimumHeight(36);
    new TabCompletion(DataOut, [this] { return namesByLastSpeaker(*m_dataIn, *m_nicks); });
    DataOut->installEventFilter(this);
    Image2 = named(new SvgPicture(u":/forms/send.svg"_s), u"Image2"_s, u"Send"_s);
    Image2->setFixedSize(32, 32);
    Image2->makeButton();
    Image2->setToolTip(u"Send"_s);
    Image2->setCursor(Qt::PointingHandCursor);

    auto* row = new QWidget;
    auto* layout = new QHBoxLayout(row);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(8);
    layout->addWidget(DataOut, 1);
    layout->addWidget(Image2);
    return row;
}

void Channel::connectEvents(const Handlers& handlers)
{
    const auto focusWithoutSelection = [this](const RichTextBox& view) {
        if (view.SelLength() == 0)
            focusInput();
    };
    handlers.connect(m_dataIn, &ChatView::Click, this,
                     [=, this] { focusWithoutSelection(*m_dataIn); });
    handlers.connect(m_topic, &RichTextBoxWidget::Click, this,
                     [=, this] { focusWithoutSelection(*m_topic); });
    m_topic->setKeyFilter([this](const QKeyEvent& event) { return !topicTakes(event); });

    m_inputKeys = std::make_unique<InputKeys>(*m_dataIn, *DataOut);

    for (int page = 0; page < TBar->count(); ++page) {
        auto* key = new QShortcut(QKeySequence(Qt::CTRL | Qt::Key(Qt::Key_1 + page)), TBar);
        connect(key, &QShortcut::activated, this, [this, page] { TBar->setCurrentIndex(page); });
    }
    connect(TBar, &QTabBar::currentChanged, this, &Channel::showPage);
    handlers.connect(Image2, &SvgPicture::Click, this, [this] { pressInput(key_codes::Enter); });

    connect(Check3, &QCheckBox::toggled, this, [this](bool on) {
        QFont font = DataOut->font();
        font.setBold(on);
        DataOut->setFont(font);
        Q_EMIT Check3_Click(on);
    });
    connect(Check4, &QCheckBox::toggled, this, [this](bool on) {
        QFont font = DataOut->font();
        font.setUnderline(on);
        DataOut->setFont(font);
        Q_EMIT Check4_Click(on);
    });
    connect(check1, &QToolButton::clicked, this, &Channel::check1_Click);
    connect(check2, &QToolButton::clicked, this, &Channel::check2_Click);
    connect(Command3, &QToolButton::clicked, this, &Channel::Command3_Click);
    connect(command1, &QToolButton::clicked, this, &Channel::command1_Click);
    connect(Label1, &QToolButton::clicked, this, &Channel::Label1_Click);
    for (QToolButton* link : {Label4, Label5}) // the one that says "About" leads to the author, too
        connect(link, &QToolButton::clicked, this, &Channel::authorLinkClicked);
    connect(m_nicks, &ListBoxWidget::DblClick, this, &Channel::lstNicks_DblClick);
    connect(m_nicks, &ListBoxWidget::RightButtonDown, this, &Channel::lstNicks_RightButtonDown);
}

void Channel::setWebPages(QWidget* home, QWidget* misc)
{
    const int current = m_pages->currentIndex();
    const auto replace = [this](int index, QWidget* page) {
        QWidget* old = m_pages->widget(index);
        m_pages->removeWidget(old);
        delete old;
        m_pages->insertWidget(index, page);
    };
    replace(HomePage, home);
    replace(MiscPage, misc);
    m_pages->setCurrentIndex(current);
}

void Channel::showPage(int index)
{
    switch (index) {
    case HomePage:
        myHome();
        break;
    case ChatRoomPage:
        myChatRoom();
        break;
    case MiscPage:
        myMisc();
        break;
    default:
        break;
    }
}

void Channel::myHome()
{
    TBar->setCurrentIndex(HomePage);
    m_pages->setCurrentIndex(HomePage);
}

void Channel::myMisc()
{
    TBar->setCurrentIndex(MiscPage);
    m_pages->setCurrentIndex(MiscPage);
}

void Channel::myChatRoom()
{
    TBar->setCurrentIndex(ChatRoomPage);
    m_pages->setCurrentIndex(ChatRoomPage);
}

QColor Channel::inputColor() const
{
    return DataOut->palette().color(QPalette::Text);
}

void Channel::setInputColor(const QColor& color)
{
    setReadableColor(*DataOut, color.rgb());
    check2->setIcon(colorIcon(color));
}

void Channel::setConnected(bool connected)
{
    DataOut->setPlaceholderText(connected ? u"Type here and press Enter"_s
                                          : u"Not connected: nobody hears what you type here"_s);
    Image2->setDimmed(!connected);
}

void Channel::appendToInput(const QString& text)
{
    DataOut->setText(DataOut->text() + text);
}

void Channel::focusInput()
{
    if (isVisible() && !isActiveWindow())
        activateWindow(); // the palette may have been opened from a private window
    DataOut->setFocus();
}

// Only what stands in it: the toolkit disables the boxes above a window along with it.
void Channel::setHeld(bool held)
{
    if (held)
        m_focusBeforeHold = focusWidget();
    for (QWidget* part : std::initializer_list<QWidget*>{m_menus->bar(), TBar, m_pages})
        part->setEnabled(!held);
    if (!held && m_focusBeforeHold)
        m_focusBeforeHold->setFocus();
}

MenuEntry& Channel::mnu_File_Connect()
{
    return entry(u"mnu_File_Connect"_s);
}

MenuEntry& Channel::mnu_File_Disconnect()
{
    return entry(u"mnu_File_Disconnect"_s);
}

void Channel::setComputerName(const QString& name)
{
    Label7->setText(beforeNul(name));
}

void Channel::Show()
{
    setWindowState(windowState() & ~Qt::WindowMinimized);
    show();
    raise();
    activateWindow();
    focusInput();
}

void Channel::setTypeface(const QString& family, int points)
{
    QFont font = DataOut->font();
    if (font.families() == QStringList{family} && font.pointSize() == points)
        return;
    font.setFamilies({family});
    font.setPointSize(std::max(points, 1));
    DataOut->setFont(font);
}

void Channel::closeEvent(QCloseEvent* event)
{
    event->ignore();
    m_handlers.run([this] {
        const bool yes = m_dialogs.askYesNo(
            u"This will resize (minmize) messenger in system tray. Are you sure you want to to exit Quill Harbor Messenger ChatRoom? Messenger will be running in system tray."_s,
            u"Quill Harbor Messenger"_s);
        if (!yes)
            return;
        hide();
        Q_EMIT closedToTray();
    });
}

bool Channel::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == DataOut && event->type() == QEvent::InputMethod) {
        m_handlers.run([&] {
            for (const QChar c : static_cast<QInputMethodEvent*>(event)->commitString())
                m_hooks.inputKeyPress(c.unicode());
        });
    }
    if (watched != DataOut || event->type() != QEvent::KeyPress)
        return QWidget::eventFilter(watched, event);
    bool takes = true;
    m_handlers.run([&] { takes = inputTakes(*static_cast<QKeyEvent*>(event)); });
    return !takes || m_inputKeys->take(*static_cast<QKeyEvent*>(event));
}

// What the user has just sent he wants to see, however far up he was reading.
int Channel::pressInput(int character) const
{
    const int taken = m_hooks.inputKeyPress(character);
    if (character == key_codes::Enter && taken == 0)
        m_dataIn->scrollToEnd();
    return taken;
}

bool Channel::inputTakes(const QKeyEvent& event) const
{
    if (const int code = key_codes::keyCodeOf(event); code != 0 && m_hooks.inputKeyDown(code) == 0)
        return false;
    const int character = key_codes::characterOf(event);
    return character == 0 || pressInput(character) != 0;
}

bool Channel::topicTakes(const QKeyEvent& event) const
{
    bool takes = true;
    m_handlers.run([&] {
        if (const int code = key_codes::keyCodeOf(event);
            code != 0 && m_hooks.topicKeyDown(code) == 0)
            takes = false;
        // Copying and moving about are not typing.
        const int character =
            event.modifiers() & Qt::ControlModifier ? 0 : key_codes::characterOf(event);
        if (takes && character != 0 && event.key() != Qt::Key_Tab && event.key() != Qt::Key_Backtab)
            takes = m_hooks.topicKeyPress(character) != 0;
    });
    return takes;
}
