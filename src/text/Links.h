#pragma once

#include "view/ViewLinks.h"

#include <QString>
#include <QUrl>

#include <optional>

class RichTextBox;

// What reacts to the pointer in a view, and where a double click on it leads.

bool isLink(const QString& word);

// The shapes of the pointer over a view.
enum class MousePointer { Default = 0, Arrow = 1, Custom = 99 };

// Custom over links, room names and server names. A double click knows only the first two.
MousePointer pointerFor(const QString& word);

// The word under the pointer, by the offset of the character there; an offset outside the text,
// -1 among them, has none. A place is taken for one further right than it is: on its first letter
// a word is not found, on the blank behind it it is. A word ends at its delimiters and not with
// the line, so one that begins a line has a line feed in front, and one that begins the view is
// not found at all: nothing delimits it.
QString WordAt(const RichTextBox& view, qsizetype offset);

// Where a link may lead outside the program: http, https, ftp, mailto, and a bare "www." word,
// which is taken for http. None for everything else, names of local files above all.
std::optional<QUrl> outgoingUrl(const QString& link);

// What in a line may leave the program, without the marks of a sentence that ends there.
QList<LinkSpan> linksIn(const QString& line);

// Hands links to the desktop. What may not leave the program is dropped in silence.
class LinkOpener
{
public:
    virtual ~LinkOpener() = default;
    virtual void OpenLink(const QString& link) = 0;
};

class DesktopLinkOpener final : public LinkOpener
{
public:
    void OpenLink(const QString& link) override;
};
