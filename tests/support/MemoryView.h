#pragma once

#include "view/RichTextBox.h"
#include "view/TextStyle.h"

#include <QtCore>

// A RichTextBox without a widget: one character, one set of attributes. For tests that look at
// runs and colours.
class MemoryView final : public RichTextBox
{
public:
    QString Text() const override { return m_text; }
    void setText(const QString& text) override;
    qsizetype TextLength() const override { return m_text.size(); }
    QString TextRange(qsizetype start, qsizetype length) const override
    {
        return m_text.mid(start, length);
    }
    qsizetype SelStart() const override { return m_start; }
    void setSelStart(qsizetype offset) override;
    qsizetype SelLength() const override { return m_length; }
    void setSelLength(qsizetype length) override;
    QString SelText() const override { return TextRange(m_start, m_length); }
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
    void InsertPicture(const InlinePicture&) override { setSelText(QString(pictureCharacter)); }
    bool appendLine(const FormattedLine&) override { return false; }
    void beginEdit() override {}
    void endEdit() override {}

    const TextStyle& styleAt(qsizetype offset) const { return m_styles[offset]; }
    // Text and styles from an offset on in one readable line: <color b u s>text for every run.
    QString runs(qsizetype from = 0) const;

private:
    QString m_text;
    QList<TextStyle> m_styles;
    TextStyle m_style;
    qsizetype m_start = 0;
    qsizetype m_length = 0;
};
