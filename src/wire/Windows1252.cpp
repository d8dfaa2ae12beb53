#include "wire/Windows1252.h"

#include <array>

namespace {

constexpr int first = 0x80;

// Bytes 0x80 to 0x9F; every other byte is its own code point.
constexpr std::array<char16_t, 32> upper{
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

constexpr bool isUpper(uint code)
{
    return code >= first && code < first + upper.size();
}

char toByte(char16_t code)
{
    if (code < 0x100 && !isUpper(code))
        return static_cast<char>(code);
    for (std::size_t i = 0; i < upper.size(); ++i) {
        if (upper[i] == code)
            return static_cast<char>(first + i);
    }
    return '?';
}

} // namespace

QString fromWindows1252(const QByteArray& bytes)
{
    QString text = QString::fromLatin1(bytes);
    for (QChar& c : text) {
        if (isUpper(c.unicode()))
            c = QChar(upper[c.unicode() - first]);
    }
    return text;
}

QByteArray toWindows1252(const QString& text)
{
    QByteArray bytes(text.size(), Qt::Uninitialized);
    for (qsizetype i = 0; i < text.size(); ++i)
        bytes[i] = toByte(text[i].unicode());
    return bytes;
}
