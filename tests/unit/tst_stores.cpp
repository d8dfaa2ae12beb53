#include "common/SessionVariables.h"
#include "session/SessionStart.h"
#include "settings/KeptFile.h"
#include "settings/PreviousInstance.h"
#include "settings/ProfileFile.h"
#include "settings/RunKey.h"
#include "settings/Settings.h"
#include "settings/UserStore.h"
#include "support/RecordingPorts.h"
#include "text/OwnTextStyle.h"

#include <QtTest>

#include <csignal>

#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace {

QByteArray contentOf(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

void writeTo(const QString& path, const QByteArray& content)
{
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    QCOMPARE(file.write(content), content.size());
}

// While it lives a file takes that many bytes and no more, as on a disk that is full.
class FullDisk final
{
public:
    explicit FullDisk(rlim_t bytes)
        : m_handler(std::signal(SIGXFSZ, SIG_IGN))
    {
        getrlimit(RLIMIT_FSIZE, &m_before);
        const rlimit limit{bytes, m_before.rlim_max};
        setrlimit(RLIMIT_FSIZE, &limit);
    }
    ~FullDisk()
    {
        setrlimit(RLIMIT_FSIZE, &m_before);
        std::signal(SIGXFSZ, m_handler);
    }

private:
    void (*m_handler)(int);
    rlimit m_before{};
};

mode_t modeOf(const QString& path)
{
    struct stat status = {};
    return lstat(QFile::encodeName(path).constData(), &status) == 0 ? status.st_mode : 0;
}

} // namespace

// What outlives the program: the settings file, the per-user store, the start with the desktop.
class TestStores final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_folder = std::make_unique<QTemporaryDir>();
        m_told.clear();
    }

    void profileReads_data()
    {
        QTest::addColumn<QByteArray>("content");
        QTest::addColumn<QString>("value"); // of [connect] server

        const auto row = [](const char* name, const char* content, const char* value) {
            QTest::newRow(name) << QByteArray(content) << QString::fromUtf8(value);
        };
        row("names in any case", "[Connect]\nSERVER=a.b\n", "a.b");
        row("blanks around", " [connect] \n  server =  a b  \n", "a b");
        row("CR LF", "[connect]\r\nserver=a.b\r\n", "a.b");
        row("a mark before UTF-8, no line end", "\xef\xbb\xbf[connect]\nserver=\xc3\xa4", "ä");
        row("commas, semicolons, equals", "[connect]\nserver=a,b;c=d #e\n", "a,b;c=d #e");
        row("quotes go", "[connect]\nserver=\"  a b  \"\n", "  a b  ");
        row("single quotes go", "[connect]\nserver='a'\n", "a");
        row("one quote stays", "[connect]\nserver=\"a\n", "\"a");
        row("backslashes stay", "[connect]\nserver=a\\nb\\\n", "a\\nb\\");
        row("empty value", "[connect]\nserver=\n", "");
        row("comment", "; server=x\n[connect]\n;server=x\nserver=a.b\n", "a.b");
        row("other section", "[irc]\nserver=x\n", "missing");
        row("no section", "server=x\n", "missing");
        row("broken section", "[connect\nserver=x\n", "missing");
        row("no equals sign", "[connect]\nserver\n", "missing");
        row("junk around", "\x01\x02 junk\n===\n[]\n[connect]\n=x\nserver=a.b\n]]\n", "a.b");
        row("the first of two", "[connect]\nserver=a.b\n[irc]\n[connect]\nserver=x\n", "a.b");
        row("its section goes on", "[connect]\n[irc]\n[connect]\nserver=a.b\n", "a.b");
    }
    void profileReads()
    {
        QFETCH(QByteArray, content);
        writeTo(path(u"settings.ini"_s), content);
        QTEST(profile().read(u"connect"_s, u"server"_s, u"missing"_s), "value");
        QCOMPARE(contentOf(path(u"settings.ini"_s)), content); // reading leaves it alone
    }

    void profileWrites_data()
    {
        QTest::addColumn<QByteArray>("before");
        QTest::addColumn<QByteArray>("after"); // [load] startup has become False

        const auto row = [](const char* name, const QByteArray& before, const QByteArray& after) {
            QTest::newRow(name) << before << after;
        };
        const QByteArray much = "; " + QByteArray(2 * 1024 * 1024, 'x') + '\n';
        row("no file", {}, "[load]\nstartup=False\n");
        row("only the value", "; a\n\n \tjunk \n[Load] ; b\n\tStartUp = \tTrue \nx=y\n; end\n\n",
            "; a\n\n \tjunk \n[Load] ; b\n\tStartUp = \tFalse \nx=y\n; end\n\n");
        row("line ends stay", "[load]\r\nstartup=True\r\n\r\n; end",
            "[load]\r\nstartup=False\r\n\r\n; end");
        row("new ones follow the old", "[irc]\r\nx=y\r\n",
            "[irc]\r\nx=y\r\n\r\n[load]\r\nstartup=False\r\n");
        row("the first of two", "[load]\nstartup=True\nstartup=1\n[load]\nstartup=2\n",
            "[load]\nstartup=False\nstartup=1\n[load]\nstartup=2\n");
        row("into its section", "[load]\nx=y\n; about x\n\n\n[irc]\nstartup=1\n",
            "[load]\nx=y\n; about x\nstartup=False\n\n\n[irc]\nstartup=1\n");
        row("empty section", "[load]", "[load]\nstartup=False\n");
        row("no value yet", "[load]\nstartup=\n", "[load]\nstartup=False\n");
        row("behind a lot", "[a]\n" + much, "[a]\n" + much + "\n[load]\nstartup=False\n");
        row("bytes of all kinds", QByteArray("\xef\xbb\xbf[load]\nn=\0\xff\x80\n[x", 18),
            QByteArray("\xef\xbb\xbf[load]\nn=\0\xff\x80\nstartup=False\n[x", 32));
    }
    void profileWrites()
    {
        QFETCH(QByteArray, before);
        QFETCH(QByteArray, after);
        const QString file = path(u"settings.ini"_s);
        if (!before.isEmpty())
            writeTo(file, before);
        profile().write(u"load"_s, u"startup"_s, u"False"_s);
        QVERIFY(contentOf(file) == after);
        for (const QString& value : {u"a,b;\"c\""_s, u" a "_s, u"'a'"_s, u""_s}) {
            profile().write(u"load"_s, u"startup"_s, value);
            QCOMPARE(profile().read(u"load"_s, u"startup"_s, u"missing"_s), value);
        }
        QCOMPARE(m_told, QStringList());
    }

    void profileWithoutFile()
    {
        QCOMPARE(profile().read(u"a"_s, u"b"_s, u"default"_s), u"default"_s);
        QVERIFY(!QFile::exists(path(u"settings.ini"_s)));
        writeTo(path(u"file"_s), "x");
        const ProfileFile impossible = profile(u"file/settings.ini"_s);
        impossible.write(u"a"_s, u"b"_s, u"c"_s);
        QCOMPARE(impossible.read(u"a"_s, u"b"_s, u"default"_s), u"default"_s);
        QCOMPARE(contentOf(path(u"file"_s)), "x"_ba);
        QCOMPARE(m_told.size(), 1);
    }

    void store()
    {
        const UserStore store(path(u"store"_s));
        const auto get = [&](const UserStore& from, const QString& application,
                             const QString& section, const QString& missing) {
            return from.GetSetting(application, section, u"pass"_s, missing);
        };
        QCOMPARE(get(store, u"QuillHarbor"_s, u"main"_s, u"none"_s), u"none"_s);
        store.SaveSetting(u"QuillHarbor"_s, u"main"_s, u"name"_s, u"me"_s);
        store.SaveSetting(u"Listsetup"_s, u"Sect"_s, u"pass"_s, u"2"_s);
        for (const QString& value : {u"a, b; c,d;"_s, u"\"a\" 'b' \\ \\n"_s, u"  a  "_s,
                                     u"@Variant(x) @"_s, u"%20=%x"_s, u"äßЖ€"_s, u"a\r\nb"_s,
                                     u"\x01\x01z\x7f\0"
                                     "0f"_s,
                                     u"\U0001F6A2"_s, u"\x01\ufeff a"_s, u""_s}) {
            store.SaveSetting(u"QuillHarbor"_s, u"main"_s, u"pass"_s, value);
            const UserStore again(path(u"store"_s));
            QCOMPARE(get(again, u"quillharbor"_s, u"main"_s, u"none"_s), value);
            QCOMPARE(get(again, u"ListSetup"_s, u"Sect"_s, u"none"_s), u"2"_s);
            QCOMPARE(get(again, u"Listsetup"_s, u"main"_s, {}), QString());
        }
    }

    void storeReadsOlderFiles()
    {
        for (const auto& [stored, value] :
             {std::pair("a b"_ba, u"a b"_s),
              {"\"a;b\\\\\\\"\\r\\n\\t\\x41z\\0\""_ba, u"a;b\\\"\r\n\tAz\0"_s},
              {"\\xd83d\\xdea2"_ba, u"\U0001F6A2"_s}, // halves of a character
              {"@@x"_ba, u"@x"_s},
              {"\"@String(a\\0)\""_ba, u"a\0"_s},
              {"\"a\\"_ba, u"a\\"_s}}) { // cut short
            writeTo(path(u"quillharbor.store"_s), "[main]\nname=" + stored + "\npass=p\n");
            const UserStore store(m_folder->path());
            QCOMPARE(store.GetSetting(u"QuillHarbor"_s, u"main"_s, u"name"_s), value);
            QCOMPARE(store.GetSetting(u"QuillHarbor"_s, u"main"_s, u"pass"_s), u"p"_s);
        }
    }

    void filesArePrivate()
    {
        const QString ini = path(u"new/folder/settings.ini"_s);
        const QString file = path(u"new/folder/quillharbor.store"_s);
        const UserStore store(path(u"new/folder"_s), notices());
        const auto save = [&] {
            store.SaveSetting(u"QuillHarbor"_s, u"main"_s, u"pass"_s, u"secret"_s);
        };
        profile(u"new/folder/settings.ini"_s).write(u"load"_s, u"startup"_s, u"True"_s);
        save();
        QCOMPARE(modeOf(path(u"new"_s)) & 0777, 0700u);
        QCOMPARE(modeOf(path(u"new/folder"_s)) & 0777, 0700u);
        QCOMPARE(modeOf(ini) & 0777, 0600u);
        QCOMPARE(modeOf(file) & 0777, 0600u);
        for (const QString& open : {ini, file})
            QVERIFY(chmod(QFile::encodeName(open).constData(), 0644) == 0);
        profile(u"new/folder/settings.ini"_s).write(u"load"_s, u"startup"_s, u"False"_s);
        save();                               // what it held before
        QCOMPARE(modeOf(ini) & 0777, 0644u);  // its owner's choice
        QCOMPARE(modeOf(file) & 0777, 0600u); // holds a password
        QCOMPARE(m_told, QStringList());
    }

    void fullDiskCostsOnlyTheNew()
    {
        const QByteArray mine = "; mine\n[load]\nstartup=True\n; and this\n";
        writeTo(path(u"settings.ini"_s), mine);
        const UserStore store(m_folder->path(), notices());
        store.SaveSettings(u"Listsetup"_s, u"Sect"_s,
                           {{u"boty1"_s, u"1"_s}, {u"boty10"_s, u"ann"_s}});
        const QByteArray buddies = contentOf(path(u"listsetup.store"_s));
        RunKey key(path(u"autostart"_s), notices());
        QVERIFY(key.Open());
        const ProfileFile settings = profile();
        {
            const FullDisk disk(20);
            for (int again = 0; again < 2; ++again) {
                settings.write(u"load"_s, u"startup"_s, u"False"_s);
                store.SaveSettings(u"Listsetup"_s, u"Sect"_s,
                                   {{u"boty10"_s, u"bob"_s}, {u"boty11"_s, u"carol"_s}});
                store.SaveSetting(u"QuillHarbor"_s, u"main"_s, u"pass"_s, QString(50, u's'));
                key.SetValue(u"QuillHarborMessenger"_s, u"/opt/qh"_s);
            }
        }
        QCOMPARE(contentOf(path(u"settings.ini"_s)), mine);
        QCOMPARE(contentOf(path(u"listsetup.store"_s)), buddies);
        QCOMPARE(QDir(m_folder->path()).entryList(QDir::Files).join(u' '),
                 u"listsetup.store settings.ini"_s); // no rests
        QVERIFY(QDir(path(u"autostart"_s)).isEmpty());
        // Each file has been told, and once: where, why, what is lost.
        QStringList told;
        const QString why(QString::fromLocal8Bit(strerror(EFBIG)));
        for (const auto& [file, what] :
             {std::pair(u"settings.ini"_s, "the ticks."),
              {u"listsetup.store"_s, "the buddy list."},
              {u"quillharbor.store"_s, "the nickname and the password."},
              {u"autostart/QuillHarborMessenger.desktop"_s, "starting with the desktop."}})
            told += path(file) + ": "_L1 + why + ". Not kept: "_L1 + QLatin1StringView(what);
        QCOMPARE(m_told, told);
        settings.write(u"load"_s, u"startup"_s, u"False"_s); // there is room again
        QVERIFY(contentOf(path(u"settings.ini"_s)).contains("startup=False"));
    }

    void strangersAreLeftAlone_data()
    {
        QTest::addColumn<uint>("kind");
        for (const auto& [name, kind] :
             {std::pair("pipe", S_IFIFO), {"directory", S_IFDIR}, {"device", S_IFCHR}})
            QTest::newRow(name) << uint(kind);
    }
    void strangersAreLeftAlone()
    {
        QFETCH(uint, kind);
        const QStringList names{u"settings.ini"_s, u"quillharbor.store"_s, u"running.lock"_s,
                                u"Name.desktop"_s};
        for (const QString& name : names) {
            const QByteArray place = QFile::encodeName(path(name));
            if (kind == S_IFDIR)
                QVERIFY(mkdir(place.constData(), 0750) == 0);
            else if (kind == S_IFIFO)
                QVERIFY(mkfifo(place.constData(), 0640) == 0);
            else
                QVERIFY(symlink("/dev/zero", place.constData()) == 0); // endless, if it were read
        }
        const auto modes = [&] {
            QList<mode_t> found{static_cast<mode_t>(QFileInfo(u"/dev/zero"_s).permissions())};
            for (const QString& name : names)
                found += modeOf(path(name));
            return found;
        };
        const QList<mode_t> before = modes();

        const UserStore store(m_folder->path(), notices());
        const QString unread = u": it is not an ordinary file. What it holds does not count."_s;
        QCOMPARE(profile().read(u"load"_s, u"startup"_s, u"none"_s), u"none"_s);
        QCOMPARE(m_told, QStringList{path(u"settings.ini"_s) + unread});
        profile().write(u"load"_s, u"startup"_s, u"True"_s);
        QCOMPARE(store.GetSetting(u"QuillHarbor"_s, u"main"_s, u"name"_s), QString());
        QCOMPARE(m_told.last(), path(u"quillharbor.store"_s) + unread);
        store.SaveSetting(u"QuillHarbor"_s, u"main"_s, u"name"_s, u"ann"_s);
        RunKey key(m_folder->path(), notices());
        QVERIFY(key.Open());
        key.SetValue(u"Name"_s, u"/opt/qh"_s);
        key.DeleteValue(u"Name"_s);
        QVERIFY(!PreviousInstance(m_folder->path()).found());

        QCOMPARE(modes(), before);
        for (const QString& line : m_told)
            QVERIFY2(line.contains("it is not an ordinary file"_L1), qPrintable(line));
    }

    void runKey()
    {
        const QString entry = path(u"autostart/QuillHarborMessenger.desktop"_s);
        RunKey key(path(u"autostart"_s));
        key.SetValue(u"QuillHarborMessenger"_s, u"/opt/qh"_s); // not open yet
        QVERIFY(!QFile::exists(entry));
        QVERIFY(key.Open());
        for (const auto& [program, exec] : {std::pair(u"/my programs/qh"_s, "/my programs/qh"_ba),
                                            {u"/50%/qh"_s, "/50%%/qh"_ba},
                                            {u"/a\"b"_s, "/a\\\\\"b"_ba},
                                            {u"/a$b"_s, "/a\\\\$b"_ba},
                                            {u"/a\\b"_s, "/a\\\\\\\\b"_ba},
                                            {u"/a\nb"_s, "/a\\nb"_ba}}) {
            key.SetValue(u"QuillHarborMessenger"_s, program);
            QCOMPARE(contentOf(entry), "[Desktop Entry]\nType=Application\n"
                                       "Name=Quill Harbor Messenger\nIcon=quillharbor\n"
                                       "Terminal=false\nExec=\"" +
                                           exec + "\"\n");
        }
        RunKey(path(u"autostart"_s)).DeleteValue(u"QuillHarborMessenger"_s); // not an open one
        key.DeleteValue(u"Another"_s);
        QVERIFY(QFile::exists(entry));
        key.DeleteValue(u"QuillHarborMessenger"_s); // still open: nothing closes it
        QVERIFY(!QFile::exists(entry));
        writeTo(path(u"file"_s), "x");
        QVERIFY(!RunKey(path(u"file/autostart"_s)).Open());
        QCOMPARE(contentOf(path(u"file"_s)), "x"_ba);
    }

    // What the session begins with: without a file, and with one that says something else.
    void startOfTheSession()
    {
        const auto begun = [&]() -> QString {
            Journal journal;
            RecordingChannel channel(journal);
            const RecordingLogin login(journal);
            RecordingEvents events(journal);
            SessionVariables v;
            OwnTextStyle style;
            startSession(channel, login, Settings(path(u"settings.ini"_s), notices()), events, v,
                         style);
            QStringList values{v.ServerHost, v.MyNick,  v.FullName, v.IdentName,      v.AutoJoin,
                               v.FontName,   v.QuitMsg, v.Charset,  v.AuthoritiesFile};
            for (QString& value : values) {
                if (value.size() != 255)
                    value = u"not padded"_s;
                value = beforeNul(value);
            }
            for (const int number :
                 {int(v.FontSize), int(v.MaxTextHistory), int(v.Reconnect), int(v.WhoisQuery)})
                values += QString::number(number);
            return values.join(u'|') + u'|' + style.TextColor + u'|' + channel.Text1 + u'|' +
                   journal.take().join(u'|');
        };
        const QString end = u"|1|6667|Text1=6667|Pause 0.01"_s;
        QCOMPARE(begun().section(u'|', 1),
                 u"typed|Quill Quill Quill Quill Harbor Messenger V 1.0|"
                 "QHM|#Harbor|Arial|Quill Harbor Messenger v 1.0|utf-8||10|30|1|0"_s +
                     end);
        const QByteArray file = "[connect]\nserver=a.b\nnick=me\nfullname=F\nident=I\n"
                                "reconnect=false\nautojoin=#x\ncharset=c\ncafile=/f\n"
                                "[display]\nfontsize=12\nfontname=Mono\n"
                                "[irc]\nwhoisquery=true\nmaxtexthistory=5\nquitmsg=Q\n";
        writeTo(path(u"settings.ini"_s), file);
        QCOMPARE(begun(), u"a.b|me|F|I|#x|Mono|Q|c|/f|12|5|0|1"_s + end);
        // Some are read and only checked, and one that is not understood is told.
        for (const QByteArray& key :
             {"[connect]\nport"_ba, "[connect]\nconnonload"_ba, "[connect]\ninvisible"_ba,
              "[connect]\nretry"_ba, "[connect]\nretrynum"_ba, "[irc]\nupdate"_ba,
              "[windows]\nstretch"_ba}) {
            writeTo(path(u"settings.ini"_s), key + "=soon\n");
            QVERIFY_THROWS_EXCEPTION(RunTimeError, begun());
            QCOMPARE(m_told.takeLast(),
                     path(u"settings.ini"_s) + ": "_L1 +
                         QString::fromLatin1(key).replace(u'\n', u' ') +
                         " is \"soon\", which is no value for it. Correct it, or "
                         "take the line out."_L1);
        }
    }

private:
    QString path(const QString& name) const { return m_folder->filePath(name); }
    ProfileFile profile(const QString& name = u"settings.ini"_s) const
    {
        return ProfileFile(path(name), u"the ticks"_s, notices());
    }
    Notices notices() const
    {
        return Notices([this](const QString& line) { m_told += line; });
    }

    std::unique_ptr<QTemporaryDir> m_folder;
    mutable QStringList m_told;
};

QTEST_GUILESS_MAIN(TestStores)
#include "tst_stores.moc"
