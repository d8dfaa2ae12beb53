#include "desktop/clsSysTray.h"
#include "platform/Handlers.h"
#include "support/TestSurroundings.h"

#include <QtTest>
#include <QtWidgets>

using namespace Qt::StringLiterals;

namespace {

class FakeForm final : public SourceForm
{
public:
    int WindowState() const override { return state; }
    void setWindowState(int newState) override
    {
        state = newState;
        calls += QStringLiteral("state %1").arg(newState);
    }
    void Show() override { calls += u"show"_s; }
    void Hide() override { calls += u"hide"_s; }
    void setCaption(const QString& text) override { caption = text; }
    QIcon Icon() const override { return {}; }

    int state = Normal;
    QString caption = u"Sign In"_s;
    QStringList calls;
};

using Message = NotificationArea::Message;
using Reason = QSystemTrayIcon::ActivationReason;

} // namespace

Q_DECLARE_METATYPE(QList<Reason>)

// The tray icon: what becomes of the mouse on it, and of the window that owns it.
class tst_tray final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_tray.reset();
        m_fatal.clear();
        m_dialogs.shown.clear();
        m_form = std::make_unique<FakeForm>();
        m_area = std::make_unique<RecordingTray>();
        m_tray = std::make_unique<clsSysTray>(m_handlers, *m_area, m_dialogs);
        m_tray->setSourceWindow(m_form.get());
        record(*m_tray);
    }

    void doubleClickToggles()
    {
        Q_EMIT m_area->mouse(Message::LButtonDblClk);
        QCOMPARE(m_form->calls, (QStringList{u"state 1"_s, u"hide"_s}));
        Q_EMIT m_area->mouse(Message::LButtonDblClk);
        QCOMPARE(m_form->calls.mid(2), (QStringList{u"state 2"_s, u"show"_s}));
        Q_EMIT m_area->mouse(Message::LButtonDblClk); // maximised is not minimised
        QCOMPARE(m_form->calls.mid(4), (QStringList{u"state 1"_s, u"hide"_s}));
        m_form->calls.clear();
        m_tray->DefaultDblClk = false;
        Q_EMIT m_area->mouse(Message::LButtonDblClk);
        QCOMPARE(m_form->calls, QStringList());
        QCOMPARE(m_events, QStringList(4, u"LButtonDblClk"_s));
    }

    void messageWhileHandlingIsDropped()
    {
        m_handlers.connect(m_tray.get(), &clsSysTray::RButtonUp, this,
                           [this] { Q_EMIT m_area->mouse(Message::LButtonDown); });
        Q_EMIT m_area->mouse(Message::RButtonUp);
        QCOMPARE(m_events, QStringList{u"RButtonUp"_s});
        Q_EMIT m_area->mouse(Message::LButtonDown);
        QCOMPARE(m_events.last(), u"LButtonDown"_s);
    }

    void tipIsCut()
    {
        const QString text = u"0123456789"_s.repeated(7);
        m_tray->setToolTip(text);
        QCOMPARE(m_area->last.tip, text.left(63));
        QCOMPARE(m_tray->ToolTip(), text);
        QCOMPARE(m_form->caption, u"Sign In"_s);
        m_form->state = SourceForm::Minimized;
        m_tray->setToolTip(text);
        QCOMPARE(m_form->caption, text); // whole
    }

    void iconComesAndGoes()
    {
        m_tray->ChangeIcon(QPixmap(16, 16));
        QVERIFY(!m_area->isShown);
        m_tray->MinToSysTray();
        QVERIFY(m_area->isShown);
        QVERIFY(!m_area->last.icon.isNull());
        QCOMPARE(m_form->calls, QStringList{u"hide"_s});
        m_tray->RemoveFromSysTray();
        QVERIFY(!m_area->isShown);
    }

    void sourceTwiceAndNone()
    {
        FakeForm other;
        m_tray->setSourceWindow(&other);
        QVERIFY(m_dialogs.shown.isEmpty());
        Q_EMIT m_area->mouse(Message::LButtonDblClk);
        QCOMPARE(other.calls.size(), 2);
        QVERIFY(m_form->calls.isEmpty());

        m_tray->setSourceWindow(nullptr);
        QCOMPARE(m_dialogs.shown, QStringList{u"Error|Run-time error '91':\n\n"
                                              "Object variable or With block variable not set"_s});
        QCOMPARE(m_dialogs.lastIcon, Dialogs::Icon::Critical);
    }

    void realWindow()
    {
        QWidget window;
        WidgetSourceForm form(window);
        m_tray->setSourceWindow(&form);
        window.show();
        Q_EMIT m_area->mouse(Message::LButtonDblClk);
        QVERIFY(window.isHidden());
        QCOMPARE(form.WindowState(), 1);
        Q_EMIT m_area->mouse(Message::LButtonDblClk);
        QVERIFY(window.isVisible() && window.isMaximized());

        // Shown by something else meanwhile, it is an ordinary window again.
        Q_EMIT m_area->mouse(Message::LButtonDblClk);
        window.setWindowState(Qt::WindowNoState); // as a desktop does with a window that is hidden
        QCOMPARE(form.WindowState(), 1);
        window.show();
        QCOMPARE(form.WindowState(), 0);
        QVERIFY(!window.isMinimized());
    }

    void activationReasons_data()
    {
        QTest::addColumn<QList<Reason>>("reasons");
        QTest::addColumn<QString>("events");
        using enum QSystemTrayIcon::ActivationReason;
        QTest::newRow("click") << QList{Trigger} << u"LButtonDown LButtonUp"_s;
        QTest::newRow("double click on X11")
            << QList{Trigger, DoubleClick} << u"LButtonDown LButtonUp LButtonDblClk LButtonUp"_s;
        QTest::newRow("two clicks on D-Bus")
            << QList{Trigger, Trigger} << u"LButtonDown LButtonUp LButtonDblClk LButtonUp"_s;
        QTest::newRow("three clicks are one double click")
            << QList{Trigger, Trigger, Trigger}
            << u"LButtonDown LButtonUp LButtonDblClk LButtonUp LButtonDown LButtonUp"_s;
        QTest::newRow("right") << QList{Context} << u"RButtonDown RButtonUp"_s;
        QTest::newRow("right twice")
            << QList{Context, Context} << u"RButtonDown RButtonUp RButtonDblClk RButtonUp"_s;
        QTest::newRow("left, right, left")
            << QList{Trigger, Context, Trigger}
            << u"LButtonDown LButtonUp RButtonDown RButtonUp LButtonDown LButtonUp"_s;
        QTest::newRow("middle") << QList{MiddleClick} << QString();
    }

    void activationReasons()
    {
        QFETCH(QList<Reason>, reasons);
        QFETCH(QString, events);
        QApplication::setDoubleClickInterval(60000); // so that a slow machine clicks fast enough
        DesktopNotificationArea area;
        clsSysTray tray(m_handlers, area, m_dialogs);
        tray.setSourceWindow(m_form.get());
        record(tray);
        for (const Reason reason : reasons)
            Q_EMIT area.findChild<QSystemTrayIcon*>()->activated(reason);
        QCOMPARE(m_events.join(u' '), events);
    }

private:
    QString m_fatal;
    const Handlers m_handlers{[this](const QString& message) { m_fatal = message; }};
    ScriptedDialogs m_dialogs;
    std::unique_ptr<FakeForm> m_form;
    std::unique_ptr<RecordingTray> m_area;
    std::unique_ptr<clsSysTray> m_tray;
    QStringList m_events;

    void record(clsSysTray& tray)
    {
        using Event = void (clsSysTray::*)();
        static const std::array<std::pair<Event, QString>, 6> events{{
            {&clsSysTray::LButtonDblClk, u"LButtonDblClk"_s},
            {&clsSysTray::LButtonDown, u"LButtonDown"_s},
            {&clsSysTray::LButtonUp, u"LButtonUp"_s},
            {&clsSysTray::RButtonDblClk, u"RButtonDblClk"_s},
            {&clsSysTray::RButtonDown, u"RButtonDown"_s},
            {&clsSysTray::RButtonUp, u"RButtonUp"_s},
        }};
        m_events.clear();
        for (const auto& [event, name] : events)
            connect(&tray, event, this, [this, name = name] { m_events += name; });
    }
};

QTEST_MAIN(tst_tray)
#include "tst_tray.moc"
