#include "account/Login.h"

#include "account/LoginDesk.h"
#include "account/NetworkLink.h"
#include "account/SessionWords.h"
#include "common/Conversions.h"
#include "controls/ActionEntry.h"
#include "controls/FormControls.h"
#include "controls/Named.h"
#include "controls/OneLineField.h"
#include "controls/SvgPicture.h"
#include "controls/xpButton.h"
#include "platform/Clock.h"
#include "platform/Dialogs.h"
#include "platform/Handlers.h"
#include "platform/Motion.h"
#include "platform/PlainText.h"
#include "platform/ScreenFit.h"
#include "platform/Twips.h"
#include "settings/RememberedPassword.h"
#include "settings/RunKey.h"
#include "settings/Settings.h"
#include "settings/UserStore.h"

#include <QCloseEvent>
#include <QCoreApplication>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QMenuBar>
#include <QScreen>
#include <QVBoxLayout>

namespace {

using namespace Qt::StringLiterals;

constexpr int formWidth = 5415; // twips
constexpr int formHeight = 8790;
constexpr int runningHeight = 8550;

constexpr int stillMilliseconds = 24 * 60 * 60 * 1000;
constexpr int stripStep = 720;
constexpr int stripWidth = 23040;
constexpr int stripHeight = 2550;
constexpr int secondHalfLeft = 14040;

constexpr auto application = "QuillHarborMessenger"_L1;

struct StoreAddress
{
    static constexpr auto application = "QuillHarbor"_L1;
    static constexpr auto section = "main"_L1;
    static constexpr auto name = "name"_L1;
};

struct KeyAddress
{
    QLatin1StringView section;
    QLatin1StringView key;
    QLatin1StringView missing;
};
constexpr KeyAddress rememberNickKey{"NickName"_L1, "bremnick"_L1, "true"_L1};
constexpr KeyAddress rememberPassKey{"irc"_L1, "Password"_L1, "false"_L1};
constexpr KeyAddress loadAtStartUpKey{"load"_L1, "startup"_L1, "true"_L1};
constexpr KeyAddress guestModeKey{"irc"_L1, "Guest"_L1, "false"_L1};

// Where the rest picture and the strip lie. It gives way where the window is low: the form below
// needs its room, and a drawing can lose some sky and sea.
class Band final : public QWidget
{
public:
    explicit Band(QWidget* parent)
        : QWidget(parent)
    {
        setMaximumHeight(wholeHeight);
        setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Preferred);
    }

    QSize sizeHint() const override { return {0, wholeHeight}; }
    QSize minimumSizeHint() const override { return {0, lowestHeight}; }

protected:
    void resizeEvent(QResizeEvent* event) override
    {
        QWidget::resizeEvent(event);
        for (QWidget* picture : findChildren<QWidget*>(Qt::FindDirectChildrenOnly))
            picture->move(picture->x(), (height() - wholeHeight) / 2);
    }

private:
    static constexpr int wholeHeight = toPixels(stripHeight);
    static constexpr int lowestHeight = 48;
};

} // namespace

Login::Login(const Parts& parts, const Handlers& handlers)
    : m_parts(parts)
{
    setObjectName(u"Login"_s);
    setWindowTitle(u"QuillHarbor Messenger - Sign In"_s);
    buildMenus();
    buildControls();
    connectEvents(handlers);
    // That it runs is a state, also where nothing is to move.
    named(&Timer1, u"Timer1"_s)->setInterval(isMotionReduced() ? stillMilliseconds : 32);
    named(&Timer2, u"Timer2"_s)->setInterval(500);
    resize(toPixels(formWidth), toPixels(formHeight));
    setMinimumSize(300, 480);
}

void Login::buildMenus()
{
    m_menuBar = new QMenuBar(this);
    const auto entry = [](QMenu* menu, const QString& name, const QString& caption) {
        auto* action = named(new ActionEntry(caption, menu), name);
        menu->addAction(action);
        return action;
    };
    QMenu* file = named(m_menuBar->addMenu(u"File"_s), u"mnu_File"_s);
    mnu_Sign = entry(file, u"mnu_Sign"_s, u"Sign In"_s);
    mnu_chatroom = entry(file, u"mnu_chatroom"_s, u"&Go Chat!"_s);
    mnu_Close = entry(file, u"mnu_Close"_s, u"Close"_s);
    QMenu* help = named(m_menuBar->addMenu(u"Help"_s), u"mnu_help"_s);
    mnu_Feedback = entry(help, u"mnu_Feedback"_s, u"Send Feedback"_s);
    mnu_About = entry(help, u"mnu_About"_s, u"About Messenger"_s);
    mnu_author = entry(help, u"mnu_author"_s, u"About Author/Creator"_s);
}

void Login::buildControls()
{
    const auto label = [this](const QString& name, const QString& text) {
        return makeLabel(name, text, this);
    };
    const auto box = [this](const QString& name, const QString& text) {
        return named(new QCheckBox(text, this), name);
    };

    m_band = named(new Band(this), u"band"_s);
    Image1 = named(new SvgPicture(u":/forms/login-rest.svg"_s, m_band), u"Image1"_s);
    Picture1 = named(new SvgPicture(u":/forms/strip-left.svg"_s, m_band), u"Picture1"_s);
    Picture2 = named(new SvgPicture(u":/forms/strip-right.svg"_s, m_band), u"Picture2"_s);
    // The first half starts where the second one joins it, so the band is covered from the start.
    Picture1->setGeometry(toPixels(secondHalfLeft - stripWidth), 0, toPixels(stripWidth),
                          toPixels(stripHeight));
    Picture2->resize(Picture1->size());
    Picture1->hide();
    Picture2->hide();

    Label3 = label(u"Label3"_s, u"Your UserName:"_s);
    Text1 = named(new QLineEdit(this), u"Text1"_s);
    Label3->setBuddy(Text1);
    Text1->setAccessibleName(u"Your user name"_s);
    Text1->setPlaceholderText(u"a name you like, without blanks"_s);
    Label4 = label(u"Label4"_s, u"Your Password:"_s);
    Text2 = named(new QLineEdit(this), u"Text2"_s);
    Text2->setEchoMode(QLineEdit::Password);
    Text2->setAccessibleName(u"Your password"_s);
    Text2->setPlaceholderText(u"only for a registered name"_s);
    Label4->setBuddy(Text2);
    for (QLineEdit* field : {Text1, Text2})
        keepToOneLine(field);
    check1 = box(u"check1"_s, u"Remember my password"_s);
    check2 = box(u"check2"_s, u"Sign me as Guest On Chat"_s);
    Check3 = box(u"Check3"_s, u"Remember me [recommend]"_s);
    ChkStartUp = box(u"ChkStartUp"_s, u"Load at Windows StartUp"_s);
    Label6 = label(u"Label6"_s, u"You're logged in..."_s);
    Label6->setAlignment(Qt::AlignCenter);
    Label6->hide();
    cmdSignIn = named(new xpButton(u"Sign In"_s, xpButton::Long, this), u"cmdSignIn"_s);
    Image3 = named(new SvgPicture(u":/forms/send.svg"_s, this), u"Image3"_s);
    Image3->setFixedSize(28, 28);
    Image3->setToolTip(u"Sign In"_s);
    lblSession = label(u"lblSession"_s, {});
    lblSession->setAlignment(Qt::AlignCenter);
    lblSession->setWordWrap(true);
    Label5 = label(u"Label5"_s, {});
    Label7 = label(u"Label7"_s, {});
    Label8 = label(u"Label8"_s, {});
    for (QLabel* quiet : {Label5, Label7, Label8}) {
        quiet->setAlignment(Qt::AlignCenter);
        quiet->setProperty("quiet", true);
    }

    auto* form = new QVBoxLayout;
    form->setContentsMargins(32, 16, 32, 16);
    form->setSpacing(6);
    form->addStretch(1);
    form->addWidget(Label6);
    for (QWidget* control : std::initializer_list<QWidget*>{Label3, Text1, Label4, Text2})
        form->addWidget(control);
    form->addSpacing(8);
    for (QCheckBox* control : {check1, check2, Check3, ChkStartUp})
        form->addWidget(control);
    form->addSpacing(12);
    auto* signIn = new QHBoxLayout;
    signIn->addStretch(1);
    signIn->addWidget(cmdSignIn);
    signIn->addWidget(Image3);
    signIn->addStretch(1);
    form->addLayout(signIn);
    form->addSpacing(6);
    form->addWidget(lblSession);
    form->addStretch(2);
    form->addWidget(Label5);
    lnkNetwork = new NetworkLink(this);
    form->addWidget(lnkNetwork, 0, Qt::AlignHCenter);
    form->addWidget(Label7);
    form->addWidget(Label8);

    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->setMenuBar(m_menuBar);
    layout->addWidget(m_band);
    layout->addLayout(form, 1);
    new ButtonKeys(this);
}

void Login::connectEvents(const Handlers& handlers)
{
    const auto signIn = [this] { cmdSignIn_Click(); };
    handlers.connect(cmdSignIn, &xpButton::Click, this, signIn);
    handlers.connect(Image3, &SvgPicture::Click, this, signIn);
    handlers.connect(Text1, &QLineEdit::returnPressed, this, signIn);
    handlers.connect(Text2, &QLineEdit::returnPressed, this, [this] { DoSignIn(); });
    handlers.connect(Check3, &QCheckBox::toggled, this, [this] { Check3_Click(); });
    handlers.connect(check2, &QCheckBox::toggled, this, [this] { check2_Click(); });
    handlers.connect(ChkStartUp, &QCheckBox::toggled, this, [this] { ChkStartUp_Click(); });
    handlers.connect(mnu_Sign, &QAction::triggered, this, [this] { mnu_Sign_Click(); });
    handlers.connect(mnu_Close, &QAction::triggered, this, [this] { mnu_Close_Click(); });
    handlers.connect(mnu_chatroom, &QAction::triggered, this,
                     [this] { m_parts.desk.showChatRoom(); });
    handlers.connect(mnu_About, &QAction::triggered, this, [this] { m_parts.desk.showAbout(); });
    handlers.connect(mnu_author, &QAction::triggered, this, [this] { m_parts.desk.showAuthor(); });
    handlers.connect(mnu_Feedback, &QAction::triggered, this,
                     [this] { m_parts.desk.openFeedbackPage(); });
    handlers.connect(lnkNetwork, &QToolButton::clicked, this,
                     [this] { m_parts.desk.chooseNetwork(); });
    handlers.connect(&Timer1, &QTimer::timeout, this, [this] { Timer1_Timer(); });
    handlers.connect(&Timer2, &QTimer::timeout, this, [this] { Timer2_Timer(); });
}

void Login::Form_Load()
{
    resize(fittedSize(*this, size()));
    const QRect available = screen()->geometry();
    move(available.center() - rect().center());
    Picture1->setEnabled(false);
    Picture2->setEnabled(false);
    Picture2->move(toPixels(secondHalfLeft), Picture1->y());
    skipRest([this] { m_parts.desk.createTrayIcon(); });
    if (m_parts.desk.hasPreviousInstance())
        close(); // only hides it: a second copy is not stopped
    readSettings();
    showSettings();
    if (Text2->text().isEmpty() && !m_parts.password.isAwaited())
        check1->setChecked(false);
    Timer2_Timer();
    Label7->setText(u"Made with care by the Quill Harbor crew"_s);
    Label8->setText(u"Calm water, good company"_s);
}

void Login::readSettings()
{
    const auto read = [this](const KeyAddress& address) {
        return m_parts.settings.read(address.section, address.key, address.missing, toBoolean);
    };
    resumeNext([&] { RememberNick = read(rememberNickKey); },
               [&] { RememberPass = read(rememberPassKey); },
               [&] { LoadAtStartUp = read(loadAtStartUpKey); },
               [&] { GuestMode = read(guestModeKey); });
}

void Login::showSettings()
{
    ChkStartUp->setChecked(LoadAtStartUp);
    check2->setChecked(GuestMode);
    ChkStartUp->setChecked(LoadAtStartUp);
    check1->setChecked(RememberPass);
    Check3->setChecked(true); // whatever RememberNick says
}

// A remembered one stays in its field, and a guest has none.
QString Login::accountPassword() const
{
    if (!Text2->isEnabled())
        return {};
    return Text2->text().isEmpty() ? Text3 : Text2->text();
}

void Login::setEntriesLocked(bool locked)
{
    Text1->setReadOnly(locked);
    Text2->setReadOnly(locked);
}

void Login::setSignCaption(const QString& caption)
{
    mnu_Sign->setCaption(caption);
}

void Login::cmdSignIn_Click()
{
    if (Label6->isVisibleTo(this)) {
        skipRest([this] { m_parts.desk.showPopup(); });
        return;
    }
    resize(fittedSize(*this, {toPixels(formWidth), toPixels(formHeight)}));
    skipRest([this] { DoSignIn(); });
}

void Login::cmdSignout_Click()
{
    setStripRunning(false);
}

void Login::Login_Log()
{
    setFormVisible(false);
}

void Login::Login_UnLog()
{
    setFormVisible(true);
}

void Login::Show()
{
    setWindowState(windowState() & ~Qt::WindowMinimized);
    show();
    raise();
    activateWindow();
}

void Login::TimerGame()
{
    const bool ordinary = !isMaximized() && !isMinimized();
    if (ordinary && Timer1.isActive())
        resize(fittedSize(*this, {toPixels(formWidth), toPixels(runningHeight)}));
}

void Login::DoSignIn()
{
    m_parts.desk.stopRetrying();
    if (Text1->text().isEmpty())
        refuseEmptyName();
    else
        startSession();
    if (!check1->isChecked()) {
        Text3 = Text2->text();
        Text2->clear();
    }
    if (!Check3->isChecked())
        Text1->clear();
    if (!registerAtStartUp())
        return;
    m_parts.store.SaveSetting(StoreAddress::application, StoreAddress::section, StoreAddress::name,
                              Text1->text());
    keepPassword();
    SaveConnect();
    Check3->setChecked(RememberNick);
    check1->setChecked(RememberPass);
    check2->setChecked(GuestMode);
    ChkStartUp->setChecked(LoadAtStartUp);
}

void Login::startSession()
{
    setEntriesLocked(true);
    mnu_Sign->setCaption(u"Sign Out"_s);
    setStripRunning(true);
    m_parts.desk.loadChannel();
    m_parts.desk.mnu_File_Connect_Click();
}

void Login::refuseEmptyName()
{
    m_parts.dialogs.MsgBox(u"Enter Your NickName"_s, u"No NickName"_s, Dialogs::Icon::Exclamation);
    Text1->clear();
    Text1->setFocus();
    setEntriesLocked(false);
    setStripRunning(false);
}

bool Login::registerAtStartUp()
{
    if (!ChkStartUp->isChecked()) {
        m_parts.runKey.DeleteValue(application);
        return true;
    }
    if (!m_parts.runKey.Open())
        return false;
    m_parts.runKey.SetValue(application, QCoreApplication::applicationFilePath());
    return true;
}

void Login::keepPassword()
{
    // Who signs in before the keyring has answered does not forget the password by that.
    const bool onItsWay =
        m_parts.password.isAwaited() && check1->isChecked() && Text2->text().isEmpty();
    if (!onItsWay)
        m_parts.password.keep(Text2->text());
}

void Login::takePassword(const QString& password)
{
    if (!Text2->text().isEmpty())
        return;
    Text2->setText(password);
    if (password.isEmpty())
        check1->setChecked(false);
}

void Login::SaveConnect()
{
    const auto save = [this](const QCheckBox* control, bool& variable, const KeyAddress& address) {
        variable = control->isChecked();
        m_parts.settings.WriteSetting(address.section, address.key, booleanWord(variable));
    };
    save(ChkStartUp, LoadAtStartUp, loadAtStartUpKey);
    save(Check3, RememberNick, rememberNickKey);
    save(check1, RememberPass, rememberPassKey);
    save(check2, GuestMode, guestModeKey);
}

void Login::setStripRunning(bool running)
{
    Picture1->setVisible(running);
    Picture2->setVisible(running);
    Image1->setVisible(!running);
    if (running)
        Timer1.start();
    else
        Timer1.stop();
    lnkNetwork->setEnabled(!running); // a session stands on the one it has begun with
}

void Login::setFormVisible(bool visible)
{
    Label6->setVisible(!visible);
    for (QWidget* control : std::initializer_list<QWidget*>{Label3, Text1, Label4, Text2, check1,
                                                            check2, Check3, ChkStartUp})
        control->setVisible(visible);
}

void Login::mnu_Sign_Click()
{
    // The caption is the state.
    if (mnu_Sign->Caption() == "Sign In"_L1) {
        cmdSignIn_Click();
        mnu_Sign->setCaption(Text1->text().isEmpty() ? u"Sign In"_s : u"Sign Out"_s);
    } else if (mnu_Sign->Caption() == "Sign Out"_L1) {
        cmdSignout_Click();
        mnu_Sign->setCaption(u"Sign In"_s);
        Text1->setReadOnly(false);
        m_parts.desk.mnu_File_Disconnect_Click();
    }
}

void Login::mnu_Close_Click()
{
    if (m_parts.dialogs.askYesNo(u"Are you sure you want to exit QuillHarbor Messenger?"_s,
                                 u"Quill Harbor Messenger"_s))
        m_parts.desk.End();
}

void Login::Check3_Click()
{
    if (!Check3->isChecked()) {
        Text1->clear();
        return;
    }
    Text1->setText(m_parts.store.GetSetting(StoreAddress::application, StoreAddress::section,
                                            StoreAddress::name));
    Text2->setText(m_parts.password.known());
    m_parts.password.recall([this](const QString& password) { takePassword(password); });
    check1->setChecked(true);
}

void Login::check2_Click()
{
    const bool guest = check2->isChecked();
    Text1->setText(guest ? u"Guest"_s : QString());
    Text2->setEnabled(!guest);
    Label4->setEnabled(!guest);
}

void Login::ChkStartUp_Click()
{
    registerAtStartUp();
}

void Login::Timer1_Timer()
{
    const auto move = [](SvgPicture* half, int left) { half->move(toPixels(left), half->y()); };
    const auto left = [](const SvgPicture* half) { return toTwips(half->x()); };
    move(Picture1, left(Picture1) - stripStep);
    move(Picture2, left(Picture2) - stripStep);
    if (left(Picture1) <= -stripWidth)
        move(Picture1, left(Picture2) + stripWidth);
    if (left(Picture2) <= -stripWidth)
        move(Picture2, left(Picture1) + stripWidth);
}

void Login::Timer2_Timer()
{
    const QString text = "Time: "_L1 + m_parts.clock.longTime();
    if (Label5->text() != text)
        Label5->setText(text);
    tellSession();
}

void Login::showReport(const SessionReport& report)
{
    m_report = report;
    tellSession();
}

void Login::tellSession()
{
    const QString words = m_report ? sessionWords(*m_report) : QString();
    if (lblSession->text() == words)
        return;
    lblSession->setText(words);
    lblSession->setAccessibleName(words);
}

void Login::showNetwork(const QString& server, bool failed)
{
    lnkNetwork->showServer(server, failed);
}

void Login::closeEvent(QCloseEvent* event)
{
    event->ignore();
    if (m_parts.desk.canHideSignIn())
        hide();
    else
        showMinimized();
}

void Login::showEvent(QShowEvent* event)
{
    QWidget::showEvent(event);
    Timer2_Timer();
    Timer2.start();
}

void Login::hideEvent(QHideEvent* event)
{
    QWidget::hideEvent(event);
    Timer2.stop();
}

void Login::resizeEvent(QResizeEvent* event)
{
    QWidget::resizeEvent(event);
    Image1->resize(m_band->width(), toPixels(stripHeight));
    TimerGame();
}
