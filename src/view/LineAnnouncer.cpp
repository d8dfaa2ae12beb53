#include "view/LineAnnouncer.h"

#include <QAccessible>
#include <QAccessibleWidget>

namespace {

constexpr qsizetype mostCharacters = 600; // nobody listens longer to what is already past

// Readers say the name of a notification when it shows, after what they are saying.
class Notification final : public QAccessibleWidget
{
public:
    explicit Notification(QWidget* widget)
        : QAccessibleWidget(widget, QAccessible::Notification)
    {
    }

    static QAccessibleInterface* create(const QString&, QObject* object)
    {
        auto* announcer = qobject_cast<LineAnnouncer*>(object);
        return announcer ? new Notification(announcer) : nullptr;
    }
};

QString lastLines(const QString& lines)
{
    if (lines.size() <= mostCharacters)
        return lines;
    const qsizetype start = lines.indexOf(u'\n', lines.size() - mostCharacters);
    return start < 0 ? lines.last(mostCharacters) : lines.sliced(start + 1);
}

} // namespace

LineAnnouncer::LineAnnouncer(QWidget* parent)
    : QWidget(parent)
{
    QAccessible::installFactory(&Notification::create);
    setAttribute(Qt::WA_TransparentForMouseEvents);
    resize(0, 0);
}

void LineAnnouncer::announce(const QString& lines)
{
    const QString said = lastLines(lines).trimmed();
    if (said.isEmpty())
        return;
    setAccessibleName(said); // tells of its change by itself
    QAccessibleEvent shown(this, QAccessible::ObjectShow);
    QAccessible::updateAccessibility(&shown);
}
