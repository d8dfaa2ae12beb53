#pragma once

#include <QByteArray>
#include <QByteArrayView>

#include <optional>

// The text of a profile file: sections, keys and values, all of them UTF-8. Names are compared
// without case, of a repeated key the first counts, and what stands before the first section, is a
// comment (";" or "#") or has no "=" means nothing. Writing changes the value that is written and
// not one byte beside it.
class ProfileText final
{
public:
    explicit ProfileText(QByteArray text)
        : m_text(std::move(text))
    {
    }

    // Without the blanks around it.
    std::optional<QByteArray> value(QByteArrayView section, QByteArrayView key) const;
    // The value is one line. What is new goes to the end of its section.
    void setValue(QByteArrayView section, QByteArrayView key, QByteArrayView value);

    const QByteArray& text() const { return m_text; }

private:
    struct Span
    {
        qsizetype from;
        qsizetype to;
    };
    struct Search
    {
        std::optional<Span> value;
        std::optional<qsizetype> endOfSection; // behind its last line that is not blank
    };

    Search search(QByteArrayView section, QByteArrayView key) const;
    Span trimmed(Span span) const;
    QByteArrayView view(Span span) const;
    QByteArray lineEnd() const;

    QByteArray m_text;
};
