#include "wire/Charset.h"

#include "wire/Windows1252.h"

using namespace Qt::StringLiterals;

Charset Charset::named(const QString& word)
{
    const bool isOld = word.trimmed().compare("windows-1252"_L1, Qt::CaseInsensitive) == 0;
    return Charset(isOld ? Kind::Windows1252 : Kind::Today);
}

QString Charset::decode(const QByteArray& line) const
{
    return m_kind == Kind::Today && line.isValidUtf8() ? QString::fromUtf8(line)
                                                       : fromWindows1252(line);
}

QStringList Charset::linesOf(const QByteArray& bytes) const
{
    // No character of UTF-8 has a line feed in it: when all of it is valid, each line is.
    if (m_kind == Kind::Windows1252 || bytes.isValidUtf8())
        return decode(bytes).split(u'\n');
    QStringList lines;
    for (const QByteArray& line : bytes.split('\n'))
        lines += decode(line);
    return lines;
}

QByteArray Charset::encode(const QString& text) const
{
    return m_kind == Kind::Today ? text.toUtf8() : toWindows1252(text);
}

qsizetype Charset::sizeOf(QStringView text) const
{
    return m_kind == Kind::Today ? text.toUtf8().size() : text.size();
}
