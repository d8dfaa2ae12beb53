#include "Messenger.h"
#include "Surroundings.h"
#include "controls/Theme.h"
#include "desktop/Modules.h"
#include "desktop/NotificationArea.h"
#include "desktop/Sounds.h"
#include "desktop/WebModule.h"
#include "desktop/WindowPlaces.h"
#include "platform/CaretRest.h"
#include "platform/NoticeBox.h"
#include "platform/QtDialogs.h"
#include "platform/Resources.h"
#include "text/Links.h"
#include "wire/ServerAddress.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QRandomGenerator>
#include <QStandardPaths>
#include <QTextStream>

#include <algorithm>
#include <array>
#include <cstdlib>

namespace {

using namespace Qt::StringLiterals;

void nameProgram()
{
    QCoreApplication::setApplicationName(u"quillharbor"_s);
    QCoreApplication::setApplicationVersion(QStringLiteral(QH_VERSION));
}

struct CommandLine
{
    QString server;
    QString room;
};

constexpr int wrongUse = 2;

[[noreturn]] void endByWrongUse(const QString& error)
{
    QTextStream(stderr) << "quillharbor: " << error << Qt::endl;
    std::exit(wrongUse);
}

// "#" begins a comment in many shells: a room may be named without.
QString roomNamed(const QString& name)
{
    const bool isWhole =
        name.isEmpty() || name.startsWith(u'#') || name.startsWith(u'&') || name.startsWith(u'<');
    return isWhole ? name : u'#' + name;
}

CommandLine readCommandLine(const QStringList& arguments)
{
    QCommandLineParser parser;
    parser.setApplicationDescription(
        u"Chats on one IRC network: sign in with a nickname and you are in the room."_s);
    parser.addHelpOption();
    parser.addVersionOption();
    const QCommandLineOption server(
        u"server"_s,
        u"Chat on another server, for this run (default: the settings say): a host, or a network "
        "of today as irc://host[:port] or, with TLS, ircs://host[:port]."_s,
        u"address"_s);
    const QCommandLineOption room(
        u"room"_s, u"Enter this room there, for this run (default: the settings say)."_s,
        u"room"_s);
    parser.addOption(server);
    parser.addOption(room);
    parser.process(arguments);
    return {parser.value(server), roomNamed(parser.value(room))};
}

// Looked at before there is an application: what is wrong needs no display to be told.
void refuseWrongServer(int argc, char* argv[])
{
    const QString option = u"--server"_s;
    for (int i = 1; i < argc; ++i) {
        QString argument = QString::fromLocal8Bit(argv[i]);
        if (argument == option && i + 1 < argc)
            argument += u'=' + QString::fromLocal8Bit(argv[++i]);
        if (!argument.startsWith(option + u'='))
            continue;
        const ServerAddress address = ServerAddress::parse(argument.mid(option.size() + 1));
        if (!address.isValid())
            endByWrongUse(address.error);
    }
}

// What only prints needs no display, and ends the program here.
void printWhatIsAsked(int argc, char* argv[])
{
    constexpr std::array words{"-h"_L1, "--help"_L1, "--help-all"_L1, "-v"_L1, "--version"_L1};
    const auto isWord = [&](const char* argument) {
        return std::ranges::find(words, QLatin1StringView(argument)) != words.end();
    };
    char** const found = std::find_if(argv + 1, argv + argc, isWord);
    if (found == argv + argc)
        return;
    const QStringList arguments{QString::fromLocal8Bit(argv[0]), QString::fromLocal8Bit(*found)};
    const QCoreApplication application(argc, argv);
    readCommandLine(arguments);
}

} // namespace

int main(int argc, char* argv[])
{
    nameProgram();
    printWhatIsAsked(argc, argv);
    refuseWrongServer(argc, argv);
    QApplication application(argc, argv);
    QApplication::setApplicationDisplayName(QString());
    QApplication::setDesktopFileName(u"quillharbor"_s);
    QApplication::setQuitOnLastWindowClosed(false); // closing a window only hides it
    const CommandLine commandLine = readCommandLine(QApplication::arguments());
    loadResources();
    new CaretRest(&application);
    const auto* places = new WindowPlaces(&application, WindowPlaces::usualFile());
    applyTheme(application);

    const QString config = QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation);
    QtDialogs dialogs;
    NoticeBox noticeBox;
    QtEventLoop events;
    const SystemClock clock;
    DesktopLinkOpener links;
    DesktopNotificationArea notificationArea;
    const Modules modules(Modules::programFolders());
    WavePlayerOnDemand waves(modules);
    const WebModule webModule(modules);
    Messenger messenger({
        .configFolder = config + "/quillharbor"_L1,
        .autostartFolder = config + "/autostart"_L1,
        .serverHost = commandLine.server,
        .room = commandLine.room,
        .dialogs = dialogs,
        .events = events,
        .clock = clock,
        .random = [] { return QRandomGenerator::global()->generateDouble(); },
        .links = links,
        .notificationArea = notificationArea,
        .waves = waves,
        .askWebEngine = [&] { return webModule.engine(); },
        .askKeyring = [&] { return modules.load<Keyring>(u"qhkeyring"_s); },
        // At once: handlers below this frame must not go on.
        .end =
            [&] {
                places->rememberOpenOnes();
                std::_Exit(EXIT_SUCCESS);
            },
        .tell = [&](const QString& line) { noticeBox.tell(line); },
    });
    messenger.start();
    return QApplication::exec();
}
