#pragma once

#include "view/RichTextBox.h"

#include <QTextCharFormat>
#include <QTextCursor>
#include <QTextEdit>

// RichTextBox for the one line of a topic, on the toolkit's own rich text widget: the user can
// edit it unless it is locked. Its text may end in a line end; what stands behind that is not seen.
class RichTextBoxWidget final : public QTextEdit, public RichTextBox
{
    Q_OBJECT
public:
    // True: the key has been dealt with.
    using KeyFilter = std::function<bool(const QKeyEvent& event)>;

    explicit RichTextBoxWidget(QWidget* parent = nullptr);

    // While it says true the user can read and copy but not change the text.
    void setLockTest(std::function<bool()> locked) { m_locked = std::move(locked); }
    void setKeyFilter(KeyFilter filter) { m_keyFilter = std::move(filter); }

    QString Text() const override;
    void setText(const QString& text) override;
    qsizetype TextLength() const override { return Text().size(); }
    QString TextRange(qsizetype start, qsizetype length) const override;
    qsizetype SelStart() const override;
    void setSelStart(qsizetype offset) override;
    qsizetype SelLength() const override;
    void setSelLength(qsizetype length) override;
    QString SelText() const override { return TextRange(SelStart(), SelLength()); }
    void setSelText(const QString& text) override;

    QRgb SelColor() const override { return m_format.foreground().color().rgb(); }
    void setSelColor(QRgb color) override { m_format.setForeground(QColor::fromRgb(color)); }
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

    // What is read here is sent back when the topic changes: a picture stays its code.
    void InsertPicture(const InlinePicture& picture) override { setSelText(picture.code); }
    bool appendLine(const FormattedLine&) override { return false; }

    void beginEdit() override { m_insertion.beginEditBlock(); }
    void endEdit() override { m_insertion.endEditBlock(); }

Q_SIGNALS:
    void Click();

protected:
    bool event(QEvent* event) override;
    bool viewportEvent(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void inputMethodEvent(QInputMethodEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    QMimeData* createMimeDataFromSelection() const override;
    void insertFromMimeData(const QMimeData* source) override;

private:
    bool isLocked() const { return m_locked && m_locked(); }
    void heedLock();
    void showWhole(QPoint place) const;
    void keepToFirstLine();
    int positionOf(qsizetype offset) const;
    qsizetype offsetOf(int position) const;
    void select(int anchor, int position);

    QTextCursor m_insertion;
    QTextCharFormat m_format;
    KeyFilter m_keyFilter;
    std::function<bool()> m_locked;
};
