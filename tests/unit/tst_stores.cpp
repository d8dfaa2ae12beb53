#include "settings/ProfileFile.h"
#include "settings/RunKey.h"
#include "settings/UserStore.h"

#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>
#include <QTest>

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

} // namespace

// What outlives the program: the settings file, the per-user store, the start with the desktop.
class TestStores final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { m_folder = std::make_unique<QTemporaryDir>(); }

    void profileReads_data();
    void profileReads();
    void profileWrites();
    void profileWithoutFile();
    void store_data();
    void store();
    void storeIsPrivate();
    void runKey();
    void runKeyNeedsAFolder();
    void runKeyQuotes_data();
    void runKeyQuotes();

private:
    QString path(const QString& name) const { return m_folder->filePath(name); }

    std::unique_ptr<QTemporaryDir> m_folder;
};

void TestStores::profileReads_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<QString>("value"); // of [connect] server

    const auto row = [](const char* name, const char* content, const char* value) {
        QTest::newRow(name) << QByteArray(content) << QString::fromUtf8(value);
    };
    row("plain", "[connect]\nserver=a.b\n", "a.b");
    row("names in any case", "[Connect]\nSERVER=a.b\n", "a.b");
    row("blanks around", " [connect] \n  server =  a b  \n", "a b");
    row("CR LF", "[connect]\r\nserver=a.b\r\n", "a.b");
    row("no line end", "[connect]\nserver=a.b", "a.b");
    row("byte order mark", "\xef\xbb\xbf[connect]\nserver=a.b\n", "a.b");
    row("UTF-8", "[connect]\nserver=\xc3\xa4\n", "ä");
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
    row("empty", "", "missing");
}

void TestStores::profileReads()
{
    QFETCH(QByteArray, content);
    writeTo(path(u"settings.ini"_s), content);
    const ProfileFile profile(path(u"settings.ini"_s));
    QTEST(profile.read(u"connect"_s, u"server"_s, u"missing"_s), "value");
    QCOMPARE(contentOf(path(u"settings.ini"_s)), content); // reading leaves it alone
}

void TestStores::profileWrites()
{
    const QString file = path(u"new/folder/settings.ini"_s);
    const ProfileFile profile(file);
    profile.write(u"load"_s, u"startup"_s, u"True"_s);
    QCOMPARE(profile.read(u"load"_s, u"startup"_s, {}), u"True"_s);

    writeTo(file, "; mine\n[irc]\n; about the next\nQuitMsg=bye; now\n\n[Load]\nStartup=True\n");
    profile.write(u"load"_s, u"startup"_s, u"False"_s);
    profile.write(u"irc"_s, u"Guest"_s, u"True"_s);
    profile.write(u"NickName"_s, u"bremnick"_s, u"a,b;\"c\""_s);
    const QByteArray content = contentOf(file);
    for (const char* kept : {"; mine", "; about the next", "bye; now", "[irc]"})
        QVERIFY2(content.contains(kept), kept);
    QCOMPARE(content.toLower().count("startup"), 1);
    QCOMPARE(profile.read(u"load"_s, u"startup"_s, {}), u"False"_s);
    QCOMPARE(profile.read(u"irc"_s, u"quitmsg"_s, {}), u"bye; now"_s);
    QCOMPARE(profile.read(u"irc"_s, u"guest"_s, {}), u"True"_s);
    QCOMPARE(profile.read(u"NickName"_s, u"bremnick"_s, {}), u"a,b;\"c\""_s);
}

void TestStores::profileWithoutFile()
{
    const ProfileFile profile(path(u"settings.ini"_s));
    QCOMPARE(profile.read(u"a"_s, u"b"_s, u"default"_s), u"default"_s);
    QVERIFY(!QFile::exists(path(u"settings.ini"_s)));
    writeTo(path(u"file"_s), "x");
    const ProfileFile impossible(path(u"file/settings.ini"_s));
    impossible.write(u"a"_s, u"b"_s, u"c"_s); // passed over
    QCOMPARE(impossible.read(u"a"_s, u"b"_s, u"default"_s), u"default"_s);
    QCOMPARE(contentOf(path(u"file"_s)), "x"_ba);
}

void TestStores::store_data()
{
    QTest::addColumn<QString>("value");

    QTest::newRow("plain") << u"pw"_s;
    QTest::newRow("commas and semicolons") << u"a, b; c,d;"_s;
    QTest::newRow("quotes") << u"\"a\" 'b' \\ \\n"_s;
    QTest::newRow("blanks around") << u"  a  "_s;
    QTest::newRow("looks like a type") << u"@Variant(x) @"_s;
    QTest::newRow("percent and equals") << u"%20=%x"_s;
    QTest::newRow("other letters") << u"äßЖ€"_s;
    QTest::newRow("a list in look") << u"a,b"_s;
    QTest::newRow("line ends") << u"a\r\nb"_s;
    QTest::newRow("empty") << u""_s;
}

void TestStores::store()
{
    QFETCH(QString, value);
    const UserStore store(path(u"store"_s));
    QCOMPARE(store.GetSetting(u"QuillHarbor"_s, u"main"_s, u"pass"_s), QString());
    QCOMPARE(store.GetSetting(u"QuillHarbor"_s, u"main"_s, u"pass"_s, u"none"_s), u"none"_s);
    store.SaveSetting(u"QuillHarbor"_s, u"main"_s, u"pass"_s, u"old"_s);
    store.SaveSetting(u"QuillHarbor"_s, u"main"_s, u"pass"_s, value);
    store.SaveSetting(u"QuillHarbor"_s, u"main"_s, u"name"_s, u"me"_s);
    store.SaveSetting(u"Listsetup"_s, u"Sect"_s, u"boty1"_s, u"2"_s);
    const UserStore again(path(u"store"_s));
    QCOMPARE(again.GetSetting(u"quillharbor"_s, u"main"_s, u"pass"_s, u"none"_s), value);
    QCOMPARE(again.GetSetting(u"ListSetup"_s, u"Sect"_s, u"boty1"_s), u"2"_s);
    QCOMPARE(again.GetSetting(u"Listsetup"_s, u"main"_s, u"pass"_s), QString());
}

void TestStores::storeIsPrivate()
{
    const UserStore store(path(u"store"_s));
    store.SaveSetting(u"QuillHarbor"_s, u"main"_s, u"pass"_s, u"secret"_s);
    constexpr QFile::Permissions others = QFile::ReadGroup | QFile::WriteGroup | QFile::ExeGroup |
                                          QFile::ReadOther | QFile::WriteOther | QFile::ExeOther;
    const auto files = QDir(path(u"store"_s)).entryInfoList(QDir::Files | QDir::Hidden);
    QCOMPARE(files.size(), 1);
    QVERIFY(!(files.first().permissions() & others));
    QFile::setPermissions(files.first().filePath(), others | QFile::ReadOwner | QFile::WriteOwner);
    store.SaveSetting(u"QuillHarbor"_s, u"main"_s, u"pass"_s, u"secret"_s);
    QVERIFY(!(QFileInfo(files.first().filePath()).permissions() & others)); // made so again
    writeTo(path(u"file"_s), "x");
    UserStore(path(u"file"_s)).SaveSetting(u"a"_s, u"b"_s, u"c"_s, u"d"_s); // passed over
    QCOMPARE(contentOf(path(u"file"_s)), "x"_ba);
}

void TestStores::runKey()
{
    const QString entry = path(u"autostart/QuillHarborMessenger.desktop"_s);
    RunKey key(path(u"autostart"_s));
    key.SetValue(u"QuillHarborMessenger"_s, u"/opt/qh"_s); // not open yet
    QVERIFY(!QFile::exists(entry));
    QVERIFY(key.Open());
    key.SetValue(u"QuillHarborMessenger"_s, u"/opt/qh"_s);
    QVERIFY(contentOf(entry).startsWith("[Desktop Entry]\n"));
    QVERIFY(contentOf(entry).contains("\nType=Application\n"));

    RunKey(path(u"autostart"_s)).DeleteValue(u"QuillHarborMessenger"_s); // that one is not open
    QVERIFY(QFile::exists(entry));
    key.DeleteValue(u"Another"_s);
    key.DeleteValue(u"QuillHarborMessenger"_s); // still open: nothing closes it
    QVERIFY(!QFile::exists(entry));
    key.SetValue(u"QuillHarborMessenger"_s, u"/opt/qh"_s);
    QVERIFY(QFile::exists(entry));
}

void TestStores::runKeyNeedsAFolder()
{
    writeTo(path(u"file"_s), "x");
    RunKey key(path(u"file/autostart"_s));
    QVERIFY(!key.Open());
    key.SetValue(u"Name"_s, u"/opt/qh"_s);
    QCOMPARE(contentOf(path(u"file"_s)), "x"_ba);
}

void TestStores::runKeyQuotes_data()
{
    QTest::addColumn<QString>("program");
    QTest::addColumn<QByteArray>("exec");

    QTest::newRow("plain") << u"/usr/bin/qh"_s << "\"/usr/bin/qh\""_ba;
    QTest::newRow("blank") << u"/my programs/qh"_s << "\"/my programs/qh\""_ba;
    QTest::newRow("percent") << u"/50%/qh"_s << "\"/50%%/qh\""_ba;
    QTest::newRow("quote") << u"/a\"b"_s << "\"/a\\\\\"b\""_ba;
    QTest::newRow("dollar") << u"/a$b"_s << "\"/a\\\\$b\""_ba;
    QTest::newRow("backslash") << u"/a\\b"_s << "\"/a\\\\\\\\b\""_ba;
    QTest::newRow("line end stays in its value") << u"/a\nb"_s << "\"/a\\nb\""_ba;
}

void TestStores::runKeyQuotes()
{
    QFETCH(QString, program);
    RunKey key(path(u"autostart"_s));
    QVERIFY(key.Open());
    key.SetValue(u"Name"_s, program);
    const QByteArray content = contentOf(path(u"autostart/Name.desktop"_s));
    const QByteArray line = content.mid(content.indexOf("\nExec=") + 6).chopped(1);
    QTEST(line, "exec");
}

QTEST_GUILESS_MAIN(TestStores)
#include "tst_stores.moc"
