#include "platform/Resources.h"
#include "support/ScriptedServer.h"
#include "support/TestClient.h"

#include "controls/Theme.h"

#include <QDir>
#include <QElapsedTimer>
#include <QLineEdit>
#include <QRandomGenerator>
#include <QTextStream>

#include <unistd.h>

using namespace Qt::StringLiterals;

// The whole program for minutes on end: bots talk, come and go, a user clicks and types at random,
// the connection breaks now and then. What it has cost stands at the end.

namespace {

constexpr qint64 stepMilliseconds = 20;
constexpr int linesEachStep = 1;

QString statusOf(const char* key)
{
    QFile file(u"/proc/self/status"_s);
    if (!file.open(QIODevice::ReadOnly))
        return {};
    for (const QByteArray& line : file.readAll().split('\n')) {
        if (line.startsWith(key))
            return QString::fromLatin1(line.mid(line.indexOf(':') + 1).simplified());
    }
    return {};
}

qsizetype descriptors()
{
    return QDir(u"/proc/self/fd"_s).entryList(QDir::AllEntries | QDir::NoDotAndDotDot).size();
}

// What the server says by itself, and how long its PING waits.
class Network final
{
public:
    Network(const QString& address, QRandomGenerator& random)
        : m_server(address)
        , m_random(random)
    {
    }

    bool isUp() const { return m_server.isListening(); }

    void step()
    {
        welcome();
        if (!m_isInRoom || m_server.peerHasGone())
            return;
        for (int i = 0; i < linesEachStep; ++i)
            m_server.say(line());
        if (m_random.bounded(3000) == 0)
            m_server.closePeer();
        ping();
    }

    qint64 slowestPing() const { return m_slowest; }
    qint64 lines() const { return m_lines; }
    int connections() const { return m_server.connections(); }

private:
    QByteArray heard() const { return m_server.received().mid(m_read); }

    void welcome()
    {
        if (m_server.connections() != m_connection) {
            m_connection = m_server.connections();
            m_read = m_server.received().size();
            m_isInRoom = m_isWelcome = m_isWaiting = false;
        }
        if (!m_isWelcome && heard().contains("USER ")) {
            m_isWelcome = true;
            m_server.say(":s 001 soak :Welcome\r\n:s 002 soak :Your host is s\r\n");
        }
        if (m_isWelcome && !m_isInRoom && heard().contains("JOIN ")) {
            m_isInRoom = true;
            m_server.say(
                ":soak!u@h JOIN :#Harbor\r\n:s 332 soak #Harbor :a topic\r\n"
                ":s 353 soak = #Harbor :soak @bot1 +bot2 bot3\r\n:s 366 soak #Harbor :.\r\n");
        }
    }

    QByteArray line()
    {
        ++m_lines;
        const QByteArray bot = "bot" + QByteArray::number(m_random.bounded(1, 60));
        const QByteArray from = ':' + bot + "!u@h ";
        switch (m_random.bounded(20)) {
        case 0:
            return from + "JOIN :#Harbor\r\n";
        case 1:
            return from + "PART #Harbor :off\r\n";
        case 2:
            return from + "QUIT :gone\r\n";
        case 3:
            return from + "NICK :" + bot + "x\r\n";
        case 4:
            return from + "PRIVMSG soak :a word in private :-)\r\n";
        case 5:
            return from + "PRIVMSG soak :\x01"
                          "ACTION waves\x01\r\n";
        case 6:
            return from + "MODE #Harbor +v " + bot + "\r\n";
        case 7:
            return from +
                   "TOPIC #Harbor :topic \x03"
                   "4" +
                   bot + "\r\n";
        default:
            return from + "PRIVMSG #Harbor :\x02one\x02 of many :) lines, http://a.example/" + bot +
                   "\r\n";
        }
    }

    void ping()
    {
        if (!m_isWaiting) {
            m_isWaiting = true;
            m_read = m_server.received().size();
            m_server.say("PING :" + QByteArray::number(++m_number) + "\r\n");
            m_since.start();
        } else if (heard().contains(QByteArray("PONG :" + QByteArray::number(m_number) + '\n'))) {
            m_isWaiting = false;
            m_slowest = std::max(m_slowest, m_since.elapsed());
        }
    }

    ScriptedServer m_server;
    QRandomGenerator& m_random;
    int m_connection = 0;
    qsizetype m_read = 0;
    bool m_isWelcome = false;
    bool m_isInRoom = false;
    bool m_isWaiting = false;
    int m_number = 0;
    qint64 m_lines = 0;
    qint64 m_slowest = 0;
    QElapsedTimer m_since;
};

// Somebody who tries everything but the way out.
class User final
{
public:
    User(TestClient& client, QRandomGenerator& random)
        : m_client(client)
        , m_random(random)
    {
    }

    void step()
    {
        ++m_steps;
        m_client.around.dialogs.answerText = m_random.bounded(2) ? u"some words"_s : QString();
        m_client.around.dialogs.answerYes = m_random.bounded(2);
        if (m_client.looksSignedOut())
            return m_client.signIn(u"soak"_s);
        switch (m_random.bounded(4)) {
        case 0:
            return m_client.say(u"says the user :)"_s);
        case 1:
            return choose();
        default:
            return click();
        }
    }

    int steps() const { return m_steps; }

private:
    void choose()
    {
        static constexpr const char* entries[]{"mnu_View_Buddylist",
                                               "mnu_ingorelist",
                                               "mnu_view_fontsize",
                                               "mnu_About",
                                               "mnu_author",
                                               "mnu_slap",
                                               "mnu_hi",
                                               "mnu_ownaction",
                                               "mnu_nicks_whois",
                                               "mnu_status_brb",
                                               "mnu_status_away",
                                               "mnu_sound_no",
                                               "mnu_sound_yes",
                                               "mnu_options_clear"};
        m_client.click(entries[m_random.bounded(int(std::size(entries)))]);
    }

    void click()
    {
        QWidgetList windows;
        for (QWidget* window : QApplication::topLevelWidgets()) {
            if (window->isVisible())
                windows += window;
        }
        if (windows.isEmpty())
            return;
        QWidget* window = windows[m_random.bounded(int(windows.size()))];
        if (m_random.bounded(30) == 0 && window != &m_client.messenger.login()) {
            window->close();
            return;
        }
        const QPoint place(m_random.bounded(std::max(window->width(), 1)),
                           m_random.bounded(std::max(window->height(), 1)));
        QWidget* under = window->childAt(place);
        if (!under || qobject_cast<QLineEdit*>(under) || under->inherits("QMenuBar"))
            return;
        QTest::mouseClick(under, Qt::LeftButton, {}, under->mapFrom(window, place));
    }

    TestClient& m_client;
    QRandomGenerator& m_random;
    int m_steps = 0;
};

void report(QTextStream& out, qint64 seconds, const Network& network, const User& user)
{
    out << seconds << " s: " << network.lines() << " lines, " << user.steps() << " steps, "
        << network.connections() << " connections; slowest PING " << network.slowestPing()
        << " ms, memory " << statusOf("VmRSS") << " (most " << statusOf("VmHWM")
        << "), descriptors " << descriptors() << ", threads " << statusOf("Threads") << Qt::endl;
}

} // namespace

// bench_soak [MINUTES [SEED]]
int main(int argc, char* argv[])
{
    const int minutes = argc > 1 ? QByteArray(argv[1]).toInt() : 10;
    QApplication application(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    loadResources();
    applyTheme(application);
    QTextStream out(stdout);
    QRandomGenerator random(argc > 2 ? QByteArray(argv[2]).toUInt() : 1);
    const QString address = TestSurroundings::ownAddress(1);
    Network network(address, random);
    if (minutes < 1 || !network.isUp()) {
        out << "usage: bench_soak [MINUTES [SEED]]; it needs port 6667 of " << address << Qt::endl;
        return 2;
    }
    TestClient client(address);
    User user(client, random);
    client.start();
    client.signIn(u"soak"_s);

    QElapsedTimer time;
    time.start();
    for (qint64 reported = 0; time.elapsed() < minutes * 60'000LL && client.around.ends == 0;) {
        QTest::qWait(int(stepMilliseconds));
        network.step();
        if (random.bounded(5) == 0)
            user.step();
        if (time.elapsed() / 60'000 > reported) {
            reported = time.elapsed() / 60'000;
            report(out, time.elapsed() / 1000, network, user);
        }
    }
    report(out, time.elapsed() / 1000, network, user);
    if (client.around.ends > 0)
        out << "the program has ended: " << client.around.dialogs.shown.last() << Qt::endl;
    return client.around.ends > 0 ? 1 : 0;
}
