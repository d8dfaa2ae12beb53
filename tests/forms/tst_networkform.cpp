#include "account/NetworkForm.h"
#include "controls/xpButton.h"
#include "platform/Handlers.h"
#include "platform/Resources.h"
#include "settings/Settings.h"
#include "settings/UserStore.h"
#include "support/TestSurroundings.h"

#include <QtNetwork>
#include <QtTest>
#include <QtWidgets>

using namespace Qt::StringLiterals;

// The choice of a network: what it says of an address, what it writes, and its trial.
class NetworkFormTest final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { loadResources(); }
    void init()
    {
        m_around = std::make_unique<TestSurroundings>(u"127.0.0.1"_s);
        m_handlers =
            std::make_unique<Handlers>([](const QString& text) { QFAIL(qPrintable(text)); });
        m_settings = std::make_unique<Settings>(m_around->settingsPath());
        m_store = std::make_unique<UserStore>(m_around->folder.path());
        m_chosen = 0;
    }
    void cleanup() { m_form.reset(); }

    void explains_data()
    {
        QTest::addColumn<QString>("server");
        QTest::addColumn<QString>("room");
        QTest::addColumn<QString>("meaning"); // a part of it
        QTest::addColumn<bool>("good");

        const auto row = [](const char* server, const char* room, const char* meaning, bool good) {
            QTest::addRow("%s %s", server, room)
                << QString::fromLatin1(server) << QString::fromLatin1(room)
                << QString::fromLatin1(meaning) << good;
        };
        row("localhost", "#Harbor", "of the house", true);
        row("irc://localhost", "", "will be open", true);
        row("ircs://localhost:7000", "#a key", "will be private", true);
        row("http://localhost", "#Harbor", "irc", false);
        row("ircs://localhost:70000", "#Harbor", "70000", false);
        row("", "#Harbor", "no server's name", false);
        row("ircs://localhost", "harbor", "will be private", false);
        row("ircs://localhost", "#a,#b", "will be private", false);
    }

    void explains()
    {
        QFETCH(QString, server);
        QFETCH(QString, room);
        QFETCH(QString, meaning);
        QFETCH(bool, good);
        load();
        type(server);
        if (server.isEmpty())
            control<QComboBox>("cmbServer")->clearEditText();
        control<QLineEdit>("txtRoom")->setText(room);
        QVERIFY2(said("lblServer").contains(meaning), qPrintable(said("lblServer")));
        QCOMPARE(control<xpButton>("cmdOK")->isEnabled(), good);
        QCOMPARE(said("lblRoom").isEmpty(), room != u"harbor"_s && !room.contains(u','));
    }

    void writesWhatIsConfirmed()
    {
        QVERIFY(m_around->writeSettings("; mine\n[display]\nfontsize = 12\n\n[connect]\n"
                                        "server = old.example\nident=Q\nautojoin=<none>\n"));
        load();
        QCOMPARE(control<QComboBox>("cmbServer")->currentText(), u"old.example"_s);
        QCOMPARE(control<QLineEdit>("txtRoom")->text(), QString());
        type(u" ircs://new.example "_s);
        control<QLineEdit>("txtRoom")->setText(u"#quay"_s);
        control<QComboBox>("cmbLetters")->setCurrentIndex(1);
        QTest::keyClick(control<QLineEdit>("txtRoom"), Qt::Key_Return);
        QCOMPARE(m_chosen, 1);
        for (const char* line : {"; mine\n", "fontsize = 12\n", "server = ircs://new.example\n",
                                 "ident=Q\n", "autojoin=#quay\n", "charset=windows-1252\n"})
            QVERIFY2(file().contains(line), file().constData());
        QVERIFY(!file().contains("old.example"));

        load();
        QCOMPARE(control<QComboBox>("cmbLetters")->currentIndex(), 1);
        type(u"irc://other.example"_s);
        control<QLineEdit>("txtRoom")->clear();
        press("cmdOK");
        QVERIFY(file().contains("autojoin=<none>\n"));
        // Twelve are kept, the last one first.
        const auto used = [this] {
            return m_store->GetSetting(u"QuillHarbor"_s, u"networks"_s, u"used"_s);
        };
        QCOMPARE(used(), u"irc://other.example ircs://new.example"_s);
        for (int i = 0; i < 12; ++i) {
            load();
            type("irc://n"_L1 + QString::number(i));
            press("cmdOK");
        }
        QVERIFY(used().startsWith("irc://n11 irc://n10 "_L1) && used().endsWith(" irc://n0"_L1));
        load();
        QCOMPARE(control<QComboBox>("cmbServer")->itemText(0), u"irc://n11"_s);
        QCOMPARE(control<QComboBox>("cmbServer")->count(), 13); // each once, and the built-in one
    }

    void leavesWhatIsNotConfirmed()
    {
        const QByteArray before = "[connect]\nserver = old.example\n";
        QVERIFY(m_around->writeSettings(before));
        load();
        type(u"irc://a.example"_s);
        press("cmdCancel");
        load();
        type(u"ftp://a.example"_s);
        press("cmdOK");
        QTest::keyClick(control<QComboBox>("cmbServer")->lineEdit(), Qt::Key_Return);
        QCOMPARE(file(), before);
        QCOMPARE(m_chosen, 0);
    }

    void knowsTheCommandLine()
    {
        load();
        QVERIFY(!control<QLabel>("lblOverruled")->isVisible());
        QVERIFY(m_around->writeSettings("[connect]\nserver=stored.example\n"));
        m_settings->overrule(u"connect"_s, u"server"_s, u"irc://this.example"_s);
        load();
        QVERIFY(control<QLabel>("lblOverruled")->isVisible());
        QVERIFY(said("lblOverruled").contains(u"irc://this.example"_s));
        QCOMPARE(control<QComboBox>("cmbServer")->currentText(), u"stored.example"_s);
    }

    void tries_data()
    {
        QTest::addColumn<QString>("address"); // % is a port where somebody listens and says nothing
        QTest::addColumn<QString>("findings"); // in this order, each a part

        QTest::newRow("open") << u"irc://localhost:%"_s << u"✓ There is|✓ Port % is open"_s;
        QTest::newRow("nobody") << u"irc://127.0.0.1:1"_s << u"✗ Nothing listens on port 1"_s;
        QTest::newRow("no name") << u"irc://no.such.name.invalid"_s
                                 << u"✗ There is no server named no.such"_s;
        QTest::newRow("silent") << u"ircs://127.0.0.1:%"_s
                                << u"✓ Port % is open|✗ No TLS is spoken"_s;
        QTest::newRow("house")
            << TestSurroundings::ownAddress(201)
            << u"✗ Nothing listens on port 6667|✗ Nothing listens on port 8867"_s;
    }

    void tries()
    {
        QFETCH(QString, address);
        QFETCH(QString, findings);
        QTcpServer server;
        QVERIFY(server.listen(QHostAddress::LocalHost));
        const QString port = QString::number(server.serverPort());
        load();
        m_form->findChild<ConnectionTrial*>()->setTimeLimit(address.startsWith("ircs"_L1) ? 500
                                                                                          : 10'000);
        type(address.replace(u'%', port));
        press("cmdTry");
        QTRY_COMPARE_WITH_TIMEOUT(control<xpButton>("cmdTry")->Caption(), u"Try It"_s, 15'000);
        const QStringList lines = said("lblTrial").split(u'\n');
        const QStringList expected = findings.replace(u'%', port).split(u'|');
        QCOMPARE(lines.size(), expected.size());
        for (qsizetype i = 0; i < lines.size(); ++i)
            QVERIFY2(lines[i].startsWith(expected[i]), qPrintable(lines[i]));
    }

    void stopsTrying()
    {
        QTcpServer silent;
        QVERIFY(silent.listen(QHostAddress::LocalHost));
        load();
        type("ircs://127.0.0.1:"_L1 + QString::number(silent.serverPort()));
        press("cmdTry");
        QTRY_VERIFY(said("lblTrial").contains(u"is open"_s));
        press("cmdTry");
        QVERIFY(said("lblTrial").endsWith(u"You have stopped the trial."_s));
        press("cmdTry");
        type(u"irc://other.example"_s); // nothing is said of an address that is no longer there
        QCOMPARE(said("lblTrial"), QString());
        QVERIFY(!m_form->findChild<ConnectionTrial*>()->isRunning());
    }

private:
    void load()
    {
        m_form = std::make_unique<NetworkForm>(
            NetworkForm::Parts{*m_handlers, *m_settings, *m_store, [this] { ++m_chosen; }});
        m_form->Form_Load();
        m_form->Show();
    }
    template<typename T>
    T* control(const char* name) const
    {
        return m_form->findChild<T*>(QLatin1StringView(name));
    }
    QString said(const char* label) const { return control<QLabel>(label)->text(); }
    void type(const QString& address) const
    {
        QLineEdit* field = control<QComboBox>("cmbServer")->lineEdit();
        field->selectAll();
        QTest::keyClicks(field, address);
    }
    void press(const char* button) const { control<xpButton>(button)->click(); }
    QByteArray file() const
    {
        QFile settings(m_around->settingsPath());
        return settings.open(QIODevice::ReadOnly) ? settings.readAll() : QByteArray();
    }

    std::unique_ptr<TestSurroundings> m_around;
    std::unique_ptr<Handlers> m_handlers;
    std::unique_ptr<Settings> m_settings;
    std::unique_ptr<UserStore> m_store;
    std::unique_ptr<NetworkForm> m_form;
    int m_chosen = 0;
};

QTEST_MAIN(NetworkFormTest)
#include "tst_networkform.moc"
