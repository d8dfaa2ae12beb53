#include "common/SessionVariables.h"
#include "common/TextHelpers.h"
#include "controls/ActionEntry.h"
#include "controls/Theme.h"
#include "controls/xpButton.h"
#include "desktop/Author.h"
#include "desktop/FontOption.h"
#include "desktop/Modules.h"
#include "desktop/Sounds.h"
#include "desktop/frmPopup.h"
#include "platform/EventLoop.h"
#include "platform/Handlers.h"
#include "platform/Motion.h"
#include "platform/NoticeBox.h"
#include "platform/QtDialogs.h"
#include "platform/Resources.h"
#include "session/DebugWin.h"
#include "support/TestSurroundings.h"
#include "view/ReadableGround.h"

#include <QtTest>
#include <QtWidgets>

using namespace Qt::StringLiterals;

namespace {

class Yields final : public EventLoop
{
public:
    void DoEvents() override
    {
        if (meanwhile)
            std::exchange(meanwhile, {})();
    }
    void Pause(double) override {}

    std::function<void()> meanwhile; // in the next one
};

} // namespace

// The popup, the sound option, the choice of fonts and the two forms that tell about the program.
class tst_smallforms final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { loadResources(); }

    void popupRisesAndGoes()
    {
        PopupOnDemand popup(m_popup);
        popup.Show();
        QPointer<frmPopup> form = &m_popup();
        QVERIFY(form->windowFlags().testFlag(Qt::WindowStaysOnTopHint));
        QVERIFY(!form->isActiveWindow());
        const auto* label = form->findChild<QLabel*>(u"Label2"_s);
        QVERIFY(label->text().startsWith(u"Messenger is already running! DOUBLE CLICK HERE"_s));

        const QRect screen = form->screen()->geometry();
        tickUntil([&] { return form->height() == 116; }); // 1740 twips
        QCOMPARE(form->y(), screen.bottom() + 1 - 2190 / 15);
        QCOMPARE(form->x(), (screen.width() * 15 - 320 * 15 - 200) / 15);

        const QRect place = form->geometry();
        const QString reason = u"The name of the server is not known to any name server "_s;
        popup.setBody(reason.repeated(3));
        popup.Show(); // one that is up goes on as it is
        QVERIFY(form == &m_popup() && form->geometry() == place);
        QCOMPARE(label->text(), reason.repeated(3));
        QVERIFY(label->heightForWidth(label->width()) <= label->height()); // all of it is seen

        tickUntil([&] { return !m_popup.isLoaded(); });
        QTRY_VERIFY(form.isNull());
    }

    // In its last yield another one comes: the end of the first is not the end of that.
    void popupGoesWhileItYields()
    {
        m_popup().Show();
        const QPointer<frmPopup> first = &m_popup();
        m_events.meanwhile = [this] {
            m_popup.Unload();
            m_popup().Show();
        };
        tickUntil([&] { return &m_popup() != first; });
        QVERIFY(m_popup.isVisible());
        QTRY_VERIFY(first.isNull());
        m_popup.Unload();
    }

    void popupClicksShowTheChannel()
    {
        m_popup().Show();
        const auto shownBy = [this](const char* target, auto click) {
            m_channelShown = 0;
            QWidget* label = m_popup().findChild<QWidget*>(QLatin1StringView(target));
            click(label ? label : &m_popup(), Qt::LeftButton, Qt::NoModifier, QPoint(), -1);
            return m_channelShown;
        };
        const auto once = [](auto... all) { QTest::mouseClick(all...); };
        const auto twice = [](auto... all) { QTest::mouseDClick(all...); };
        QCOMPARE(shownBy("Label2", once), 1);
        QCOMPARE(shownBy("", once), 0);
        QCOMPARE(shownBy("", twice), 1);
        QCOMPARE(shownBy("Label1", twice), 0);
        QVERIFY(m_popup.isVisible()); // only its timer ends it
        m_popup.Unload();
    }

    void soundFollowsTheEntries()
    {
        QTemporaryDir folder;
        QFile wave(folder.filePath(u"send.wav"_s));
        QVERIFY(wave.open(QIODevice::WriteOnly));
        ActionEntry no;
        ActionEntry yes;
        no.setCheckable(true);
        yes.setCheckable(true);
        RecordingWaves player;
        Sounds sounds(no, yes, player, {u"/nowhere"_s, folder.path()});

        no.setChecked(true); // captioned "Yes"
        QCOMPARE(sounds.PlayWave(u"send.wav"_s), std::optional(true));
        QCOMPARE(sounds.PlayWave(u"other.wav"_s), std::optional(false));
        QCOMPARE(player.played, QStringList{wave.fileName()});

        yes.setChecked(true); // off wins when both are ticked
        QCOMPARE(sounds.PlayWave(u"send.wav"_s), std::nullopt);
        yes.setChecked(false);
        no.setChecked(false);
        QCOMPARE(sounds.PlayWave(u"send.wav"_s), std::nullopt);
        QCOMPARE(player.played.size(), 1);
    }

    void shippedModulePlays()
    {
        const QString program = QCoreApplication::applicationDirPath() + "/../src"_L1;
        const Modules modules({program + "/modules"_L1});
        WavePlayerOnDemand player(modules);
        QVERIFY(player.play(program + "/send.wav"_L1));
        QVERIFY(player.play(program + "/send.wav"_L1)); // while the first may still sound
        QVERIFY(!player.play(u"/nowhere/send.wav"_s));
        const Modules nothing({u"/nowhere"_s});
        QVERIFY(!WavePlayerOnDemand(nothing).play(program + "/send.wav"_L1));
    }

    void fontChoice_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("size");
        QTest::addColumn<QString>("expectedName");
        QTest::addColumn<int>("expectedSize");
        QTest::newRow("not installed") << u"No Such Face"_s << u"14"_s << u"No Such Face"_s << 14;
        QTest::newRow("beginning of an installed one") << u"De"_s << u"9"_s << u"De"_s << 9;
        QTest::newRow("no name keeps the old") << QString() << u"12"_s << u"Arial"_s << 12;
        QTest::newRow("emptied size keeps the old") << u"Arial"_s << QString() << u"Arial"_s << 10;
        QTest::newRow("size beyond all") << u"Arial"_s << u"99999"_s << u"Arial"_s << 10;
        QTest::newRow("below zero") << u"Arial"_s << u"-3"_s << u"Arial"_s << -3;
    }

    void fontChoice()
    {
        QFETCH(QString, name);
        QFETCH(QString, size);
        SessionVariables variables;
        variables.FontName = u"Arial"_s.leftJustified(255, QChar(0));
        variables.FontSize = 10;
        FormSlot<FontOption> slot(
            [&] { return std::make_unique<FontOption>(m_handlers, variables); });
        slot->Show();
        auto* cmbFontName = slot->findChild<QComboBox*>(u"cmbFontName"_s);
        auto* cmbFontSize = slot->findChild<QComboBox*>(u"cmbFontSize"_s);
        QCOMPARE(cmbFontSize->currentText(), u"10"_s);

        for (const auto& [combo, text] :
             {std::pair(cmbFontName, name), std::pair(cmbFontSize, size)}) {
            combo->setFocus();
            combo->lineEdit()->clear();
            QTest::keyClicks(combo, text);
        }
        slot->findChild<xpButton*>()->setFocus();
        QTest::keyClick(slot->findChild<xpButton*>(), Qt::Key_Space);

        QVERIFY(!slot.isLoaded());
        QTEST(beforeNul(variables.FontName), "expectedName");
        QTEST(static_cast<int>(variables.FontSize), "expectedSize");
    }

    void fontListsAreFilled()
    {
        const QStringList families = QFontDatabase::families();
        SessionVariables variables;
        variables.FontName = families.last().toUpper();
        FontOption form(m_handlers, variables);
        form.Form_Load();

        const auto* names = form.findChild<QComboBox*>(u"cmbFontName"_s);
        QCOMPARE(names->count(), families.size());
        QCOMPARE(names->currentText(), families.last());
        const auto* sizes = form.findChild<QComboBox*>(u"cmbFontSize"_s);
        QCOMPARE(sizes->count(), families.size());
        QCOMPARE(sizes->itemText(sizes->count() - 1), QString::number(families.size() - 1));
    }

    void boxGoesWithItsWindow()
    {
        QtDialogs dialogs;
        const auto behindBox = [](auto act) {
            auto* window = new QWidget;
            window->show();
            QVERIFY(QTest::qWaitForWindowActive(window));
            QTimer::singleShot(0, window, [window] { delete window; });
            act();
        };
        behindBox([&] { QVERIFY(!dialogs.askYesNo(u"Yes?"_s, u"Question"_s)); });
        behindBox([&] { QCOMPARE(dialogs.InputBox(u"Name"_s, u"Question"_s), QString()); });
    }

    void frameFollowsTheDesktop_data()
    {
        QTest::addColumn<QColor>("ground"); // of the desktop
        QTest::addColumn<QColor>("word");
        QTest::addColumn<double>("atLeast"); // of contrast

        QTest::newRow("light") << QColor(239, 239, 239) << QColor(0, 0, 0) << 7.0;
        QTest::newRow("dark") << QColor(49, 54, 59) << QColor(239, 240, 241) << 7.0;
        QTest::newRow("black on white") << QColor(255, 255, 255) << QColor(0, 0, 0) << 20.9;
        QTest::newRow("white on black") << QColor(0, 0, 0) << QColor(255, 255, 255) << 20.9;
    }
    void frameFollowsTheDesktop()
    {
        QFETCH(QColor, ground);
        QFETCH(QColor, word);
        const QPalette before = QApplication::palette();
        const QString styleBefore = qApp->styleSheet();
        QPalette desktop(ground);
        desktop.setColor(QPalette::Window, ground);
        desktop.setColor(QPalette::WindowText, word);
        QApplication::setPalette(desktop);
        applyTheme(*qApp);
        const QPalette ours = QApplication::palette();
        const QString sheet = qApp->styleSheet();
        qApp->setStyleSheet(styleBefore);
        QApplication::setPalette(before);

        const QRgb window = ours.color(QPalette::Window).rgb();
        const QRgb text = ours.color(QPalette::WindowText).rgb();
        QCOMPARE(qGray(window) < qGray(text), ground.lightness() < word.lightness());
        QFETCH(double, atLeast);
        QVERIFY(contrast(window, text) >= atLeast);
        QVERIFY(!sheet.contains(u'@')); // a name that nobody has
    }

    void motionFollowsTheDesktop_data()
    {
        QTest::addColumn<QString>("file");
        QTest::addColumn<QByteArray>("content");
        QTest::addColumn<bool>("reduced");

        QTest::newRow("nothing said") << u"other"_s << QByteArray() << false;
        QTest::newRow("none") << u"kdeglobals"_s << QByteArray("[KDE]\nAnimationDurationFactor=0\n")
                              << true;
        QTest::newRow("slower") << u"kdeglobals"_s
                                << QByteArray("[KDE]\nAnimationDurationFactor=1.5\n") << false;
        QTest::newRow("off") << u"gtk-3.0/settings.ini"_s
                             << QByteArray("[Settings]\ngtk-enable-animations=false\n") << true;
        QTest::newRow("on") << u"gtk-4.0/settings.ini"_s
                            << QByteArray("[Settings]\ngtk-enable-animations=1\n") << false;
    }

    void motionFollowsTheDesktop()
    {
        QFETCH(QString, file);
        const QTemporaryDir folder;
        const QString path = folder.filePath(file);
        QVERIFY(QDir().mkpath(QFileInfo(path).path()));
        QFile settings(path);
        QVERIFY(settings.open(QIODevice::WriteOnly));
        QFETCH(QByteArray, content);
        settings.write(content);
        settings.close();
        QTEST(isMotionReducedIn(folder.path()), "reduced");
    }

    void boxShowsAllOfItsText_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<bool>("inDetails");
        QTest::newRow("sentence") << u"You cannot join #harbor : "_s +
                                         u"and why that is so "_s.repeated(8)
                                  << false;
        QTest::newRow("many words") << u"a refusal of many words "_s.repeated(1000) << true;
        QTest::newRow("one word") << QString(900, u'x') << true;
    }
    // In the house's style, which could keep its label small.
    void boxShowsAllOfItsText()
    {
        QFETCH(QString, text);
        QFETCH(bool, inDetails);
        applyTheme(*qApp);
        bool isWhole = false;
        bool isOnScreen = false;
        QString details;
        QTimer::singleShot(0, this, [&] {
            auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
            const auto* label = box->findChild<QLabel*>(u"qt_msgbox_label"_s);
            isWhole = label->width() >= label->minimumSizeHint().width() &&
                      label->height() >= label->heightForWidth(label->width());
            isOnScreen = box->screen()->availableGeometry().contains(QRect({}, box->size()));
            details = box->detailedText();
            box->accept();
        });
        QtDialogs().MsgBox(text, u"Refused"_s, Dialogs::Icon::Critical);
        qApp->setStyleSheet({});
        QVERIFY(isOnScreen);
        QVERIFY(isWhole || inDetails);
        QCOMPARE(details, inDetails ? text : QString());
    }

    void noticesJoinOneBox()
    {
        NoticeBox box;
        for (const QString& line : {u"<b>one"_s, u"two"_s, u"<b>one"_s})
            box.tell(line);
        QPointer<QMessageBox> first = shown<QMessageBox>();
        QCOMPARE(first->text(), u"<b>one\n\ntwo"_s);
        QCOMPARE(first->textFormat(), Qt::PlainText);
        QVERIFY(!first->isModal());
        first->close();
        QTRY_VERIFY(!first);
        box.tell(u"two"_s); // what was put away is told anew
        QCOMPARE(shown<QMessageBox>()->text(), u"two"_s);
        shown<QMessageBox>()->close();
    }

    void trafficIsBounded()
    {
        DebugWin traffic;
        const auto* text = traffic.findChild<QPlainTextEdit*>();
        traffic.sent(u"a"_s);
        traffic.received(u"b"_s);
        QCOMPARE(text->toPlainText(), u"<< a\n>> b\n"_s);
        traffic.received(QString(59'991, u'x')); // one more than there is room for
        QCOMPARE(text->toPlainText().size(), 59'991 + 4);
    }

    void authorLinkByMouseAndKeyboard()
    {
        QStringList opened;
        Author form(m_handlers, [&](const QString& address) { opened += address; });
        form.Show();
        QVERIFY(QTest::qWaitForWindowActive(&form));
        auto* link = form.findChild<QLabel*>(u"Label10"_s);
        QTest::mouseClick(link, Qt::LeftButton, {}, QPoint(12, link->height() / 2));
        QCOMPARE(opened, QStringList{u"http://localhost:8667/qhmauthor"_s});
        QTest::keyClick(&form, Qt::Key_Tab);
        QTest::keyClick(form.focusWidget(), Qt::Key_Return);
        QCOMPARE(opened.size(), 2);
    }

private:
    const Handlers m_handlers{[](const QString& message) { QFAIL(qPrintable(message)); }};
    Yields m_events;
    int m_channelShown = 0;
    // Its timer ticks until it is so.
    void tickUntil(const std::function<bool()>& done)
    {
        for (int tick = 0; tick < 2000 && !done(); ++tick)
            QMetaObject::invokeMethod(m_popup().findChild<QTimer*>(), "timeout");
    }
    FormSlot<frmPopup> m_popup{[this] {
        return std::make_unique<frmPopup>(m_handlers, m_events, [this] { ++m_channelShown; });
    }};
};

QTEST_MAIN(tst_smallforms)
#include "tst_smallforms.moc"
