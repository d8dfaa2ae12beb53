#include "Messenger.h"
#include "Surroundings.h"
#include "controls/Theme.h"
#include "desktop/Modules.h"
#include "desktop/NotificationArea.h"
#include "desktop/Sounds.h"
#include "desktop/WebModule.h"
#include "platform/CaretRest.h"
#include "platform/QtDialogs.h"
#include "platform/Resources.h"
#include "text/Links.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QRandomGenerator>
#include <QStandardPaths>

#include <cstdlib>

namespace {

using namespace Qt::StringLiterals;

QString serverFromCommandLine(const QApplication& application)
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
    parser.process(application);
    return parser.value(server);
}

} // namespace

int main(int argc, char* argv[])
{
    QApplication application(argc, argv);
    QApplication::setApplicationName(u"quillharbor"_s);
    QApplication::setApplicationDisplayName(QString());
    QApplication::setApplicationVersion(QStringLiteral(QH_VERSION));
    QApplication::setDesktopFileName(u"quillharbor"_s);
    QApplication::setQuitOnLastWindowClosed(false); // closing a window only hides it
    const QString server = serverFromCommandLine(application);
    loadResources();
    new CaretRest(&application);
    applyTheme(application);

    const QString config = QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation);
    QtDialogs dialogs;
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
    });
    messenger.start();
    return QApplication::exec();
}
