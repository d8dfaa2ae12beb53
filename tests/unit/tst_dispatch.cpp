#include "platform/LocaleTexts.h"
#include "support/RecordingDesk.h"

using namespace Qt::StringLiterals;

// A server line in, its effects out, in their order.
class TestDispatch final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void effects_data()
    {
        const Scenes scene;
        // In #room as "me", with bob in it and a private window with pal.
        const QString inRoom = u"~! enter @me bob\n~! open pal\n"_s;
        const auto row = [&](const char* name, const char* line, const QByteArray& effects) {
            scene(name,
                  inRoom + "< "_L1 + QLatin1StringView(line) + u'\n' + QLatin1StringView(effects));
        };
        const auto rows = [&](const char* words, const char* rest, const char* effects) {
            for (const QByteArray& word : QByteArray(words).split(' ')) {
                const QByteArray tail = word + ' ' + rest;
                row(tail, QByteArray(":s " + tail), QByteArray(effects).replace("%", word));
            }
        };

        scene("CR behind a word alone", u"~! enter\n~! show\n~< JOIN\n? shown=*** JOIN\r\n  \r"_s);
        rows("002x 000 1 331 322 472 477 999 ERROR INVITE PONG WALLOPS", "me #x :a  b",
             "DataIn| *** {B}%{B} me #x a  b");
        rows("305 306 318 321 323 329 366 372 375 376 422", "me #room :whatever", "");

        row("ping", "PING :a.b c", "<< PONG :a.b c");
        row("ping in lower case, with prefix", ":s ping abc def", "<< PONG :abc");
        rows("002 003 004 005", "me :Your host",
             "Login.cmdSignout\nLogin.Hide\nDataIn| * Your host");
        rows("251 252 253 254 255 265 266", "me 5 :users", "DataIn| {C}065 users");
        rows("401 402 403 412 421 461 481 482 484", "me x :No such  thing",
             "DataIn| {C}04* x No such  thing");
        row("303", ":s 303 me :bob pal ", "BuddyList.AddUsers bob pal ");
        const auto welcome = [&](const char* name, const QString& autoJoin, const QString& join) {
            scene(name,
                  "! state 7\n! autoJoin "_L1 + autoJoin +
                      "\n< :s 001 given :Welcome to it\nDataIn| * Welcome to it\n"
                      "<< MODE given +i\n"_L1 +
                      join +
                      "Channel.Visible=true\nChannel.Show\n? nick=given\n? report=Welcome|||"_L1);
        };
        welcome("welcome", u"#room{0}{0}"_s, u"<< JOIN #room{0}{0}\n"_s);
        welcome("welcome without a room", u"<none>{0}{0}"_s, {});
        welcome("welcome with an empty room", {}, u"<< JOIN \n"_s);
        scene("password", u"~! register\n! password secret\n< :s 005 me X=1 :are supported\n"
                          "frmPassword.Unload\n<< IDENTIFY secret\nLogin.cmdSignout\nLogin.Hide\n"
                          "DataIn| * X=1 are supported"_s);

        // A room that is not known.
        for (const char* line :
             {":al!u@h JOIN #other", ":bob!u@h PART #other", ":op!u@h KICK #other me :x",
              ":bob!u@h TOPIC #other :news", ":bob!u@h MODE #other +o me",
              ":bob!u@h PRIVMSG #other :hi", ":bob!u@h PRIVMSG &room :hi",
              ":s 328 me #other :http://x", ":s 332 me #other :news", ":s 333 me #other al 0",
              ":s 353 me = #other :al", ":s 324 me #other +n"})
            row(line, line, "? modes=\n? rows=@me bob");

        const QString date =
            locale_texts::shortDateTime(QDateTime(QDate(1970, 1, 2), QTime(0, 0), Qt::UTC));
        scene("room entered",
              u"~! register\n< :ME!u@h JOIN :#room\nChannel.Visible=true\n<< MODE #room\n"
              "? room=#room 1\n~! show old\n< :s 332 me #room :xnews\nTopic| xnews\n"
              "DataIn emptied\nPause 0.2\nDataIn| {C}3You have entered to the chat room\n"
              "DataIn| {C}4Welcome To {B}{C}12Quill Harbor Messenger{C}!\n"
              "DataIn| {C}5Checking Your Internet Connection {C}14 Connecting please wait... {C}\n"
              "DataIn| {C}03Topic is \"{C}xnews{C}03\"\n? topicPlace=0\n"
              "< :s 333 me #room al!u@h :86400\nDataIn| {C}03Topic set by {B}al!u@h{B} on {B}"_s +
                  date + "{B}"_L1);
        scene("names", u"~! enter me\n~< :s 353 me @ #ROOM :~own &adm @op %half +voi  plain \n"
                       "? rows=+voi @adm @op @own half me plain\n? chatters=7"_s);
        row("join with a sign", ":@al!u@h JOIN :#ROOM",
            "cmdCount= Total Chatters :  [ 3 ]\nDataIn| {C}03{B}al{B} has joined {B}#room");
        row("part", ":bob!u@h PART #room :see you",
            "cmdCount= Total Chatters : [ 1 ]\nDataIn| {C}03{B}bob{B} has left {B}#room");
        row("part of a stranger is shown", ":zed!u@h PART :#Room",
            "DataIn| {C}03{B}zed{B} has left {B}#room");
        row("own part", ":me!u@h PART #room :bye", "? rows=@me bob\n? room=#room 1");
        row("quit", ":bob!u@h QUIT :Quit: bye",
            "cmdCount= Total Chatters : [ 1 ]\nDataIn| {C}02{B}bob{B} has Quit IRC ( Quit: bye )");
        row("quit of a peer", ":PAL!u@h QUIT :x", "Query1| {C}02{B}PAL{B} has Quit IRC ( x )");
        row("kick", ":op!u@h KICK #room bob :too loud",
            "DataIn| {C}04{B}bob{B} was kicked from {B}#room{B} by {B}op{B} [ too loud ]\n"
            "cmdCount= Total Chatters : [ 1 ]");
        // While it pauses the modes are gone and the text of them is not.
        row("own kick", ":s 324 me #room +nt\n! onPause ? modes\n< :op!u@h KICK #room me :go",
            "DataIn| {C}04{B}me{B} was kicked from {B}#room{B} by {B}op{B} [ go ]\n"
            "cmdCount= Total Chatters : [ 1 ]\nChannel.Hide\nLogin.Show\nmnu_Sign=Sign In\n"
            "Login.UnLog\nDataIn| {C}04You were kicked from {B}#room{B} by {B}op{B} [ go ]\n"
            "sock.Close\nlstNicks.Clear\nident.Close\nPause 0.1\n- modes=+nt\n"
            "Connect.Enabled=true\nConnect.Caption=&Connect\nDisconnect.Enabled=false\n"
            "cmdCount= Total Chatters :  [ 0 ]\n? room=#room NOPART\n? modes=\n? chatters=0\n"
            "? records=1\n? retrying=0\n? report=Kicked|op|go|");
        scene("second room",
              inRoom + u"< :me!u@h JOIN #second\n? rooms=2\n? room=#room 1\n" // raised, then fails
                       "< :bob!u@h PRIVMSG #second :lost\n"
                       "< :bob!u@h MODE me +i\n" // the search comes first: this is lost, too
                       "< :bob!u@h PRIVMSG #room :heard\nDataIn| {C}12<bob> heard\n"
                       "< :zed!u@h QUIT :x\n" // walks all rooms, and gets past the last one
                       "< :me!u@h NICK :you\nDataIn| {C}03Your nick is now {B}you\n"
                       "DataIn| {C}03{B}me{B} is now known as {B}you"_s);
        for (const char* numeric : {"471", "473", "474", "475"})
            scene(numeric,
                  "~! register\n< :s "_L1 + QLatin1StringView(numeric) +
                      " me #shut :Cannot join\nDataIn| {C}04You cannot join #shut : Cannot join\n"
                      "sock.hold\nbox|Error|You cannot join #shut : Cannot join\nsock.release\n"
                      "<< QUIT :gone\nConnect.Enabled=true\nConnect.Caption=&Connect\n"
                      "Disconnect.Enabled=false\n"
                      "DataIn| {C}05You are Disconnected from Quill Harbor Server\nsock.Close\n"
                      "lstNicks.Clear\nText1=6667\ncmdCount= Total Chatters :  [ 0 ]\nLogin.UnLog\n"
                      "Login.cmdSignout\nmnu_Sign=Sign In\nLogin.locked=false\nLogin.cmdSignout\n"
                      "mnu_Sign=Sign In\nLogin.Show\nLogin.locked=false\nChannel.Hide\n"
                      "? report=RoomRefused||You cannot join #shut : Cannot join|"_L1);
        row("topic goes without its first character", ":bob!u@h TOPIC #room :news  here",
            "Topic| news  here\nDataIn| {C}03Topic changed by {B}bob{B} : news  here\n"
            "? topic=<000000>ews  here ");
        row("and so does one with codes", ":s TOPIC #room :{C}4xy",
            "Topic| {C}4xy\nDataIn| {C}03Topic changed by {B}{B} : {C}4xy\n? topic=<ff0000>y ");
        row("mode by a server", ":irc.example MODE #room +n",
            "DataIn| {C}03{B}irc.example{B} sets mode: +n\n? modes=+n");
        row("mode of another nick", ":bob!u@h MODE bob +i", "? modes=");
        row("own mode", ":me!u@h MODE me :+i", "DataIn| {C}03{B}me{B} sets mode: +i\n? modes=+i");
        row("mode that fails is shown before", ":bob!u@h MODE #room +o",
            "DataIn| {C}03{B}bob{B} sets mode: +o");
        row("324", ":s 324 me #room :+nt", "? modes=+nt");
        row("328", ":s 328 me #room :http://x",
            "DataIn| {C}03Channel URL{C}{U}:{U} {C}12http://x{C}");
        row("333 with a bad time", ":s 333 me #room al soon", "");

        row("said in the room", ":bob!u@h PRIVMSG #room :hi  all", "DataIn| {C}12<bob> hi  all");
        row("version asked in the room", ":bob!u@h PRIVMSG #room :{A}VERSION{A}",
            "<< CTCPREPLY bob VERSION :Quill Harbor Messengr for Windows OS");
        row("version asked under a name with a line end", ":a\rQUIT!u@h PRIVMSG me :{A}VERSION{A}",
            "DataIn| {C}05{B}a\rQUIT{B} has just requested your version\n<< NOTICE a");
        row("action in the room", ":bob!u@h PRIVMSG #room :{A}ACTION waves{A}",
            "DataIn| {C}06bob waves");
        row("said by a server", ":s.example PRIVMSG me :hi",
            "Query2.Caption=\nQuery2.lblNick=\nQuery2.lblHost=s.example\nQuery2.Visible=true\n"
            "Query2.Tag=2\nQuery2.Caption=\nQuery2.lblNick=\nQuery2.PutText : hi");
        row("said by somebody new, and again from elsewhere", ":Al!u@h PRIVMSG me :first",
            "Query2.Caption=Al\nQuery2.lblNick=Al\nQuery2.lblHost=u@h\nQuery2.Visible=true\n"
            "Query2.Tag=2\nQuery2.Caption=Al\nQuery2.lblNick=Al\nQuery2.PutText Al: first\n"
            "< :AL!u@other PRIVMSG me :second\nQuery2.lblHost=u@other\nQuery2.Caption=AL\n"
            "Query2.lblNick=AL\nQuery2.PutText AL: second");
        scene("said by a blocked one",
              inRoom + u"! block BOB - Blocked\n< :bob!u@h PRIVMSG me :lost\n"
                       "< :bob!u@h PRIVMSG #room :heard\nDataIn| {C}12<bob> heard"_s);
        scene("said while private talk is off",
              inRoom + u"! refuse\n< :new!u@h PRIVMSG me :lost\n? windows=1\n< :pal!u@h PRIVMSG me "
                       u":heard\nQuery1.lblHost=u@h\nQuery1.Caption=pal\n"
                       "Query1.lblNick=pal\nQuery1.PutText pal: heard"_s);
        row("version", ":al!u@h PRIVMSG me :{A}VERSION{A}",
            "DataIn| {C}05{B}al{B} has just requested your version\n"
            "<< NOTICE al :{A}VERSION QuillHarbor Messenger 1.0{A}");
        row("pinged", ":al!u@h PRIVMSG me :{A}PING 12345{A}",
            "DataIn| {C}05{B}al{B} has just pinged you\n"
            "<< NOTICE al :{A}PING 0 seconds, cause Quill Harbor Messenger is elite.{A}");
        row("unknown request", ":al!u@h PRIVMSG me :{A}TIME{A}", "");
        row("empty request", ":al!u@h PRIVMSG me :{A}{A}", "");
        row("request cut short", ":al!u@h PRIVMSG me :{A}", "");
        row("action without a window", ":al!u@h PRIVMSG me :{A}ACTION waves{A}", "");
        row("private action", ":PAL!u@h PRIVMSG me :{A}ACTION waves{A}",
            "DataIn| {C}12<> {C}06PAL waves");
        row("notice", ":al!u@h NOTICE me :psst", "DataIn| {C}05{B}NOTICE{B}{C} {B}al{B}: psst");
        row("notice by a server", ":s NOTICE * :*** Looking", "DataIn| {C}05*** Looking");
        row("nick is protected", ":NickServ!s@s NOTICE me :please choose a different nick.",
            "lstNicks.Enabled=false\nfrmPassword.Show");
        const QByteArray service = "DataIn| {C}05{B}NOTICE{B}{C} {B}NickServ{B}: ";
        row("recognized", ":NickServ!s@s NOTICE me :Password accepted - you are now recognized.",
            "frmPassword.Unload\nlstNicks.Enabled=true\nChannel.Show\n" + service +
                "Password accepted - you are now recognized.");
        row("wrong password", ":NickServ!s@s NOTICE me :Password incorrect.",
            "lstNicks.Enabled=false\nfrmPassword.Show\n" + service + "Password incorrect.");
        row("identified before", ":NickServ!s@s NOTICE me :You are already identified.",
            "lstNicks.Enabled=true\nfrmPassword.Unload\n" + service +
                "You are already identified.");
        row("killed", ":op!u@h KILL bob :Killed (op (x))",
            "DataIn| {C}2{B}bob{B} was killed [Killed (op (x))]");
        row("killed myself", ":s 324 me #room +nt\n< :op!u@h KILL me :x",
            "sock.Close\nlstNicks.Clear\nident.Close\nConnect.Enabled=true\n"
            "Connect.Caption=&Connect\nDisconnect.Enabled=false\n"
            "cmdCount= Total Chatters :  [ 0 ]\nDataIn| {C}2{B}You{B} were Killed [x]\n? "
            "report=Killed|op|x|\n? modes=\n? chatters=0");

        scene("nick of somebody in the room: the window follows",
              inRoom +
                  u"~! open bob\n< :BOB!u@h NICK :rob\nQuery2.Caption=rob\nQuery2.lblNick=rob\n"
                  "DataIn| {C}03{B}BOB{B} is now known as {B}rob\n? rows=@me rob\n"
                  "~< :rob!u@h PRIVMSG me :x\n? windows=2"_s);
        row("nick of somebody elsewhere", ":pal!u@h NICK :chum",
            "~< :pal!u@h PRIVMSG me :x\n? windows=1");
        row("own nick in another case is somebody else", ":ME!u@h NICK :my",
            "DataIn| {C}03{B}ME{B} is now known as {B}my\n? nick=me");
        // A server may change a nick before it welcomes.
        scene("own nick is padded at first", u"! named loaded\n~! connect\n~! connected\n"
                                             "~< :loaded!u@h NICK :guest7\n? nick=guest7"_s);
        row("431", ":s 431 me :No nickname given",
            "usenick.Show\n? report=NickRefused||no name was given|");
        // One box at a time, however many names are refused meanwhile.
        scene("432",
              inRoom + u"! whileOpen < :s 432 me 9y :Erroneous\n< :s 432 me 9x :Erroneous\n"
                       "box|Invalid Name Or Nick Already In Use|Choose Another Nick\nusenick.Show\n"
                       "? report=NickRefused|9y|Erroneous|"_s);
        row("433 of another nick", ":s 433 * other :In use",
            "usenick.Show\n? nick=me\n? report=NickRefused|other|In use|");
        row("433 of mine", ":s 433 * me :In use",
            "<< NICK \nusenick.Show\n? nick=\n! named set\n< :s 433 * set :In use\n<< NICK \n"
            "usenick.Show");
        rows("346 348 367", "me #room mask setter :123", "");
        rows("347 349 368", "me #room :End", "ChannelInfo.Show");
        scene("lists", inRoom +
                           u"! fetch\n< :s 367 me #room *!*@x op :123\nChannelInfo.AddBEI "
                           u"*!*@x|op|123\n< :s 348 me #room *!*@y\n"
                           "ChannelInfo.AddBEI *!*@y||\n< :s 368 me #room :End\nChannelInfo.Show\n"
                           "< :s 367 me #room *!*@z op :123\n" // nobody asked any more
                           "! listsShown\n< :s 349 me #room :End"_s);

        // Whois goes to the private window, if it is asked for and there is one.
        const auto whois = [&](const QString& line, const QString& text) {
            const auto of = [&](const QString& nick, const char* view) {
                const QString entry = QLatin1StringView(view) + "| "_L1;
                return QString("\n< :s "_L1 + line +
                               (line.startsWith("311"_L1) ? u'\n' + entry + u' ' : QString()) +
                               u'\n' + entry + "{C}05{B}%{B} "_L1 + text)
                    .replace(u'%', nick);
            };
            scene(qPrintable("whois "_L1 + line.left(3)),
                  inRoom.chopped(1) + of(u"pal"_s, "DataIn") + "\n! whoisQuery"_L1 +
                      of(u"pal"_s, "Query1") + of(u"zed"_s, "DataIn"));
        };
        whois(u"301 me % :gone  fishing"_s, u"is away: gone  fishing"_s);
        whois(u"307 me % :is a registered nick"_s, u"is a registered nick"_s);
        whois(u"312 me % irc.example :a server"_s, u"is using: irc.example ( a server )"_s);
        whois(u"313 me % :is an operator"_s, u"is an operator"_s);
        whois(u"317 me % 13 1795378094 :seconds idle"_s,
              u"13 seconds idle / 1795378094 sign-on time"_s);
        whois(u"319 me % :#a @#b"_s, u"is on: #a @#b"_s);
        whois(u"320 me % :is special"_s, u"%"_s);
        whois(u"311 me % u h * :Real  Name"_s, u"is u@h * Real  Name"_s);
    }
    void effects()
    {
        QFETCH(QString, script);
        RecordingDesk desk;
        desk.acts[u"autoJoin"_s] = [&](auto room) { desk.variables.AutoJoin = room; };
        desk.acts[u"fetch"_s] = [&](auto) { desk.variables.ListFetching = true; };
        desk.acts[u"whoisQuery"_s] = [&](auto) { desk.variables.WhoisQuery = true; };
        desk.acts[u"listsShown"_s] = [&](auto) { desk.lists.visible = true; };
        desk.acts[u"show"_s] = [&](auto text) { desk.channel.dataIn.view.setText(text); };
        desk.looks[u"shown"_s] = [&] { return desk.channel.dataIn.view.Text(); };
        desk.looks[u"topicPlace"_s] = [&] {
            return QString::number(desk.channel.rtbTopic().SelStart());
        };
        QCOMPARE(desk.play(script), QString());
    }
};

QTEST_GUILESS_MAIN(TestDispatch)
#include "tst_dispatch.moc"
