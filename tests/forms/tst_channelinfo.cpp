#include "platform/Resources.h"
#include "room/ChannelLists.h"
#include "support/RecordingDesk.h"
#include "support/TestSurroundings.h"

#include <QtTest>
#include <QtWidgets>

using namespace Qt::StringLiterals;

namespace {

QTreeWidget& rows()
{
    return *shown<ChannelInfo>()->findChild<QTreeWidget*>();
}

struct Scene
{
    RecordingDesk desk;
    ChannelLists lists{{desk.variables, desk.connection, desk.events, desk.handlers}, desk.room};

    Scene()
    {
        desk.enterRoom();
        desk.room.ChannelName = u"#[*]"_s;
        desk.acts[u"ask"_s] = [this](auto) { lists.mnu_chan_ban_Click(); };
        desk.acts[u"show"_s] = [this](auto) { lists.Show(); };
        desk.acts[u"add"_s] = [this](auto maskSetterTime) {
            const QStringList parts = maskSetterTime.split(u' ');
            lists.AddBEI(parts[0], parts[1], parts[2]);
        };
        desk.acts[u"press"_s] = [](auto button) {
            QTest::mouseClick(shown<ChannelInfo>()->findChild<QWidget*>(button), Qt::LeftButton);
        };
        desk.acts[u"closeForGood"_s] = [this](auto) {
            desk.acts[u"press"_s](u"cmdOK"_s);
            QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        };
        desk.acts[u"focus"_s] = [](auto) { rows().setFocus(); };
        desk.acts[u"click"_s] = [](auto row) {
            const QRect place = rows().visualItemRect(rows().topLevelItem(row.toInt()));
            QTest::mouseClick(rows().viewport(), Qt::LeftButton, {}, place.center());
        };
        desk.looks[u"visible"_s] = [this] { return QString::number(lists.Visible()); };
        desk.looks[u"title"_s] = [] { return shown<ChannelInfo>()->windowHandle()->title(); };
        desk.looks[u"header"_s] = [] { return rows().headerItem()->text(0); };
        desk.looks[u"fetching"_s] = [this] {
            return QString::number(std::exchange(desk.variables.ListFetching, false));
        };
        for (const auto& [name, column] : {std::pair(u"masks"_s, 0), std::pair(u"setters"_s, 1)})
            desk.looks[name] = [this, column = column] { return texts(column).join(u'|'); };
        // Of all years, with two digits or four, that of the beginning of time.
        desk.looks[u"times"_s] = [this] {
            return texts(2).replaceInStrings(QRegularExpression(u".*70.*"_s), u"70"_s).join(u'|');
        };
    }

    QStringList texts(int column) const
    {
        QStringList texts;
        for (int row = 0; row < rows().topLevelItemCount(); ++row)
            texts += rows().topLevelItem(row)->text(column);
        return texts;
    }
};

} // namespace

// The form with a room's bans, exceptions and invitations.
class tst_ChannelInfo : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void initTestCase() { loadResources(); }

    void uses_data()
    {
        const Scenes row;
        row("the rows of the first time stay",
            u"! ask\n<< MODE #[*] b\n? visible=1\n? fetching=1\n? header=Bans\n"
            "? title=Channel Ban List For #[*]\n! add bad!*@* olga 0\n! ask\n<< MODE #[*] b\n"
            "! add bad!*@* olga 0\n? masks=bad!*@*|bad!*@*\n! press cmdOK\n? visible=0"_s);
        // A time that is no number, or too large a one, is left out.
        row("entries",
            u"~! ask\n! add  olga 0\n! add zed!*@* olga 0\n"
            "! add bad!*@* hugo yesterday\n! add late!*@* hugo 9999999999\n"
            "? masks=zed!*@*|bad!*@*|late!*@*\n? setters=olga|hugo|hugo\n? times=70||"_s);
        for (const auto& [button, header, letter] :
             {std::tuple("cmdBans", u"Bans"_s, u"b"_s),
              std::tuple("cmdExcepts", u"Excepts"_s, u"e"_s),
              std::tuple("cmdInvites", u"Invites"_s, u"I"_s)}) {
            row(button, QStringLiteral("~! ask\n! add old!*@* olga 0\n? fetching=1\n! press %1\n"
                                       "<< MODE #[*] %3\n? masks=\n? header=%2\n? fetching=1\n"
                                       "! add one!*@* olga 0\n! add two!*@* olga 0\n! focus\n"
                                       "! press cmdRemove\n<< mode #[*] -%3 \n! click 1\n"
                                       "! press cmdRemove\n<< mode #[*] -%3 two!*@*\n"
                                       "? masks=one!*@*|two!*@*")
                            .arg(QLatin1StringView(button), header, letter));
        }
        // In the middle of a row.
        for (const QString& yield : {u"press cmdInvites"_s, u"closeForGood"_s}) {
            row(qPrintable(yield), "~! ask\n! onYield ! "_L1 + yield +
                                       "\n~! add bad!*@* olga 0\n! add good!*@* olga 0\n! show\n"
                                       "? masks=good!*@*\n? setters=olga"_L1);
        }
        // Loaded, but only the end of the list shows it.
        row("a late list", u"~! ask\n~! press cmdExcepts\n! press cmdOK\n! add bad!*@* olga 0\n"
                           "? visible=0\n! show\n? title=\n? header=Bans\n? masks=bad!*@*"_s);
    }
    void uses()
    {
        QFETCH(QString, script);
        Scene scene;
        QCOMPARE(scene.desk.play(script), QString());
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
