#include "account/NetworkForm.h"
#include "controls/xpButton.h"
#include "platform/Handlers.h"
#include "platform/Resources.h"
#include "settings/Settings.h"
#include "settings/UserStore.h"
#include "support/Script.h"
#include "support/TestSurroundings.h"

#include <QtNetwork>
#include <QtTest>
#include <QtWidgets>

using namespace Qt::StringLiterals;

namespace {

struct Scene
{
    Scene() { silent.listen(QHostAddress::LocalHost); }
    template<typename T>
    T& control(const char* name) const
    {
        return *form->findChild<T*>(QLatin1StringView(name));
    }
    // What is to be seen of a label, or the beginning of it.
    QString said(const char* label, int words = 99) const
    {
        const auto& shown = control<QLabel>(label);
        return shown.isVisible() ? shown.text().simplified().section(u' ', 0, words - 1)
                                 : QString();
    }
    static void type(QLineEdit& field, const QString& text)
    {
        field.setFocus();
        field.clear();
        QTest::keyClicks(&field, text);
    }
    QString port() const { return QString::number(silent.serverPort()); }
    ConnectionTrial& trial() const { return *form->findChild<ConnectionTrial*>(); }

    QTcpServer silent;
    const Handlers handlers{[](const QString& text) { QFAIL(qPrintable(text)); }};
    TestSurroundings around{u"127.0.0.1"_s};
    Settings settings{around.settingsPath()};
    UserStore store{around.folder.path()};
    std::unique_ptr<NetworkForm> form;
    int chosen = 0;
    const Script script{
        {
            {u"file"_s, [this](auto content) { QVERIFY(around.writeSettings(content.toUtf8())); }},
            {u"overrule"_s,
             [this](auto address) { settings.overrule(u"connect"_s, u"server"_s, address); }},
            {u"load"_s,
             [this](auto) {
                 form = std::make_unique<NetworkForm>(
                     NetworkForm::Parts{handlers, settings, store, [this] { ++chosen; }});
                 form->Form_Load();
                 form->Show();
             }},
            {u"server"_s,
             [this](QString address) {
                 type(*control<QComboBox>("cmbServer").lineEdit(), address.replace(u'%', port()));
             }},
            {u"room"_s, [this](auto name) { type(control<QLineEdit>("txtRoom"), name); }},
            {u"letters"_s, [this](auto key) { pressKeys(&control<QComboBox>("cmbLetters"), key); }},
            {u"keys"_s, [this](auto names) { pressKeys(form->focusWidget(), names); }},
            {u"press"_s, [this](auto button) { form->findChild<xpButton*>(button)->click(); }},
            {u"limit"_s, [this](auto milliseconds) { trial().setTimeLimit(milliseconds.toInt()); }},
            {u"try"_s,
             [this](auto address) {
                 script.play("server "_L1 + address + "|press cmdTry"_L1);
                 QTRY_VERIFY_WITH_TIMEOUT(!trial().isRunning(), 15'000);
             }},
        },
        {
            {u"address"_s, [this] { return control<QComboBox>("cmbServer").currentText(); }},
            // But for the last one, which is built in.
            {u"list"_s,
             [this] {
                 QStringList rows;
                 for (int row = 0; row < control<QComboBox>("cmbServer").count() - 1; ++row)
                     rows += control<QComboBox>("cmbServer").itemText(row);
                 return rows.join(u' ');
             }},
            {u"server"_s, [this] { return said("lblServer", 5); }},
            {u"room"_s, [this] { return control<QLineEdit>("txtRoom").text(); }},
            {u"fault"_s, [this] { return said("lblRoom"); }},
            {u"letters"_s,
             [this] { return control<QComboBox>("cmbLetters").currentData().toString(); }},
            {u"overruled"_s, [this] { return said("lblOverruled", 8); }},
            {u"ok"_s, [this] { return QString::number(control<xpButton>("cmdOK").isEnabled()); }},
            {u"found"_s, [this] { return said("lblTrial").replace(port(), u"%"_s); }},
            {u"tries"_s, [this] { return QString::number(trial().isRunning()); }},
            {u"chosen"_s, [this] { return QString::number(chosen); }},
            {u"file"_s,
             [this] {
                 QFile file(around.settingsPath());
                 file.open(QIODevice::ReadOnly);
                 return QString::fromUtf8(file.readAll()).simplified();
             }},
        }};
};

} // namespace

// The choice of a network: what it says of an address, what it writes, and its trial.
class NetworkFormTest final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { loadResources(); }

    // A "%" is a port where somebody listens and says nothing.
    void uses_data()
    {
        const Scenes row;
        row("addresses", u"load|server localhost|room #Harbor|?server A server of the house:|?ok 1|"
                         "server irc://localhost|room |?server The line will be open:|?ok 1|"
                         "server ircs://localhost:7000|room #a key|"
                         "?server The line will be private:|?fault |?ok 1|room harbor|"
                         "?fault The name of a room begins with a #.|?ok 0|room #a,#b|"
                         "?fault One room, please.|?ok 0|room #a|?ok 1|server |"
                         "?server There is no server's name.|?ok 0"_s);
        const QString before =
            u"; mine\n[display]\nfontsize = 12\n\n[connect]\nserver = old.example\n"_s;
        row("what is confirmed is written",
            "file "_L1 + before +
                "ident=Q\nautojoin=<none>\n|load|?address old.example|?room |"
                "server  ircs://new.example |room #quay|letters Down|keys Return|?chosen 1|"
                "?file ; mine [display] fontsize = 12 [connect] server = ircs://new.example "
                "ident=Q autojoin=#quay charset=windows-1252|load|?letters windows-1252|"
                "?room #quay|"
                "server irc://other.example|room |press cmdOK|?chosen 2|"
                "?file ; mine [display] fontsize = 12 [connect] server = irc://other.example "
                "ident=Q autojoin=<none> charset=windows-1252|load|?list irc://other.example ircs://new.example"_L1);
        QString thirteen;
        for (int i = 0; i < 13; ++i)
            thirteen += "load|server irc://n"_L1 + QString::number(i) + "|press cmdOK|"_L1;
        // Each of them once.
        row("twelve are kept, the last one first",
            thirteen + u"load|server irc://n3|press cmdOK|load|?list irc://n3 irc://n12 irc://n11 "
                       "irc://n10 irc://n9 irc://n8 irc://n7 irc://n6 irc://n5 irc://n4 irc://n2 "
                       "irc://n1"_s);
        row("what is not confirmed is not",
            "file "_L1 + before +
                "|load|room #x|server irc://a.example|press cmdCancel|load|server ftp://a.example|"
                "press cmdOK|keys Return|?chosen 0|"
                "?file ; mine [display] fontsize = 12 [connect] server = old.example"_L1);
        row("another one on the command line",
            "file "_L1 + before +
                "|load|?overruled |overrule irc://this.example|load|?address old.example|"
                "?overruled This time the program was started for irc://this.example."_L1);

        // Only the house has a second port.
        const QString nobody = TestSurroundings::ownAddress(201);
        row("trials",
            u"load|try irc://localhost:%|"
            "?found ✓ There is a server named localhost. ✓ Port % is open.|"
            "try irc://no.such.name.invalid|"
            "?found ✗ There is no server named no.such.name.invalid.|try irc://"_s +
                nobody + u":6667|?found ✗ Nothing listens on port 6667.|try "_s + nobody +
                u"|?found ✗ Nothing listens on port 6667. ✗ Nothing listens on port "
                "8867.|limit 1000|try ircs://127.0.0.1:%|"
                "?found ✓ Port % is open. ✗ No TLS is spoken on port % within 1 seconds."_s);
        // Nothing is said of an address that is no longer there.
        row("trial that is stopped",
            u"load|server ircs://127.0.0.1:%|press cmdTry|?found ✓ Port % is open. Trying ...|"
            "press cmdTry|?found ✓ Port % is open. ✗ You have stopped the trial.|press cmdTry|"
            "?tries 1|server irc://other.example|?found |?tries 0"_s);
    }
    void uses()
    {
        QFETCH(QString, script);
        Scene().script.play(script);
    }
};

QTEST_MAIN(NetworkFormTest)
#include "tst_networkform.moc"
