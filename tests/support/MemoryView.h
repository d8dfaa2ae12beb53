#pragma once

#include "view/RichTextBox.h"

#include <QtCore>

// A RichTextBox without a widget: one character, one set of attributes. For tests that look at
// runs and colours.
class MemoryView final : public RichTextBox
{
public:
    struct Style
    {
        QRgb color = 0;
        bool bold = false;
        bool underline = false;
        bool strikeThru = false;
        QString fontName;
        int fontSize = 0;
        bool operator==(const Style&) const = default;
    };

    QString Text() const override { return TextRange(0, m_text.size()); }
    void setText(const QString& text) override;
    qsizetype TextLength() const override { return m_text.size(); }
    QString TextRange(qsizetype start, qsizetype length) const override;
    qsizetype SelStart() const override { return m_start; }
    void setSelStart(qsizetype offset) override;
    qsizetype SelLength() const override { return m_length; }
    void setSelLength(qsizetype length) override;
    QString SelText() const override { return m_text.mid(m_start, m_length); }
    void setSelText(const QString& text) override;
    QRgb SelColor() const override { return m_style.color; }
    void setSelColor(QRgb color) override { m_style.color = color; }
    bool SelBold() const override { return m_style.bold; }
    void setSelBold(bool on) override { m_style.bold = on; }
    bool SelUnderline() const override { return m_style.underline; }
    void setSelUnderline(bool on) override { m_style.underline = on; }
    bool SelStrikeThru() const override { return m_style.strikeThru; }
    void setSelStrikeThru(bool on) override { m_style.strikeThru = on; }
    QString SelFontName() const override { return m_style.fontName; }
    void setSelFontName(const QString& name) override { m_style.fontName = name; }
    int SelFontSize() const override { return m_style.fontSize; }
    void setSelFontSize(int points) override { m_style.fontSize = points; }
    void InsertPicture(const InlinePicture& picture) override;
    bool appendLine(const FormattedLine& line) override;
    bool rearrange(qsizetype from, std::span<const Stretch> parts) override;
    void beginEdit() override {}
    void endEdit() override {}

    const Style& styleAt(qsizetype offset) const { return m_styles[offset]; }
    // The pictures from the start of the text on, by their codes.
    QStringList pictures() const { return m_pictures.values(); }
    int changes() const { return m_changes; }
    // Lines that came in one change.
    int linesAppended() const { return m_linesAppended; }
    // How much of the text has been read so far.
    qsizetype charactersRead() const { return m_charactersRead; }
    // Text and styles from an offset on in one readable line: <color b u s>text for every run.
    QString runs(qsizetype from = 0) const;

private:
    void replaceSelection(const QString& text);

    QString m_text;
    QList<Style> m_styles;
    QMap<qsizetype, QString> m_pictures;
    Style m_style;
    qsizetype m_start = 0;
    qsizetype m_length = 0;
    int m_linesAppended = 0;
    int m_changes = 0;
    mutable qsizetype m_charactersRead = 0;
};
