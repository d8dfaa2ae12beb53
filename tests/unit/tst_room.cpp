#include "support/RecordingDesk.h"

using namespace Qt::StringLiterals;

// Who is in the room, its modes, and who may change its topic.
class TestRoom final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void scenes_data()
    {
        const Scenes scene;
        const auto signs = [&](const QString& nick, const QString& row, const QString& ranks) {
            scene(qPrintable(nick),
                  "~! add "_L1 % nick % "\n? rows="_L1 % row % "\n? ranks="_L1 % ranks);
        };
        signs(u"~alice"_s, u"@alice"_s, u"alice o--"_s); // an owner is an operator
        signs(u"%alice"_s, u"alice"_s, u"alice --h"_s);  // half of one shows nothing
        signs(u"+alice"_s, u"+alice"_s, u"alice -v-"_s);
        signs(u"@+alice"_s, u"@alice"_s, u"alice ov-"_s);
        signs(u"al+i%ce"_s, u"+alice"_s, u"alice -vh"_s);
        scene("captions", u"! add\n! add a\ncmdCount= Total Chatters :  [ 1 ]\n! add a\n"
                          "cmdCount= Total Chatters :  [ 2 ]\n! remove a\n"
                          "cmdCount= Total Chatters : [ 1 ]\n? rows=a\n! showCount\n"
                          "cmdCount= Total Chatters :  [ 1 ]\n! showNone\n"
                          "cmdCount= Total Chatters :  [ 0 ]"_s);
        // Exact case only; a record without its row does not count down.
        scene("removing", u"~! add a\n! remove A\n? records=1\n~! clear\n! remove a\n? records=0\n"
                          "? chatters=1"_s);
        // In place, flags and all; a change of rank sorts the row afresh.
        scene("renaming", u"~! add x\n~! remove x\n~! add @alice\n~! add bob\n~! add zed\n! rename "
                          u"BOB zzz\n- true\n"
                          "! rename alice amy\n- true\n? rows=@amy zzz zed\n! rank voice zzz 1\n"
                          "! rank voice zzz 0\n? rows=@amy zed zzz\n! rename nobody x\n- false\n"
                          "~! clear\n! rename zed ted\n- false\n! has TED\n- true"_s);
        scene("ranks", u"~! add @+alice\n! rank op Alice 0\n? rows=@alice\n! rank op alice 0\n"
                       "? rows=+alice\n! rank helper alice 1\n? ranks=alice -vh\n? rows=+alice\n"
                       "! rank owner alice 1\n! rank sop alice 1\n? rows=+alice\n"
                       "! rank voice alice 0\n? rows=&alice\n"
                       "! rank op alice 1\n? rows=&alice\n? ranks=alice o-h"_s); // "&" is not found
        scene("owner", u"~! add alice\n! rank owner alice 1\n? rows=~alice"_s);
        const QString bounds = u"FATAL Run-time error '9':\nSubscript out of range\n"_s;
        scene("row without a record", "! addRow ghost\n! rank op ghost 1\n"_L1 + bounds +
                                          "? rows=\n! addRow ghost\n! rename ghost x\n"_L1 +
                                          bounds);
        // Somebody comes back without a rank, and the oldest record is what is shown.
        scene("records outlive the session",
              u"~! enter me @alice\n~! disconnect\n? rows=\n? chatters=0\n~! add alice\n"
              "? records=3\n? ranks=me --- alice o-- alice o--\n! rank voice alice 1\n"
              "? rows=@alice"_s);
        scene("topic keys", u"~! enter me\n! lock\n! down 8\n- 0\n! down 46\n- 0\n! down 37\n- 37\n"
                            "! press 97\n- 0\n! press 13\n- 0\n! unlock\n! down 8\n- 8\n"
                            "! press 97\n- 97\n~! topic news{N}\n! press 13\n"
                            "<< TOPIC #room :news\n- 0"_s); // one line, whatever is in it
        const auto lock = [&](const char* name, const QString& steps, const char* locked) {
            scene(name, "~! enter @me bob\n! lock\n"_L1 + steps + "\n? locked="_L1 +
                            QLatin1StringView(locked));
        };
        lock("given +o", u"~< :s MODE #room +o me"_s, "0");
        lock("losing it", u"! unlock\n~< :s MODE #room -o me"_s, "1");
        lock("+o of another", u"~< :s MODE #room +o bob"_s, "1");
        lock("topic arrives", u"! unlock\n~< :s 332 me #room :news"_s, "1");
        lock("topic changed", u"! unlock\n~< :s TOPIC #room :news"_s, "0");

        const auto modes = [&](const char* name, const QStringList& lines, const QString& text,
                               const QString& rows = u"@me bob"_s,
                               const QString& keyAndLimit = u" 0"_s) {
            scene(name, "~! enter @me bob\n~< :s MODE "_L1 % lines.join("\n~< :s MODE "_L1) %
                            "\n? modes="_L1 % text % "\n? rows="_L1 % rows % "\n? keyAndLimit="_L1 %
                            keyAndLimit);
        };
        modes("letters in order of arrival", {u"#room +nt"_s, u"#room +k x"_s, u"#room +n"_s},
              u"+ntk"_s, u"@me bob"_s, u"x 0"_s);
        modes("taken away", {u"#room +nts"_s, u"#room -t"_s}, u"+ns"_s);
        modes("case counts", {u"#ROOM +nN"_s}, u"+nN"_s);
        modes("ranks in one line", {u"#room +v-o bob me"_s}, {}, u"+bob me"_s);
        modes("half-operator", {u"#room +h bob"_s, u"#room +v bob"_s}, {}, u"+bob @me"_s);
        modes("rank of a stranger", {u"#room +o zed"_s}, {});
        modes("key and limit", {u"#room +ntlk 50 abc"_s}, u"+ntlk"_s, u"@me bob"_s, u"abc 50"_s);
        modes("and away again", {u"#room +lk 50 abc"_s, u"#room -lk x y"_s}, {});
        modes("ban takes its mask", {u"#room +bv *!*@* bob"_s}, {}, u"+bob @me"_s);
        modes("exception does not", {u"#room +ev bob mask"_s}, u"+e"_s, u"+bob @me"_s);
        modes("no sign is plus", {u"#room n"_s}, u"+n"_s);
        modes("own modes share the table", {u"#room +n"_s, u"me +i"_s, u"me -n"_s}, u"+i"_s);
        modes("stranger", {u"#other +n"_s, u"bob +i"_s}, {});
        modes("bad limit sets nothing", {u"#room +nl many"_s}, u"+n"_s);
        const auto fails = [&](const char* text, const QString& failure) {
            scene(text,
                  "~! enter @me bob\n! modes "_L1 + QLatin1StringView(text) + u'\n' + failure);
        };
        fails("+o", bounds); // a nick is missing
        fails("-l", bounds); // even this one takes a word
        fails("+l x", u"FATAL Run-time error '13':\nType mismatch"_s);
        fails("+l 40000", u"FATAL Run-time error '6':\nOverflow"_s);
    }
    void scenes()
    {
        QFETCH(QString, script);
        RecordingDesk desk;
        NickList& nicks = desk.room.nicks;
        RichTextBox& field = desk.channel.rtbTopic();
        const auto act = [&](const QString& name, auto what) {
            desk.acts[name] = [what](const QString& argument) { what(argument.split(u' ')); };
        };
        using Words = const QStringList&;
        act(u"add"_s, [&](Words words) { nicks.AddNick(words[0]); });
        act(u"addRow"_s, [&](Words words) { desk.channel.nicks.AddItem(words[0]); });
        act(u"remove"_s, [&](Words words) { nicks.RemoveNick(words[0]); });
        act(u"clear"_s, [&](Words) { desk.channel.nicks.Clear(); });
        act(u"showCount"_s, [&](Words) { nicks.showChatterCount(); });
        act(u"showNone"_s, [&](Words) { nicks.showNoChatters(); });
        act(u"rename"_s,
            [&](Words words) { desk.journal("- ", nicks.ChangeNck(words[0], words[1])); });
        act(u"has"_s, [&](Words words) { desk.journal("- ", nicks.InChannel(words[0])); });
        act(u"rank"_s, [&](Words words) {
            static const QHash<QString, void (NickList::*)(const QString&, bool)> setters{
                {u"op"_s, &NickList::SetOp},
                {u"voice"_s, &NickList::SetVoice},
                {u"helper"_s, &NickList::SetHelper},
                {u"owner"_s, &NickList::SetOwner},
                {u"sop"_s, &NickList::SetSOp}};
            (nicks.*setters.value(words[0]))(words[1], words[2] == u'1');
        });
        act(u"modes"_s,
            [&](Words words) { desk.modeLine.ApplyModeLine(u"#room"_s, words.join(u' ')); });
        act(u"topic"_s, [&](Words words) { field.setText(words[0]); });
        act(u"lock"_s, [&](Words) { TopicField::setLocked(field, true); });
        act(u"unlock"_s, [&](Words) { TopicField::setLocked(field, false); });
        act(u"down"_s,
            [&](Words words) { desk.journal("- ", desk.topic.KeyDown(words[0].toInt())); });
        act(u"press"_s,
            [&](Words words) { desk.journal("- ", desk.topic.KeyPress(words[0].toInt())); });
        desk.looks[u"locked"_s] = [&] { return QString::number(TopicField::isLocked(field)); };
        desk.looks[u"ranks"_s] = [&] {
            QStringList ranks;
            for (int i = 1; i <= nicks.NickCount(); ++i) {
                const QString nick = nicks.GetNick(i);
                const QString other = nick.toUpper(); // whatever the case
                ranks += {nick, QString(nicks.isOp(other) ? u'o' : u'-') +
                                    (nicks.isVoice(other) ? u'v' : u'-') +
                                    (nicks.isHalfOp(other) ? u'h' : u'-')};
            }
            return ranks.join(u' ');
        };
        desk.looks[u"keyAndLimit"_s] = [&]() -> QString {
            return desk.room.modes.ChanKey + u' ' + QString::number(desk.room.modes.ChanLimit);
        };
        QCOMPARE(desk.play(script), QString());
    }
};

QTEST_GUILESS_MAIN(TestRoom)
#include "tst_room.moc"
