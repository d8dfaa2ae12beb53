#include "platform/Resources.h"
#include "room/ChannelLists.h"
#include "support/RecordingDesk.h"

#include <QApplication>
#include <QTest>
#include <QTreeWidget>

using namespace Qt::StringLiterals;

namespace {

// Lets a test act in the middle of a yield.
class Yields final : public EventLoop
{
public:
    std::function<void()> meanwhile;

    void DoEvents() override
    {
        if (meanwhile)
            meanwhile();
    }
    void Pause(double) override {}
};

struct Scene
{
    RecordingDesk desk;
    Yields events;
    ChannelLists lists{{desk.variables, desk.connection, events, desk.handlers}, desk.room};

    Scene() { desk.enterRoom(); }
};

ChannelInfo* form()
{
    for (QWidget* widget : QApplication::topLevelWidgets()) {
        auto* info = qobject_cast<ChannelInfo*>(widget);
        if (info && info->isVisible())
            return info;
    }
    return nullptr;
}

QTreeWidget* rows()
{
    return form()->findChild<QTreeWidget*>(u"lvBans"_s);
}

void press(const QString& button)
{
    QTest::mouseClick(form()->findChild<QWidget*>(button), Qt::LeftButton);
}

QString header()
{
    return rows()->headerItem()->text(0);
}

} // namespace

class tst_ChannelInfo : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void initTestCase() { loadResources(); }

    void opening();
    void entries();
    void lists_data();
    void lists();
    void yielding_data();
    void yielding();
    void lateList();
    void panelOfModes();
};

void tst_ChannelInfo::opening()
{
    Scene scene;
    scene.desk.sock.setState(Winsock::Failed); // the line is tried in any state
    for (int i = 1; i <= 2; ++i) {
        scene.lists.mnu_chan_ban_Click();
        QVERIFY(scene.lists.Visible());
        QCOMPARE(form()->windowTitle(), u"Channel Ban List For #room"_s);
        QVERIFY(scene.desk.variables.ListFetching);
        QCOMPARE(scene.desk.take(), QStringList{u"<< MODE #room b"_s});
        scene.lists.AddBEI(u"bad!*@*"_s, u"olga"_s, u"0"_s);
        QCOMPARE(rows()->topLevelItemCount(), i); // the rows of the first time stay
    }
    QCOMPARE(header(), u"Bans"_s);
    press(u"cmdOK"_s);
    QVERIFY(!scene.lists.Visible());
}

void tst_ChannelInfo::entries()
{
    Scene scene;
    scene.lists.mnu_chan_ban_Click();
    scene.lists.AddBEI({}, u"olga"_s, u"0"_s);
    scene.lists.AddBEI(u"zed!*@*"_s, u"olga"_s, u"0"_s);
    scene.lists.AddBEI(u"bad!*@*"_s, u"hugo"_s, u"yesterday"_s);
    scene.lists.AddBEI(u"late!*@*"_s, u"hugo"_s, u"9999999999"_s);
    QCOMPARE(rows()->topLevelItemCount(), 3);
    const QTreeWidgetItem* first = rows()->topLevelItem(0);
    QCOMPARE(first->text(0), u"zed!*@*"_s);
    QCOMPARE(first->text(1), u"olga"_s);
    QVERIFY2(first->text(2).contains(u"70"_s), qPrintable(first->text(2)));
    for (int row : {1, 2}) { // a time that is no number, or too large a one, is left out
        QCOMPARE(rows()->topLevelItem(row)->text(1), u"hugo"_s);
        QCOMPARE(rows()->topLevelItem(row)->text(2), QString());
    }
}

void tst_ChannelInfo::lists_data()
{
    QTest::addColumn<QString>("button");
    QTest::addColumn<QString>("headerText");
    QTest::addColumn<QString>("letter");
    QTest::newRow("bans") << u"cmdBans"_s << u"Bans"_s << u"b"_s;
    QTest::newRow("exceptions") << u"cmdExcepts"_s << u"Excepts"_s << u"e"_s;
    QTest::newRow("invitations") << u"cmdInvites"_s << u"Invites"_s << u"I"_s;
}

void tst_ChannelInfo::lists()
{
    QFETCH(QString, button);
    QFETCH(QString, headerText);
    QFETCH(QString, letter);
    Scene scene;
    scene.lists.mnu_chan_ban_Click();
    scene.lists.AddBEI(u"old!*@*"_s, u"olga"_s, u"0"_s);
    scene.desk.variables.ListFetching = false;
    scene.desk.take();

    press(button);
    QCOMPARE(rows()->topLevelItemCount(), 0);
    QCOMPARE(header(), headerText);
    QVERIFY(scene.desk.variables.ListFetching);
    QCOMPARE(scene.desk.take(), QStringList{QString("<< MODE #room "_L1 + letter)});

    rows()->setFocus(); // focus is no selection
    scene.lists.AddBEI(u"one!*@*"_s, u"olga"_s, u"0"_s);
    scene.lists.AddBEI(u"two!*@*"_s, u"olga"_s, u"0"_s);
    press(u"cmdRemove"_s);
    QCOMPARE(scene.desk.take(), QStringList{QString("<< mode #room -"_L1 % letter % u' ')});
    QTest::mouseClick(rows()->viewport(), Qt::LeftButton, {},
                      rows()->visualItemRect(rows()->topLevelItem(1)).center());
    press(u"cmdRemove"_s);
    QCOMPARE(scene.desk.take(),
             QStringList{QString("<< mode #room -"_L1 % letter % " two!*@*"_L1)});
    QCOMPARE(rows()->topLevelItemCount(), 2);
}

void tst_ChannelInfo::yielding_data()
{
    QTest::addColumn<QString>("button");
    QTest::newRow("another list is asked for") << u"cmdInvites"_s;
    QTest::newRow("the form goes") << u"cmdOK"_s;
}

void tst_ChannelInfo::yielding()
{
    QFETCH(QString, button);
    Scene scene;
    scene.lists.mnu_chan_ban_Click();
    const QPointer<ChannelInfo> before = form();
    scene.events.meanwhile = [&] {
        press(button);
        QCoreApplication::sendPostedEvents(before, QEvent::DeferredDelete);
    };
    scene.lists.AddBEI(u"bad!*@*"_s, u"olga"_s, u"0"_s);
    scene.events.meanwhile = {};
    QCOMPARE(before.isNull(), button == "cmdOK"_L1);

    scene.lists.AddBEI(u"good!*@*"_s, u"olga"_s, u"0"_s);
    scene.lists.Show();
    QCOMPARE(rows()->topLevelItemCount(), 1);
    QCOMPARE(rows()->topLevelItem(0)->text(1), u"olga"_s);
}

void tst_ChannelInfo::lateList()
{
    Scene scene;
    scene.lists.mnu_chan_ban_Click();
    press(u"cmdExcepts"_s);
    press(u"cmdOK"_s);
    QVERIFY(!scene.lists.Visible());
    scene.lists.AddBEI(u"bad!*@*"_s, u"olga"_s, u"0"_s);
    QVERIFY(!scene.lists.Visible()); // loaded, but only the end of the list shows it
    scene.lists.Show();
    QCOMPARE(form()->windowTitle(), QString());
    QCOMPARE(header(), u"Bans"_s);
    QCOMPARE(rows()->topLevelItemCount(), 1);
}

void tst_ChannelInfo::panelOfModes()
{
    QCOMPARE(ChangeMode(u"+nt"_s, u'm', true), u"+m"_s);
    QCOMPARE(ChangeMode(u"+nt"_s, u't', false), u"-t"_s);
    QCOMPARE(ChangeMode(u"+nt"_s, u'n', true) + ChangeMode(u"+nt"_s, u'i', false), QString());

    ModeFlags boxes{};
    ModeFlags flags{};
    boxes[1] = true; // k, by hand
    ParseTheModes(u"+tinr"_s, boxes, flags);
    QCOMPARE(flags, (ModeFlags{true, false, false, false, true, false, false, true}));
    QCOMPARE(boxes, (ModeFlags{true, true, false, false, true, false, false, true}));
}

QTEST_MAIN(tst_ChannelInfo)
#include "tst_channelinfo.moc"
