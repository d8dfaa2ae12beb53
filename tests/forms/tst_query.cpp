#include "common/SessionVariables.h"
#include "controls/ActionEntry.h"
#include "controls/SvgPicture.h"
#include "platform/Clock.h"
#include "platform/EventLoop.h"
#include "platform/Handlers.h"
#include "platform/Resources.h"
#include "room/ChannelTable.h"
#include "support/RecordingPorts.h"
#include "support/StandIns.h"
#include "support/TestSurroundings.h"
#include "talk/Query.h"
#include "talk/QueryTable.h"
#include "text/Links.h"
#include "text/OwnTextStyle.h"
#include "text/TextWriter.h"

#include <QAbstractScrollArea>
#include <QLabel>
#include <QLineEdit>
#include <QtTest>

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
                .pictures = nullptr,
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
    QWidget* view = &form.DataIn();
    auto* area = qobject_cast<QAbstractScrollArea*>(view);
    return (area ? area : view->findChild<QAbstractScrollArea*>())->viewport();
}

// A place over the character at an offset of the view, in the view's surface.
QPoint placeOf(QueryForm& form, qsizetype offset)
{
    ChatView& view = form.DataIn();
    QWidget* surface = surfaceOf(form);
    for (int y = 0; y < surface->height(); y += 2) {
        for (int x = 0; x < surface->width(); ++x) {
            if (view.offsetAt(surface->mapTo(&view, QPoint(x, y))) == offset)
                return {x, y};
        }
    }
    return {-1, -1};
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
        QCOMPARE(first.window()->findChild<QLabel*>(u"lblNick"_s)->text(), u"Ann"_s);
        QCOMPARE(first.window()->findChild<QLabel*>(u"lblHost"_s)->text(), u"user@host.org"_s);
        first.PutText(u"Ann"_s, u"hello"_s);

        const QPointer<QueryForm> closed = first.window();
        closed->close();
        QVERIFY(first.QueryNick.isEmpty() && !first.window() && !closed->isVisible());
        QTRY_VERIFY(!closed);
        QCOMPARE(desk.queries.FindQuery(u"Ann"_s), -1);
        first.Unload(); // a free place has nothing to close

        QCOMPARE(desk.queries.OpenQuery(u"Bob"_s, {}), 1);
        QCOMPARE(desk.factory.places().size(), 1U);
        QCOMPARE(runsOf(first.window()->DataIn()), start);
        QVERIFY(first.window()->isVisible());

        QTest::mouseClick(&first.window()->link(QueryForm::Label4), Qt::LeftButton);
        QVERIFY(first.QueryNick.isEmpty() && !first.window());
        QCOMPARE(desk.fatal, QStringList());
    }

    void lines_data()
    {
        QTest::addColumn<QString>("said");  // by the peer; or
        QTest::addColumn<QString>("typed"); // by oneself
        QTest::addColumn<QString>("view");
        QTest::addColumn<QStringList>("sent");

        const QString none;
        QTest::newRow("line") << u"hi"_s << none << u"<0000ff><Ann><000000> hi \n"_s
                              << QStringList();
        QTest::newRow("version request")
            << u"\1VERSION\1"_s << none << none
            << QStringList{u"CTCPREPLY Ann VERSION :Tarnwyk Messenger for Windows9x"_s};
        // The room reads these as a command, a raw line and a line for bots.
        for (const QString& typed : {u"two words"_s, u"/me"_s, u"IRC LIST"_s, u"!help"_s})
            QTest::newRow(qPrintable(typed))
                << none << typed << QString("<ff0000><Me> <000000> "_L1 + typed + " \n"_L1)
                << QStringList{u"PRIVMSG Ann \x03\x31 "_s + typed};
    }
    void lines()
    {
        QFETCH(QString, said);
        QFETCH(QString, typed);
        Desk desk;
        Query& query = desk.open(u"Ann"_s);
        ChatView& view = query.window()->DataIn();
        const qsizetype start = view.chatText().length();
        QLineEdit& box = query.window()->DataOut();
        if (typed.isEmpty()) {
            query.PutText(u"Ann"_s, said);
        } else {
            QTest::keyClicks(&box, typed);
            QTest::keyClick(&box, Qt::Key_Return);
            QTest::keyClick(&box, Qt::Key_Up); // what was sent is not remembered
        }
        QTEST(runsOf(view, start), "view");
        QTEST(desk.server.sent, "sent");
        QCOMPARE(box.text(), QString());
        QCOMPARE(desk.boxes.beeps, typed.isEmpty() ? 0 : 1);
        QCOMPARE(query.Unread(), said.isEmpty() ? 0 : 1);
        QCOMPARE(desk.sounds, said.isEmpty() ? QStringList() : QStringList{u"send.wav"_s});
    }

    void typing()
    {
        Desk desk;
        Query& query = desk.open(u"Ann"_s);
        QLineEdit& box = query.window()->DataOut();
        QVERIFY(box.hasFocus());

        box.setText(u"   "_s);
        desk.neighbours.color = qRgb(255, 0, 0);
        QTest::keyClick(&box, Qt::Key_Return); // nothing to send: not even the colour changes
        QCOMPARE(box.text(), u"   "_s);
        QCOMPARE(desk.server.sent, QStringList());
        QCOMPARE(box.palette().color(QPalette::Text).rgb(), qRgb(0, 0, 0));

        box.clear();
        QTest::keyClick(&box, Qt::Key_A);
        QCOMPARE(box.palette().color(QPalette::Text).rgb(), qRgb(255, 0, 0));

        // A renamed peer is written to under the new name, whatever the caption says.
        query.setPeer(u"Ann2"_s);
        query.setCaption(u"other"_s);
        desk.style = {u"4"_s, u"\2"_s, u"\x1f"_s};
        QTest::mouseClick(&query.window()->Image2(), Qt::LeftButton);
        QCOMPARE(desk.server.sent, QStringList{u"PRIVMSG Ann2 \2\3"
                                               u"4 \x1f"
                                               u"a"_s});
        QCOMPARE(query.window()->windowTitle(), u"Ann2"_s);

        // No display server takes a title of megabytes. The nick itself stays whole.
        query.setPeer(QString(5000, u'n'));
        QVERIFY(query.window()->windowTitle().size() < 2000);
        box.setText(u"b"_s);
        QTest::mouseClick(&query.window()->Image2(), Qt::LeftButton);
        QVERIFY(desk.server.sent.last().startsWith(u"PRIVMSG "_s + QString(5000, u'n') + u' '));

        // A pasted line end does not become a second line to the server.
        QGuiApplication::clipboard()->setText(u"one\r\nQUIT\n:two"_s);
        box.paste();
        QCOMPARE(box.text(), u"one QUIT :two"_s);

        QTest::keyClick(&box, Qt::Key_Down);
        QCOMPARE(desk.boxes.beeps, 1);
        query.DoHistory(u"old"_s);
        QTest::keyClick(&box, Qt::Key_Up);
        QCOMPARE(box.text(), u"old"_s);
        QCOMPARE(desk.boxes.beeps, 1);
    }

    void keysBetweenInputAndView()
    {
        Desk desk;
        QueryForm& form = *desk.open(u"Ann"_s).window();
        for (int i = 0; i < 100; ++i)
            desk.writer.WriteView(form.DataIn(), u"said before"_s);
        QTest::keyClick(&form.DataOut(), Qt::Key_PageUp);
        QVERIFY(!form.DataIn().isFollowing());
        form.DataIn().setFocus();
        QTest::keyClicks(&form.DataIn(), u"m"_s);
        QVERIFY(form.DataOut().hasFocus());
        QTest::keyClicks(&form.DataOut(), u"ine"_s);
        QTest::keyClick(&form.DataOut(), Qt::Key_Return);
        QVERIFY(form.DataIn().Text().endsWith(u"mine \r\n"_s));
        QVERIFY(form.DataIn().isFollowing());
    }

    void flashingStopsWhenLookedAt()
    {
        Desk desk;
        Query& query = desk.open(u"Ann"_s);
        QueryForm& form = *query.window();
        const std::pair<QWidget*, bool> places[]{
            {&form, true},
            {surfaceOf(form), true},
            {&form.DataOut(), true},
            {&form.Image2(), true},
            {form.findChild<QWidget*>(u"lblNick"_s), false},
            {&form.link(QueryForm::Label4), false},
        };
        for (const auto& [widget, stops] : places) {
            query.PutText(u"Ann"_s, u"hi"_s);
            moveOver(widget, {2, 2});
            QCOMPARE(query.Unread(), stops ? 0 : 1);
            QCOMPARE(form.flsh().isActive(), !stops);
            moveOver(&form, {2, 2});
        }
    }

    void flashing()
    {
        Desk desk;
        Query& query = desk.open(u"Ann"_s);
        QueryForm& form = *query.window();
        QCOMPARE(form.flsh().interval(), 500);
        query.PutText(u"Ann"_s, u"hi"_s);
        QTRY_VERIFY(desk.flashes >= 2);
        QTest::keyClick(&form.DataOut(), Qt::Key_X);
        QCOMPARE(query.Unread(), 0);
        query.PutText(u"Ann"_s, u"\1VERSION\1"_s);
        QCOMPARE(query.Unread(), 1);
        form.link(QueryForm::Label5).setFocus();
        query.SetFocus();
        QCOMPARE(query.Unread(), 0);
        QVERIFY(form.DataOut().hasFocus());
        QVERIFY(!form.flsh().isActive());
    }

    void clicksInTheView_data()
    {
        QTest::addColumn<QString>("on"); // the pointer is on the second character of this
        QTest::addColumn<bool>("reacts");
        QTest::addColumn<QStringList>("opened");
        QTest::addColumn<QStringList>("sent");

        const QStringList nothing;
        QTest::newRow("link") << u"http://a.org/x"_s << true << QStringList{u"http://a.org/x"_s}
                              << nothing;
        QTest::newRow("bare link")
            << u"WWW.b.org"_s << true << QStringList{u"WWW.b.org"_s} << nothing;
        QTest::newRow("room") << u"#other"_s << true << nothing << QStringList{u"JOIN #other"_s};
        QTest::newRow("room one is in") << u"#harbor"_s << true << nothing << nothing;
        QTest::newRow("server") << u"irc.a.org"_s << true << nothing << nothing;
        QTest::newRow("plain word") << u"plain"_s << false << nothing << nothing;
        QTest::newRow("first letter") << u" #other"_s << false << nothing << nothing;
        // A line of chat that ends in a colour code has no blank at its end.
        QTest::newRow("room at a line's end")
            << u"#end"_s << true << nothing << QStringList{u"JOIN #end"_s};
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
        QVERIFY(place.x() >= 0);
        QWidget* surface = surfaceOf(form);

        moveOver(surface, place);
        QCOMPARE(surface->cursor().shape(), reacts ? Qt::PointingHandCursor : Qt::ArrowCursor);

        form.link(QueryForm::Label4).setFocus();
        QTest::mouseClick(surface, Qt::LeftButton, {}, place);
        QVERIFY(form.DataOut().hasFocus());
        QTest::mouseDClick(surface, Qt::LeftButton, {}, place);
        QTEST(desk.links.opened, "opened");
        QTEST(desk.server.sent, "sent");

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
        QVERIFY(closed->flsh().isActive());
        query.Unload();
        QVERIFY(closed && !closed->flsh().isActive());
        // Late events of it reach nobody, and load no new window.
        QMetaObject::invokeMethod(&closed->flsh(), "timeout");
        QTest::keyClicks(&closed->DataOut(), u"x\r"_s);
        QTest::mouseClick(&closed->link(QueryForm::LabelAction), Qt::LeftButton);
        QTRY_VERIFY(!closed);
        QVERIFY(!query.window());
        QCOMPARE(desk.flashes, 0);
        QCOMPARE(desk.boxes.shown, QStringList());
        QCOMPARE(desk.fatal, QStringList());
    }

    void ownAction()
    {
        Desk desk;
        Query& query = desk.open(u"Ann"_s);
        const auto sent = [&](const QString& selected, const QString& answer) {
            desk.boxes.shown.clear();
            desk.window.nicks.Clear();
            desk.window.nicks.AddItem(selected);
            desk.window.nicks.setListIndex(selected.isEmpty() ? -1 : 0);
            desk.boxes.answerText = answer;
            QTest::mouseClick(&query.window()->link(QueryForm::LabelAction), Qt::LeftButton);
            return std::exchange(desk.server.sent, {}).join(u'|');
        };
        const QString asked = u"Action Message|Type Your Own Action Message"_s;
        QCOMPARE(sent(u"@Eve"_s, u"waves"_s), u"to Eve: me waves"_s);
        QCOMPARE(desk.boxes.shown, QStringList{asked});
        QCOMPARE(sent(u"+Me"_s, u"waves"_s), u"to Me: me waves"_s);
        QCOMPARE(desk.boxes.shown,
                 QStringList({u"Error|You cannot do that to yourself!"_s, asked}));
        QCOMPARE(sent({}, {}), u"to : me "_s);
    }
};

QTEST_MAIN(tst_query)
#include "tst_query.moc"
