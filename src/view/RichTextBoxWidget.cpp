#include "view/RichTextBoxWidget.h"

#include "common/TextHelpers.h"
#include "platform/PlainText.h"

#include <QKeyEvent>
#include <QMimeData>
#include <QMouseEvent>
#include <QPainter>
#include <QScrollBar>
#include <QTextBlock>
#include <QToolTip>

#include <algorithm>

namespace {

using namespace Qt::StringLiterals;

constexpr int fadeWidth = 28;
constexpr int cornerRadius = 6;
constexpr Qt::TextInteractionFlags readingOnly =
    Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard;

} // namespace

RichTextBoxWidget::RichTextBoxWidget(QWidget* parent)
    : QTextEdit(parent)
    , m_insertion(document())
{
    setUndoRedoEnabled(false);
    setAcceptRichText(false);
    setLineWrapMode(NoWrap);
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setTabChangesFocus(true);
    document()->setDocumentMargin(6);
    connect(this, &QTextEdit::cursorPositionChanged, this, &RichTextBoxWidget::keepToFirstLine);
    // The empty line behind the writer's line end would let the one that counts slide up.
    QScrollBar* down = verticalScrollBar();
    connect(down, &QScrollBar::rangeChanged, down, [down] { down->setMaximum(0); });
}

// The writer ends its text with a line end; nobody would see what is typed behind it.
void RichTextBoxWidget::keepToFirstLine()
{
    QTextCursor caret = textCursor();
    if (caret.hasSelection() || caret.blockNumber() == 0)
        return;
    caret.movePosition(QTextCursor::Start);
    caret.movePosition(QTextCursor::EndOfBlock);
    setTextCursor(caret);
}

QString RichTextBoxWidget::Text() const
{
    return document()->toRawText().replace(QChar::ParagraphSeparator, "\r\n"_L1);
}

void RichTextBoxWidget::setText(const QString& text)
{
    m_insertion.select(QTextCursor::Document);
    setSelText(text);
    m_insertion.setPosition(0);
}

QString RichTextBoxWidget::TextRange(qsizetype start, qsizetype length) const
{
    return Text().mid(start, length);
}

qsizetype RichTextBoxWidget::SelStart() const
{
    return offsetOf(m_insertion.selectionStart());
}

void RichTextBoxWidget::setSelStart(qsizetype offset)
{
    const int position = positionOf(offset);
    select(position, position);
}

qsizetype RichTextBoxWidget::SelLength() const
{
    return offsetOf(m_insertion.selectionEnd()) - offsetOf(m_insertion.selectionStart());
}

void RichTextBoxWidget::setSelLength(qsizetype length)
{
    const int start = m_insertion.selectionStart();
    select(start, positionOf(offsetOf(start) + std::max<qsizetype>(length, 0)));
}

void RichTextBoxWidget::setSelText(const QString& text)
{
    const QString inserted = withLineFeeds(beforeNul(text));
    if (inserted.isEmpty() && !m_insertion.hasSelection())
        return;
    const qsizetype from = SelStart();
    m_insertion.insertText(inserted, m_format);
    raiseChange(from);
}

void RichTextBoxWidget::setSelBold(bool on)
{
    m_format.setFontWeight(on ? QFont::Bold : QFont::Normal);
}

QString RichTextBoxWidget::SelFontName() const
{
    return m_format.fontFamilies().toStringList().value(0);
}

void RichTextBoxWidget::setSelFontName(const QString& name)
{
    m_format.setFontFamilies({beforeNul(name)});
}

void RichTextBoxWidget::setSelFontSize(int points)
{
    m_format.setFontPointSize(std::max(points, 1)); // a size of 0 cannot be drawn
}

bool RichTextBoxWidget::event(QEvent* event)
{
    heedLock();
    return QTextEdit::event(event);
}

bool RichTextBoxWidget::viewportEvent(QEvent* event)
{
    heedLock();
    if (event->type() != QEvent::ToolTip)
        return QTextEdit::viewportEvent(event);
    showWhole(static_cast<QHelpEvent*>(event)->globalPos());
    return true;
}

void RichTextBoxWidget::showWhole(QPoint place) const
{
    const bool isCut = horizontalScrollBar()->maximum() > 0;
    const QString text = forShow(document()->toPlainText().trimmed()).toHtmlEscaped();
    QToolTip::showText(place, isCut ? QString("<p>"_L1 + text + "</p>"_L1) : QString(), viewport());
}

// Fades at an edge behind which the text goes on.
void RichTextBoxWidget::paintEvent(QPaintEvent* event)
{
    QTextEdit::paintEvent(event);
    const QScrollBar* bar = horizontalScrollBar();
    const QColor paper = palette().color(QPalette::Base);
    QColor clear = paper;
    clear.setAlpha(0);
    QPainter painter(viewport());
    const auto fade = [&](int from, int to) {
        QLinearGradient gradient(from, 0, to, 0);
        gradient.setColorAt(0, clear);
        gradient.setColorAt(0.8, paper);
        const QRect room = viewport()->rect().adjusted(0, cornerRadius, 0, -cornerRadius);
        painter.fillRect(QRect(std::min(from, to), room.top(), fadeWidth, room.height()), gradient);
    };
    const int margin = qRound(document()->documentMargin()); // no text is lost there
    if (bar->value() + margin < bar->maximum())
        fade(viewport()->width() - fadeWidth, viewport()->width());
    if (bar->value() > margin)
        fade(fadeWidth, 0);
}

// Keys are not all that changes text: shortcuts, input methods, drops and selections that are
// dragged away do, too. None of them works on a box that is there to be read.
void RichTextBoxWidget::heedLock()
{
    const Qt::TextInteractionFlags wanted = isLocked() ? readingOnly : Qt::TextEditorInteraction;
    if (textInteractionFlags() != wanted)
        setTextInteractionFlags(wanted);
}

void RichTextBoxWidget::keyPressEvent(QKeyEvent* event)
{
    if (!m_keyFilter || !m_keyFilter(*event))
        QTextEdit::keyPressEvent(event);
}

// The toolkit lets these pass for the sake of selecting by keyboard.
void RichTextBoxWidget::inputMethodEvent(QInputMethodEvent* event)
{
    if (isLocked())
        event->ignore();
    else
        QTextEdit::inputMethodEvent(event);
}

// A click into a selection gives it up only here, so what it comes to is known afterwards: the
// user's own selection is the selection that everybody sees.
void RichTextBoxWidget::mouseReleaseEvent(QMouseEvent* event)
{
    QTextEdit::mouseReleaseEvent(event);
    m_insertion = textCursor();
    if (event->button() == Qt::LeftButton)
        Q_EMIT Click();
}

QMimeData* RichTextBoxWidget::createMimeDataFromSelection() const
{
    auto* data = new QMimeData;
    data->setText(textCursor().selectedText().replace(QChar::ParagraphSeparator, u'\n'));
    return data;
}

void RichTextBoxWidget::insertFromMimeData(const QMimeData* source)
{
    // A pasted line end would break the one line that this is.
    insertPlainText(source->text().simplified());
}

int RichTextBoxWidget::positionOf(qsizetype offset) const
{
    QTextBlock block = document()->begin();
    // A block's length counts its end once.
    for (; block.next().isValid() && offset > block.length(); block = block.next())
        offset -= block.length() + 1;
    return block.position() + std::min(static_cast<int>(offset), block.length() - 1);
}

qsizetype RichTextBoxWidget::offsetOf(int position) const
{
    return position + document()->findBlock(position).blockNumber();
}

void RichTextBoxWidget::select(int anchor, int position)
{
    m_insertion.setPosition(anchor);
    m_insertion.setPosition(position, QTextCursor::KeepAnchor);
    setTextCursor(m_insertion);
}
