#include "text/ColorTables.h"

#include <algorithm>
#include <array>

namespace {

using namespace Qt::StringLiterals;

// The place is the number.
constexpr std::array<QRgb, 16> viewColors{
    qRgb(255, 255, 255), qRgb(0, 0, 0),     qRgb(0, 0, 127),   qRgb(0, 127, 0),
    qRgb(255, 0, 0),     qRgb(127, 0, 0),   qRgb(127, 0, 127), qRgb(255, 127, 0),
    qRgb(255, 255, 0),   qRgb(0, 255, 0),   qRgb(0, 0, 0),     qRgb(0, 255, 255),
    qRgb(0, 0, 255),     qRgb(255, 0, 255), qRgb(92, 92, 92),  qRgb(184, 184, 184)};

// Only the way back knows a colour for 10.
constexpr QRgb colorOfTen = qRgb(0, 148, 144);

constexpr std::array<InputColor, 15> palette{{
    {"1"_L1, "Black"_L1, qRgb(0, 0, 0)},
    {"2"_L1, "Dark Blue"_L1, qRgb(0, 0, 99)},
    {"3"_L1, "Green"_L1, qRgb(0, 99, 0)},
    {"4"_L1, "Red"_L1, qRgb(255, 0, 0)},
    {"5"_L1, "Brown"_L1, qRgb(99, 0, 0)},
    {"6"_L1, "Dark Pink"_L1, qRgb(99, 0, 99)},
    {"7"_L1, "Orange"_L1, qRgb(255, 160, 0)},
    {"8"_L1, "Yellow"_L1, qRgb(255, 255, 0)},
    {"9"_L1, "Light Green"_L1, qRgb(0, 255, 60)},
    {"10"_L1, "Dark Green"_L1, qRgb(0, 99, 99)},
    {"11"_L1, "Light Blue"_L1, qRgb(0, 255, 255)},
    {"12"_L1, "Dark Blue"_L1, qRgb(0, 0, 255)},
    {"13"_L1, "Light Pink"_L1, qRgb(230, 0, 255)},
    {"14"_L1, "Black n White"_L1, qRgb(99, 99, 99)},
    {"15"_L1, "White-Black Mix"_L1, qRgb(165, 165, 165)},
}};

bool isDigit(QChar c)
{
    return c >= u'0' && c <= u'9';
}

// Up to two digits at the front are taken off; how many they were.
int takeDigits(QStringView& text)
{
    int count = 0;
    while (count < 2 && !text.isEmpty() && isDigit(text.front())) {
        text = text.mid(1);
        ++count;
    }
    return count;
}

} // namespace

QRgb ColorToRGB(int number)
{
    const bool known = number >= 0 && number < static_cast<int>(viewColors.size());
    return known ? viewColors[static_cast<std::size_t>(number)] : qRgb(0, 0, 0);
}

int RGBToColor(QRgb color)
{
    if (color == colorOfTen)
        return 10;
    const auto* const found = std::ranges::find(viewColors, color);
    return found == viewColors.end() ? 0 : static_cast<int>(found - viewColors.begin());
}

bool IsColorSpec(QStringView text)
{
    if (text.isEmpty())
        return true;
    const int foreground = takeDigits(text);
    if (text.isEmpty())
        return true;
    if (text.front() != u',')
        return false;
    text = text.mid(1);
    const int background = takeDigits(text);
    return text.isEmpty() && (foreground > 0 || background > 0); // a lone comma is none
}

std::span<const InputColor> inputColors()
{
    return palette;
}

std::optional<QRgb> inputColorOf(const QString& code)
{
    if (code == "rainbow"_L1)
        return qRgb(0, 0, 0);
    const auto* const found =
        std::ranges::find_if(palette, [&](const InputColor& row) { return code == row.code; });
    return found == palette.end() ? std::nullopt : std::optional(found->value);
}
