#include "controls/ActionEntry.h"
#include "controls/SvgPicture.h"
#include "platform/Clock.h"
#include "platform/EventLoop.h"
#include "platform/Resources.h"
#include "support/RecordingDesk.h"
#include "support/TestSurroundings.h"
#include "talk/Query.h"
#include "text/Links.h"

#include <QtTest>
#include <QtWidgets>

using namespace Qt::StringLiterals;

namespace {

// The text of a view from a place on, with the colour of each run.
QString runsOf(const ChatView& view, qsizetype from = 0)
{
    QString runs;
    QRgb color = 0;
    const QString text = view.chatText().text(0, view.chatText().length());
    for (qsizetype at = from; at < text.size(); ++at) {
        const QRgb next = view.styleAt(at).color;
        if (at == from || next != color)
            runs += u"<%1>"_s.arg(next & 0xffffff, 6, 16, QChar(u'0'));
        color = next;
        runs += text[at];
    }
    return runs;
}

class Loop final : public EventLoop
{
public:
    void DoEvents() override
    {
        if (pending)
            pending();
    }
    void Pause(double) override {}
    std::function<void()> pending;
};

class Neighbours final : public QueryNeighbours
{
public:
    QRgb inputColor() const override { return color; }
    void showAuthor() override {}
    void showIgnoreList() override {}
    void showFontOption() override {}
    void showPalette() override {}
    void showBuddyList() override {}

    QRgb color = qRgb(0, 0, 0);
};

struct Desk
{
    Desk()
    {
        variables.MyNick = u"Me"_s;
        variables.FontName = u"Arial"_s;
        variables.FontSize = 10;
        variables.MaxTextHistory = 30;
        room.ChannelName = u"#Harbor"_s;
    }

    Query::Desk parts()
    {
        return {.handlers = handlers,
                .variables = variables,
                .style = style,
                .writer = writer,
                .channels = channels,
                .clock = clock,
                .server = server,
                .dialogs = boxes,
                .events = loop,
                .links = links,
                .neighbours = neighbours,
                .ProcessInput =
                    [this](const QString& target, const QString& text) {
                        return QString(u"to "_s + target + u": "_s + text);
                    },
                .PlayWave = [this](const QString& name) { sounds += name; },
                .FlashWindow = [this](QWidget&) { ++flashes; }};
    }

    // A conversation that is open and looked at.
    Query& open(const QString& nick)
    {
        queries.OpenQuery(nick, nick + u"!user@host.org"_s);
        Query& query = *factory.places().back();
        query.window()->activateWindow();
        (void)QTest::qWaitForWindowActive(query.window());
        return query;
    }

    SessionVariables variables;
    OwnTextStyle style;
    TextWriter writer{variables};
    RoomWindow window;
    Room room{window};
    ChannelTable channels{room};
    StoppedClock clock;
    Server server;
    ScriptedDialogs boxes;
    Loop loop;
    RecordingLinks links;
    Neighbours neighbours;
    QStringList sounds;
    int flashes = 0;
    QStringList fatal;
    Handlers handlers{[this](const QString& message) { fatal += message; }};
    QueryFactory factory{parts()};
    ActionEntry entries[3];
    ListBoxWidget ignored{ListBoxWidget::Order::AsAdded};
    QueryTable queries{
        factory, {entries[0], entries[1], entries[2]}, [this]() -> ListBox& { return ignored; }};
};

QWidget* surfaceOf(QueryForm& form)
{
    return form.DataIn().viewport();
}

// A place over the character at an offset of the view, in the view's surface.
QPoint placeOf(QueryForm& form, qsizetype offset)
{
    const ChatView& view = form.DataIn();
    return view.characterRect(view.chatText().positionOf(offset)).center();
}

void moveOver(QWidget* widget, const QPoint& place)
{
    QMouseEvent event(QEvent::MouseMove, place, widget->mapToGlobal(place), Qt::NoButton,
                      Qt::NoButton, Qt::NoModifier);
    QApplication::sendEvent(widget, &event);
}

} // namespace

class tst_query : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void initTestCase() { loadResources(); }

    void aPlaceOutlivesItsWindow()
    {
        Desk desk;
        Query& first = desk.open(u"Ann"_s);
        const QString start =
            "<007f00>Chat Started On "_L1 + desk.clock.shortDate() + " - 06:07 \n"_L1;
        QCOMPARE(runsOf(first.window()->DataIn()), start);
        QCOMPARE(first.Tag(), u"1"_s);
        QCOMPARE(first.window()->windowTitle(), u"Ann"_s);
        QCOMPARE(first.window()->findChild<QLabel*>(u"lblHost"_s)->text(), u"user@host.org"_s);
        first.PutText(u"Ann"_s, u"hello"_s);
        first.window()->setConnected(false);
        QCOMPARE(first.window()->findChild<QLineEdit*>(u"DataOut"_s)->placeholderText(),
                 u"Not connected: nobody hears what you type here"_s);

        const QPointer<QueryForm> closed = first.window();
        closed->close();
        QVERIFY(first.QueryNick.isEmpty() && !first.window() && !closed->isVisible());
        QTRY_VERIFY(!closed);
        QCOMPARE(desk.queries.FindQuery(u"Ann"_s), -1);
        first.Unload(); // a free place has nothing to close

        QCOMPARE(desk.queries.OpenQuery(u"Bob"_s, {}), 1);
        QCOMPARE(desk.factory.places().size(), 1U);
        QCOMPARE(runsOf(first.window()->DataIn()), start);

        QTest::mouseClick(&first.window()->link(QueryForm::Label4), Qt::LeftButton);
        QVERIFY(first.QueryNick.isEmpty() && !first.window());
        QCOMPARE(desk.fatal, QStringList());
    }

    void uses_data()
    {
        const Scenes row;
        row("line", u"hear hi|?view <0000ff><Ann><000000> hi|?unread 1|?sounds send.wav|?sent "_s);
        row("version request", u"hear {A}VERSION{A}|?view |?unread 1|?sounds send.wav|"
                               "?sent CTCPREPLY Ann VERSION :Tarnwyk Messenger for Windows9x"_s);
        // The room reads these as a command, a raw line and a line for bots; none is remembered.
        for (const QString& typed : {u"two words"_s, u"/me"_s, u"IRC LIST"_s, u"!help"_s})
            row(qPrintable(typed),
                "?focus DataOut|type "_L1 + typed + "|keys Return|?input |?view "_L1 +
                    "<ff0000><Me> <000000> "_L1 + typed + "|?sent PRIVMSG Ann {C}1 "_L1 + typed +
                    "|?unread 0|?sounds |keys Up|?beeps 1|?input "_L1);
        // Where nothing is sent not even the colour changes.
        row("colour of the line",
            u"text    |color red|keys Return|?input    |?sent |?color #000000|"
            "text |keys A|?color #ff0000"_s);
        // Written to under the new name, whatever the caption says.
        row("renamed", u"text a|peer Ann2|caption other|style|click Image2|"
                       "?sent PRIVMSG Ann2 {B}{C}4 {U}a|?title Ann2"_s);
        // No display server takes a title of megabytes. The nick itself stays whole.
        const QString endless(5000, u'n');
        row("endless nick", "peer "_L1 + endless + "|?title "_L1 + endless.left(1000) +
                                u"…|text b|click Image2|?sent PRIVMSG "_s + endless + " {C}1 b"_L1);
        row("pasted lines", u"clip one\r\nQUIT\n:two|keys Ctrl+V|?input one QUIT :two"_s);
        row("history", u"keys Down|?beeps 1|remember old|keys Up|?input old|?beeps 1"_s);
        row("Tab completes", u"rows @Eve|type e|keys Tab|?input Eve: |type a|keys Tab|"
                             "?input Eve: Ann "_s);
        row("link by keys", u"hear see www.b.org|in DataIn|keys Tab Return|?opened www.b.org"_s);
        row("keys between input and view",
            u"fill|keys PgUp|?follows no|in DataIn|type m|?focus DataOut|type ine|keys Return|"
            "?sent PRIVMSG Ann {C}1 mine|?follows yes"_s);
        for (const char* place : {"", "DataIn", "DataOut", "Image2"})
            row(qPrintable("looked at, "_L1 + QLatin1StringView(place)),
                "hear hi|?flashing yes|over "_L1 + QLatin1StringView(place) +
                    "|?unread 0|?flashing no"_L1);
        for (const char* place : {"lblNick", "Label4"})
            row(qPrintable("not looked at, "_L1 + QLatin1StringView(place)),
                "hear hi|over "_L1 + QLatin1StringView(place) + "|?unread 1|?flashing yes"_L1);
        row("looked at by a key", u"hear hi|keys x|?unread 0|?flashing no"_s);
        row("looked at by the program",
            u"hear {A}VERSION{A}|?unread 1|in Label5|focus|?unread 0|?focus DataOut|?flashing no"_s);
        row("own action", u"rows @Eve|answer waves|click LabelAction|?sent to Eve: me waves|"
                          "?boxes Action Message-Type Your Own Action Message"_s);
        row("own action to oneself",
            u"rows +Me|answer waves|click LabelAction|?sent to Me: me waves|?boxes Error-You "
            "cannot do that to yourself! Action Message-Type Your Own Action Message"_s);
        row("own action to nobody", u"click LabelAction|?sent to : me "_s);
    }
    void uses()
    {
        QFETCH(QString, script);
        Desk desk;
        Query& query = desk.open(u"Ann"_s);
        QueryForm& form = *query.window();
        const qsizetype start = form.DataIn().chatText().length();
        const auto control = [&](const QString& name) {
            QWidget* found = name.isEmpty() ? &form : form.findChild<QWidget*>(name);
            return found == &form.DataIn() ? surfaceOf(form) : found;
        };
        const auto focus = [&] { return form.focusWidget(); };
        const auto yesNo = [](bool yes) { return yes ? u"yes"_s : u"no"_s; };
        const Script player(
            {
                {u"hear"_s, [&](const QString& text) { query.PutText(u"Ann"_s, text); }},
                {u"type"_s, [&](const QString& text) { QTest::keyClicks(focus(), text); }},
                {u"keys"_s, [&](const QString& names) { pressKeys(focus(), names); }},
                {u"text"_s, [&](const QString& text) { form.DataOut().setText(text); }},
                {u"clip"_s,
                 [](const QString& text) { QGuiApplication::clipboard()->setText(text); }},
                {u"in"_s, [&](const QString& name) { form.findChild<QWidget*>(name)->setFocus(); }},
                {u"click"_s,
                 [&](const QString& name) { QTest::mouseClick(control(name), Qt::LeftButton); }},
                {u"over"_s,
                 [&](const QString& name) {
                     moveOver(control(name), {2, 2});
                 }},
                {u"focus"_s, [&](auto) { query.SetFocus(); }},
                {u"peer"_s, [&](const QString& nick) { query.setPeer(nick); }},
                {u"caption"_s, [&](const QString& caption) { query.setCaption(caption); }},
                {u"remember"_s, [&](const QString& text) { query.DoHistory(text); }},
                {u"color"_s,
                 [&](const QString& name) { desk.neighbours.color = QColor(name).rgb(); }},
                {u"style"_s,
                 [&](auto) {
                     desk.style = {u"4"_s, u"\2"_s, u"\x1f"_s};
                 }},
                {u"answer"_s, [&](const QString& text) { desk.boxes.answerText = text; }},
                {u"rows"_s,
                 [&](const QString& row) {
                     desk.window.nicks.AddItem(row);
                     desk.window.nicks.setListIndex(0);
                 }},
                {u"fill"_s,
                 [&](auto) {
                     for (int i = 0; i < 100; ++i)
                         desk.writer.WriteView(form.DataIn(), u"said before"_s);
                 }},
            },
            {
                {u"view"_s, [&] { return runsOf(form.DataIn(), start).remove(u" \n"_s); }},
                {u"sent"_s, [&] { return desk.server.sent.join(u'\n'); }},
                {u"opened"_s, [&] { return desk.links.opened.join(u' '); }},
                {u"input"_s, [&] { return form.DataOut().text(); }},
                {u"color"_s, [&] { return form.DataOut().palette().color(QPalette::Text).name(); }},
                {u"title"_s, [&] { return form.windowTitle(); }},
                {u"focus"_s, [&] { return focus()->objectName(); }},
                {u"follows"_s, [&] { return yesNo(form.DataIn().isFollowing()); }},
                {u"flashing"_s, [&] { return yesNo(form.flsh().isActive()); }},
                {u"unread"_s, [&] { return QString::number(query.Unread()); }},
                {u"sounds"_s, [&] { return desk.sounds.join(u' '); }},
                {u"beeps"_s, [&] { return QString::number(desk.boxes.beeps); }},
                {u"boxes"_s, [&] { return desk.boxes.shown.join(u' ').replace(u'|', u'-'); }},
            });
        player.play(RecordingDesk::coded(script));
    }

    void clicksInTheView_data()
    {
        QTest::addColumn<QString>("on"); // the pointer is on the second character of this
        QTest::addColumn<bool>("reacts");
        QTest::addColumn<QString>("leadsTo"); // what is opened or sent

        QTest::newRow("link") << u"http://a.org/x"_s << true << u"http://a.org/x"_s;
        QTest::newRow("bare link") << u"WWW.b.org"_s << true << u"WWW.b.org"_s;
        QTest::newRow("room") << u"#other"_s << true << u"JOIN #other"_s;
        QTest::newRow("room one is in") << u"#harbor"_s << true << QString();
        QTest::newRow("server") << u"irc.a.org"_s << true << QString();
        QTest::newRow("plain word") << u"plain"_s << false << QString();
        QTest::newRow("first letter") << u" #other"_s << false << QString();
        // A line of chat that ends in a colour code has no blank at its end.
        QTest::newRow("room at a line's end") << u"#end"_s << true << u"JOIN #end"_s;
    }
    void clicksInTheView()
    {
        QFETCH(QString, on);
        QFETCH(bool, reacts);
        Desk desk;
        desk.channels.AddChannel(u"#Harbor"_s);
        Query& query = desk.open(u"Ann"_s);
        QueryForm& form = *query.window();
        query.PutText(u"Ann"_s, u"(http://a.org/x) WWW.b.org #other #harbor irc.a.org plain x"_s);
        query.PutText(u"Ann"_s, u"see #end\3"_s);
        query.PutText(u"QUIT"_s, u"\1ACTION :now\1"_s);
        QCoreApplication::processEvents();
        const QPoint place = placeOf(form, query.DataIn().Text().indexOf(on) + 1);
        QWidget* surface = surfaceOf(form);

        moveOver(surface, place);
        QCOMPARE(surface->cursor().shape(), reacts ? Qt::PointingHandCursor : Qt::ArrowCursor);

        form.link(QueryForm::Label4).setFocus();
        QTest::mouseClick(surface, Qt::LeftButton, {}, place);
        QVERIFY(form.DataOut().hasFocus());
        QTest::mouseDClick(surface, Qt::LeftButton, {}, place);
        QTEST((desk.links.opened + desk.server.sent).join(u'|'), "leadsTo");

        moveOver(surface, {surface->width() - 2, surface->height() - 2});
        QCOMPARE(surface->cursor().shape(), Qt::ArrowCursor);
        QCOMPARE(desk.fatal, QStringList());
    }

    // Other events run between the release of a button and the look at the word: one of them may
    // close the window.
    void closedBetweenReleaseAndReading()
    {
        Desk desk;
        Query& query = desk.open(u"Ann"_s);
        query.PutText(u"Ann"_s, u"see #other now"_s);
        QCoreApplication::processEvents();
        QueryForm& form = *query.window();
        const QPoint place = placeOf(form, query.DataIn().Text().indexOf(u"#other"_s) + 1);
        const QPointer<QueryForm> closed = &form;
        desk.loop.pending = [&] {
            query.Unload();
            QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
            QVERIFY(closed);
        };
        QTest::mouseClick(surfaceOf(form), Qt::LeftButton, {}, place);
        QVERIFY(!query.window());
        QTRY_VERIFY(!closed);
    }

    void closedWhileItFlashes()
    {
        Desk desk;
        Query& query = desk.open(u"Ann"_s);
        query.PutText(u"Ann"_s, u"hello"_s);
        QPointer<QueryForm> closed = query.window();
        QCOMPARE(closed->flsh().interval(), 500);
        QTRY_VERIFY(desk.flashes >= 2);
        query.Unload();
        QVERIFY(closed && !closed->flsh().isActive());
        const int flashes = desk.flashes;
        // Late events of it reach nobody, and load no new window.
        QMetaObject::invokeMethod(&closed->flsh(), "timeout");
        QTest::keyClicks(&closed->DataOut(), u"x\r"_s);
        QTest::mouseClick(&closed->link(QueryForm::LabelAction), Qt::LeftButton);
        QTRY_VERIFY(!closed);
        QVERIFY(!query.window());
        QCOMPARE(desk.flashes, flashes);
        QCOMPARE(desk.boxes.shown, QStringList());
        QCOMPARE(desk.fatal, QStringList());
    }
};

QTEST_MAIN(tst_query)
#include "tst_query.moc"
