#include "support/MemoryView.h"

using namespace Qt::StringLiterals;

namespace {

QString withCrLf(QString text)
{
    text = text.left(text.indexOf(QChar(u'\0')));
    text.replace("\r\n"_L1, "\n"_L1);
    text.replace(u'\r', u'\n');
    return text.replace(u'\n', "\r\n"_L1);
}

QString label(const MemoryView::Style& style)
{
    QString text = "<"_L1 + QString::number(style.color & 0xffffff, 16).rightJustified(6, u'0');
    if (style.bold)
        text += " b"_L1;
    if (style.underline)
        text += " u"_L1;
    if (style.strikeThru)
        text += " s"_L1;
    return text + u'>';
}

} // namespace

void MemoryView::setText(const QString& text)
{
    m_start = 0;
    m_length = m_text.size();
    setSelText(text);
    m_start = 0;
}

QString MemoryView::TextRange(qsizetype start, qsizetype length) const
{
    const QString text = m_text.mid(start, length);
    m_charactersRead += text.size();
    return text;
}

void MemoryView::setSelStart(qsizetype offset)
{
    m_start = std::clamp<qsizetype>(offset, 0, m_text.size());
    if (m_start > 0 && m_text[m_start - 1] == u'\r')
        --m_start; // a line end is not parted
    m_length = 0;
}

void MemoryView::setSelLength(qsizetype length)
{
    m_length = std::clamp<qsizetype>(length, 0, m_text.size() - m_start);
}

void MemoryView::setSelText(const QString& text)
{
    const QString inserted = withCrLf(text);
    if (inserted.isEmpty() && m_length == 0)
        return;
    const qsizetype from = m_start;
    ++m_changes;
    replaceSelection(inserted);
    raiseChange(from);
}

void MemoryView::InsertPicture(const InlinePicture& picture)
{
    ++m_changes;
    replaceSelection(QString(pictureCharacter));
    m_pictures.insert(m_start - 1, picture.code);
    raiseChange(m_start - 1);
}

bool MemoryView::appendLine(const FormattedLine& line)
{
    if (!m_text.endsWith(u'\n'))
        return false;
    const auto outcome = forecast(line);
    if (!outcome)
        return false;
    ++m_linesAppended;
    setSelStart(m_text.size());
    const qsizetype start = m_start;
    const auto insert = [this](const FormattedLine::Look& look, const QString& text) {
        m_style = {look.color,      look.bold,        look.underline,
                   look.strikeThru, m_style.fontName, m_style.fontSize};
        replaceSelection(text);
    };
    for (std::size_t i = 0; i < line.runs.size(); ++i)
        insert(
            line.runs[i].look,
            line.text.sliced(line.runs[i].start, line.runEnd(i) - line.runs[i].start).toString());
    insert(line.lineEnd, u"\r\n"_s);
    if (outcome->picture) {
        m_start = start + outcome->start;
        m_length = outcome->length;
        const Style end = std::exchange(m_style, m_styles[m_start]);
        replaceSelection(QString(pictureCharacter));
        m_pictures.insert(m_start - 1, outcome->picture->code);
        m_style = end;
    }
    setSelStart(m_text.size());
    return true;
}

bool MemoryView::rearrange(qsizetype from, std::span<const Stretch> parts)
{
    const QString old = m_text.mid(from);
    const QList<Style> styles = m_styles.mid(from);
    const QMap<qsizetype, QString> pictures = m_pictures;
    const Style present = m_style;
    m_start = from;
    m_length = old.size();
    replaceSelection({});
    for (const Stretch& part : parts) {
        for (qsizetype i = part.start; i < part.start + part.length; ++i) {
            m_style = styles[i];
            replaceSelection(old[i]);
            if (pictures.contains(from + i))
                m_pictures.insert(m_start - 1, pictures.value(from + i));
        }
        if (part.picture) {
            m_style = present;
            replaceSelection(QString(pictureCharacter));
            m_pictures.insert(m_start - 1, part.picture->code);
        }
    }
    m_style = present;
    ++m_changes;
    raiseChange(from);
    return true;
}

void MemoryView::replaceSelection(const QString& text)
{
    m_styles.remove(m_start, m_length);
    m_styles.insert(m_start, text.size(), m_style);
    m_text.replace(m_start, m_length, text);
    QMap<qsizetype, QString> moved;
    for (auto it = m_pictures.cbegin(); it != m_pictures.cend(); ++it) {
        if (it.key() < m_start)
            moved.insert(it.key(), it.value());
        else if (it.key() >= m_start + m_length)
            moved.insert(it.key() + text.size() - m_length, it.value());
    }
    m_pictures = moved;
    m_start += text.size();
    m_length = 0;
}

QString MemoryView::runs(qsizetype from) const
{
    QString result;
    for (qsizetype i = from; i < m_text.size(); ++i) {
        if (i == from || !(m_styles[i] == m_styles[i - 1]))
            result += label(m_styles[i]);
        result += m_text[i];
    }
    return result;
}
