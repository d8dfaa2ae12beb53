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

QString label(const TextStyle& style)
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

void MemoryView::setSelStart(qsizetype offset)
{
    m_start = std::clamp<qsizetype>(offset, 0, m_text.size());
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
    m_styles.remove(from, m_length);
    m_styles.insert(from, inserted.size(), m_style);
    m_text.replace(from, m_length, inserted);
    m_start += inserted.size();
    m_length = 0;
    raiseChange(from);
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
