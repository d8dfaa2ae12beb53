#include "desktop/WebModule.h"

#include "desktop/Modules.h"
#include "desktop/WebEngine.h"

#include <QCoreApplication>
#include <QOpenGLContext>

#include <sched.h>
#include <sys/wait.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

QT_BEGIN_NAMESPACE
Q_GUI_EXPORT void qt_gl_set_global_share_context(QOpenGLContext* context);
Q_GUI_EXPORT QOpenGLContext* qt_gl_global_share_context();
QT_END_NAMESPACE

namespace {

// The engine ends the whole program where it finds no sandbox, so it is not loaded there. Only the
// environment can ask for it without one.
bool hasSandbox()
{
    if (qEnvironmentVariableIntValue("QTWEBENGINE_DISABLE_SANDBOX") != 0)
        return true;
    if (geteuid() == 0)
        return false;
    const pid_t probe = fork();
    if (probe == 0)
        _exit(unshare(CLONE_NEWUSER | CLONE_NEWPID) == 0 ? 0 : 1);
    int status = 1;
    return probe > 0 && waitpid(probe, &status, 0) == probe && status == 0;
}

// The engine draws without the graphics card. A few plain pages do not need it, and graphics
// libraries would cost every run some 40 MB and the start of the program a part of its time: the
// engine's usual set-up wants their context before the first window. All it reads of that context
// without a card is its format, so one that has never been created serves.
void drawWithoutGraphicsCard()
{
    constexpr auto flags = "QTWEBENGINE_CHROMIUM_FLAGS";
    if (!qEnvironmentVariableIsSet(flags))
        qputenv(flags, "--disable-gpu");
    if (!qEnvironmentVariableIsSet("QT_XCB_GL_INTEGRATION"))
        qputenv("QT_XCB_GL_INTEGRATION", "none");
    if (qt_gl_global_share_context())
        return;
    auto* context = new QOpenGLContext(QCoreApplication::instance());
    QObject::connect(context, &QObject::destroyed, [] { qt_gl_set_global_share_context(nullptr); });
    qt_gl_set_global_share_context(context);
}

} // namespace

WebModule::Answer WebModule::engine() const
{
    const QString name = u"qhweb"_s;
    if (!m_modules.contains(name))
        return {nullptr, u"Web pages are not available in this build of the program."_s};
    if (!hasSandbox())
        return {nullptr, u"Web pages are not shown here, because this account cannot lock them "
                         "into a sandbox."_s};
    drawWithoutGraphicsCard();
    if (auto* engine = m_modules.load<WebEngine>(name))
        return {engine, {}};
    return {nullptr, u"Web pages are not available: the web engine could not be loaded."_s};
}
