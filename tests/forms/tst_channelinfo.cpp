#include "platform/Resources.h"
#include "room/ChannelLists.h"
#include "support/RecordingDesk.h"
#include "support/TestSurroundings.h"

#include <QtTest>
#include <QtWidgets>

using namespace Qt::StringLiterals;

namespace {

struct Scene
{
    RecordingDesk desk;
    ChannelLists lists{{desk.variables, desk.connection, desk.events, desk.handlers}, desk.room};

    Scene()
    {
        desk.enterRoom();
        lists.mnu_chan_ban_Click();
    }
};

QTreeWidget* rows()
{
    return shown<ChannelInfo>()->findChild<QTreeWidget*>(u"lvBans"_s);
}

QString column(int number)
{
    QStringList texts;
    for (int row = 0; row < rows()->topLevelItemCount(); ++row)
        texts += rows()->topLevelItem(row)->text(number);
    return texts.join(u'|');
}

void press(const QString& button)
{
    QTest::mouseClick(shown<ChannelInfo>()->findChild<QWidget*>(button), Qt::LeftButton);
}

QString header()
{
    return rows()->headerItem()->text(0);
}

} // namespace

// The form with a room's bans, exceptions and invitations.
class tst_ChannelInfo : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void initTestCase() { loadResources(); }

    void opening()
    {
        Scene scene;
        scene.desk.room.ChannelName = u"#[*]"_s;
        scene.desk.take();
        for (int i = 0; i < 2; ++i) {
            scene.lists.mnu_chan_ban_Click();
            QVERIFY(scene.lists.Visible());
            QCOMPARE(scene.desk.take(), QStringList{u"<< MODE #[*] b"_s});
            scene.lists.AddBEI(u"bad!*@*"_s, u"olga"_s, u"0"_s);
        }
        QCOMPARE(shown<ChannelInfo>()->windowHandle()->title(), u"Channel Ban List For #[*]"_s);
        QCOMPARE(column(0), u"bad!*@*|bad!*@*"_s); // the rows of the first time stay
        QCOMPARE(header(), u"Bans"_s);
        press(u"cmdOK"_s);
        QVERIFY(!scene.lists.Visible());
    }

    void entries()
    {
        Scene scene;
        scene.lists.AddBEI({}, u"olga"_s, u"0"_s);
        scene.lists.AddBEI(u"zed!*@*"_s, u"olga"_s, u"0"_s);
        scene.lists.AddBEI(u"bad!*@*"_s, u"hugo"_s, u"yesterday"_s);
        scene.lists.AddBEI(u"late!*@*"_s, u"hugo"_s, u"9999999999"_s);
        QCOMPARE(column(0), u"zed!*@*|bad!*@*|late!*@*"_s);
        QCOMPARE(column(1), u"olga|hugo|hugo"_s);
        // A time that is no number, or too large a one, is left out.
        QVERIFY2(column(2).contains(u"70"_s) && column(2).endsWith(u"||"_s), qPrintable(column(2)));
    }

    void lists()
    {
        for (const auto& [button, title, letter] :
             {std::tuple(u"cmdBans"_s, u"Bans"_s, u'b'),
              std::tuple(u"cmdExcepts"_s, u"Excepts"_s, u'e'),
              std::tuple(u"cmdInvites"_s, u"Invites"_s, u'I')}) {
            Scene scene;
            scene.lists.AddBEI(u"old!*@*"_s, u"olga"_s, u"0"_s);
            scene.desk.variables.ListFetching = false;
            scene.desk.take();

            press(button);
            QCOMPARE(column(0), QString());
            QCOMPARE(header(), title);
            QVERIFY(scene.desk.variables.ListFetching);
            QCOMPARE(scene.desk.take(), QStringList{QString("<< MODE #room "_L1 + letter)});

            rows()->setFocus(); // focus is no selection
            scene.lists.AddBEI(u"one!*@*"_s, u"olga"_s, u"0"_s);
            scene.lists.AddBEI(u"two!*@*"_s, u"olga"_s, u"0"_s);
            press(u"cmdRemove"_s);
            QTest::mouseClick(rows()->viewport(), Qt::LeftButton, {},
                              rows()->visualItemRect(rows()->topLevelItem(1)).center());
            press(u"cmdRemove"_s);
            const QString removal = "<< mode #room -"_L1 + letter + u' ';
            QCOMPARE(scene.desk.take(), QStringList({removal, QString(removal + "two!*@*"_L1)}));
            QCOMPARE(column(0), u"one!*@*|two!*@*"_s);
        }
    }

    // In the middle of a row another list is asked for, or the form goes for good.
    void yielding()
    {
        for (const QString& button : {u"cmdInvites"_s, u"cmdOK"_s}) {
            Scene scene;
            const QPointer<ChannelInfo> before = shown<ChannelInfo>();
            scene.desk.events.onYield << [&] {
                press(button);
                QCoreApplication::sendPostedEvents(before, QEvent::DeferredDelete);
            };
            scene.lists.AddBEI(u"bad!*@*"_s, u"olga"_s, u"0"_s);
            QCOMPARE(before.isNull(), button == "cmdOK"_L1);

            scene.lists.AddBEI(u"good!*@*"_s, u"olga"_s, u"0"_s);
            scene.lists.Show();
            QCOMPARE(column(0), u"good!*@*"_s);
            QCOMPARE(column(1), u"olga"_s);
        }
    }

    void lateList()
    {
        Scene scene;
        press(u"cmdExcepts"_s);
        press(u"cmdOK"_s);
        scene.lists.AddBEI(u"bad!*@*"_s, u"olga"_s, u"0"_s);
        QVERIFY(!scene.lists.Visible()); // loaded, but only the end of the list shows it
        scene.lists.Show();
        QCOMPARE(shown<ChannelInfo>()->windowTitle(), QString());
        QCOMPARE(header(), u"Bans"_s);
        QCOMPARE(column(0), u"bad!*@*"_s);
    }

    void panelOfModes()
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
};

QTEST_MAIN(tst_ChannelInfo)
#include "tst_channelinfo.moc"
