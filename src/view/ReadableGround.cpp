#include "view/ReadableGround.h"

#include <QApplication>
#include <QLineEdit>

#include <cmath>
#include <utility>

namespace {

constexpr double readable = 4.5;
constexpr double swallowed = 3; // below this large letters are lost, too
constexpr double step = 0.02;

} // namespace

double luminance(QRgb color)
{
    const auto linear = [](int channel) {
        const double share = channel / 255.0;
        return share <= 0.04045 ? share / 12.92 : std::pow((share + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(qRed(color)) + 0.7152 * linear(qGreen(color)) +
           0.0722 * linear(qBlue(color));
}

double contrast(QRgb one, QRgb other)
{
    double dark = luminance(one);
    double bright = luminance(other);
    if (bright < dark)
        std::swap(dark, bright);
    return (bright + 0.05) / (dark + 0.05);
}

QColor readableGround(QRgb text, QRgb paper)
{
    if (contrast(text, paper) >= swallowed)
        return {};
    const QColor dusk(18, 30, 42);
    const QColor dawn(250, 252, 253);
    const QColor goal = contrast(text, dusk.rgb()) >= readable ? dusk : dawn;
    QColor ground = QColor::fromRgb(paper);
    for (double part = step; part <= 1 && contrast(text, ground.rgb()) < readable; part += step)
        ground = mixed(QColor::fromRgb(paper), goal, part);
    return ground;
}

void setReadableColor(QLineEdit& field, QRgb color)
{
    const QPalette usual = QApplication::palette(&field);
    const QColor ground = readableGround(color, usual.color(QPalette::Base).rgb());
    // The theme paints fields by its style sheet, which knows no palette. A new sheet takes the
    // palette away, so it comes first.
    const QString sheet =
        ground.isValid()
            ? QString(QLatin1StringView("QLineEdit { background: ") + ground.name() + u'}')
            : QString();
    if (field.styleSheet() != sheet)
        field.setStyleSheet(sheet);
    QPalette palette = field.palette();
    palette.setColor(QPalette::Text, QColor::fromRgb(color));
    palette.setColor(QPalette::PlaceholderText, ground.isValid()
                                                    ? mixed(QColor::fromRgb(color), ground, 0.3)
                                                    : usual.color(QPalette::PlaceholderText));
    field.setPalette(palette);
}

QColor mixed(const QColor& first, const QColor& second, double part)
{
    const auto channel = [part](int a, int b) { return qRound(a + (b - a) * part); };
    return {channel(first.red(), second.red()), channel(first.green(), second.green()),
            channel(first.blue(), second.blue())};
}
