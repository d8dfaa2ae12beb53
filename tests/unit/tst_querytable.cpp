#include "support/RecordingDesk.h"

using namespace Qt::StringLiterals;

class TestQuery final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void scenes_data()
    {
        const Scenes scene;
        scene(
            "opening",
            u"! visible al\n- false\n~! openFrom Al Al!u@h!x\n? hosts=u@h!x\n"
            "~! openFrom bo no.mark\n? hosts=u@h!x,no.mark\n! find BO\n- 2\n! visible aL\n- true\n"
            "! openFrom AL x!other\nQuery1.SetFocus\n? hosts=u@h!x,no.mark\n! find other\n- -1"_s);
        // The entry that says "Yes" is mnu_pm_no.
        scene("private talk is on", u"! tick yes\n~! open al\n? windows=1"_s);
        scene("private talk is off", u"! tick no\n! open al\n? windows=0"_s);
        scene("on, and blocked", u"! tick yes\n! tick blocked\n! open al\n? windows=0"_s);
        scene("blocked alone", u"! tick blocked\n~! open al\n? windows=1"_s);
        scene("a slot is used again",
              u"~! open a\n~! open b\n~! open c\n~! unload 2\n! find b\n- -1\n"
              "! openFrom d d!u@h\nQuery2.Caption=d\nQuery2.lblNick=d\nQuery2.lblHost=u@h\n"
              "Query2.Visible=true\nQuery2.Tag=2\n? windows=3"_s);
        const QString mismatch = u"FATAL Run-time error '13':\nType mismatch\n"_s;
        const QString subscript = u"FATAL Run-time error '9':\nSubscript out of range\n"_s;
        // Whoever had a window before keeps it, but is no longer heard.
        scene("blocked", "! block zed - Blocked\n~! open al\n! block al - Blocked\n! open al\n"
                         "Query1.SetFocus\n! visible al\n"_L1 +
                             mismatch + "! block BOB - BLOCKED\n! visible bob\n"_L1 + mismatch +
                             "! open bob\n"_L1 + mismatch + "? windows=1"_L1);
        scene("rows of others", u"! block bobby - Blocked\n! block bob\n! visible bob\n- false\n"
                                "~! open bob\n? windows=1"_s);
        // A number is a slot whose window goes; that one passes.
        scene("blocked by digits",
              "~! open a\n~! open b\n! block 99 - Blocked\n! visible 99\n"_L1 + subscript +
                  "! block 2cool - Blocked\n! visible 2cool\n"_L1 + mismatch +
                  "! block 2 - Blocked\n! visible 2\nQuery1.Unload\n- false"_L1);
        QString thirty = u"~! register\n"_s;
        for (int i = 1; i <= 30; ++i)
            thirty += "~! open n"_L1 + QString::number(i) + u'\n';
        // One unloaded is not enough: the search gets past the last slot first.
        scene("one too many",
              thirty +
                  "? windows=30\n< :one.more!u@h PRIVMSG me :lost\n? windows=31\n"
                  "! find N30\n- 30\n~! unload 5\n! find new\n"_L1 +
                  subscript + "! open new\n"_L1 + subscript + "! unload 31\n"_L1 + subscript +
                  "? unloadedAtTheEnd=29\n~! disconnect\n~! connect\n~! connected\n? windows=0\n"
                  "~! open new\n! find new\n- 1"_L1);
    }
    void scenes()
    {
        QFETCH(QString, script);
        RecordingDesk desk;
        QueryTable& queries = desk.queries;
        desk.acts[u"openFrom"_s] = [&](auto nickAndHost) {
            queries.OpenQuery(nickAndHost.section(u' ', 0, 0), nickAndHost.section(u' ', 1));
        };
        desk.acts[u"find"_s] = [&](auto nick) { desk.journal("- ", queries.FindQuery(nick)); };
        desk.acts[u"visible"_s] = [&](auto nick) {
            desk.journal("- ", queries.QueryVisible(nick));
        };
        desk.acts[u"tick"_s] = [&](auto name) {
            (name == "yes"_L1  ? desk.mnu_pm_no
             : name == "no"_L1 ? desk.mnu_pm_yes
                               : desk.mnu_blocked)
                .setChecked(true);
        };
        desk.looks[u"hosts"_s] = [&] {
            QStringList hosts;
            for (int slot = 1; slot <= queries.QueryCount(); ++slot)
                hosts += queries.Queries(slot).QueryHost;
            return hosts.join(u',');
        };
        desk.looks[u"unloadedAtTheEnd"_s] = [&] {
            queries.unloadOpen();
            return QString::number(desk.take().filter(u".Unload"_s).size());
        };
        QCOMPARE(desk.play(script), QString());
    }
};

QTEST_GUILESS_MAIN(TestQuery)
#include "tst_querytable.moc"
