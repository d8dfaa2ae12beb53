#include "text/SmileyTable.h"

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

} // namespace

QString Smiley::picture() const
{
    return u":/smileys/%1.svg"_s.arg(index, 2, 10, QChar(u'0'));
}

QString smileys::extraPicture()
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
