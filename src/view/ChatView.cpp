#include "view/ChatView.h"

#include "common/TextHelpers.h"
#include "view/ChatViewAccessible.h"
#include "view/FindBar.h"
#include "view/LineAnnouncer.h"
#include "view/LineDecor.h"
#include "view/MarkedScrollBar.h"
#include "view/NewMessagesChip.h"
#include "view/ViewLook.h"

#include <QAccessible>
#include <QApplication>
#include <QClipboard>
#include <QContextMenuEvent>
#include <QDateTime>
#include <QMenu>
#include <QPainter>
#include <QScrollBar>
#include <QStyleHints>
#include <QToolTip>
#include <QVarLengthArray>

#include <algorithm>
#include <array>
#include <ctime>

using namespace Qt::StringLiterals;

namespace {

constexpr int frameMilliseconds = 16;
constexpr int burstFrameMilliseconds = 100;
constexpr int burstLookMilliseconds = 2;
constexpr int autoScrollMilliseconds = 40;
constexpr int sideMargin = 10; // as in lists
constexpr int overlayMargin = 8;
constexpr std::size_t mostMarks = 500; // of the newest, in the scroll bar
constexpr int wheelStep = 20;          // logical pixels; the wheel takes three of them at once

using Motion = CaretGeometry::Motion;

struct CaretKey
{
    QKeySequence::StandardKey key;
    Motion motion;
    bool selects;
};

// Home and End lead to the first and to the newest line; with Shift they select in the row.
constexpr std::array caretKeys{
    CaretKey{QKeySequence::MoveToNextChar, Motion::NextCharacter, false},
    CaretKey{QKeySequence::MoveToPreviousChar, Motion::PreviousCharacter, false},
    CaretKey{QKeySequence::MoveToNextWord, Motion::NextWord, false},
    CaretKey{QKeySequence::MoveToPreviousWord, Motion::PreviousWord, false},
    CaretKey{QKeySequence::MoveToNextLine, Motion::NextRow, false},
    CaretKey{QKeySequence::MoveToPreviousLine, Motion::PreviousRow, false},
    CaretKey{QKeySequence::MoveToNextPage, Motion::NextPage, false},
    CaretKey{QKeySequence::MoveToPreviousPage, Motion::PreviousPage, false},
    CaretKey{QKeySequence::MoveToStartOfLine, Motion::TextStart, false},
    CaretKey{QKeySequence::MoveToEndOfLine, Motion::TextEnd, false},
    CaretKey{QKeySequence::MoveToStartOfDocument, Motion::TextStart, false},
    CaretKey{QKeySequence::MoveToEndOfDocument, Motion::TextEnd, false},
    CaretKey{QKeySequence::SelectNextChar, Motion::NextCharacter, true},
    CaretKey{QKeySequence::SelectPreviousChar, Motion::PreviousCharacter, true},
    CaretKey{QKeySequence::SelectNextWord, Motion::NextWord, true},
    CaretKey{QKeySequence::SelectPreviousWord, Motion::PreviousWord, true},
    CaretKey{QKeySequence::SelectNextLine, Motion::NextRow, true},
    CaretKey{QKeySequence::SelectPreviousLine, Motion::PreviousRow, true},
    CaretKey{QKeySequence::SelectNextPage, Motion::NextPage, true},
    CaretKey{QKeySequence::SelectPreviousPage, Motion::PreviousPage, true},
    CaretKey{QKeySequence::SelectStartOfLine, Motion::RowStart, true},
    CaretKey{QKeySequence::SelectEndOfLine, Motion::RowEnd, true},
    CaretKey{QKeySequence::SelectStartOfDocument, Motion::TextStart, true},
    CaretKey{QKeySequence::SelectEndOfDocument, Motion::TextEnd, true},
};

void tellAccessibility(QAccessibleEvent& event)
{
    QAccessible::updateAccessibility(&event);
}

qint64 secondsNow()
{
    return std::time(nullptr); // much cheaper than a date, and asked for each line
}

} // namespace

ChatView::ChatView(QWidget* parent, std::shared_ptr<ViewLook> look)
    : QAbstractScrollArea(parent)
    , m_spoken(m_text, m_tables)
    , m_notes(secondsNow)
    , m_look(look ? std::move(look) : std::make_shared<ViewLook>())
    , m_layout(m_text, std::make_unique<StyleFormats>(m_tables, font(), palette()))
    , m_scroll(m_layout)
    , m_geometry(m_text, m_layout, m_scroll)
    , m_reader(m_text)
    , m_links(m_text, m_tables)
    , m_accessibleChanges(this, m_text, m_spoken, tellAccessibility)
    , m_announcer(new LineAnnouncer(this))
    , m_findBar(new FindBar(this))
    , m_unseenNotice(new NewMessagesChip(this))
{
    QAccessible::installFactory(&ChatViewAccessible::create);
    m_tables.styles.indexOf(m_style); // what a text without any run is shown in
    setFocusPolicy(Qt::StrongFocus);
    setVerticalScrollBar(new MarkedScrollBar([this] { return markedPlaces(); }, this));
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    viewport()->setBackgroundRole(QPalette::Base);
    viewport()->setAutoFillBackground(true);
    viewport()->setMouseTracking(true);
    setPointerShape(Qt::IBeamCursor);
    connect(m_look.get(), &ViewLook::changed, this, &ChatView::restyle);
    restyle();
    connect(m_unseenNotice, &QToolButton::clicked, this, &ChatView::scrollToEnd);
    connect(verticalScrollBar(), &QScrollBar::valueChanged, this, &ChatView::scrolled);
    connect(verticalScrollBar(), &QScrollBar::sliderReleased, this, &ChatView::scheduleFrame);
    connect(m_findBar, &FindBar::TextEdited, this,
            [this] { findNext(SearchDirection::Forward, m_reader.start()); });
    connect(m_findBar, &FindBar::FindNext, this, [this](SearchDirection direction) {
        findNext(direction,
                 direction == SearchDirection::Forward ? m_reader.end() : m_reader.start());
    });
    connect(m_findBar, &FindBar::Closed, this, [this] { setFocus(); });
}

ChatView::~ChatView() = default;

QString ChatView::Text() const
{
    return TextRange(0, TextLength());
}

void ChatView::setText(const QString& text)
{
    m_selStart = 0;
    m_selEnd = m_text.length();
    setSelText(text);
    m_selStart = m_selEnd = 0;
}

QString ChatView::TextRange(qsizetype start, qsizetype length) const
{
    start = std::max<qsizetype>(start, 0);
    const qsizetype end = start + std::min(length, TextLength() - start);
    if (start >= end)
        return {};
    const qsizetype from = m_text.positionOf(start);
    const qsizetype to = m_text.positionOf(end);
    QString text = m_text.text(from, to);
    text.replace("\n"_L1, "\r\n"_L1);
    // An offset between CR and LF stands for no position of its own.
    if (m_text.offsetOf(to) < end)
        text += u'\r';
    return m_text.offsetOf(from) < start ? text.sliced(1) : text;
}

void ChatView::setSelStart(qsizetype offset)
{
    m_selStart = m_selEnd = m_text.positionOf(offset);
}

qsizetype ChatView::SelLength() const
{
    return m_text.offsetOf(m_selEnd) - m_text.offsetOf(m_selStart);
}

void ChatView::setSelLength(qsizetype length)
{
    const qsizetype reach = std::min(length, TextLength());
    m_selEnd = std::max(m_text.positionOf(SelStart() + reach), m_selStart);
}

void ChatView::setSelText(const QString& text)
{
    const QString inserted = withLineFeeds(beforeNul(text));
    if (inserted.isEmpty() && m_selStart == m_selEnd)
        return;
    replaceSelection(inserted, attributes());
}

void ChatView::setSelColor(QRgb color)
{
    m_style.color = color | 0xff000000;
    changeStyle();
}

void ChatView::setSelBold(bool on)
{
    m_style.bold = on;
    changeStyle();
}

void ChatView::setSelUnderline(bool on)
{
    m_style.underline = on;
    changeStyle();
}

void ChatView::setSelStrikeThru(bool on)
{
    m_style.strikeThru = on;
    changeStyle();
}

void ChatView::setSelFontName(const QString& name)
{
    if (name == m_style.fontName)
        return;
    m_style.fontName = beforeNul(name);
    changeFont();
}

void ChatView::setSelFontSize(int points)
{
    points = std::max(points, 1); // a size of 0 cannot be drawn
    if (points == m_style.fontSize)
        return;
    m_style.fontSize = points;
    changeFont();
}

void ChatView::InsertPicture(const InlinePicture& picture)
{
    ChatText::Attributes here = attributes();
    here.picture = m_tables.pictures.indexOf(picture) + 1;
    constexpr QChar character = pictureCharacter;
    replaceSelection(QStringView(&character, 1), here);
}

bool ChatView::appendLine(const FormattedLine& line)
{
    const qsizetype end = m_text.length();
    if (m_text.lineStart(m_text.lineCount() - 1) != end)
        return false; // it would go on with the last line
    const std::optional<LineOutcome> outcome = forecast(line);
    if (!outcome)
        return false;
    QVarLengthArray<ChatText::Piece, 16> pieces;
    for (size_t i = 0; i < line.runs.size(); ++i) {
        const qsizetype from = line.runs[i].start;
        const qsizetype to = line.runEnd(i);
        ChatText::Attributes here{styleOf(line.runs[i].look), 0};
        if (!outcome->picture || outcome->start < from || outcome->start >= to) {
            pieces.append({line.text.sliced(from, to - from), here});
            continue;
        }
        static constexpr QChar character = pictureCharacter;
        const qsizetype behind = outcome->start + outcome->length;
        pieces.append({line.text.sliced(from, outcome->start - from), here});
        here.picture = m_tables.pictures.indexOf(*outcome->picture) + 1;
        pieces.append({QStringView(&character, 1), here});
        here.picture = 0;
        pieces.append({line.text.sliced(behind, to - behind), here});
    }
    const ChatText::Change change = m_text.appendLine(pieces, {styleOf(line.lineEnd), 0});
    m_selStart = m_selEnd = m_text.length();
    textChanged(change);
    return true;
}

void ChatView::markLastLine()
{
    m_notes.markLast();
    verticalScrollBar()->update();
    scheduleFrame();
}

bool ChatView::rearrange(qsizetype from, std::span<const Stretch> parts)
{
    const qsizetype position = m_text.positionOf(from);
    const qsizetype line = m_text.lineAt(position);
    const qsizetype lineEnd = m_text.lineEnd(line);
    if (m_text.length() - lineEnd > 1)
        return false;
    const ChatText::Line old = m_text.line(line);
    const auto column = static_cast<int>(position - m_text.lineStart(line));
    const qsizetype length = lineEnd - position;
    QString text;
    std::vector<ChatText::Run> runs; // of the new text
    const auto startRun = [&](ChatText::Attributes attributes) {
        if (runs.empty() || runs.back().attributes != attributes)
            runs.push_back({static_cast<int>(text.size()), attributes});
    };
    size_t run = 0; // stretches come in the order of the text
    for (const Stretch& part : parts) {
        if (part.picture) {
            ChatText::Attributes here = attributes();
            here.picture = m_tables.pictures.indexOf(*part.picture) + 1;
            startRun(here);
            text += pictureCharacter;
            continue;
        }
        const int end = column + static_cast<int>(std::min(part.start + part.length, length));
        for (int at = column + static_cast<int>(part.start); at < end;) {
            while (old.runEnd(run) <= at)
                ++run;
            const int runEnd = std::min(old.runEnd(run), end);
            startRun(old.runs[run].attributes);
            text += QStringView(old.text).sliced(at, runEnd - at);
            at = runEnd;
        }
        if (part.start + part.length > length) { // with the line end
            startRun(old.runs.back().attributes);
            text += u'\n';
        }
    }
    const qsizetype removed = m_text.length() - position;
    m_accessibleChanges.aboutToReplace(position, removed, text);
    ChatText::Change change = m_text.replace(position, removed, {}, {});
    for (size_t i = 0; i < runs.size(); ++i) {
        const qsizetype start = runs[i].start;
        const qsizetype end = i + 1 < runs.size() ? runs[i + 1].start : text.size();
        const QStringView piece = QStringView(text).sliced(start, end - start);
        change.addedLines +=
            m_text.replace(m_text.length(), 0, piece, runs[i].attributes).addedLines;
    }
    change.added = text.size();
    textChanged(change);
    m_selStart = m_selEnd = m_text.length();
    raiseChange(m_text.offsetOf(position));
    return true;
}

qsizetype ChatView::offsetAt(const QPoint& point) const
{
    settle();
    const QPoint inViewport = viewport()->mapFrom(this, point);
    if (!viewport()->rect().contains(inViewport))
        return -1;
    const qsizetype position = m_geometry.characterAt(inText(inViewport));
    return position < 0 ? -1 : m_text.offsetOf(position);
}

void ChatView::setPointerShape(Qt::CursorShape shape)
{
    if (viewport()->cursor().shape() != shape)
        viewport()->setCursor(shape);
}

const TextStyle& ChatView::styleAt(qsizetype position) const
{
    const qsizetype line = m_text.lineAt(position);
    const qsizetype column = position - m_text.lineStart(line);
    const auto runs = m_text.line(line).runs;
    const auto next = std::upper_bound(
        runs.begin(), runs.end(), column,
        [](qsizetype value, const ChatText::Run& run) { return value < run.start; });
    return m_tables.styles.at(std::prev(next)->attributes.style);
}

QString ChatView::copiedText(qsizetype from, qsizetype to) const
{
    QString result;
    for (qsizetype number = m_text.lineAt(from); from < to; ++number) {
        const ChatText::Line line = m_text.line(number);
        const qsizetype start = m_text.lineStart(number);
        for (size_t i = 0; i < line.runs.size(); ++i) {
            const ChatText::Run& run = line.runs[i];
            const qsizetype begin = std::max<qsizetype>(from - start, run.start);
            const qsizetype end = std::min<qsizetype>(to - start, line.runEnd(i));
            if (begin >= end)
                continue;
            if (run.attributes.picture == 0)
                result += QStringView(line.text).sliced(begin, end - begin);
            else
                result +=
                    m_tables.pictures.at(run.attributes.picture - 1).code.repeated(end - begin);
        }
        from = start + line.text.size() + 1;
        if (from <= to)
            result += u'\n';
    }
    return result;
}

void ChatView::selectForReader(qsizetype anchor, qsizetype caret)
{
    m_reader.select(anchor, caret);
    readerMoved();
    finishReaderSelection();
}

void ChatView::scrollToPosition(qsizetype position)
{
    settle();
    m_geometry.scrollTo(position);
    scheduleFrame();
}

QRect ChatView::characterRect(qsizetype position) const
{
    settle();
    return m_geometry.character(position).translated(leftMargin(), 0);
}

void ChatView::copy() const
{
    if (!m_reader.isEmpty())
        QApplication::clipboard()->setText(selectedText());
}

void ChatView::selectAll()
{
    selectForReader(0, m_text.length());
}

void ChatView::find()
{
    m_findBar->open();
    placeOverlays();
}

void ChatView::scrollToStart()
{
    m_scroll.scrollTo(0);
    scheduleFrame();
}

void ChatView::scrollToEnd()
{
    m_scroll.follow();
    scheduleFrame();
}

void ChatView::scrollByPages(int pages)
{
    settle();
    m_scroll.scrollBy(pages * m_scroll.height());
    scheduleFrame();
}

bool ChatView::zoomByKey(const QKeyEvent& event)
{
    if (!event.modifiers().testFlag(Qt::ControlModifier))
        return false;
    switch (event.key()) {
    case Qt::Key_Plus:
    case Qt::Key_Equal: // plus without its Shift
        m_look->zoomBy(1);
        return true;
    case Qt::Key_Minus:
        m_look->zoomBy(-1);
        return true;
    case Qt::Key_0:
        m_look->resetZoom();
        return true;
    default:
        return false;
    }
}

bool ChatView::event(QEvent* event)
{
    if (event->type() == QEvent::WindowDeactivate) {
        m_notes.leave();
        scheduleFrame();
    }
    return QAbstractScrollArea::event(event);
}

bool ChatView::viewportEvent(QEvent* event)
{
    if (event->type() == QEvent::Leave)
        setHotLink({});
    if (event->type() != QEvent::ToolTip)
        return QAbstractScrollArea::viewportEvent(event);
    showTimeHint(*static_cast<QHelpEvent*>(event));
    return true;
}

void ChatView::paintEvent(QPaintEvent* event)
{
    settle();
    QPainter painter(viewport());
    const auto group = hasFocus() || m_findBar->isVisible() ? QPalette::Active : QPalette::Inactive;
    LineLayout::Selection selection;
    selection.background = palette().color(group, QPalette::Highlight);
    selection.foreground = palette().color(group, QPalette::HighlightedText);
    const QFont font = zoomedFont();
    const LineDecor decor(m_notes, palette(), font);
    const QRect clip = event->rect();
    int top = m_scroll.top(m_scroll.firstLine());
    for (qsizetype line = m_scroll.firstLine(); line <= m_scroll.lastLine(); ++line) {
        const int height = m_layout.exactHeight(line);
        if (height > 0 && top <= clip.bottom() && top + height > clip.top()) {
            const LineLayout& layout = m_layout.line(line);
            const LineDecor::Line place{
                line,
                {0, top, viewport()->width(), height},
                top + static_cast<int>(layout.rows().front().baseline),
            };
            decor.drawGround(painter, place);
            if (m_look->showsTimes())
                decor.drawTime(painter, place);
            const qsizetype start = m_text.lineStart(line);
            const qsizetype beyond = m_text.lineEnd(line) - start + 1;
            selection.start =
                static_cast<int>(std::clamp<qsizetype>(m_reader.start() - start, 0, beyond));
            selection.end =
                static_cast<int>(std::clamp<qsizetype>(m_reader.end() - start, 0, beyond));
            layout.draw(painter, {leftMargin(), top}, selection, clip);
            if (m_hotLink && m_text.lineAt(m_hotLink->start) == line)
                layout.underline(
                    painter, {leftMargin(), top}, static_cast<int>(m_hotLink->start - start),
                    static_cast<int>(m_hotLink->end - start), palette().color(QPalette::Link));
        }
        top += height;
    }
    if (hasFocus() && m_geometry.isInSight(m_reader.caret())) {
        const QRect caret = m_geometry.caret(m_reader.caret()).translated(leftMargin(), 0);
        painter.fillRect(caret, palette().color(QPalette::Text));
    }
}

void ChatView::resizeEvent(QResizeEvent* event)
{
    QAbstractScrollArea::resizeEvent(event);
    m_scroll.setHeight(viewport()->height());
    m_layout.setWidth(std::max(viewport()->width() - leftMargin() - sideMargin, 1));
    placeOverlays();
    if (isVisible())
        showFrame();
}

void ChatView::showEvent(QShowEvent* event)
{
    QAbstractScrollArea::showEvent(event);
    showFrame();
}

void ChatView::hideEvent(QHideEvent* event)
{
    QAbstractScrollArea::hideEvent(event);
    m_notes.leave();
}

void ChatView::changeEvent(QEvent* event)
{
    QAbstractScrollArea::changeEvent(event);
    if (event->type() == QEvent::FontChange || event->type() == QEvent::PaletteChange)
        restyle();
}

void ChatView::timerEvent(QTimerEvent* event)
{
    if (event->timerId() == m_frame.timerId())
        frameIsDue();
    else if (event->timerId() == m_autoScroll.timerId())
        drag();
    else
        QAbstractScrollArea::timerEvent(event);
}

void ChatView::mousePressEvent(QMouseEvent* event)
{
    if (event->button() != Qt::LeftButton)
        return;
    settle();
    const qsizetype position = m_geometry.positionAt(inText(event->pos()));
    const bool isTriple =
        m_doubleClickTime != 0 &&
        event->timestamp() - m_doubleClickTime <
            static_cast<quint64>(QGuiApplication::styleHints()->mouseDoubleClickInterval()) &&
        (event->pos() - m_doubleClickPoint).manhattanLength() < QApplication::startDragDistance();
    m_doubleClickTime = 0;
    if (isTriple)
        m_reader.begin(position, ReaderSelection::Unit::Line);
    else if (event->modifiers().testFlag(Qt::ShiftModifier))
        m_reader.select(m_reader.anchor(), position);
    else
        m_reader.begin(position, ReaderSelection::Unit::Character);
    m_isDragging = true;
    readerMoved();
}

void ChatView::mouseMoveEvent(QMouseEvent* event)
{
    if (m_isDragging && event->buttons().testFlag(Qt::LeftButton)) {
        m_dragPoint = event->pos();
        drag();
    }
    if (m_links.canOpen())
        setHotLink(linkAtPoint(event->pos()));
    Q_EMIT MouseMove(viewport()->mapTo(this, event->pos()));
}

void ChatView::mouseReleaseEvent(QMouseEvent* event)
{
    const bool isLeft = event->button() == Qt::LeftButton;
    if (isLeft) {
        m_isDragging = false;
        m_autoScroll.stop();
    }
    finishReaderSelection();
    Q_EMIT MouseUp(viewport()->mapTo(this, event->pos()));
    if (isLeft)
        Q_EMIT Click();
}

void ChatView::mouseDoubleClickEvent(QMouseEvent* event)
{
    if (event->button() != Qt::LeftButton)
        return;
    settle();
    m_reader.begin(m_geometry.positionAt(inText(event->pos())), ReaderSelection::Unit::Word);
    m_isDragging = true;
    m_doubleClickTime = event->timestamp();
    m_doubleClickPoint = event->pos();
    readerMoved();
    Q_EMIT DblClick();
}

void ChatView::wheelEvent(QWheelEvent* event)
{
    if (!event->modifiers().testFlag(Qt::ControlModifier)) {
        QAbstractScrollArea::wheelEvent(event);
        return;
    }
    constexpr int notch = 120; // touch pads send parts of one
    m_wheelTurn += event->angleDelta().y();
    m_look->zoomBy(m_wheelTurn / notch);
    m_wheelTurn %= notch;
}

void ChatView::contextMenuEvent(QContextMenuEvent* event)
{
    auto* menu = new QMenu(this);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    const bool isByKey = event->reason() == QContextMenuEvent::Keyboard;
    if (const auto link = isByKey ? selectedLink() : linkAtPoint(event->pos()))
        addLinkActions(*menu, *link);
    QAction* copying = menu->addAction(u"&Copy"_s, QKeySequence::Copy, this, &ChatView::copy);
    copying->setEnabled(!m_reader.isEmpty());
    menu->addAction(u"Select &All"_s, QKeySequence::SelectAll, this, &ChatView::selectAll);
    menu->addSeparator();
    menu->addAction(u"&Find..."_s, QKeySequence::Find, this, &ChatView::find);
    menu->popup(event->globalPos());
}

void ChatView::addLinkActions(QMenu& menu, const ViewLinks::Link& link)
{
    if (m_links.canOpen())
        menu.addAction(u"&Open Link"_s, this, [this, link] { m_links.open(link); });
    menu.addAction(u"Copy &Link"_s, this,
                   [link] { QApplication::clipboard()->setText(link.text); });
    menu.addSeparator();
}

// Tab leads from link to link among those in sight, and then on to the next control.
bool ChatView::focusNextPrevChild(bool next)
{
    return (hasFocus() && selectNextLink(next)) || QAbstractScrollArea::focusNextPrevChild(next);
}

void ChatView::keyPressEvent(QKeyEvent* event)
{
    if (event->matches(QKeySequence::Copy))
        copy();
    else if (event->matches(QKeySequence::SelectAll))
        selectAll();
    else if (event->matches(QKeySequence::Find))
        find();
    else if (!moveByKey(*event) && !zoomByKey(*event) && !openSelectedLink(*event)) {
        event->ignore(); // the window may know what to do with it
        Q_EMIT KeyLeft(event);
    }
}

void ChatView::keyReleaseEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_Shift)
        finishReaderSelection();
    QAbstractScrollArea::keyReleaseEvent(event);
}

void ChatView::focusInEvent(QFocusEvent* event)
{
    QAbstractScrollArea::focusInEvent(event);
    scheduleFrame();
}

void ChatView::focusOutEvent(QFocusEvent* event)
{
    QAbstractScrollArea::focusOutEvent(event);
    scheduleFrame();
}

void ChatView::replaceSelection(QStringView text, ChatText::Attributes attributes)
{
    const qsizetype start = m_selStart;
    const qsizetype length = m_selEnd - m_selStart;
    m_accessibleChanges.aboutToReplace(start, length, text);
    const ChatText::Change change = m_text.replace(start, length, text, attributes);
    m_selStart = m_selEnd = start + change.added;
    textChanged(change);
    raiseChange(m_text.offsetOf(start));
}

ChatText::Attributes ChatView::attributes()
{
    if (!m_styleIsKnown) {
        m_styleIndex = m_tables.styles.indexOf(m_style);
        m_styleIsKnown = true;
    }
    return {m_styleIndex, 0};
}

quint16 ChatView::styleOf(const FormattedLine::Look& look)
{
    constexpr size_t enough = 24;
    for (const KnownLook& known : m_knownLooks) {
        if (known.look == look)
            return known.style;
    }
    TextStyle style = m_style;
    style.color = look.color | 0xff000000;
    style.bold = look.bold;
    style.underline = look.underline;
    style.strikeThru = look.strikeThru;
    if (m_knownLooks.size() == enough)
        m_knownLooks.clear();
    m_knownLooks.push_back({look, m_tables.styles.indexOf(style)});
    return m_knownLooks.back().style;
}

void ChatView::changeFont()
{
    m_knownLooks.clear();
    changeStyle();
}

void ChatView::textChanged(const ChatText::Change& change)
{
    if (m_hotLink && change.position < m_hotLink->end)
        m_hotLink.reset();
    m_spoken.textChanged(change);
    m_notes.textChanged(change, m_text.lineCount());
    m_layout.textChanged(change);
    m_scroll.textChanged(change);
    m_reader.textChanged(change);
    if (!m_scroll.isFollowing())
        m_unseen += change.addedLines;
    m_linesSinceFrame += change.addedLines;
    scheduleFrame();
}

void ChatView::scheduleFrame()
{
    if (m_frame.isActive() || !isVisible())
        return;
    const qint64 elapsed = m_sinceFrame.isValid() ? m_sinceFrame.elapsed() : frameMilliseconds;
    // A moment in any case: what comes at once is shown at once.
    const qint64 wait = std::clamp<qint64>(frameMilliseconds - elapsed, 1, frameMilliseconds);
    m_frame.start(static_cast<int>(wait), Qt::PreciseTimer, this);
    m_sinceAsked.start();
}

// More than a page since the last frame is more than anybody reads. As long as it goes on, it is
// shown now and then only, and in full as soon as it pauses.
void ChatView::frameIsDue()
{
    const qsizetype page = m_scroll.lastLine() - m_scroll.firstLine() + 1;
    const bool goesOn = m_linesSinceFrame > std::exchange(m_linesAtLastLook, m_linesSinceFrame);
    const bool isBurst =
        goesOn && m_linesSinceFrame > page && m_sinceAsked.elapsed() < burstFrameMilliseconds;
    if (isBurst)
        m_frame.start(burstLookMilliseconds, Qt::PreciseTimer, this);
    else
        showFrame();
}

void ChatView::showFrame()
{
    m_frame.stop();
    m_sinceFrame.start();
    m_linesSinceFrame = m_linesAtLastLook = 0;
    settle();
    syncScrollBar();
    if (m_scroll.isFollowing())
        m_unseen = 0;
    if (m_unseenNotice->setCount(m_unseen))
        placeOverlays();
    viewport()->update();
    if (QAccessible::isActive())
        tellScreenReader();
    else
        m_accessibleChanges.skipNewText();
}

// With the focus here a reader says the new text of itself.
void ChatView::tellScreenReader()
{
    const QString lines = m_accessibleChanges.textShown();
    if (isLookedAt() && !hasFocus())
        m_announcer->announce(lines);
}

void ChatView::settle() const
{
    m_scroll.settle();
}

void ChatView::restyle()
{
    const QFont times = zoomedFont();
    m_leftMargin = m_look->showsTimes() ? LineDecor::timeWidth(times) : sideMargin;
    m_layout.setFormats(
        std::make_unique<StyleFormats>(m_tables, font(), palette(), m_look->zoom()));
    m_layout.setWidth(std::max(viewport()->width() - leftMargin() - sideMargin, 1));
    scheduleFrame();
}

QFont ChatView::zoomedFont() const
{
    QFont zoomed = font();
    zoomed.setPointSizeF(zoomed.pointSizeF() * m_look->zoom());
    return zoomed;
}

std::vector<double> ChatView::markedPlaces() const
{
    const std::vector<qsizetype>& lines = m_notes.marked();
    std::vector<double> places;
    if (lines.empty())
        return places;
    m_layout.update();
    const auto height = static_cast<double>(std::max<qint64>(m_layout.height(), m_scroll.height()));
    for (std::size_t i = lines.size() - std::min(lines.size(), mostMarks); i < lines.size(); ++i)
        places.push_back(static_cast<double>(m_layout.top(lines[i])) / height);
    return places;
}

void ChatView::setHotLink(std::optional<ViewLinks::Link> link)
{
    const auto startOf = [](const auto& one) { return one ? one->start : -1; };
    if (startOf(link) == startOf(m_hotLink))
        return;
    m_hotLink = std::move(link);
    viewport()->update();
}

std::optional<ViewLinks::Link> ChatView::linkAtPoint(QPoint viewportPoint) const
{
    settle();
    const qsizetype position = m_geometry.characterAt(inText(viewportPoint));
    return position < 0 ? std::nullopt : m_links.at(position);
}

std::optional<ViewLinks::Link> ChatView::selectedLink() const
{
    auto link = m_links.at(m_reader.start());
    if (link && (link->start != m_reader.start() || link->end != m_reader.end()))
        link.reset();
    return link;
}

bool ChatView::selectNextLink(bool forward)
{
    settle();
    QList<ViewLinks::Link> links = m_links.inLines(m_scroll.firstLine(), m_scroll.lastLine());
    if (!forward)
        std::reverse(links.begin(), links.end());
    const bool goesOn = selectedLink().has_value();
    const auto next = std::find_if(links.begin(), links.end(), [&](const ViewLinks::Link& link) {
        const bool isBeyond = forward ? link.start >= m_reader.end() : link.end <= m_reader.start();
        return m_geometry.isInSight(link.start) && (isBeyond || !goesOn);
    });
    if (next == links.end())
        return false;
    selectForReader(next->start, next->end);
    return true;
}

bool ChatView::openSelectedLink(const QKeyEvent& event) const
{
    const bool isEnter = event.key() == Qt::Key_Return || event.key() == Qt::Key_Enter;
    const auto link = isEnter && m_links.canOpen() ? selectedLink() : std::nullopt;
    if (link)
        m_links.open(*link);
    return link.has_value();
}

void ChatView::showTimeHint(const QHelpEvent& event)
{
    settle();
    const qsizetype line = m_text.lineAt(m_geometry.positionAt(inText(event.pos())));
    const QRect room(0, m_scroll.top(line), viewport()->width(), m_layout.exactHeight(line));
    const bool isOnLine = room.contains(event.pos());
    QToolTip::showText(event.globalPos(), isOnLine ? LineDecor::timeHint(m_notes, line) : QString(),
                       viewport(), room);
}

void ChatView::syncScrollBar()
{
    QScrollBar* bar = verticalScrollBar();
    if (bar->isSliderDown())
        return; // it must not slip away under the pointer
    m_settingBar = true;
    m_barValue = static_cast<int>(m_scroll.value());
    bar->setPageStep(m_scroll.height());
    bar->setSingleStep(wheelStep);
    bar->setRange(0, static_cast<int>(m_scroll.maximum()));
    bar->setEnabled(bar->maximum() > 0);
    bar->setValue(m_barValue);
    m_settingBar = false;
}

void ChatView::scrolled(int value)
{
    if (m_settingBar)
        return;
    const int moved = value - m_barValue;
    m_barValue = value;
    if (value == verticalScrollBar()->maximum()) {
        m_scroll.follow();
        settle();
    } else if (value > 0 && std::abs(moved) <= 2 * m_scroll.height()) {
        m_scroll.scrollBy(moved); // exactly, where a value would only be an estimate
    } else {
        m_scroll.scrollTo(value);
    }
    syncScrollBar();
    scheduleFrame();
}

void ChatView::placeOverlays()
{
    const QRect area = viewport()->geometry();
    m_findBar->adjustSize();
    m_findBar->move(area.right() - m_findBar->width() - overlayMargin, area.top() + overlayMargin);
    m_unseenNotice->adjustSize();
    m_unseenNotice->move(area.center().x() - m_unseenNotice->width() / 2,
                         area.bottom() - m_unseenNotice->height() - overlayMargin);
}

// Also while the pointer rests beyond an edge: the text then moves under it.
void ChatView::drag()
{
    settle();
    const int above = std::min(m_dragPoint.y(), 0);
    const int below = std::max(m_dragPoint.y() - viewport()->height(), 0);
    if (above == 0 && below == 0) {
        m_autoScroll.stop();
    } else {
        m_scroll.scrollBy(above + below);
        if (!m_autoScroll.isActive())
            m_autoScroll.start(autoScrollMilliseconds, this);
    }
    QPoint inside = m_dragPoint;
    inside.setY(std::clamp(inside.y(), 0, viewport()->height() - 1));
    m_reader.dragTo(m_geometry.positionAt(inText(inside)));
    readerMoved();
}

void ChatView::readerMoved()
{
    m_selectionIsNew = true;
    scheduleFrame();
    m_accessibleChanges.readerMoved(m_reader);
}

void ChatView::finishReaderSelection()
{
    m_selStart = m_reader.start();
    m_selEnd = m_reader.end();
    QClipboard* clipboard = QApplication::clipboard();
    if (m_selectionIsNew && clipboard->supportsSelection() && !m_reader.isEmpty())
        clipboard->setText(selectedText(), QClipboard::Selection);
    m_selectionIsNew = false;
}

void ChatView::moveCaret(CaretGeometry::Motion motion, bool select)
{
    settle();
    qsizetype caret = m_reader.caret();
    if (!m_geometry.isInSight(caret) && (!select || m_reader.isEmpty())) {
        // A caret that was left far away would take the reader there.
        const bool isBelow = m_text.lineAt(caret) > m_scroll.lastLine();
        caret = m_geometry.positionAt({0, isBelow ? m_scroll.height() - 1 : 0});
        if (m_scroll.isFollowing())
            caret = m_text.length();
    }
    const qsizetype anchor = m_reader.isEmpty() ? caret : m_reader.anchor();
    const qsizetype moved = m_geometry.moved(caret, motion);
    m_reader.select(select ? anchor : moved, moved);
    m_geometry.scrollTo(moved);
    if (motion == Motion::TextEnd)
        m_scroll.follow();
    readerMoved();
    if (!select)
        finishReaderSelection();
}

bool ChatView::moveByKey(const QKeyEvent& event)
{
    const auto key = std::find_if(caretKeys.begin(), caretKeys.end(),
                                  [&](const CaretKey& entry) { return event.matches(entry.key); });
    if (key == caretKeys.end())
        return false;
    moveCaret(key->motion, key->selects);
    return true;
}

void ChatView::findNext(SearchDirection direction, qsizetype from)
{
    const QString wanted = m_findBar->text();
    const auto found = findText(m_text, wanted, from, direction);
    m_findBar->showResult(found || wanted.isEmpty());
    placeOverlays();
    if (!found)
        return;
    m_reader.select(*found, *found + wanted.size());
    settle();
    const QRect bar(viewport()->mapFrom(this, m_findBar->pos()), m_findBar->size());
    const bool isCovered =
        characterRect(*found).united(characterRect(m_reader.caret())).intersects(bar);
    if (isCovered || !m_geometry.isInSight(*found) || !m_geometry.isInSight(m_reader.caret()))
        m_scroll.centre(m_text.lineAt(*found));
    m_geometry.scrollTo(*found);
    readerMoved();
    finishReaderSelection();
}

QPoint ChatView::inText(QPoint viewportPoint) const
{
    return viewportPoint - QPoint(leftMargin(), 0);
}

QString ChatView::selectedText() const
{
    return copiedText(m_reader.start(), m_reader.end());
}
