#include "Messenger.h"
#include "Surroundings.h"
#include "controls/Theme.h"
#include "desktop/Modules.h"
#include "desktop/NotificationArea.h"
#include "desktop/Sounds.h"
#include "desktop/WebModule.h"
#include "platform/CaretRest.h"
#include "platform/NoticeBox.h"
#include "platform/QtDialogs.h"
#include "platform/Resources.h"
#include "text/Links.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QRandomGenerator>
#include <QStandardPaths>

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

QString serverFromCommandLine(const QStringList& arguments)
{
    QCommandLineParser parser;
    parser.setApplicationDescription(
        u"Chats on one IRC network: sign in with a nickname and you are in the room."_s);
    parser.addHelpOption();
    parser.addVersionOption();
    const QCommandLineOption server(
        u"server"_s, u"Chat on another server, for this run (default: the settings say)."_s,
        u"host"_s);
    parser.addOption(server);
    parser.process(arguments);
    return parser.value(server);
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
    serverFromCommandLine(arguments);
}

} // namespace

int main(int argc, char* argv[])
{
    nameProgram();
    printWhatIsAsked(argc, argv);
    QApplication application(argc, argv);
    QApplication::setApplicationDisplayName(QString());
    QApplication::setDesktopFileName(u"quillharbor"_s);
    QApplication::setQuitOnLastWindowClosed(false); // closing a window only hides it
    const QString server = serverFromCommandLine(QApplication::arguments());
    loadResources();
    new CaretRest(&application);
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
        .serverHost = server,
        .dialogs = dialogs,
        .events = events,
        .clock = clock,
        .random = [] { return QRandomGenerator::global()->generateDouble(); },
        .links = links,
        .notificationArea = notificationArea,
        .waves = waves,
        .askWebEngine = [&] { return webModule.engine(); },
        // At once: handlers below this frame must not go on.
        .end = [] { std::_Exit(EXIT_SUCCESS); },
        .tell = [&](const QString& line) { noticeBox.tell(line); },
    });
    messenger.start();
    return QApplication::exec();
}
