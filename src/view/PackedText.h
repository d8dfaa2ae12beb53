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
    bool beginsWith(QStringView text) const; // which is not longer
    qsizetype bytes() const;                 // of memory
    void replace(qsizetype from, qsizetype length, QStringView text);
    void append(QStringView text);
    void append(const PackedText& text);
    // Calls a function with the characters of a part: const uchar* or const char16_t*, as they are
    // kept, and how many.
    template<typename Read>
    auto read(qsizetype from, qsizetype length, Read read) const
    {
        if (const auto* wide = std::get_if<Wide>(&m_text))
            return read(wide->data() + from, length);
        const char* narrow = std::get<Narrow>(m_text).data() + from;
        return read(reinterpret_cast<const uchar*>(narrow), length);
    }
    // Gives back what was reserved for growing.
    void squeeze();

private:
    using Narrow = std::string;
    using Wide = std::u16string;

    void widen();

    std::variant<Narrow, Wide> m_text;
};
