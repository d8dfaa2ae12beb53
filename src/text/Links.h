#pragma once

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

// The word that the pointer is on, given the offset of the character under it; -1 and any other
// offset outside the text give the empty text. The search starts one character further left: the
// first letter of a word gives nothing, the blank behind a word still gives the word. Line ends do
// not part words, so the first word of a line begins with the line feed before it, and the first
// word of a view is never found.
QString WordAt(const RichTextBox& view, qsizetype offset);

// Where a link may lead outside the program: http, https, ftp, mailto, and a bare "www." word,
// which is taken for http. None for everything else, names of local files above all.
std::optional<QUrl> outgoingUrl(const QString& link);

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
