#include "common/ControlCharacters.h"
#include "platform/LocaleTexts.h"
#include "support/RecordingDesk.h"

using namespace Qt::StringLiterals;

// The command language, and what a typed line becomes.
class TestInput final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void scenes_data()
    {
        const Scenes scene;
        // In #room, with a private window of pal; "- " is what a command gives.
        const QString inRoom = u"~! enter @me bob\n~! open pal\n"_s;
        const auto command = [&](const char* text, const QString& result) {
            scene(text, inRoom + "! command "_L1 + QLatin1StringView(text) + u'\n' + result);
        };
        command("JOIN #room", u"- JOIN #room"_s);
        command("msg bob  two  blanks ", u"- PRIVMSG bob : two  blanks "_s);
        command("msg", u"- PRIVMSG msg :"_s);
        command("notice bob hi there", u"- NOTICE bob :hi there"_s);
        command("quit", u"- QUIT :quit"_s);
        command("raw PING :x", u"- PING :x"_s);
        command("id pw more", u"- PRIVMSG NickServ :IDENTIFY pw"_s);
        command("kill bob too loud", u"- KILL bob :too loud"_s);
        command("part #room bye now", u"- PART #room :bye now\n? room=#room PARTNOW"_s);
        command("part #unknown bye", u"- PART #unknown :bye\n? room=#room 1"_s);
        command("part", u"- PART #room\n? room=#room PARTNOW"_s);
        command("me waves", u"DataIn| {C}06me waves\n- PRIVMSG #room :{A}ACTION waves{A}"_s);
        scene("me, in private", inRoom + u"! target PAL\n! command ME nods\nQuery1| {C}06me nods\n"
                                         "- PRIVMSG PAL :{A}ACTION nods{A}"_s);
        scene("elsewhere", inRoom + u"! target #other\n! command me waves\n! command Users\n- 0"_s);
        for (const char* word : {"usercount", "users", "unum", "ucount", "chancount"})
            command(word, u"- 2"_s);
        command("sv mine 1.0", u"DataIn| {C}6Version Reply changed to 'mine 1.0'"_s);
        command("es {C}4red x", u"DataIn| {C}4red x"_s);
        command("msg bob a $+ b", u"- PRIVMSG bob :ab"_s);
        command("msg bob $+ hi", u"- PRIVMSG bobhi :"_s);
        command("msg $+ bob hi", u"- PRIVMSG bob :hi"_s);
        command("msg bob a $+ b $+ c d", u"- PRIVMSG bob :abc d"_s);
        command("msg bob ab $+", u"- PRIVMSG bob :a"_s); // nothing to join: the last one goes
        command("msg bob $nosuch x", u"- PRIVMSG bob : x"_s);

        scene("nick", u"! command nick carol x\n? nick=carol\n! state 6\n! command nick dora\n"
                      "- NICK dora\n! state 9\n! command nick dora\n- NICK dora\n? nick=carol"_s);
        scene("target is read once", inRoom + u"! onYield ! target #other\n"
                                              "! command me in $channel\nDataIn| {C}06me in #room\n"
                                              "- PRIVMSG #room :{A}ACTION in #room{A}"_s);
        scene("yields around the words", u"! onYield ! name first\n! onYield ! name second\n"
                                         "! command raw $me\n- first\n? nick=second"_s);
        // Both forms are as odd as this; nothing is shown to a blocked nick and nothing is sent.
        scene("query", u"~! enter @me bob\n~! command query pal\n? windows=1\n"
                       "! command query PAL hi there\nQuery1.PutText me: hi there\n"
                       "- PRIVMSG <PAL> hi there\n~! command query zed\n"
                       "! command query zed hi\nQuery2.PutText me: hi\n- PRIVMSG <zed> hi\n"
                       "! block bad - Blocked\n! command query bad hi\n? windows=2"_s);
        scene("query with somebody new",
              inRoom + u"! command query zed hi there\nQuery2.Caption=zed\nQuery2.lblNick=zed\n"
                       "Query2.lblHost=\nQuery2.Visible=true\nQuery2.Tag=2\n"
                       "Query2.PutText me: hi there\n- PRIVMSG < >hi there"_s);
        scene("forms",
              u"! command bl\nBuddyList.Load\n! listVisible\n! command bl\n"
              "BuddyList.Unload\n! command list\n"
              "FATAL Run-time error '91':\nObject variable or With block variable not set"_s);
        scene("random nick", u"~! register\n! identifier RandNick\n"          // not there yet
                             "~< :me!u@h JOIN #room\n! identifier RandNick\n" // nobody in it
                             "~< :s 353 me = #room :a b c\n! identifier RandNick\n- a\n"
                             "! random 34\n! target #ROOM\n! identifier randnick\n- b\n"
                             "! random 99\n! identifier RandNick\n- c\n"
                             "! target a\n! identifier RandNick"_s);
        const auto identifier = [&](const char* name, const QString& value) {
            scene(name, inRoom + "! identifier "_L1 + QLatin1StringView(name) + "\n- "_L1 + value);
        };
        identifier("version", u"1.00"_s);
        for (const char* name : {"chan", "channel", "ch"})
            identifier(name, u"#room"_s);
        identifier("ME", u"me"_s);
        identifier("server", u"irc.example"_s);
        identifier("port", u"6667"_s);
        identifier("date", locale_texts::shortDate(QDate(2003, 4, 5)));
        identifier("time", locale_texts::longTime(QTime(6, 7, 8)));

        // What is typed; "- " is the key that is left, and what stands in the box.
        const auto typed = [&](const char* text, const QString& effects) {
            const QLatin1StringView line(text);
            scene(qPrintable("typed: "_L1 + line),
                  inRoom + "! type "_L1 + line + u'\n' +
                      (effects.isEmpty() ? QString("- 13 "_L1 + line)
                                         : QString(effects + "\n- 0"_L1)));
        };
        const auto message = [&](const char* text) {
            const QLatin1StringView line(text);
            typed(text,
                  "<< PRIVMSG #room :{C}1 "_L1 % line % "\nDataIn| {C}04<me{B}{B}>{C}1 "_L1 % line);
        };
        message("  hello ");
        message("/me waves");
        message("irc JOIN #x");
        message("IRC ");
        typed("   ", {});
        typed("  !help x ", u"<< PRIVMSG #room :  !help x \nDataIn| {C}04<me> {C}1   !help x "_s);
        typed(" IRC JOIN #x  ", u"<< JOIN #x"_s);
        // Shown all the same when nobody is there to take it.
        scene("typeface", u"! press 97\n- 97\n? typeface=Courier 14"_s);
        scene("style", inRoom + u"! style\n! type hi\n<< PRIVMSG #room :{B}{C}4 {U}hi\n"
                                "DataIn| {C}04<me{B}{B}>{B}{C}4 {U}hi\n- 0\n! type !hi\n"
                                "<< PRIVMSG #room :!hi\nDataIn| {C}04<me> {B}{C}4 {U}!hi\n- 0\n"
                                "~! disconnect\n! type to nobody\n"
                                "DataIn| {C}04<me{B}{B}>{B}{C}4 {U}to nobody\n- 0"_s);
        // What bots and servers are told is not among the lines that come back.
        scene("history", inRoom +
                             u"! box typed\n! key 38\nBeep\n- 38 typed\n! key 40\nBeep\n"
                             "- 40 typed\n! key 65\n- 65 typed\n"
                             "~! type a\n~! type !bot\n~! type IRC PING x\n~! type b\n"
                             "! key 40\nBeep\n- 40\n! key 38\n- 0 b\n! key 38\n- 0 a\n"
                             "! key 38\nBeep\n- 38 a\n! key 40\n- 0 b\n! key 40\nBeep\n- 40 b\n"
                             "~! key 38\n~! type a\n" // the cursor is behind the end again
                             "! key 38\n- 0 a\n! key 38\n- 0 b\n! key 38\n- 0 a"_s);
    }
    void scenes()
    {
        QFETCH(QString, script);
        RecordingDesk desk;
        desk.variables.FontName = RecordingDesk::padded(u"Courier"_s);
        desk.variables.FontSize = 14;
        QString target = u"#room"_s;
        const auto tell = [&](const QString& what) {
            if (!what.isEmpty())
                desk.journal("- ", what);
        };
        // The box keeps what no key took.
        const auto left = [&](int key) {
            const QString& text = desk.box.content;
            tell(QString::number(key) + (text.isEmpty() ? text : u' ' + text));
        };
        desk.acts[u"target"_s] = [&](auto name) { target = name; };
        desk.acts[u"command"_s] = [&](auto text) {
            tell(desk.commands.ProcessInput(target, text));
        };
        desk.acts[u"identifier"_s] = [&](auto name) {
            tell(desk.identifiers.Identifier(target, name));
        };
        desk.acts[u"name"_s] = [&](auto nick) { desk.variables.MyNick = nick; };
        desk.acts[u"listVisible"_s] = [&](auto) { desk.buddies.visible = true; };
        desk.acts[u"random"_s] = [&](auto percent) { desk.random = percent.toInt() / 100.0; };
        desk.acts[u"style"_s] = [&](auto) {
            desk.style = {
                .TextColor = u"4"_s, .BoldPrefix = strBold, .UnderlinePrefix = strUnderline};
        };
        desk.acts[u"box"_s] = [&](auto text) { desk.box.content = text; };
        desk.acts[u"type"_s] = [&](auto text) {
            desk.box.content = text;
            left(desk.inputLine.KeyPress(13));
        };
        desk.acts[u"press"_s] = [&](auto code) { left(desk.inputLine.KeyPress(code.toInt())); };
        desk.acts[u"key"_s] = [&](auto code) { left(desk.inputLine.KeyDown(code.toInt())); };
        desk.looks[u"typeface"_s] = [&] { return desk.box.typeface; };
        QCOMPARE(desk.play(script), QString());
    }

    // A failure costs the statement that it happens in: the line goes out unseen.
    void linesOutliveTheirViews()
    {
        RecordingDesk desk;
        desk.enterRoom();
        const QString endless(40000, u'x');
        for (int i = 1; i <= 30; ++i)
            desk.queries.OpenQuery(u'n' + QString::number(i), {});
        QVERIFY_THROWS_EXCEPTION(RunTimeError, desk.queries.OpenQuery(u"one.more"_s, {}));
        for (const QString& target : {u"#room"_s, u"n1"_s, u"stranger"_s}) {
            const QString line = desk.commands.ProcessInput(target, "me "_L1 + endless);
            QVERIFY(line.startsWith("PRIVMSG "_L1 + target + " :\x01"_L1 + "ACTION xxx"_L1));
        }
        QVERIFY(!desk.commands.ProcessInput({}, "query n1 "_L1 + endless).isEmpty());
        QCOMPARE(desk.commands.ProcessInput({}, "sv "_L1 + endless), QString());
    }

    // In every locale there is: a number at one end at least, and no marks that lost their zone.
    void timeInEveryLocale()
    {
        static const QRegularExpression whole(u"^[^\\s,()\\[\\]].*[^\\s,()\\[\\]]$"_s);
        const auto locales = QLocale::matchingLocales(QLocale::AnyLanguage, QLocale::AnyScript,
                                                      QLocale::AnyTerritory);
        QVERIFY(locales.size() > 100);
        for (const QLocale& locale : locales) {
            const QString text = locale_texts::longTime(QTime(6, 7, 8), locale);
            QVERIFY2(whole.match(text).hasMatch() && !text.contains("()"_L1) &&
                         !text.contains("[]"_L1),
                     qPrintable(locale.name() + u' ' + text));
        }
        for (const auto& [name, text] : {std::pair("ca_ES", u"6:07:08"_s),
                                         {"be_BY", u"06:07:08"_s},
                                         {"bg_BG", u"6:07:08 ч."_s},
                                         {"zh_TW", u"上午6:07:08"_s}})
            QCOMPARE(locale_texts::longTime(QTime(6, 7, 8), QLocale(QLatin1StringView(name))),
                     text);
    }

    void historyIsBounded()
    {
        TextHistory history;
        for (int i = 1; i <= 9; ++i)
            history.add(QString::number(i), 3);
        QStringList held;
        while (const std::optional<QString> line = history.back())
            held += *line;
        QCOMPARE(held.join(u' '), u"9 8 7 6"_s); // one more than the limit
        QVERIFY_THROWS_EXCEPTION(RunTimeError, TextHistory().add(u"x"_s, -1));
    }
};

QTEST_GUILESS_MAIN(TestInput)
#include "tst_input.moc"
