#pragma once

#include <QAccessible>
#include <QAccessibleWidget>

class ChatView;

// A chat view as screen readers read it. Offsets are positions of its text: a line end is one
// character (LF).
class ChatViewAccessible final : public QAccessibleWidget, public QAccessibleTextInterface
{
public:
    explicit ChatViewAccessible(ChatView* view);
    // For QAccessible::installFactory.
    static QAccessibleInterface* create(const QString& className, QObject* object);

    QAccessible::State state() const override;
    void* interface_cast(QAccessible::InterfaceType type) override;

    void selection(int index, int* start, int* end) const override;
    int selectionCount() const override;
    void addSelection(int start, int end) override;
    void removeSelection(int index) override;
    void setSelection(int index, int start, int end) override;

    int cursorPosition() const override;
    void setCursorPosition(int position) override;

    using QAccessibleWidget::text;
    QString text(int start, int end) const override;
    QString textBeforeOffset(int offset, QAccessible::TextBoundaryType type, int* start,
                             int* end) const override;
    QString textAfterOffset(int offset, QAccessible::TextBoundaryType type, int* start,
                            int* end) const override;
    QString textAtOffset(int offset, QAccessible::TextBoundaryType type, int* start,
                         int* end) const override;
    int characterCount() const override;

    QRect characterRect(int offset) const override;
    int offsetAtPoint(const QPoint& point) const override;
    void scrollToSubstring(int start, int end) override;
    QString attributes(int offset, int* start, int* end) const override;

private:
    struct Range
    {
        qsizetype start = 0;
        qsizetype end = 0;
    };

    ChatView* view() const;
    qsizetype position(int offset) const;
    int offset(qsizetype position) const;
    Range unitAt(qsizetype position, QAccessible::TextBoundaryType type) const;
    QString part(const Range& range, int* start, int* end) const;
};
