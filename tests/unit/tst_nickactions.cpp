#include "commands/ChatOptions.h"
#include "commands/NickActions.h"
#include "commands/Presence.h"
#include "common/ControlCharacters.h"
#include "support/NickDesk.h"

#include <QTest>

#include <map>

using namespace Qt::StringLiterals;

namespace {

const QString typeMismatch = u"Run-time error '13':\n\nType mismatch"_s;

// Menus wired as the main window wires them: every entry by its name, through the edge that stops
// failures. Entries can be checked, so the toolkit checks them by itself on a click, too.
struct Menus
{
    NickDesk desk;
    std::map<QString, ActionEntry> entries;
    NickActions actions{
        {desk.variables,
         desk.room,
         desk.server,
         desk.commands,
         desk.queries,
         desk.dialogs,
         {entry(u"mnu_nicks_op"_s, u"&Op"_s), entry(u"mnu_nicks_halfop"_s, u"&Halfop"_s),
          entry(u"mnu_nicks_voice"_s, u"&Voice"_s)},
         [this]() -> ListBox& { return desk.ignored; }}};
    Presence presence{Presence::Parts{desk.room, desk.server, desk.commands, desk.dialogs,
                                      entry(u"mnu_status_away"_s, u"&..:Away [Own Reason]:."_s)}};
    ChatOptions options{ChatOptions::Parts{entry(u"mnu_pm_no"_s), entry(u"mnu_pm_yes"_s),
                                           entry(u"mnu_sound_no"_s), entry(u"mnu_sound_yes"_s),
                                           desk.mainView, desk.dialogs}};

    Menus()
    {
        wire(actions);
        wire(presence);
        wire(options);
        desk.fill({u"@olga"_s, u"%hugo"_s, u"+vera"_s, u"bob"_s, u"me"_s});
        desk.select(u"bob"_s);
    }

    ActionEntry& entry(const QString& name, const QString& caption = {})
    {
        ActionEntry& action = entries[name];
        if (!caption.isEmpty())
            action.setCaption(caption);
        action.setCheckable(name.startsWith("mnu_pm"_L1) || name.startsWith("mnu_sound"_L1));
        return action;
    }
    template<typename Logic>
    void wire(Logic& logic)
    {
        for (const QString& name : Logic::entries()) {
            ActionEntry& action = entry(name);
            desk.handlers.connect(&action, &QAction::triggered, &action,
                                  [&logic, name] { logic.click(name); });
        }
    }
    void ignore(const QStringList& rows)
    {
        for (const QString& row : rows)
            desk.ignored.AddItem(row);
    }
    QStringList ignored() const
    {
        QStringList rows;
        for (int i = 0; i < desk.ignored.ListCount(); ++i)
            rows += desk.ignored.List(i);
        return rows;
    }
    QStringList click(const QString& name)
    {
        entry(name).trigger();
        return desk.takeLog();
    }
};

QString action(const QString& text)
{
    return "PRIVMSG #room :"_L1 % strAction % "ACTION "_L1 % text % strAction;
}

QString withCodes(QString text)
{
    return text.replace(u'^', strColor).replace(u'*', strBold);
}

} // namespace

class tst_NickActions : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void lines_data();
    void lines();
    void captionsFollowTheSelectedMember();
    void kickKeepsTheNickOfBeforeTheQuestion();
    void promptsSendOneLine();
    void conversation();
    void doubleClick();
    void blocking_data();
    void blocking();
    void presence_data();
    void presence();
    void ownReason();
    void crossedPairs();
    void refusingPrivateTalkAsksEachTime();
    void clearScreen();
};

void tst_NickActions::lines_data()
{
    QTest::addColumn<QString>("entry");
    QTest::addColumn<QString>("selected");
    QTest::addColumn<bool>("needsConnection");
    QTest::addColumn<QString>("line");
    const auto row = [](const char* entry, const QString& selected, bool needs,
                        const QString& line) {
        QTest::addRow("%s on %s", entry, qPrintable(selected))
            << QString::fromLatin1(entry) << selected << needs << line;
    };
    row("mnu_hi", u"@olga"_s, true, action(u"Says Hi To olga"_s));
    row("mnu_welcome", u"+vera"_s, true, action(u"Welcomes vera To Harbor ChatRoom"_s));
    row("mnu_hugs", u"bob"_s, true, action(u"Hugs bob tightly and warmly."_s));
    row("mnu_handshake", u"bob"_s, true, action(u"Handshakes with bob"_s));
    row("mnu_slap", u"bob"_s, true,
        action(withCodes(u"slaps ^4bob^6 around a bit with a large trout."_s)));
    row("mnu_nicks_whois", u"@olga"_s, false, u"WHOIS olga"_s);
    row("mnu_nicks_op", u"bob"_s, false, u"MODE #room +o bob"_s);
    row("mnu_nicks_op", u"nobody"_s, false, u"MODE #room +o "_s);
    // Before the first popup the caption is spelt in a way that no test knows.
    row("mnu_nicks_halfop", u"bob"_s, false, u"MODE #room -h bob"_s);
    row("mnu_nicks_voice", u"bob"_s, false, u"MODE #room +v bob"_s);
    row("mnu_nicks_ban", u"+vera"_s, false, u"MODE #room +b vera!*@*"_s);
}

void tst_NickActions::lines()
{
    QFETCH(QString, entry);
    QFETCH(QString, selected);
    QFETCH(bool, needsConnection);
    QFETCH(QString, line);
    Menus menus;
    menus.desk.select(selected);
    QCOMPARE(menus.click(entry), QStringList{line});

    menus.desk.server.state = Winsock::Connecting;
    QCOMPARE(menus.click(entry), needsConnection ? QStringList() : QStringList{line});
}

void tst_NickActions::captionsFollowTheSelectedMember()
{
    Menus menus;
    const auto captions = [&](const QString& row) {
        menus.desk.select(row);
        menus.actions.lstNicks_MouseDown();
        return QStringList{menus.entry(u"mnu_nicks_op"_s).Caption(),
                           menus.entry(u"mnu_nicks_halfop"_s).Caption(),
                           menus.entry(u"mnu_nicks_voice"_s).Caption()};
    };
    QCOMPARE(captions(u"bob"_s), (QStringList{u"&Op"_s, u"&HalfOp"_s, u"&Voice"_s}));
    QCOMPARE(menus.click(u"mnu_nicks_halfop"_s), QStringList{u"MODE #room +h bob"_s});
    QCOMPARE(captions(u"hugo"_s), (QStringList{u"&Op"_s, u"De&HalfOp"_s, u"&Voice"_s}));
    QCOMPARE(menus.click(u"mnu_nicks_halfop"_s), QStringList{u"MODE #room -h hugo"_s});
    QCOMPARE(captions(u"+vera"_s), (QStringList{u"&Op"_s, u"&HalfOp"_s, u"De&Voice"_s}));
    QCOMPARE(menus.click(u"mnu_nicks_voice"_s), QStringList{u"MODE #room -v vera"_s});
    QCOMPARE(captions(u"@olga"_s), (QStringList{u"De&Op"_s, u"&HalfOp"_s, u"&Voice"_s}));
    QCOMPARE(menus.click(u"mnu_nicks_op"_s), QStringList{u"MODE #room -o olga"_s});
}

void tst_NickActions::kickKeepsTheNickOfBeforeTheQuestion()
{
    Menus menus;
    const QString question =
        u"prompt|Kick User|Why would you like to kick the user 'bob' from #room?"_s;
    menus.desk.dialogs.whileOpen = [&] { menus.desk.select(u"@olga"_s); };
    menus.desk.dialogs.reply = u"too loud"_s;
    QCOMPARE(menus.click(u"mnu_nicks_kick"_s),
             (QStringList{question, u"KICK #room bob :too loud"_s}));

    menus.desk.dialogs.whileOpen = {};
    menus.desk.select(u"bob"_s);
    menus.desk.dialogs.reply.clear(); // Cancel
    QCOMPARE(menus.click(u"mnu_nicks_kick"_s), (QStringList{question, u"KICK #room bob :"_s}));
    menus.desk.dialogs.reply = QChar(8);
    QCOMPARE(menus.click(u"mnu_nicks_kick"_s), QStringList{question});
}

void tst_NickActions::promptsSendOneLine()
{
    Menus menus;
    const QString prompt = u"prompt|Action Message|Type Your Own Action Message"_s;
    menus.desk.dialogs.reply = u"waves\nQUIT"_s;
    QCOMPARE(menus.click(u"mnu_ownaction"_s), (QStringList{prompt, action(u"waves"_s)}));
    menus.desk.dialogs.reply.clear();
    menus.desk.server.state = Winsock::Closed;
    QCOMPARE(menus.click(u"mnu_ownaction"_s), (QStringList{prompt, action({})}));
    menus.desk.dialogs.reply = u"gone\r\nQUIT"_s;
    QCOMPARE(menus.click(u"mnu_nicks_kick"_s).last(), u"KICK #room bob :gone"_s);
}

void tst_NickActions::conversation()
{
    Menus menus;
    menus.desk.server.state = Winsock::Closing;
    menus.click(u"mnu_nicks_pm"_s);
    QCOMPARE(menus.desk.queries.FindQuery(u"bob"_s), -1);
    menus.desk.server.state = Winsock::Connected;
    QCOMPARE(menus.click(u"mnu_nicks_pm"_s), QStringList());
    QCOMPARE(menus.desk.queries.FindQuery(u"bob"_s), 1);

    // A blocked member: the failure that ends the program.
    menus.ignore({u"Olga - Blocked"_s});
    menus.desk.select(u"@olga"_s);
    QCOMPARE(menus.click(u"mnu_nicks_pm"_s), QStringList{typeMismatch});
    QCOMPARE(menus.desk.queries.QueryCount(), 1);
}

void tst_NickActions::doubleClick()
{
    Menus menus;
    menus.ignore({u"x - Blocked"_s, u"BOB - blocked"_s});
    menus.actions.lstNicks_DblClick();
    QCOMPARE(menus.desk.queries.QueryCount(), 0);
    menus.desk.select(u"+vera"_s);
    menus.desk.server.state = Winsock::Closed;
    menus.actions.lstNicks_DblClick();
    QCOMPARE(menus.desk.queries.QueryCount(), 0);
    menus.desk.server.state = Winsock::Connecting; // anything but closed will do
    menus.actions.lstNicks_DblClick();
    QCOMPARE(menus.desk.queries.FindQuery(u"vera"_s), 1);
}

void tst_NickActions::blocking_data()
{
    QTest::addColumn<QString>("selected");
    QTest::addColumn<QStringList>("ignored");
    QTest::addColumn<int>("selectedThere");
    QTest::addColumn<QStringList>("log");
    QTest::addColumn<QStringList>("rows");
    const QStringList none;
    const QStringList notice{
        withCodes(u"PRIVMSG bob ^4*You've been ignored by me [Quill Harbor Messenger]"_s)};
    const QStringList refusal{u"box|Block|You can't block a Operator"_s};
    const QStringList bob{u"BOB - Blocked"_s};
    QTest::newRow("a member") << u"bob"_s << none << -1 << notice
                              << QStringList{u"bob - Blocked"_s};
    QTest::newRow("the first row") << u"+vera"_s << none << -1 << none << none;
    QTest::newRow("no row") << u"nobody"_s << none << -1 << none << none;
    QTest::newRow("oneself") << u"me"_s << none << -1
                             << QStringList{u"box|Block|You can't block yourself?"_s} << none;
    QTest::newRow("an operator") << u"@olga"_s << none << -1 << refusal << none;
    QTest::newRow("a half-operator") << u"hugo"_s << none << -1 << refusal << none;
    QTest::newRow("twice, a row selected")
        << u"bob"_s << bob << 0 << QStringList{u"box|Block|Are you trying to add same nick?"_s}
        << bob;
    QTest::newRow("twice, no row selected")
        << u"bob"_s << bob << -1 << notice << (bob + QStringList{u"bob - Blocked"_s});
}

void tst_NickActions::blocking()
{
    QFETCH(QString, selected);
    QFETCH(QStringList, ignored);
    QFETCH(int, selectedThere);
    Menus menus;
    menus.desk.select(selected);
    menus.ignore(ignored);
    menus.desk.ignored.setListIndex(selectedThere);
    menus.desk.server.state = Winsock::Closed; // no entry of the connection is asked
    QTEST(menus.click(u"mnu_blocked"_s), "log");
    QTEST(menus.ignored(), "rows");
}

void tst_NickActions::presence_data()
{
    QTest::addColumn<QString>("entry");
    QTest::addColumn<QStringList>("log");
    const auto row = [](const char* entry, const QString& reason, const QString& announcement) {
        QTest::newRow(entry) << QString::fromLatin1(entry)
                             << QStringList{"AWAY "_L1 + reason, action(announcement)};
    };
    row("mnu_status_brb", u"I will be back later."_s,
        u"has changed status: I will be right back."_s);
    row("mnu_status_afk", u"I am away from the keyboard"_s,
        u"has changed status: I'm away from the keyboard."_s);
}

void tst_NickActions::presence()
{
    QFETCH(QString, entry);
    QFETCH(QStringList, log);
    Menus menus;
    ActionEntry& away = menus.entry(u"mnu_status_away"_s);
    menus.desk.server.state = Winsock::Closed;
    QCOMPARE(menus.click(entry), QStringList());
    QCOMPARE(away.Caption(), u"&..:Away [Own Reason]:."_s);
    menus.desk.server.state = Winsock::Connected;
    QCOMPARE(menus.click(entry), log);
    QCOMPARE(away.Caption(), u"&..:Online:.."_s);
}

void tst_NickActions::ownReason()
{
    Menus menus;
    ActionEntry& away = menus.entry(u"mnu_status_away"_s);
    QCOMPARE(menus.click(u"mnu_status_away"_s), QStringList()); // the caption of the start
    QCOMPARE(menus.click(u"mnu_away_dinner"_s), QStringList());
    menus.click(u"mnu_status_busy"_s);

    const QStringList back{u"AWAY "_s, action(u"is online now: I'm Online."_s)};
    const QString prompt = u"prompt|Away Message|Type Your Away Message"_s;
    QCOMPARE(menus.click(u"mnu_status_away"_s), back);
    menus.desk.dialogs.reply = u"at sea"_s;
    QCOMPARE(menus.click(u"mnu_status_away"_s),
             (QStringList{prompt, u"AWAY at sea"_s, action(u"has changed status: at sea"_s)}));
    QCOMPARE(away.Caption(), u"&..:Online:.."_s);
    menus.desk.server.state = Winsock::Closed;
    QCOMPARE(menus.click(u"mnu_status_away"_s), QStringList());
    menus.desk.server.state = Winsock::Connected;
    QCOMPARE(menus.click(u"mnu_status_away"_s), back);
    menus.desk.dialogs.reply.clear(); // Cancel
    QCOMPARE(menus.click(u"mnu_status_away"_s),
             (QStringList{prompt, u"AWAY "_s, action(u"has changed status: "_s)}));
}

void tst_NickActions::crossedPairs()
{
    Menus menus;
    for (const QString& pair : {u"mnu_pm"_s, u"mnu_sound"_s}) {
        ActionEntry& yes = menus.entry(QString(pair + "_no"_L1));
        ActionEntry& no = menus.entry(QString(pair + "_yes"_L1));
        QVERIFY(yes.Checked() && !no.Checked());
        yes.trigger();
        QVERIFY(yes.Checked() && !no.Checked());
        no.trigger();
        QVERIFY(!yes.Checked() && no.Checked());
        no.trigger();
        QVERIFY(!yes.Checked() && no.Checked());
        yes.trigger();
        QVERIFY(yes.Checked() && !no.Checked());
    }
}

void tst_NickActions::refusingPrivateTalkAsksEachTime()
{
    Menus menus;
    ActionEntry& no = menus.entry(u"mnu_pm_yes"_s);
    QList<bool> behindTheBox;
    menus.desk.dialogs.whileOpen = [&] {
        behindTheBox += no.Checked();
        throw RunTimeError(RunTimeError::Number::Overflow); // is passed over
    };
    const QStringList question{
        u"question|QuillHarborMessenger|You cannot recieve/send any message with chatters. Make "
        u"Sure You have close all the private message window - CLICK YES TO CLOSE ALL PRIVATE "
        u"CHAT BOX Or CLICK NO TO CLOSE YOURSELF?"_s};
    for (int i = 0; i < 2; ++i) {
        QCOMPARE(menus.click(u"mnu_pm_yes"_s), question);
        QVERIFY(no.Checked());
    }
    QCOMPARE(behindTheBox, (QList<bool>{true, false}));
}

void tst_NickActions::clearScreen()
{
    Menus menus;
    menus.desk.writer.WriteView(menus.desk.window.view, u"talk"_s);
    menus.click(u"mnu_options_clear"_s);
    QStringList lines;
    for (const QString& line : menus.desk.window.view.Text().split(u"\r\n"_s, Qt::SkipEmptyParts))
        lines += line.trimmed();
    QCOMPARE(lines, (QStringList{u"- Cleared Chat Screen"_s,
                                 u"- You've cleared your chat screen, all previous public messages "
                                 u"cleared."_s}));
}

QTEST_MAIN(tst_NickActions)
#include "tst_nickactions.moc"
