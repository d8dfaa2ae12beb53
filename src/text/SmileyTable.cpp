#include "text/SmileyTable.h"

#include "view/RichTextBox.h"

#include <vector>

namespace {

using namespace Qt::StringLiterals;

constexpr std::size_t characters = 128;

struct ByFirstCharacter
{
    std::array<quint8, smileys::table.size()> rows{};
    std::array<quint8, characters + 1> start{}; // the last one is the end
};

constexpr ByFirstCharacter byFirstCharacter = [] {
    ByFirstCharacter result;
    quint8 count = 0;
    for (std::size_t c = 0; c < characters; ++c) {
        result.start[c] = count;
        for (std::size_t row = 0; row < smileys::table.size(); ++row) {
            if (static_cast<std::size_t>(smileys::table[row].code[0].toLatin1()) == c)
                result.rows[count++] = static_cast<quint8>(row);
        }
    }
    result.start[characters] = count;
    return result;
}();
static_assert(byFirstCharacter.start[characters] == smileys::table.size());

// For each first character the second ones that go on to a code, one bit each. Hardly a pair of
// letters in ordinary text is among them.
struct Beginnings
{
    std::array<std::array<quint64, 2>, characters> seconds{};

    bool contain(char16_t first, char16_t second) const
    {
        return first < characters && second < characters &&
               (seconds[first][second / 64] >> (second % 64) & 1) != 0;
    }
};

constexpr Beginnings beginnings = [] {
    Beginnings result;
    for (const Smiley& smiley : smileys::table) {
        const auto first = static_cast<std::size_t>(smiley.code[0].toLatin1());
        const auto second = static_cast<std::size_t>(smiley.code[1].toLatin1());
        result.seconds[first][second / 64] |= quint64{1} << (second % 64);
    }
    return result;
}();

constexpr bool contains(QLatin1StringView text, QLatin1StringView part)
{
    for (qsizetype at = 0; at + part.size() <= text.size(); ++at) {
        qsizetype equal = 0;
        while (equal < part.size() && text[at + equal] == part[equal])
            ++equal;
        if (equal == part.size())
            return true;
    }
    return false;
}

// The rows that a row before them breaks up.
constexpr std::array<bool, smileys::table.size()> brokenUp = [] {
    std::array<bool, smileys::table.size()> result{};
    for (std::size_t row = 0; row < result.size(); ++row) {
        for (std::size_t earlier = 0; earlier < row; ++earlier)
            result[row] |= contains(smileys::table[row].code, smileys::table[earlier].code);
    }
    return result;
}();

static_assert(std::ranges::none_of(smileys::table,
                                   [](const Smiley& smiley) {
                                       return smiley.code.size() < 2 ||
                                              contains(smiley.code, " "_L1);
                                   }),
              "codes have two characters or more, and no blank");

} // namespace

const InlinePicture& smileys::inlinePicture(const Smiley& smiley)
{
    static const std::vector<InlinePicture> pictures = [] {
        std::vector<InlinePicture> result;
        for (const Smiley& row : table)
            result.push_back({row.code, row.picture(), row.size});
        return result;
    }();
    return pictures[static_cast<std::size_t>(&smiley - table.data())];
}

qsizetype smileys::findCode(QStringView text, qsizetype from)
{
    const char16_t* const characters = text.utf16();
    for (qsizetype at = from; at + 1 < text.size(); ++at) {
        if (!beginnings.contain(characters[at], characters[at + 1]))
            continue;
        for (const quint8 row : rowsBeginningWith(text[at])) {
            if (table[row].standsAt(text, at))
                return at;
        }
    }
    return -1;
}

const Smiley* smileys::ownPicture(QStringView text)
{
    for (const quint8 row : rowsBeginningWith(text.front())) {
        if (text == table[row].code)
            return brokenUp[row] ? nullptr : &table[row];
    }
    return nullptr;
}

QString Smiley::picture() const
{
    return u":/smileys/%1.svg"_s.arg(index, 2, 10, QChar(u'0'));
}

QString smileys::Extra::picture() const
{
    return u":/smileys/47x.svg"_s;
}

std::span<const quint8> smileys::rowsBeginningWith(QChar c)
{
    const std::size_t place = c.unicode();
    if (place >= characters)
        return {};
    const std::size_t start = byFirstCharacter.start[place];
    return std::span(byFirstCharacter.rows)
        .subspan(start, byFirstCharacter.start[place + 1] - start);
}
