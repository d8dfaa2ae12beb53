#include "desktop/clsSysTray.h"
#include "platform/Handlers.h"
#include "support/Script.h"
#include "support/TestSurroundings.h"

#include <QtTest>
#include <QtWidgets>

using namespace Qt::StringLiterals;

namespace {

using Message = NotificationArea::Message;

struct Scene
{
    const Handlers handlers{[](const QString& message) { QFAIL(qPrintable(message)); }};
    ScriptedDialogs dialogs;
    QWidget window;
    QWidget another;
    WidgetSourceForm form{window};
    WidgetSourceForm anotherForm{another};
    DesktopNotificationArea desktop;
    RecordingTray area;
    clsSysTray tray{handlers, area, dialogs};
    QStringList events;

    Scene()
    {
        QObject::connect(&desktop, &NotificationArea::mouse, &area, &NotificationArea::mouse);
        using Event = void (clsSysTray::*)();
        static constexpr std::pair<Event, const char*> names[]{
            {&clsSysTray::LButtonDblClk, "LButtonDblClk"},
            {&clsSysTray::LButtonDown, "LButtonDown"},
            {&clsSysTray::LButtonUp, "LButtonUp"},
            {&clsSysTray::RButtonDblClk, "RButtonDblClk"},
            {&clsSysTray::RButtonDown, "RButtonDown"},
            {&clsSysTray::RButtonUp, "RButtonUp"},
        };
        for (const auto& [event, name] : names)
            QObject::connect(&tray, event,
                             [this, name = name] { events += QLatin1StringView(name); });
        window.setWindowTitle(u"Sign In"_s);
        window.show();
        tray.setSourceWindow(&form);
    }
};

QString seenOf(const QWidget& window, const WidgetSourceForm& form)
{
    static const QStringList states = u"normal minimized maximized"_s.split(u' ');
    return (window.isVisible() ? u"shown "_s : u"hidden "_s) + states[form.WindowState()];
}

} // namespace

// The tray icon: what becomes of the mouse on it, and of the window that owns it.
class tst_tray final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void uses_data()
    {
        const Scenes row;
        row("double clicks put the window away and bring it back",
            u"double|?window hidden minimized|double|?window shown maximized|double|"
            "?window hidden minimized|?events LButtonDblClk LButtonDblClk LButtonDblClk"_s);
        row("an owner with a double click of its own",
            u"ownDouble|double|?window shown normal|?events LButtonDblClk"_s);
        // A desktop forgets that a hidden window is minimised.
        row("shown by something else meanwhile",
            u"double|forget|?window hidden minimized|show|?window shown normal"_s);
        const QString text = u"0123456789"_s.repeated(7);
        row("a tip is cut, the title of a minimised window is not",
            "tip "_L1 + text + "|?shownTip "_L1 + text.left(63) + "|?tip "_L1 + text +
                "|?title Sign In|double|tip "_L1 + text + "|?title "_L1 + text);
        row("an icon comes and goes",
            u"picture|?icon away|toTray|?icon shown|?window hidden normal|"
            "fromTray|?icon away"_s);
        row("another owner, and none",
            u"owner|?boxes |double|?window shown normal|?another hidden minimized|nobody|"
            "?boxes Error: Run-time error '91':\n\nObject variable or With block variable not set|"
            "?severe 1"_s);

        row("double click on X11",
            u"clicks 3 2|?events LButtonDown LButtonUp LButtonDblClk LButtonUp"_s);
        row("three clicks on D-Bus are one double click",
            u"clicks 3 3 3|?events LButtonDown LButtonUp LButtonDblClk LButtonUp LButtonDown "
            "LButtonUp"_s);
        row("right twice", u"clicks 1 1|?events RButtonDown RButtonUp RButtonDblClk RButtonUp"_s);
        row("left, right, left",
            u"clicks 3 1 3|?events LButtonDown LButtonUp RButtonDown RButtonUp LButtonDown "
            "LButtonUp"_s);
        row("middle", u"clicks 4|?events "_s);
    }
    void uses()
    {
        QFETCH(QString, script);
        QApplication::setDoubleClickInterval(60000); // so that a slow machine clicks fast enough
        Scene scene;
        clsSysTray& tray = scene.tray;
        const Script player(
            {
                {u"double"_s, [&](auto) { Q_EMIT scene.area.mouse(Message::LButtonDblClk); }},
                {u"ownDouble"_s, [&](auto) { tray.DefaultDblClk = false; }},
                {u"forget"_s, [&](auto) { scene.window.setWindowState(Qt::WindowNoState); }},
                {u"show"_s, [&](auto) { scene.window.show(); }},
                {u"tip"_s, [&](auto text) { tray.setToolTip(text); }},
                {u"picture"_s, [&](auto) { tray.ChangeIcon(QPixmap(16, 16)); }},
                {u"toTray"_s, [&](auto) { tray.MinToSysTray(); }},
                {u"fromTray"_s, [&](auto) { tray.RemoveFromSysTray(); }},
                {u"owner"_s, [&](auto) { tray.setSourceWindow(&scene.anotherForm); }},
                {u"nobody"_s, [&](auto) { tray.setSourceWindow(nullptr); }},
                // By the toolkit's numbers: 1 right, 2 double, 3 left, 4 middle.
                {u"clicks"_s,
                 [&](auto reasons) {
                     for (const QString& reason : reasons.split(u' '))
                         Q_EMIT scene.desktop.findChild<QSystemTrayIcon*>()->activated(
                             QSystemTrayIcon::ActivationReason(reason.toInt()));
                 }},
            },
            {
                {u"window"_s, [&] { return seenOf(scene.window, scene.form); }},
                {u"another"_s, [&] { return seenOf(scene.another, scene.anotherForm); }},
                {u"title"_s, [&] { return scene.window.windowTitle(); }},
                {u"shownTip"_s, [&] { return scene.area.last.tip; }},
                {u"tip"_s, [&] { return tray.ToolTip(); }},
                {u"icon"_s,
                 [&] {
                     const bool isSeen = scene.area.isShown && !scene.area.last.icon.isNull();
                     return isSeen ? u"shown"_s : u"away"_s;
                 }},
                {u"boxes"_s, [&] { return scene.dialogs.shown.join(u' ').replace(u'|', ": "_L1); }},
                {u"severe"_s,
                 [&] {
                     return QString::number(scene.dialogs.lastIcon == Dialogs::Icon::Critical);
                 }},
                {u"events"_s, [&] { return scene.events.join(u' '); }},
            });
        player.play(script);
    }

    void desktopHoldsTheIcon()
    {
        DesktopNotificationArea area;
        const auto* icon = area.findChild<QSystemTrayIcon*>();
        QMenu menu;
        area.setMenu(&menu);
        area.add({QPixmap(16, 16), u"tip"_s});
        QVERIFY(icon->isVisible() && icon->contextMenu() == &menu && !icon->icon().isNull());
        QCOMPARE(icon->toolTip(), u"tip"_s);
        area.remove();
        QVERIFY(!icon->isVisible());
    }

    void messageWhileHandlingIsDropped()
    {
        Scene scene;
        QObject::connect(&scene.tray, &clsSysTray::RButtonUp,
                         [&] { Q_EMIT scene.area.mouse(Message::LButtonDown); });
        Q_EMIT scene.area.mouse(Message::RButtonUp);
        Q_EMIT scene.area.mouse(Message::LButtonDown);
        QCOMPARE(scene.events, QStringList({u"RButtonUp"_s, u"LButtonDown"_s}));
    }
};

QTEST_MAIN(tst_tray)
#include "tst_tray.moc"
