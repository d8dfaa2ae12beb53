#include "settings/StoredText.h"

#include <QStringConverter>

namespace {

using namespace Qt::StringLiterals;

struct Escape
{
    char letter;
    char16_t character;
};

constexpr Escape escapes[]{{'a', u'\a'}, {'b', u'\b'}, {'f', u'\f'}, {'n', u'\n'},
                           {'r', u'\r'}, {'t', u'\t'}, {'v', u'\v'}};

int digitOf(char c, int base)
{
    int digit = -1;
    if (c >= '0' && c <= '9')
        digit = c - '0';
    else if (c >= 'a' && c <= 'f')
        digit = c - 'a' + 10;
    else if (c >= 'A' && c <= 'F')
        digit = c - 'A' + 10;
    return digit < base ? digit : -1;
}

// Takes escapes apart. Bytes between them are UTF-8.
class Reader final
{
public:
    explicit Reader(QByteArrayView stored)
        : m_stored(stored)
    {
    }

    QString text()
    {
        while (m_at < m_stored.size()) {
            const char c = m_stored[m_at++];
            if (c == '\\' && m_at < m_stored.size())
                takeEscape();
            else if (c != '"')
                m_bytes += c;
        }
        flush();
        return m_text;
    }

private:
    void takeEscape()
    {
        const char c = m_stored[m_at];
        if (c == 'x') {
            ++m_at;
            return takeNumber(16);
        }
        if (digitOf(c, 8) >= 0)
            return takeNumber(8);
        ++m_at;
        for (const Escape& escape : escapes) {
            if (c == escape.letter)
                return put(escape.character);
        }
        m_bytes += c;
    }

    void takeNumber(int base)
    {
        char16_t number = 0;
        for (; m_at < m_stored.size() && digitOf(m_stored[m_at], base) >= 0; ++m_at)
            number = static_cast<char16_t>(number * base + digitOf(m_stored[m_at], base));
        put(number);
    }

    void put(char16_t character)
    {
        flush();
        m_text += QChar(character);
    }

    void flush()
    {
        m_text += QString::fromUtf8(m_bytes);
        m_bytes.clear();
    }

    QByteArrayView m_stored;
    qsizetype m_at = 0;
    QByteArray m_bytes;
    QString m_text;
};

bool mustBeNumber(QChar c)
{
    return c < u' ' || c == u'\x7f' || c == QChar::ByteOrderMark; // which is lost at a start
}

} // namespace

QByteArray toStoredText(const QString& text)
{
    QString stored(u'"');
    if (text.startsWith(u'@'))
        stored += u'@';
    bool isBehindNumber = false;
    for (const QChar c : text) {
        // A hexadecimal digit behind a number would be read as a part of it.
        const bool joins = isBehindNumber && c < u'\x7f' && digitOf(c.toLatin1(), 16) >= 0;
        isBehindNumber = mustBeNumber(c) || joins;
        if (isBehindNumber)
            stored += "\\x"_L1 + QString::number(c.unicode(), 16);
        else if (c == u'"' || c == u'\\')
            stored += QString(u'\\') + c;
        else
            stored += c;
    }
    return QString(stored + u'"').toUtf8();
}

QString fromStoredText(QByteArrayView stored)
{
    const QString text = Reader(stored).text();
    if (text.startsWith("@@"_L1))
        return text.mid(1);
    constexpr auto marked = "@String("_L1; // older files wrap a text with code 0 in it
    if (text.startsWith(marked) && text.endsWith(u')'))
        return text.mid(marked.size()).chopped(1);
    return text;
}
