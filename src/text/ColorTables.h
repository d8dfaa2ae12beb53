#pragma once

#include <QRgb>
#include <QString>
#include <QStringView>

#include <optional>
#include <span>

// What a line begins with; a bare colour character brings it back.
inline constexpr QRgb DefaultTextColor = qRgb(0, 0, 0);

// What a colour number means in a chat view; unknown ones are black. 10 is unknown here, though
// RGBToColor knows its colour.
QRgb ColorToRGB(int number);

// The number of a colour, 0 for one that has none.
int RGBToColor(QRgb color);

// Whether a text can stand behind the colour character: empty, or up to two digits, a comma, and
// up to two digits more.
bool IsColorSpec(QStringView text);

// One colour of the user's own text as the palette offers it. The values differ from those of the
// views on purpose: they are only for showing what is being typed.
struct InputColor
{
    QLatin1StringView code;
    QLatin1StringView label;
    QRgb value;
};

// The rows of the palette, in its order.
std::span<const InputColor> inputColors();

// The value of a code; it also knows "rainbow", which the palette does not offer. None for others.
std::optional<QRgb> inputColorOf(const QString& code);
