#include "text/Links.h"

#include "common/TextHelpers.h"
#include "view/RichTextBox.h"

#include <QDesktopServices>
#include <QUrlQuery>

#include <algorithm>
#include <array>

namespace {

using namespace Qt::StringLiterals;

constexpr std::array linkStarts{"http://"_L1, "ftp://"_L1, "mailto:"_L1, "www."_L1};
constexpr std::array linkEnds{".html"_L1, ".htm"_L1};
constexpr QStringView delimiters(u" ,()][{}\"'\t");

bool isDelimiter(QChar c)
{
    return delimiters.contains(c);
}

// A view may hold a whole evening: it is read in small pieces around the place, and in larger
// ones only where a word is that long.
class Pieces final
{
public:
    qsizetype next() { return std::exchange(m_size, m_size * 2); }

private:
    qsizetype m_size = 64;
};

// The last delimiter at or before an offset, -1 without one.
qsizetype delimiterBefore(const RichTextBox& view, qsizetype offset)
{
    Pieces pieces;
    for (qsizetype end = offset + 1; end > 0;) {
        const qsizetype start = std::max<qsizetype>(end - pieces.next(), 0);
        const QString piece = view.TextRange(start, end - start);
        const auto found = std::find_if(piece.crbegin(), piece.crend(), isDelimiter);
        if (found != piece.crend())
            return start + (piece.crend() - found) - 1;
        end = start;
    }
    return -1;
}

// The first delimiter at or behind an offset, -1 without one.
qsizetype delimiterBehind(const RichTextBox& view, qsizetype offset, qsizetype length)
{
    Pieces pieces;
    for (qsizetype start = offset; start < length;) {
        const QString piece = view.TextRange(start, pieces.next());
        const auto found = std::find_if(piece.cbegin(), piece.cend(), isDelimiter);
        if (found != piece.cend())
            return start + (found - piece.cbegin());
        start += std::max<qsizetype>(piece.size(), 1);
    }
    return -1;
}

// Some mail programs attach the local file that such an address names.
bool attachesFile(const QUrl& url)
{
    const auto items = QUrlQuery(url).queryItems(QUrl::FullyDecoded);
    return std::ranges::any_of(items, [](const auto& item) {
        return item.first.startsWith("attach"_L1, Qt::CaseInsensitive);
    });
}

} // namespace

bool isLink(const QString& word)
{
    const QString lowered = word.toLower();
    return std::ranges::any_of(linkStarts, [&](auto start) { return lowered.startsWith(start); }) ||
           std::ranges::any_of(linkEnds, [&](auto end) { return lowered.endsWith(end); });
}

MousePointer pointerFor(const QString& word)
{
    const bool reacts =
        isLink(word) || word.startsWith(u'#') || word.startsWith("irc."_L1, Qt::CaseInsensitive);
    return reacts ? MousePointer::Custom : MousePointer::Arrow;
}

QString WordAt(const RichTextBox& view, qsizetype offset)
{
    const qsizetype length = view.TextLength();
    if (offset < 1 || offset >= length)
        return {};
    const qsizetype left = offset - 1;
    const qsizetype start = delimiterBefore(view, left);
    if (start < 0)
        return {};
    qsizetype end = delimiterBehind(view, left, length);
    if (end < 0)
        end = length - 1; // a last word that nothing ends loses its last letter
    QString word =
        withoutCarriageReturns(view.TextRange(start + 1, std::max<qsizetype>(end - start - 1, 0)));
    if (!word.isEmpty() && word.back().isHighSurrogate())
        word.chop(1); // half a letter is none
    return word;
}

std::optional<QUrl> outgoingUrl(const QString& link)
{
    const bool bare = link.startsWith("www."_L1, Qt::CaseInsensitive);
    const QUrl url(bare ? QString("http://"_L1 + link) : link);
    if (!url.isValid())
        return std::nullopt;
    const QString scheme = url.scheme();
    const bool isWeb = scheme == "http"_L1 || scheme == "https"_L1 || scheme == "ftp"_L1;
    if (isWeb && !url.host().isEmpty())
        return url;
    if (scheme == "mailto"_L1 && !url.path().isEmpty() && !attachesFile(url))
        return url;
    return std::nullopt;
}

QList<LinkSpan> linksIn(const QString& line)
{
    QList<LinkSpan> links;
    const auto parts = [](QChar c) {
        return isDelimiter(c) || c == u'<' || c == u'>' || c == u'\n' || c == u'\r';
    };
    for (qsizetype start = 0; start < line.size(); ++start) {
        qsizetype end = start;
        while (end < line.size() && !parts(line[end]))
            ++end;
        const qsizetype next = end;
        while (end > start && QStringView(u".:;!?").contains(line[end - 1]))
            --end;
        const QString word = line.sliced(start, end - start);
        const bool mayBe = word.contains(u':') || word.startsWith("www."_L1, Qt::CaseInsensitive);
        if (mayBe && outgoingUrl(word))
            links.append({start, end});
        start = next;
    }
    return links;
}

void DesktopLinkOpener::OpenLink(const QString& link)
{
    if (const std::optional<QUrl> url = outgoingUrl(link))
        QDesktopServices::openUrl(*url);
}
