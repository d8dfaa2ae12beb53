#include "view/PackedText.h"

#include <algorithm>

namespace {

constexpr char16_t placeholder = QChar::ObjectReplacementCharacter;

bool isNarrow(char16_t c)
{
    return c <= 0xff || c == placeholder;
}

char narrowed(char16_t c)
{
    return c == placeholder ? '\0' : static_cast<char>(c);
}

} // namespace

qsizetype PackedText::size() const
{
    return std::visit([](const auto& text) { return static_cast<qsizetype>(text.size()); }, m_text);
}

QString PackedText::mid(qsizetype from, qsizetype length) const
{
    if (const auto* wide = std::get_if<Wide>(&m_text))
        return QString::fromUtf16(wide->data() + from, length);
    QString text = QString::fromLatin1(std::get<Narrow>(m_text).data() + from, length);
    if (text.contains(QChar(u'\0')))
        text.replace(QChar(u'\0'), QChar(placeholder));
    return text;
}

bool PackedText::beginsWith(QStringView text) const
{
    return read(0, text.size(), [text](const auto* kept, qsizetype) {
        return std::equal(
            text.utf16(), text.utf16() + text.size(), kept, [](char16_t c, auto keptAs) {
                return sizeof keptAs == 1 && keptAs == 0 ? c == placeholder : c == keptAs;
            });
    });
}

qsizetype PackedText::bytes() const
{
    return std::visit(
        [](const auto& text) {
            return static_cast<qsizetype>(text.capacity() * sizeof(text.front()));
        },
        m_text);
}

void PackedText::replace(qsizetype from, qsizetype length, QStringView text)
{
    const char16_t* begin = text.utf16();
    const char16_t* end = begin + text.size();
    if (std::holds_alternative<Narrow>(m_text) && !std::all_of(begin, end, isNarrow))
        widen();
    if (auto* wide = std::get_if<Wide>(&m_text)) {
        wide->replace(from, length, begin, text.size());
        return;
    }
    auto& narrow = std::get<Narrow>(m_text);
    narrow.replace(from, length, text.size(), '\0');
    std::transform(begin, end, narrow.begin() + from, narrowed);
}

void PackedText::append(QStringView text)
{
    auto* narrow = std::get_if<Narrow>(&m_text);
    if (!narrow || !QtPrivate::isLatin1(text)) {
        replace(size(), 0, text);
        return;
    }
    const auto before = narrow->size();
    narrow->resize(before + text.size());
    std::transform(text.utf16(), text.utf16() + text.size(), narrow->data() + before,
                   [](char16_t c) { return static_cast<char>(c); });
}

void PackedText::append(const PackedText& text)
{
    append(text.mid(0, text.size()));
}

void PackedText::squeeze()
{
    std::visit([](auto& text) { text.shrink_to_fit(); }, m_text);
}

void PackedText::widen()
{
    const QString text = mid(0, size());
    m_text = Wide(reinterpret_cast<const char16_t*>(text.utf16()), text.size());
}
