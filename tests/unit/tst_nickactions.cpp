#include "commands/ChatOptions.h"
#include "commands/NickActions.h"
#include "commands/Presence.h"
#include "controls/ActionEntry.h"
#include "support/RecordingDesk.h"

using namespace Qt::StringLiterals;

namespace {

// Menus wired as the main window wires them: every entry by its name, through the edge that stops
// failures. Entries can be checked, so the toolkit checks them by itself on a click, too.
struct Menus
{
    RecordingDesk desk;
    std::map<QString, ActionEntry> entries;
    NickActions actions{
        {desk.variables,
         desk.room,
         desk.connection,
         desk.commands,
         desk.queries,
         desk.dialogs,
         {entry(u"mnu_nicks_op"_s, u"&Op"_s), entry(u"mnu_nicks_halfop"_s, u"&Halfop"_s),
          entry(u"mnu_nicks_voice"_s, u"&Voice"_s)},
         [this]() -> ListBox& { return desk.ignored; }}};
    Presence presence{Presence::Parts{desk.room, desk.connection, desk.commands, desk.dialogs,
                                      entry(u"mnu_status_away"_s, u"&..:Away [Own Reason]:."_s)}};
    ChatOptions options{ChatOptions::Parts{entry(u"mnu_pm_no"_s), entry(u"mnu_pm_yes"_s),
                                           entry(u"mnu_sound_no"_s), entry(u"mnu_sound_yes"_s),
                                           desk.mainView, desk.dialogs}};

    Menus()
    {
        wire(actions);
        wire(presence);
        wire(options);
        desk.enterRoom(u"@olga %hugo +vera bob me"_s);
        desk.select(u"bob"_s);
        desk.acts[u"click"_s] = [this](auto name) { entry("mnu_"_L1 + name).trigger(); };
        desk.acts[u"popup"_s] = [this](auto) { actions.lstNicks_MouseDown(); };
        desk.acts[u"doubleClick"_s] = [this](auto) { actions.lstNicks_DblClick(); };
        desk.acts[u"selectBlocked"_s] = [this](auto) { desk.ignored.setListIndex(0); };
        desk.acts[u"failBehind"_s] = [this](auto) {
            desk.dialogs.whileOpen = [] { throw RunTimeError(RunTimeError::Number::Overflow); };
        };
        desk.looks[u"away"_s] = [this] { return entry(u"mnu_status_away"_s).Caption(); };
        desk.looks[u"captions"_s] = [this] {
            QStringList captions;
            for (const QString& rank : {u"op"_s, u"halfop"_s, u"voice"_s})
                captions += entry("mnu_nicks_"_L1 + rank).Caption();
            return captions.join(u' ');
        };
        desk.looks[u"ticks"_s] = [this] {
            QString ticks;
            for (const QString& name :
                 {u"mnu_pm_no"_s, u"mnu_pm_yes"_s, u"mnu_sound_no"_s, u"mnu_sound_yes"_s})
                ticks += entry(name).Checked() ? u'+' : u'-';
            return ticks;
        };
    }

    ActionEntry& entry(const QString& name, const QString& caption = {})
    {
        ActionEntry& action = entries[name];
        if (!caption.isEmpty())
            action.setCaption(caption);
        action.setCheckable(name.startsWith("mnu_pm"_L1) || name.startsWith("mnu_sound"_L1));
        return action;
    }
    void wire(auto& logic)
    {
        for (const QString& name : logic.entries())
            desk.handlers.connect(&entry(name), &QAction::triggered, &entry(name),
                                  [&logic, name] { logic.click(name); });
    }
};

} // namespace

class tst_NickActions : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void clicks_data()
    {
        const Scenes row;
        // What the room sees is sent only while connected.
        const auto action = [](const QString& text) -> QString {
            return "DataIn| {C}06me "_L1 % text % "\n<< PRIVMSG #room :{A}ACTION "_L1 % text %
                   "{A}"_L1;
        };
        const auto greeting = [&](const char* entry, const QString& member, const QString& text) {
            const QString click = "! click "_L1 + QLatin1StringView(entry);
            row(entry, "! select "_L1 % member % u'\n' % click % u'\n' % action(text) %
                           "\n! state 6\n"_L1 % click);
        };
        greeting("hi", u"@olga"_s, u"Says Hi To olga"_s);
        greeting("welcome", u"+vera"_s, u"Welcomes vera To Harbor ChatRoom"_s);
        greeting("hugs", u"bob"_s, u"Hugs bob tightly and warmly."_s);
        greeting("handshake", u"bob"_s, u"Handshakes with bob"_s);
        greeting("slap", u"bob"_s, u"slaps {C}4bob{C}6 around a bit with a large trout."_s);
        row("lines in any state", u"! state 6\n! click nicks_op\n<< MODE #room +o bob\n"
                                  "! select nobody\n! click nicks_op\n<< MODE #room +o \n"
                                  "! select +vera\n! click nicks_ban\n<< MODE #room +b vera!*@*\n"
                                  "! select @olga\n! click nicks_whois\n<< WHOIS olga"_s);
        // Before the first popup the caption is spelt in a way that no test knows.
        row("captions follow the ranks",
            u"! click nicks_halfop\n<< MODE #room -h bob\n! popup\n? captions=&Op &HalfOp &Voice\n"
            "! click nicks_halfop\n<< MODE #room +h bob\n! select hugo\n! popup\n"
            "? captions=&Op De&HalfOp &Voice\n! click nicks_halfop\n<< MODE #room -h hugo\n"
            "! select +vera\n! popup\n? captions=&Op &HalfOp De&Voice\n! click nicks_voice\n"
            "<< MODE #room -v vera\n! select @olga\n! popup\n? captions=De&Op &HalfOp &Voice\n"
            "! click nicks_op\n<< MODE #room -o olga"_s);

        const QString kick = u"! click nicks_kick\nprompt|Kick User|Why would you like to kick the "
                             "user 'bob' from #room?"_s;
        row("kick of whom it was before the question",
            u"! answer too loud\n! whileOpen ! select @olga\n"_s + kick +
                u"\n<< KICK #room bob :too loud"_s);
        row("kick without a reason", "! answer\n"_L1 + kick + u"\n<< KICK #room bob :"_s);
        row("no kick", "! answer \b\n"_L1 + kick);
        row("one line of a reason",
            "! answer gone\rQUIT\n"_L1 + kick + "\n<< KICK #room bob :gone"_L1);
        const QString own =
            u"! click ownaction\nprompt|Action Message|Type Your Own Action Message\n"_s;
        row("own action", "! answer waves\rQUIT\n"_L1 + own + action(u"waves"_s) +
                              "\n! state 6\n! answer\n"_L1 + own + action({}));

        row("conversation", u"! state 8\n! click nicks_pm\n? windows=0\n! state 7\n"
                            "~! click nicks_pm\n? windows=1\n! select @olga\n"
                            "! block Olga - Blocked\n! click nicks_pm\n"
                            "FATAL Run-time error '13':\n\nType mismatch\n? windows=1"_s);
        row("double click", u"! block x - Blocked\n! block BOB - blocked\n! doubleClick\n"
                            "! select +vera\n! state 0\n! doubleClick\n? windows=0\n! state 6\n"
                            "~! doubleClick\n? windows=1"_s);

        const QString block = u"! click blocked\n"_s;
        const QString refused = block + u"box|Block|"_s;
        const QString notice =
            u"<< PRIVMSG bob {C}4{B}You've been ignored by me [Quill Harbor Messenger]\n"_s;
        row("block", block + notice + u"? blocked=bob - Blocked"_s);
        row("block nobody", u"! select +vera\n! click blocked\n! select nobody\n! click blocked"_s);
        row("block oneself", u"! select me\n"_s + refused + u"You can't block yourself?"_s);
        for (const QString& who : {u"@olga"_s, u"hugo"_s})
            row(qPrintable("block "_L1 + who),
                "! select "_L1 % who % u'\n' % refused % "You can't block a Operator"_L1);
        row("block twice", u"! block BOB - Blocked\n"_s + block + notice +
                               u"? blocked=BOB - Blocked,bob - Blocked\n! selectBlocked\n"_s +
                               refused + u"Are you trying to add same nick?"_s);

        const auto preset = [&](const char* entry, const QString& reason, const QString& text) {
            row(entry, "! state 6\n! click status_"_L1 % QLatin1StringView(entry) %
                           "\n? away=&..:Away [Own Reason]:.\n! state 7\n! click status_"_L1 %
                           QLatin1StringView(entry) % "\n<< AWAY "_L1 % reason % u'\n' %
                           action("has changed status: "_L1 + text) % "\n? away=&..:Online:.."_L1);
        };
        preset("brb", u"I will be back later."_s, u"I will be right back."_s);
        preset("lunch", u"I am having my lunch"_s, u"I'm having my lunch."_s);
        preset("phone", u"I am on the phone"_s, u"I'm on the phone."_s);
        preset("busy", u"I am busy"_s, u"I'm busy right now."_s);
        preset("afk", u"I am away from the keyboard"_s, u"I'm away from the keyboard."_s);
        const QString back = u"! click status_away\n<< AWAY \n"_s +
                             action(u"is online now: I'm Online."_s) +
                             u"\n? away=&..:Away [Own Reason]:..\n"_s;
        const QString ask = u"\n! click status_away\nprompt|Away Message|Type Your Away Message\n"
                            "<< AWAY "_s;
        // With the caption of the start, the entry does nothing.
        row("own reason", u"! click status_away\n! click away_dinner\n~! click status_busy\n"_s +
                              back + "! answer at sea"_L1 + ask + "at sea\n"_L1 +
                              action(u"has changed status: at sea"_s) +
                              "\n? away=&..:Online:..\n! state 6\n! click status_away\n"
                              "! state 7\n"_L1 +
                              back + "! answer"_L1 + ask + u'\n' +
                              action(u"has changed status: "_s));

        const QString question =
            u"question|QuillHarborMessenger|You cannot recieve/send any message with chatters. "
            "Make Sure You have close all the private message window - CLICK YES TO CLOSE ALL "
            "PRIVATE CHAT BOX Or CLICK NO TO CLOSE YOURSELF?\n"_s;
        const QString refuse = "! click pm_yes\n"_L1 + question;
        row("crossed pairs", // the tick stands before the question, and a failure is passed over
            "? ticks=+-+-\n! click pm_no\n? ticks=+-+-\n! whileOpen ? ticks\n"_L1 + refuse +
                "- ticks=-++-\n! failBehind\n"_L1 + refuse +
                "? ticks=-++-\n! click pm_no\n? ticks=+-+-\n! click sound_no\n? ticks=+-+-\n"
                "! click sound_yes\n? ticks=+--+\n! click sound_yes\n? ticks=+--+\n"
                "! click sound_no\n? ticks=+-+-"_L1);
        row("clear", u"< PING x\n<< PONG :x\n! click options_clear\nDataIn emptied\n"
                     "DataIn| {C}14- Cleared Chat Screen\nDataIn| {C}14- You've cleared your chat "
                     "screen, all previous public messages cleared."_s);
    }
    void clicks()
    {
        QFETCH(QString, script);
        Menus menus;
        QCOMPARE(menus.desk.play(script), QString());
    }
};

QTEST_MAIN(tst_NickActions)
#include "tst_nickactions.moc"
