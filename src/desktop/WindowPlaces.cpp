#include "desktop/WindowPlaces.h"

#include "desktop/Channel.h"
#include "desktop/PrivatePlace.h"
#include "platform/Form.h"
#include "platform/ScreenFit.h"
#include "settings/KeptFile.h"
#include "talk/QueryForm.h"

#include <QApplication>
#include <QDir>
#include <QEvent>
#include <QLayout>
#include <QScreen>
#include <QSettings>
#include <QStandardPaths>

namespace {

using namespace Qt::StringLiterals;

constexpr auto sizeKey = "size"_L1;
constexpr auto placeKey = "place"_L1;
constexpr auto maximizedKey = "maximized"_L1;
constexpr const char* placedProperty = "placed";
constexpr int gap = 6;

enum class Memory { Nothing, Size, SizeAndPlace };

struct Row
{
    QLatin1StringView window; // the name of its class
    Memory memory;
};
constexpr std::array<Row, 5> rows{{
    {"Channel"_L1, Memory::SizeAndPlace},
    {"QueryForm"_L1, Memory::Size},
    {"BuddyList"_L1, Memory::Size},
    {"IgnoreList"_L1, Memory::Size},
    {"ChannelInfo"_L1, Memory::Size},
}};

struct Palette
{
    QLatin1StringView window;
    QLatin1StringView button; // of the main window
};
constexpr std::array<Palette, 2> palettes{{
    {"frmSmileys"_L1, "check1"_L1},
    {"frmcolor"_L1, "check2"_L1},
}};

QString nameOf(const QWidget& window)
{
    return QLatin1StringView(window.metaObject()->className());
}

Memory memoryOf(const QWidget& window)
{
    const QString name = nameOf(window);
    const auto* row =
        std::find_if(rows.begin(), rows.end(), [&](const Row& one) { return one.window == name; });
    return row == rows.end() ? Memory::Nothing : row->memory;
}

// Of all windows on the screen the first of this kind.
template<typename Window>
Window* shown()
{
    for (QWidget* window : QApplication::topLevelWidgets()) {
        auto* found = qobject_cast<Window*>(window);
        if (found && found->isVisible() && !found->isMinimized())
            return found;
    }
    return nullptr;
}

QRect onDesktop(const QWidget& control)
{
    return {control.mapToGlobal(QPoint()), control.size()};
}

QRect frameAt(const QWidget& window, const QPoint& corner)
{
    return {corner, window.size().grownBy(frameOf(window))};
}

QRect centredOn(const QWidget& window, const QRect& owner)
{
    QRect frame = frameAt(window, {});
    frame.moveCenter(owner.center());
    return frame;
}

// Above the button, or below it where the screen ends.
QRect besideButton(const QWidget& window, const QRect& button, const QRect& room)
{
    QRect frame = frameAt(window, button.topLeft());
    frame.moveBottom(button.top() - gap);
    if (frame.top() < room.top() && button.bottom() + gap + frame.height() <= room.bottom())
        frame.moveTop(button.bottom() + gap);
    return frame;
}

QWidget* paletteButton(const QWidget& form, const QWidget& owner)
{
    for (const Palette& row : palettes) {
        if (row.window == nameOf(form))
            return owner.findChild<QWidget*>(row.button);
    }
    return nullptr;
}

} // namespace

WindowPlaces::WindowPlaces(QObject* application, QString file)
    : QObject(application)
    , m_file(std::move(file))
{
    application->installEventFilter(this);
}

QString WindowPlaces::usualFile()
{
    QString folder = qEnvironmentVariable("XDG_STATE_HOME");
    if (!QDir::isAbsolutePath(folder))
        folder = QDir::homePath() + "/.local/state"_L1;
    return folder + "/quillharbor/windows.ini"_L1;
}

bool WindowPlaces::eventFilter(QObject* watched, QEvent* event)
{
    const bool comesOrGoes = event->type() == QEvent::Show || event->type() == QEvent::Hide;
    if (!comesOrGoes || event->spontaneous() || !watched->isWidgetType())
        return false;
    auto& window = static_cast<QWidget&>(*watched);
    if (!window.isWindow())
        return false;
    if (event->type() == QEvent::Hide)
        remember(window);
    else if (!window.property(placedProperty).toBool())
        place(window);
    return false;
}

void WindowPlaces::place(QWidget& window) const
{
    const Qt::WindowType type = window.windowType();
    const bool isOurs = type == Qt::Window || type == Qt::Tool || type == Qt::Widget;
    if (!isOurs || window.windowFlags() & Qt::FramelessWindowHint)
        return; // menus, hints, boxes, the splash, the popup
    window.setProperty(placedProperty, true);
    restoreSize(window);
    if (auto* privateTalk = qobject_cast<QueryForm*>(&window))
        placePrivate(*privateTalk);
    else if (auto* form = qobject_cast<Form*>(&window))
        placeForm(*form);
    else if (memoryOf(window) == Memory::SizeAndPlace)
        placeRoom(window);
    else
        setFrame(window, fitted(frameAt(window, window.pos()), roomOnScreen(window)));
}

void WindowPlaces::placeRoom(QWidget& room) const
{
    const QSettings file(isReadable() ? m_file : QString(), QSettings::IniFormat);
    const QString group = nameOf(room) + u'/';
    QRect frame = centredOn(room, roomOnScreen(room));
    const QScreen* screen = room.screen();
    if (const QVariant place = file.value(group + placeKey); place.canConvert<QPoint>()) {
        frame.moveTopLeft(place.toPoint());
        if (const QScreen* its = QGuiApplication::screenAt(frame.center()))
            screen = its;
    }
    setFrame(room, fitted(frame, screen->availableGeometry()));
    if (file.value(group + maximizedKey).toBool())
        room.setWindowState(room.windowState() | Qt::WindowMaximized);
}

void WindowPlaces::placePrivate(QueryForm& form) const
{
    const QMargins frame = frameOf(form);
    PrivatePlace place{
        .wanted = form.size().grownBy(frame),
        .smallest = form.minimumSizeHint().expandedTo(form.minimumSize()).grownBy(frame),
        .room = {},
        .screen = roomOnScreen(form),
        .taken = {},
    };
    if (const auto* room = shown<Channel>()) {
        place.room = room->frameGeometry();
        place.screen = roomOnScreen(*room);
        place.inputTop = onDesktop(*room->findChild<QLineEdit*>(u"DataOut"_s)).top();
    }
    for (const QWidget* other : QApplication::topLevelWidgets()) {
        if (other != &form && other->isVisible() && qobject_cast<const QueryForm*>(other))
            place.taken += other->pos();
    }
    setFrame(form, place.find());
}

void WindowPlaces::placeForm(Form& form) const
{
    const QWidget* owner = QApplication::activeWindow();
    if (!owner || owner == &form)
        owner = shown<Channel>();
    if (!owner)
        return; // nothing of ours is in sight: the desktop knows best
    const QRect room = roomOnScreen(*owner);
    const QWidget* button = paletteButton(form, *owner);
    const QRect frame = button ? besideButton(form, onDesktop(*button), room)
                               : centredOn(form, owner->frameGeometry());
    setFrame(form, fitted(frame, room));
}

// Reading a pipe in its place would wait for ever.
bool WindowPlaces::isReadable() const
{
    return KeptFile(m_file).isOurs();
}

void WindowPlaces::restoreSize(QWidget& window) const
{
    if (memoryOf(window) == Memory::Nothing || !isReadable())
        return;
    const QSettings file(m_file, QSettings::IniFormat);
    const QVariant size = file.value(nameOf(window) + u'/' + sizeKey);
    if (size.canConvert<QSize>() && !size.toSize().isEmpty())
        window.resize(size.toSize());
}

void WindowPlaces::remember(const QWidget& window) const
{
    const Memory memory = memoryOf(window);
    if (memory == Memory::Nothing || !window.property(placedProperty).toBool() || !isReadable())
        return;
    if (!QDir().mkpath(QFileInfo(m_file).path()))
        return;
    QSettings file(m_file, QSettings::IniFormat);
    file.beginGroup(nameOf(window));
    const bool whole = window.isMaximized() || window.isFullScreen();
    file.setValue(sizeKey, whole ? window.normalGeometry().size() : window.size());
    if (memory != Memory::SizeAndPlace)
        return;
    file.setValue(maximizedKey, window.isMaximized());
    if (!whole)
        file.setValue(placeKey, window.pos());
}

void WindowPlaces::rememberOpenOnes() const
{
    for (const QWidget* window : QApplication::topLevelWidgets()) {
        if (window->isVisible())
            remember(*window);
    }
}
