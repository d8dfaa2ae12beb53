#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

// How letters stand on the wire. Today's way reads each line for itself, as UTF-8 when it is that
// and else as Windows-1252, and writes UTF-8; the other way is Windows-1252 in both directions.
class Charset final
{
public:
    enum class Kind { Today, Windows1252 };

    explicit Charset(Kind kind = Kind::Today)
        : m_kind(kind)
    {
    }
    // By the word of the setting connect/charset; one that is not known is today's.
    static Charset named(const QString& word);

    QString decode(const QByteArray& line) const;
    // Split at each line feed and decoded; the piece behind the last one included.
    QStringList linesOf(const QByteArray& bytes) const;
    QByteArray encode(const QString& text) const;
    qsizetype sizeOf(QStringView text) const; // in bytes, as encoded

private:
    Kind m_kind;
};
