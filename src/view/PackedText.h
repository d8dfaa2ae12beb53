#pragma once

#include <QString>

#include <string>
#include <variant>

// Text in one byte a character as long as it allows that, and in two from then on. It holds no
// code 0: in one byte that code stands for QChar::ObjectReplacementCharacter.
class PackedText final
{
public:
    qsizetype size() const;
    QString mid(qsizetype from, qsizetype length) const;
    void replace(qsizetype from, qsizetype length, QStringView text);
    void append(QStringView text);
    void append(const PackedText& text);
    // Gives back what was reserved for growing.
    void squeeze();

private:
    using Narrow = std::string;
    using Wide = std::u16string;

    void widen();

    std::variant<Narrow, Wide> m_text;
};
