#pragma once

#include <QSize>
#include <QString>

#include <algorithm>
#include <array>
#include <bitset>
#include <span>

struct InlinePicture;

// A text code and the picture that takes its place in a chat view.
struct Smiley
{
    int index;
    QLatin1StringView code;
    QSize size{18, 18}; // logical pixels

    // How the reader learns the code; one member keeps its own to itself.
    constexpr QLatin1StringView toolTip() const { return index == 83 ? QLatin1StringView() : code; }
    bool standsAt(QStringView text, qsizetype offset) const
    {
        if (text.size() - offset < code.size())
            return false;
        for (qsizetype i = 0; i < code.size(); ++i) {
            if (text[offset + i] != code[i])
                return false;
        }
        return true;
    }
    // Path of the drawing (SVG).
    QString picture() const;
};

namespace smileys {

using namespace Qt::StringLiterals;

// The order is that of the search: where codes overlap, the one that comes first here wins. Some
// longer codes stand behind a shorter one that they contain; they are never shown, and that is
// how it is wanted.
inline constexpr std::array<Smiley, 85> table{{
    {0, ":))"_L1},
    {1, ":(("_L1},
    {2, ";)"_L1},
    {3, ":D"_L1},
    {4, ";;)"_L1},
    {5, ":-/"_L1},
    {6, ":X"_L1},
    {7, R"(:">)"_L1},
    {8, ":P"_L1},
    {9, ":*"_L1},
    {10, ":O"_L1},
    {11, "X-("_L1},
    {12, ":>"_L1},
    {13, "B-)"_L1},
    {14, ":-S"_L1},
    {15, ">:)"_L1},
    {16, "ps2"_L1, {69, 16}},
    {18, ":|"_L1},
    {19, "/:-)"_L1},
    {20, ":-B"_L1},
    {21, "O:-)"_L1},
    {22, "=;"_L1},
    {23, "I-)"_L1},
    {24, "8-|"_L1},
    {25, ":-&"_L1},
    {26, ":-$"_L1},
    {27, "[-("_L1},
    {28, ":o)"_L1},
    {29, "8-}"_L1},
    {30, "(:|"_L1},
    {31, "=p~"_L1},
    {32, ":-?"_L1},
    {33, "#-o"_L1},
    {34, "=D>"_L1},
    {35, ":@)"_L1},
    {36, "3:-O"_L1},
    {37, ":(|)"_L1},
    {38, "~:>"_L1},
    {39, "@};-"_L1},
    {40, "%%-"_L1},
    {42, "(~~)"_L1},
    {43, "~o)"_L1},
    {44, "-:)"_L1},
    {45, "8-x"_L1},
    {46, ">-)"_L1},
    {47, ":-L"_L1},
    {48, "<):)"_L1},
    {49, "[-o<"_L1},
    {50, "@-)"_L1},
    {51, "$-)"_L1},
    {52, R"(:-")"_L1},
    {53, ":^o"_L1},
    {54, "B-("_L1},
    {55, ":)>-"_L1},
    {56, "[-x"_L1},
    {57, R"(\:D/)"_L1},
    {58, ">:D<"_L1, {42, 18}},
    {59, "o->"_L1},
    {60, "o=>"_L1},
    {61, "o-+"_L1},
    {62, "(%)"_L1},
    {64, "(beer)"_L1, {57, 15}},
    {65, "=))"_L1},
    {66, "L-)"_L1},
    {67, ":-SS"_L1},
    {68, "<:-P"_L1},
    {69, ">:/"_L1},
    {70, ";))"_L1},
    {71, ":-w"_L1},
    {72, ":-<"_L1},
    {73, ">:P"_L1},
    {74, "(*)"_L1},
    {75, "#:-S"_L1},
    {76, ":V)"_L1},
    {77, "=(("_L1},
    {78, ":-@"_L1},
    {79, ":-j"_L1},
    {80, "^:)^"_L1},
    {81, "(c)"_L1},
    {82, "(b)"_L1},
    {83, "brb"_L1},
    {86, ":)"_L1},
    {87, ":("_L1},
    {88, "(?)"_L1},
    {89, "(K)"_L1},
}};

// The palette shows one picture more. What it is called there is no code.
struct Extra
{
    QLatin1StringView name{"=:)"_L1};
    QSize size{18, 18};
    QString picture() const;
};
inline constexpr Extra extra;

inline constexpr qsizetype longestCode =
    std::ranges::max(table, {}, [](const Smiley& row) { return row.code.size(); }).code.size();

// Places in the table.
using Rows = std::bitset<table.size()>;

// What stands in a view for a row of the table.
const InlinePicture& inlinePicture(const Smiley& smiley);

// The first place from an offset on where any code begins, -1 without one.
qsizetype findCode(QStringView text, qsizetype from);

// The code that this text is, if it shows its own picture; nullptr if it is none or is broken up
// by another one in it.
const Smiley* ownPicture(QStringView text);

// The rows whose code begins with a character, in the order of the table.
std::span<const quint8> rowsBeginningWith(QChar c);

} // namespace smileys
