#include "platform/Motion.h"

#include <QSettings>
#include <QStandardPaths>

#include <array>

namespace {

using namespace Qt::StringLiterals;

struct Place
{
    QLatin1StringView file; // below the folder of settings
    QLatin1StringView key;
};
// The truth value of one kind, the factor of the other: nought and false both mean none.
constexpr std::array<Place, 3> places{{
    {"kdeglobals"_L1, "KDE/AnimationDurationFactor"_L1},
    {"gtk-4.0/settings.ini"_L1, "Settings/gtk-enable-animations"_L1},
    {"gtk-3.0/settings.ini"_L1, "Settings/gtk-enable-animations"_L1},
}};

} // namespace

bool isMotionReducedIn(const QString& settingsFolder)
{
    for (const Place& place : places) {
        const QSettings file(settingsFolder + u'/' + place.file, QSettings::IniFormat);
        const QString value = file.value(place.key).toString().trimmed().toLower();
        bool isNumber = false;
        const double factor = value.toDouble(&isNumber);
        if (value == "false"_L1 || (isNumber && factor == 0))
            return true;
    }
    return false;
}

bool isMotionReduced()
{
    static const bool reduced =
        isMotionReducedIn(QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation));
    return reduced;
}
