#include "view/RichTextBoxWidget.h"

#include "common/TextHelpers.h"

#include <QAbstractTextDocumentLayout>
#include <QKeyEvent>
#include <QMimeData>
#include <QMouseEvent>
#include <QPainter>
#include <QScrollBar>
#include <QSvgRenderer>
#include <QTextBlock>
#include <QTextEdit>
#include <QVBoxLayout>

#include <algorithm>

namespace {

using namespace Qt::StringLiterals;

constexpr int frameMilliseconds = 16;
constexpr int pictureType = QTextFormat::UserObject + 1;
constexpr Qt::TextInteractionFlags readingOnly =
    Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard;

enum PictureProperty {
    CodeProperty = QTextFormat::UserProperty + 1,
    ResourceProperty,
    SizeProperty,
};

// Draws a picture at the size of its row and the resolution of the screen.
class PictureObject final : public QObject, public QTextObjectInterface
{
    Q_OBJECT
    Q_INTERFACES(QTextObjectInterface)
public:
    using QObject::QObject;

    QSizeF intrinsicSize(QTextDocument*, int, const QTextFormat& format) override
    {
        return format.property(SizeProperty).toSize();
    }

    void drawObject(QPainter* painter, const QRectF& rectangle, QTextDocument*, int,
                    const QTextFormat& format) override
    {
        QSvgRenderer(format.property(ResourceProperty).toString()).render(painter, rectangle);
    }
};

QString normalisedLineEnds(QString text)
{
    text.replace("\r\n"_L1, "\n"_L1);
    text.replace(u'\r', u'\n');
    return text;
}

} // namespace

class RichTextBoxWidget::Edit final : public QTextEdit
{
public:
    using Released = std::function<void(const QMouseEvent& event)>;

    Edit(RichTextBoxWidget* box, Released released)
        : QTextEdit(box)
        , m_box(*box)
        , m_released(std::move(released))
    {
    }

protected:
    bool event(QEvent* event) override
    {
        heedLock();
        return QTextEdit::event(event);
    }

    bool viewportEvent(QEvent* event) override
    {
        heedLock();
        return QTextEdit::viewportEvent(event);
    }

    // The toolkit lets these pass for the sake of selecting by keyboard.
    void inputMethodEvent(QInputMethodEvent* event) override
    {
        if (isLocked())
            event->ignore();
        else
            QTextEdit::inputMethodEvent(event);
    }

    // A click into a selection gives it up only here, so what it comes to is known afterwards.
    void mouseReleaseEvent(QMouseEvent* event) override
    {
        QTextEdit::mouseReleaseEvent(event);
        m_released(*event);
    }

    // Copying a picture gives its code, and pasting brings plain text only.
    QMimeData* createMimeDataFromSelection() const override
    {
        QString text;
        const QTextCursor selection = textCursor();
        QTextCursor reader(document());
        for (int at = selection.selectionStart(); at < selection.selectionEnd(); ++at) {
            const QChar c = document()->characterAt(at);
            if (c == pictureCharacter) {
                reader.setPosition(at + 1);
                text += reader.charFormat().property(CodeProperty).toString();
            } else {
                text += c == QChar::ParagraphSeparator ? QChar(u'\n') : c;
            }
        }
        auto* data = new QMimeData;
        data->setText(text);
        return data;
    }

    void insertFromMimeData(const QMimeData* source) override
    {
        // A pasted line end would break the one line that this is.
        insertPlainText(source->text().simplified());
    }

private:
    bool isLocked() const { return m_box.m_locked && m_box.m_locked(); }

    // Keys are not all that changes text: shortcuts, input methods, drops and selections that are
    // dragged away do, too. None of them works on a box that is there to be read.
    void heedLock()
    {
        if (!m_box.m_locked)
            return;
        const Qt::TextInteractionFlags wanted =
            isLocked() ? readingOnly : Qt::TextEditorInteraction;
        if (textInteractionFlags() != wanted)
            setTextInteractionFlags(wanted);
    }

    RichTextBoxWidget& m_box;
    Released m_released;
};

RichTextBoxWidget::RichTextBoxWidget(QWidget* parent)
    : QWidget(parent)
    , m_edit(new Edit(this, [this](const QMouseEvent& event) { finishSelection(event); }))
    , m_insertion(m_edit->document())
{
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_edit);
    setFocusProxy(m_edit);
    m_edit->setUndoRedoEnabled(false);
    m_edit->setAcceptRichText(false);
    m_edit->document()->setDocumentMargin(6);
    m_edit->document()->documentLayout()->registerHandler(pictureType, new PictureObject(this));
    m_edit->viewport()->setMouseTracking(true);
    m_edit->viewport()->installEventFilter(this);
    m_edit->installEventFilter(this);
    m_frame.setSingleShot(true);
    m_frame.setInterval(frameMilliseconds);
    connect(&m_frame, &QTimer::timeout, this, &RichTextBoxWidget::showFrame);
    connect(m_edit->verticalScrollBar(), &QScrollBar::valueChanged, this, [this](int value) {
        if (!m_frame.isActive()) // while writing, the range runs ahead of the value
            m_atEnd = value >= m_edit->verticalScrollBar()->maximum();
    });
}

// The text widget asks for the lock to its end, so it goes before the lock does.
RichTextBoxWidget::~RichTextBoxWidget()
{
    m_edit->viewport()->removeEventFilter(this);
    m_edit->removeEventFilter(this);
    delete m_edit;
}

void RichTextBoxWidget::setSingleLine()
{
    m_singleLine = true;
    m_edit->setLineWrapMode(QTextEdit::NoWrap);
    m_edit->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    m_edit->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    m_edit->setTabChangesFocus(true);
    connect(m_edit, &QTextEdit::cursorPositionChanged, this, &RichTextBoxWidget::keepToFirstLine);
}

// The writer ends its text with a line end; nobody would see what is typed behind it.
void RichTextBoxWidget::keepToFirstLine()
{
    QTextCursor caret = m_edit->textCursor();
    if (caret.hasSelection() || caret.blockNumber() == 0)
        return;
    caret.movePosition(QTextCursor::Start);
    caret.movePosition(QTextCursor::EndOfBlock);
    m_edit->setTextCursor(caret);
}

QString RichTextBoxWidget::Text() const
{
    return TextRange(0, TextLength());
}

void RichTextBoxWidget::setText(const QString& text)
{
    m_insertion.select(QTextCursor::Document);
    setSelText(text);
    m_insertion.setPosition(0);
}

qsizetype RichTextBoxWidget::TextLength() const
{
    const QTextDocument* document = m_edit->document();
    // The document counts one character for a line end, and one behind its last block.
    return document->characterCount() - 1 + document->blockCount() - 1;
}

QString RichTextBoxWidget::TextRange(qsizetype start, qsizetype length) const
{
    QString text;
    const qsizetype end = std::min(start + length, TextLength());
    QTextBlock block = m_edit->document()->findBlock(positionOf(start));
    for (; block.isValid(); block = block.next()) {
        const qsizetype blockStart = offsetOf(block.position());
        if (blockStart >= end)
            break;
        const QString line = block.next().isValid() ? block.text() + "\r\n"_L1 : block.text();
        const qsizetype from = std::max<qsizetype>(start - blockStart, 0);
        text += QStringView(line).mid(from, end - blockStart - from);
    }
    return text;
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

QString RichTextBoxWidget::SelText() const
{
    return TextRange(SelStart(), SelLength());
}

void RichTextBoxWidget::setSelText(const QString& text)
{
    const QString inserted = normalisedLineEnds(beforeNul(text));
    if (inserted.isEmpty() && !m_insertion.hasSelection())
        return;
    holdPainting();
    const qsizetype from = SelStart();
    m_insertion.insertText(inserted, m_format);
    raiseChange(from);
}

void RichTextBoxWidget::setSelColor(QRgb color)
{
    m_format.setForeground(QColor::fromRgb(color));
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

void RichTextBoxWidget::InsertPicture(const InlinePicture& picture)
{
    QTextCharFormat format = m_format;
    format.setObjectType(pictureType);
    format.setProperty(CodeProperty, picture.code);
    format.setProperty(ResourceProperty, picture.resource);
    format.setProperty(SizeProperty, picture.size);
    format.setVerticalAlignment(QTextCharFormat::AlignMiddle);
    holdPainting();
    const qsizetype from = SelStart();
    m_insertion.insertText(QString(pictureCharacter), format);
    raiseChange(from);
}

void RichTextBoxWidget::beginEdit()
{
    m_insertion.beginEditBlock();
}

void RichTextBoxWidget::endEdit()
{
    m_insertion.endEditBlock();
}

qsizetype RichTextBoxWidget::offsetAt(const QPoint& point) const
{
    const QPoint inViewport = m_edit->viewport()->mapFrom(this, point);
    const QPoint inDocument = inViewport + QPoint(m_edit->horizontalScrollBar()->value(),
                                                  m_edit->verticalScrollBar()->value());
    const int position = m_edit->document()->documentLayout()->hitTest(inDocument, Qt::ExactHit);
    return position < 0 ? -1 : offsetOf(position);
}

bool RichTextBoxWidget::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == m_edit && event->type() == QEvent::KeyPress) {
        const auto* key = static_cast<QKeyEvent*>(event);
        return m_keyFilter && m_keyFilter(*key);
    }
    if (watched != m_edit->viewport())
        return QWidget::eventFilter(watched, event);
    switch (event->type()) {
    case QEvent::MouseMove:
        Q_EMIT MouseMove(placeOf(*static_cast<QMouseEvent*>(event)));
        break;
    case QEvent::MouseButtonDblClick:
        Q_EMIT DblClick();
        break;
    default:
        break;
    }
    return QWidget::eventFilter(watched, event);
}

QPoint RichTextBoxWidget::placeOf(const QMouseEvent& event) const
{
    return m_edit->viewport()->mapTo(this, event.pos());
}

// The user's own selection is the selection that everybody sees.
void RichTextBoxWidget::finishSelection(const QMouseEvent& event)
{
    const QTextCursor cursor = m_edit->textCursor();
    select(cursor.anchor(), cursor.position());
    Q_EMIT MouseUp(placeOf(event));
    if (event.button() == Qt::LeftButton)
        Q_EMIT Click();
}

int RichTextBoxWidget::positionOf(qsizetype offset) const
{
    const QTextDocument* document = m_edit->document();
    if (offset >= TextLength())
        return document->characterCount() - 1;
    // The last block that starts at or before the offset.
    int from = 0;
    int to = document->blockCount() - 1;
    while (from < to) {
        const int middle = (from + to + 1) / 2;
        if (document->findBlockByNumber(middle).position() + middle <= offset)
            from = middle;
        else
            to = middle - 1;
    }
    const QTextBlock block = document->findBlockByNumber(from);
    const int within = static_cast<int>(offset) - from - block.position();
    return block.position() + std::min(within, block.length() - 1); // between CR and LF
}

qsizetype RichTextBoxWidget::offsetOf(int position) const
{
    return position + m_edit->document()->findBlock(position).blockNumber();
}

void RichTextBoxWidget::select(int anchor, int position)
{
    m_insertion.setPosition(anchor);
    m_insertion.setPosition(position, QTextCursor::KeepAnchor);
    if (m_singleLine) // the reader of a longer text keeps a caret of his own
        m_edit->setTextCursor(m_insertion);
}

void RichTextBoxWidget::holdPainting()
{
    if (m_frame.isActive())
        return;
    m_edit->viewport()->setUpdatesEnabled(false);
    m_frame.start();
}

void RichTextBoxWidget::showFrame()
{
    m_edit->viewport()->setUpdatesEnabled(true);
    followEnd();
}

void RichTextBoxWidget::followEnd()
{
    if (m_atEnd && !m_singleLine)
        m_edit->verticalScrollBar()->setValue(m_edit->verticalScrollBar()->maximum());
}

#include "RichTextBoxWidget.moc"
