#include "platform/Resources.h"
#include "support/TestSurroundings.h"

#include "Messenger.h"
#include "controls/Theme.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QLineEdit>
#include <QScrollBar>
#include <QTextStream>
#include <QTimer>

#include <algorithm>
#include <ctime>

#include <arpa/inet.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

// A whole program in the room while a burst of lines comes in over a real connection. The server
// is a process of its own, so that what is measured is the program's.

namespace {

constexpr int port = 6667;

QByteArray channelLine(int number)
{
    QByteArray text = "says a few words of the usual length to everybody";
    if (number % 3 == 0)
        text += " and smiles :)";
    if (number % 5 == 0)
        text = "\x03"
               "4" +
               text;
    if (number % 7 == 0)
        text = "\x02" + text + "\x02";
    return ":nick" + QByteArray::number(number % 97) + "!user@host PRIVMSG #Harbor :" + text +
           "\r\n";
}

constexpr auto lastWords = "says that this was all";

// Lines that nobody sends in earnest.
struct Attack
{
    QLatin1StringView name;
    QByteArray (*lines)();
};

QByteArray manyCodes()
{
    QByteArray text;
    while (text.size() < 1'000'000)
        text += ":) ;) :D brb (beer) :-S :((x";
    return text;
}

QByteArray manyNames(int count)
{
    QByteArray lines;
    for (int i = 0; i < count; i += 40) {
        lines += ":s 353 bench = #Harbor :";
        for (int n = i; n < std::min(i + 40, count); ++n)
            lines += "some" + QByteArray::number(n) + ' ';
        lines.chop(1);
        lines += "\r\n";
    }
    return lines;
}

// Each puts all of a private conversation into the room: one that just fits into a coded line.
QByteArray manyActions()
{
    const QByteArray told = ":bob!u@h PRIVMSG bench :";
    const QByteArray words = told + QByteArray("some words of usual length ").repeated(15) + "\r\n";
    const QByteArray action = told + '\x01' + "ACTION waves\x01\r\n";
    return words.repeated(75) + action.repeated(3000);
}

const Attack attacks[]{
    {"actions-3000-of-30kB"_L1, manyActions},
    {"one-smiley-1MB"_L1,
     []() -> QByteArray {
         return ":s 002 bench :x" + QByteArray(":)").repeated(500'000) + "\r\n";
     }},
    {"all-smileys-1MB"_L1, []() -> QByteArray { return ":s 002 bench :x" + manyCodes() + "\r\n"; }},
    {"words-1MB"_L1,
     []() -> QByteArray {
         return ":s 002 bench :" + QByteArray("word ").repeated(200'000) + "\r\n";
     }},
    {"no-blank-1MB"_L1,
     []() -> QByteArray { return ":s 002 bench :" + QByteArray(1'000'000, 'x') + "\r\n"; }},
    {"topic-5MB"_L1,
     []() -> QByteArray {
         return ":s 332 bench #Harbor :" + QByteArray("word ").repeated(1'000'000) + "\r\n";
     }},
    {"nick-1MB"_L1,
     []() -> QByteArray {
         return ":" + QByteArray(1'000'000, 'n') + "!u@h PRIVMSG bench :hello\r\n";
     }},
    {"parameters-1MB"_L1,
     []() -> QByteArray { return ":s 099 bench" + QByteArray(" x").repeated(500'000) + "\r\n"; }},
    {"topics-2000"_L1,
     []() -> QByteArray {
         return QByteArray(":s 332 bench #Harbor :news of the day\r\n").repeated(2000);
     }},
    {"quits-2000-of-32000"_L1,
     []() -> QByteArray {
         QByteArray lines = manyNames(32'000);
         for (int i = 0; i < 2000; ++i)
             lines += ":some" + QByteArray::number(i * 16) + "!u@h QUIT :gone\r\n";
         return lines;
     }},
};

const Attack* attackNamed(const QByteArray& name)
{
    const auto* const found = std::ranges::find_if(
        attacks, [&](const Attack& attack) { return attack.name == QLatin1StringView(name); });
    return found == std::end(attacks) ? nullptr : found;
}

// The server of the other process: greets, lets in, and at a line that says "go" sends the burst.
class FloodingServer final
{
public:
    explicit FloodingServer(int listener)
        : m_socket(::accept(listener, nullptr, nullptr))
    {
    }

    void serve(const QByteArray& burst)
    {
        waitFor("USER ");
        say(":s 001 bench :Welcome\r\n:s 002 bench :Your host is s\r\n");
        waitFor("JOIN ");
        say(":bench!u@h JOIN :#Harbor\r\n:s 332 bench #Harbor :a topic\r\n"
            ":s 353 bench = #Harbor :bench bob\r\n:s 366 bench #Harbor :End\r\n");
        waitFor("go\n");
        say(burst);
        waitFor("QUIT");
    }

private:
    void waitFor(const char* text)
    {
        char buffer[4096];
        while (!m_received.contains(text)) {
            const ssize_t count = ::read(m_socket, buffer, sizeof buffer);
            if (count <= 0)
                ::_exit(0);
            m_received.append(buffer, count);
        }
    }

    void say(const QByteArray& bytes) const
    {
        for (qsizetype sent = 0; sent < bytes.size();) {
            const ssize_t count = ::write(m_socket, bytes.constData() + sent,
                                          static_cast<size_t>(bytes.size() - sent));
            if (count <= 0)
                ::_exit(0);
            sent += count;
        }
    }

    int m_socket;
    QByteArray m_received;
};

int listenOn(const QString& address)
{
    const int listener = ::socket(AF_INET, SOCK_STREAM, 0);
    sockaddr_in place{};
    place.sin_family = AF_INET;
    place.sin_port = htons(port);
    ::inet_pton(AF_INET, address.toLatin1().constData(), &place.sin_addr);
    if (::bind(listener, reinterpret_cast<const sockaddr*>(&place), sizeof place) != 0 ||
        ::listen(listener, 1) != 0)
        qFatal("cannot listen");
    return listener;
}

double cpuSeconds()
{
    return static_cast<double>(std::clock()) / CLOCKS_PER_SEC;
}

double residentMegabytes()
{
    QFile file(u"/proc/self/statm"_s);
    if (!file.open(QIODevice::ReadOnly))
        return 0;
    const qint64 pages = file.readAll().split(' ').value(1).toLongLong();
    return static_cast<double>(pages * sysconf(_SC_PAGESIZE)) / (1024 * 1024);
}

template<typename Condition>
void waitUntil(Condition condition)
{
    QTimer wake; // so that conditions that no event announces are seen, too
    wake.start(5);
    while (!condition())
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
}

bool endsWith(const RichTextBox& view, QLatin1StringView text)
{
    const qsizetype length = view.TextLength();
    return view.TextRange(std::max<qsizetype>(length - 200, 0), 200).contains(text);
}

// At the newest line and painted.
void waitForTheScreen(Channel& window)
{
    auto* view = window.findChild<QWidget*>(u"DataIn"_s);
    auto* area = qobject_cast<QAbstractScrollArea*>(view);
    const QScrollBar* bar =
        (area ? area : view->findChild<QAbstractScrollArea*>())->verticalScrollBar();
    view->grab(); // lays the newest lines out
    waitUntil([bar] { return bar->value() == bar->maximum(); });
    view->grab();
}

QByteArray talk(int lines)
{
    QByteArray burst;
    for (int i = 0; i < lines; ++i)
        burst += channelLine(i);
    return burst;
}

// With no number of lines it is their end that tells.
void measure(const QString& row, int lines, const QString& address)
{
    TestSurroundings around(address);
    Messenger messenger(around);
    Login& login = messenger.login();
    login.Form_Load();
    login.Show();
    login.setNickname(u"bench"_s);
    login.cmdSignIn_Click();
    Channel& window = messenger.chatRoom().main.window;
    waitUntil([&] { return window.lstNicks().ListCount() == 2; });
    waitUntil([&] { return endsWith(window.DataIn(), "Topic is"_L1); });
    window.grab(); // fonts and the first frame

    const ChatText& view = static_cast<ChatView&>(window.DataIn()).chatText();
    const qsizetype linesBefore = view.lineCount();
    const double memory = residentMegabytes();
    const double cpu = cpuSeconds();
    QElapsedTimer time;
    time.start();
    messenger.chatRoom().session.connection.SendData(u"go"_s);
    // Counted, not looked at: the last of them need not be known by its text.
    waitUntil([&] {
        return lines > 0 ? view.lineCount() >= linesBefore + lines
                         : endsWith(window.DataIn(), QLatin1StringView(lastWords));
    });
    lines = std::max(lines, 1);
    const double inView = static_cast<double>(time.nsecsElapsed()) / 1e3;
    const double cpuInView = cpuSeconds() - cpu;
    waitForTheScreen(window);
    const double painted = static_cast<double>(time.nsecsElapsed()) / 1e3;
    const double after = residentMegabytes();
    const auto number = [](double value, int decimals, int width) {
        return QString::number(value, 'f', decimals).rightJustified(width);
    };
    QTextStream(stdout) << row.leftJustified(24) << number(inView / lines, 2, 10)
                        << number(painted / lines, 2, 12) << number(cpuInView, 2, 9)
                        << number(memory, 1, 12) << number(after, 1, 12) << Qt::endl;
    messenger.chatRoom().session.connection.SendData(u"QUIT"_s);
    QCoreApplication::processEvents();
}

} // namespace

// bench_session [LINES | ATTACK]; --header is the line above the figures, --attacks names those.
int main(int argc, char* argv[])
{
    const QByteArray wanted(argc > 1 ? argv[1] : "50000");
    if (wanted == "--header") {
        QTextStream(stdout) << u"row"_s.leftJustified(24)
                            << "   us/line     painted    CPU s   MiB before   MiB after\n";
        return 0;
    }
    if (wanted == "--attacks") {
        for (const Attack& attack : attacks)
            QTextStream(stdout) << attack.name << '\n';
        return 0;
    }
    const Attack* const attack = attackNamed(wanted);
    const int lines = attack ? 0 : wanted.toInt();
    if (!attack && lines < 1) {
        QTextStream(stderr) << "usage: bench_session [--header | --attacks | LINES | ATTACK]\n";
        return 2;
    }
    const QString address =
        QStringLiteral("127.%1.%2.9").arg(10 + getpid() / 250 % 40).arg(getpid() % 250 + 1);
    const int listener = listenOn(address);
    const pid_t server = ::fork();
    if (server == 0) {
        FloodingServer(listener).serve(
            attack ? QByteArray(attack->lines() + ":n!u@h PRIVMSG #Harbor :" + lastWords + "\r\n")
                   : talk(lines));
        return 0;
    }
    ::close(listener);

    QApplication application(argc, argv);
    loadResources();
    applyTheme(application);
    measure(attack ? QString(attack->name) : "session-"_L1 + QString::number(lines), lines,
            address);
    ::waitpid(server, nullptr, 0);
    return 0;
}
