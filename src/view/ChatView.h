#pragma once

#include "view/AccessibleChanges.h"
#include "view/AttributeTables.h"
#include "view/CaretGeometry.h"
#include "view/ChatLayout.h"
#include "view/ChatScroll.h"
#include "view/ChatText.h"
#include "view/LineNotes.h"
#include "view/ReaderSelection.h"
#include "view/RichTextBox.h"
#include "view/TextSearch.h"
#include "view/ViewLinks.h"

#include <QAbstractScrollArea>
#include <QBasicTimer>
#include <QElapsedTimer>

#include <memory>

class FindBar;
class LineAnnouncer;
class NewMessagesChip;
class QMenu;
class ViewLook;

// RichTextBox for text that only grows: a line costs the same however many there are before it,
// and is laid out when it comes into sight. Stays at the newest line unless the reader has
// scrolled up. Paints at most once a frame.
//
// It has two selections. Writers move theirs with SelStart and SelLength; nobody sees it. The
// reader's is on the screen, belongs to mouse, keyboard and the find bar, and stays on its text
// whatever is written. When the reader has changed his (a button or key released, not while
// dragging), the writers' becomes equal to it, so SelLength tells how much the reader has selected
// until somebody writes.
class ChatView final : public QAbstractScrollArea, public RichTextBox
{
    Q_OBJECT
public:
    explicit ChatView(QWidget* parent = nullptr, std::shared_ptr<ViewLook> look = nullptr);
    ~ChatView() override;

    QString Text() const override;
    void setText(const QString& text) override;
    qsizetype TextLength() const override { return m_text.offsetLength(); }
    QString TextRange(qsizetype start, qsizetype length) const override;
    qsizetype SelStart() const override { return m_text.offsetOf(m_selStart); }
    void setSelStart(qsizetype offset) override;
    qsizetype SelLength() const override;
    void setSelLength(qsizetype length) override;
    QString SelText() const override { return TextRange(SelStart(), SelLength()); }
    void setSelText(const QString& text) override;

    QRgb SelColor() const override { return m_style.color; }
    void setSelColor(QRgb color) override;
    bool SelBold() const override { return m_style.bold; }
    void setSelBold(bool on) override;
    bool SelUnderline() const override { return m_style.underline; }
    void setSelUnderline(bool on) override;
    bool SelStrikeThru() const override { return m_style.strikeThru; }
    void setSelStrikeThru(bool on) override;
    QString SelFontName() const override { return m_style.fontName; }
    void setSelFontName(const QString& name) override;
    int SelFontSize() const override { return m_style.fontSize; }
    void setSelFontSize(int points) override;

    void InsertPicture(const InlinePicture& picture) override;
    bool appendLine(const FormattedLine& line) override;
    bool rearrange(qsizetype from, std::span<const Stretch> parts) override;

    void markLastLine() override;
    bool isLookedAt() const override { return isVisible() && isActiveWindow(); }

    // Layout is put off to the next frame in any case.
    void beginEdit() override {}
    void endEdit() override {}

    // The offset of the character under a point of the widget, -1 outside the text.
    qsizetype offsetAt(const QPoint& point) const;
    void setLinks(ViewLinks::Ports ports) { m_links.setPorts(std::move(ports)); }
    void setPointerShape(Qt::CursorShape shape);

    const ChatText& chatText() const { return m_text; }
    const LineNotes& notes() const { return m_notes; }
    void setNow(LineNotes::Now now) { m_notes.setNow(std::move(now)); }
    ViewLook& look() { return *m_look; }
    const SpokenText& spokenText() const { return m_spoken; }
    const ReaderSelection& readerSelection() const { return m_reader; }
    const TextStyle& styleAt(qsizetype position) const;
    // The text between two positions with LF as line end and the code of each picture.
    QString copiedText(qsizetype from, qsizetype to) const;
    void selectForReader(qsizetype anchor, qsizetype caret);
    void scrollToPosition(qsizetype position);
    bool isFollowing() const { return m_scroll.isFollowing(); }
    // In coordinates of the viewport.
    QRect characterRect(qsizetype position) const;

    void copy() const;
    void selectAll();
    void find();
    void scrollToStart();
    void scrollToEnd();
    void scrollByPages(int pages);
    // What has come since it was last told; does so by itself while a reader listens.
    void tellScreenReader();
    // Ctrl with plus, minus and 0. False: it is another key.
    bool zoomByKey(const QKeyEvent& event);

Q_SIGNALS:
    void Click();
    void DblClick();
    void MouseMove(const QPoint& point);
    void MouseUp(const QPoint& point);
    // A key that means nothing here; whoever takes it accepts it.
    void KeyLeft(QKeyEvent* event);

protected:
    bool event(QEvent* event) override;
    bool viewportEvent(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    void changeEvent(QEvent* event) override;
    void timerEvent(QTimerEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    bool focusNextPrevChild(bool next) override;
    void keyPressEvent(QKeyEvent* event) override;
    void keyReleaseEvent(QKeyEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;

private:
    void replaceSelection(QStringView text, ChatText::Attributes attributes);
    ChatText::Attributes attributes();
    quint16 styleOf(const FormattedLine::Look& look);
    void changeStyle() { m_styleIsKnown = false; }
    void changeFont();
    void textChanged(const ChatText::Change& change);

    void scheduleFrame();
    void frameIsDue();
    void showFrame();
    void settle() const;
    void restyle();
    QFont zoomedFont() const;
    int leftMargin() const { return m_leftMargin; }
    std::vector<double> markedPlaces() const;
    void setHotLink(std::optional<ViewLinks::Link> link);
    std::optional<ViewLinks::Link> linkAtPoint(QPoint viewportPoint) const;
    std::optional<ViewLinks::Link> selectedLink() const;
    bool selectNextLink(bool forward);
    bool openSelectedLink(const QKeyEvent& event) const;
    void addLinkActions(QMenu& menu, const ViewLinks::Link& link);
    void showTimeHint(const QHelpEvent& event);
    void syncScrollBar();
    void scrolled(int value);
    void placeOverlays();

    void drag();
    void readerMoved();
    void finishReaderSelection();
    void moveCaret(CaretGeometry::Motion motion, bool select);
    bool moveByKey(const QKeyEvent& event);
    void findNext(SearchDirection direction, qsizetype from);
    QPoint inText(QPoint viewportPoint) const;
    QString selectedText() const;

    AttributeTables m_tables;
    ChatText m_text;
    SpokenText m_spoken;
    LineNotes m_notes;
    std::shared_ptr<ViewLook> m_look;
    // Laying out on demand does not change what the view shows.
    mutable ChatLayout m_layout;
    mutable ChatScroll m_scroll;
    mutable CaretGeometry m_geometry;
    ReaderSelection m_reader;
    ViewLinks m_links;
    std::optional<ViewLinks::Link> m_hotLink; // under the pointer

    qsizetype m_selStart = 0; // positions
    qsizetype m_selEnd = 0;
    TextStyle m_style;
    quint16 m_styleIndex = 0;
    bool m_styleIsKnown = false;
    // Looks that lines had lately, in the present font.
    struct KnownLook
    {
        FormattedLine::Look look;
        quint16 style = 0;
    };
    std::vector<KnownLook> m_knownLooks;

    QBasicTimer m_frame;
    QElapsedTimer m_sinceFrame;
    QElapsedTimer m_sinceAsked; // for the next one
    qsizetype m_linesSinceFrame = 0;
    qsizetype m_linesAtLastLook = 0;
    bool m_settingBar = false;
    int m_barValue = 0;
    qsizetype m_unseen = 0; // lines
    int m_leftMargin = 0;
    int m_wheelTurn = 0; // what is left of whole notches
    AccessibleChanges m_accessibleChanges;
    LineAnnouncer* m_announcer;

    QBasicTimer m_autoScroll;
    QPoint m_dragPoint;
    bool m_isDragging = false;
    bool m_selectionIsNew = false; // other programs do not have it yet
    quint64 m_doubleClickTime = 0;
    QPoint m_doubleClickPoint;

    FindBar* m_findBar;
    NewMessagesChip* m_unseenNotice;
};
