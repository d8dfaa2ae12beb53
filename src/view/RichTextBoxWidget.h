#pragma once

#include "view/RichTextBox.h"

#include <QTextCharFormat>
#include <QTextCursor>
#include <QTimer>
#include <QWidget>

class QTextBlock;

// RichTextBox on the toolkit's own rich text widget, for the topic: a text that can be typed, too.
// Paints at most once a frame however often it is written.
class RichTextBoxWidget final : public QWidget, public RichTextBox
{
    Q_OBJECT
public:
    // True: the key has been dealt with.
    using KeyFilter = std::function<bool(const QKeyEvent& event)>;

    explicit RichTextBoxWidget(QWidget* parent = nullptr);
    ~RichTextBoxWidget() override;
    Q_DISABLE_COPY_MOVE(RichTextBoxWidget)

    void setSingleLine();
    // While it says true the user can read and copy but not change the text.
    void setLockTest(std::function<bool()> locked) { m_locked = std::move(locked); }
    void setKeyFilter(KeyFilter filter) { m_keyFilter = std::move(filter); }

    QString Text() const override;
    void setText(const QString& text) override;
    qsizetype TextLength() const override;
    QString TextRange(qsizetype start, qsizetype length) const override;
    qsizetype SelStart() const override;
    void setSelStart(qsizetype offset) override;
    qsizetype SelLength() const override;
    void setSelLength(qsizetype length) override;
    QString SelText() const override;
    void setSelText(const QString& text) override;

    QRgb SelColor() const override { return m_format.foreground().color().rgb(); }
    void setSelColor(QRgb color) override;
    bool SelBold() const override { return m_format.fontWeight() == QFont::Bold; }
    void setSelBold(bool on) override;
    bool SelUnderline() const override { return m_format.fontUnderline(); }
    void setSelUnderline(bool on) override { m_format.setFontUnderline(on); }
    bool SelStrikeThru() const override { return m_format.fontStrikeOut(); }
    void setSelStrikeThru(bool on) override { m_format.setFontStrikeOut(on); }
    QString SelFontName() const override;
    void setSelFontName(const QString& name) override;
    int SelFontSize() const override { return static_cast<int>(m_format.fontPointSize()); }
    void setSelFontSize(int points) override;

    void InsertPicture(const InlinePicture& picture) override;

    void beginEdit() override;
    void endEdit() override;

    // The offset under a point of the widget, -1 outside the text.
    qsizetype offsetAt(const QPoint& point) const;

Q_SIGNALS:
    void Click();
    void DblClick();
    void MouseMove(const QPoint& point);
    void MouseUp(const QPoint& point);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    class Edit;

    QPoint placeOf(const QMouseEvent& event) const;
    void finishSelection(const QMouseEvent& event);
    int positionOf(qsizetype offset) const;
    qsizetype offsetOf(int position) const;
    void select(int anchor, int position);
    void holdPainting();
    void showFrame();
    void followEnd();
    void keepToFirstLine();

    Edit* m_edit;
    QTextCursor m_insertion;
    QTextCharFormat m_format;
    QTimer m_frame;
    KeyFilter m_keyFilter;
    std::function<bool()> m_locked;
    bool m_atEnd = true;
    bool m_singleLine = false;
};
