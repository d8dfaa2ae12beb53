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

// The server of the other process: greets, lets in, and at a line that says "go" sends the burst.
class Server final
{
public:
    explicit Server(int listener)
        : m_socket(::accept(listener, nullptr, nullptr))
    {
    }

    void serve(int lines)
    {
        waitFor("USER ");
        say(":s 001 bench :Welcome\r\n:s 002 bench :Your host is s\r\n");
        waitFor("JOIN ");
        say(":bench!u@h JOIN :#Harbor\r\n:s 332 bench #Harbor :a topic\r\n"
            ":s 353 bench = #Harbor :bench bob\r\n:s 366 bench #Harbor :End\r\n");
        waitFor("go\n");
        QByteArray burst;
        for (int i = 0; i < lines; ++i)
            burst += channelLine(i);
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

void measure(int lines, const QString& address)
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
    waitUntil([&] { return view.lineCount() >= linesBefore + lines; });
    const double inView = static_cast<double>(time.nsecsElapsed()) / 1e3;
    const double cpuInView = cpuSeconds() - cpu;
    waitForTheScreen(window);
    const double painted = static_cast<double>(time.nsecsElapsed()) / 1e3;
    const double after = residentMegabytes();
    const auto number = [](double value, int decimals, int width) {
        return QString::number(value, 'f', decimals).rightJustified(width);
    };
    QTextStream(stdout) << QString("session-"_L1 + QString::number(lines)).leftJustified(24)
                        << number(inView / lines, 2, 10) << number(painted / lines, 2, 12)
                        << number(cpuInView, 2, 9) << number(memory, 1, 12) << number(after, 1, 12)
                        << Qt::endl;
    messenger.chatRoom().session.connection.SendData(u"QUIT"_s);
    QCoreApplication::processEvents();
}

} // namespace

// bench_session [LINES]; --header is the line above the figures.
int main(int argc, char* argv[])
{
    if (argc > 1 && QLatin1StringView(argv[1]) == "--header"_L1) {
        QTextStream(stdout) << u"row"_s.leftJustified(24)
                            << "   us/line     painted    CPU s   MiB before   MiB after\n";
        return 0;
    }
    const int lines = argc > 1 ? QByteArray(argv[1]).toInt() : 50'000;
    if (lines < 1) {
        QTextStream(stderr) << "usage: bench_session [--header | LINES]\n";
        return 2;
    }
    const QString address =
        QStringLiteral("127.%1.%2.9").arg(10 + getpid() / 250 % 40).arg(getpid() % 250 + 1);
    const int listener = listenOn(address);
    const pid_t server = ::fork();
    if (server == 0) {
        Server(listener).serve(lines);
        return 0;
    }
    ::close(listener);

    QApplication application(argc, argv);
    loadResources();
    applyTheme(application);
    measure(lines, address);
    ::waitpid(server, nullptr, 0);
    return 0;
}
