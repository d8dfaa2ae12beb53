#pragma once

#include <QRgb>
#include <QSize>
#include <QString>

#include <algorithm>
#include <functional>
#include <limits>
#include <optional>
#include <span>
#include <utility>

// A picture that stands in text as one character.
struct InlinePicture
{
    QString code;     // what copying the picture gives
    QString resource; // path of its drawing (SVG)
    QSize size;       // logical pixels

    bool operator==(const InlinePicture&) const = default;
};

// A line as it is to stand at the end of a view, without its line end. Its text has neither line
// ends nor code 0 in it.
struct FormattedLine
{
    struct Look
    {
        QRgb color = qRgb(0, 0, 0);
        bool bold = false;
        bool underline = false;
        bool strikeThru = false;

        bool operator==(const Look&) const = default;
    };
    struct Run
    {
        qsizetype start = 0; // it ends where the next one starts
        Look look;
    };

    qsizetype runEnd(std::size_t index) const
    {
        return index + 1 < runs.size() ? runs[index + 1].start : text.size();
    }

    QStringView text;
    std::span<const Run> runs;
    Look lineEnd;
    bool endsInLastRun = false; // otherwise the line end is a run of its own
};

// What becomes of a line as soon as it stands in a view: all of it stays text, or a picture takes
// the place of a part of it.
struct LineOutcome
{
    qsizetype start = 0;
    qsizetype length = 0;
    const InlinePicture* picture = nullptr;
};

// A view of formatted text with an insertion point. Offsets and lengths are in characters, a
// line end counts as two (CR LF), a picture as one. Offsets beyond the end are taken as the end.
// The Sel... attributes are those of what is inserted next. They hold until they are set anew:
// moving the insertion point does not change them, so the style of a line survives whatever its
// own insertions set off.
class RichTextBox
{
public:
    // What a picture is in Text.
    static constexpr QChar pictureCharacter{QChar::ObjectReplacementCharacter};

    virtual ~RichTextBox() = default;

    virtual QString Text() const = 0;
    // Replaces everything; the insertion point is at the start afterwards.
    virtual void setText(const QString& text) = 0;
    virtual qsizetype TextLength() const = 0;
    // The part of Text from an offset on, shorter where the text ends.
    virtual QString TextRange(qsizetype start, qsizetype length) const = 0;

    virtual qsizetype SelStart() const = 0;
    virtual void setSelStart(qsizetype offset) = 0; // SelLength becomes 0
    virtual qsizetype SelLength() const = 0;
    virtual void setSelLength(qsizetype length) = 0;
    virtual QString SelText() const = 0;
    // Replaces the selection; the insertion point stands behind the new text afterwards. Of a
    // text with code 0 in it only what stands before it is inserted. CR LF, CR and LF are each
    // one line end.
    virtual void setSelText(const QString& text) = 0;

    virtual QRgb SelColor() const = 0;
    virtual void setSelColor(QRgb color) = 0;
    virtual bool SelBold() const = 0;
    virtual void setSelBold(bool on) = 0;
    virtual bool SelUnderline() const = 0;
    virtual void setSelUnderline(bool on) = 0;
    virtual bool SelStrikeThru() const = 0;
    virtual void setSelStrikeThru(bool on) = 0;
    virtual QString SelFontName() const = 0;
    virtual void setSelFontName(const QString& name) = 0;
    virtual int SelFontSize() const = 0; // points
    virtual void setSelFontSize(int points) = 0;

    // Replaces the selection by a picture.
    virtual void InsertPicture(const InlinePicture& picture) = 0;

    // Lets the text from an offset on consist of some stretches of itself, counted from there, and
    // of pictures, all in one change. False: nothing has been done, it is more than one line.
    struct Stretch
    {
        qsizetype start = 0;
        qsizetype length = 0;
        const InlinePicture* picture = nullptr;
    };
    virtual bool rearrange(qsizetype, std::span<const Stretch>) { return false; }

    // Several changes of one line: the view may put off its layout until the last EditBlock ends.
    // Reading stays exact in between.
    virtual void beginEdit() = 0;
    virtual void endEdit() = 0;

    // The line that was written last is meant for the reader: it is made to stand out.
    virtual void markLastLine() {}
    // Whether the reader has it before him, in the window that he uses.
    virtual bool isLookedAt() const { return true; }

    // Called after every change of the text, at once, also inside the handler itself.
    void onChange(std::function<void()> handler) { m_change = std::move(handler); }

    // What the change handler would make of a line, was it inserted at the end run by run; nothing
    // where that is not known beforehand. A line that it answers for is inserted, and the handler
    // is not called.
    using Forecast = std::function<std::optional<LineOutcome>(const FormattedLine& line)>;
    void onLine(Forecast forecast) { m_forecast = std::move(forecast); }

    // The same in one change: inserts a line in the present font, the insertion point then stands
    // behind it. False: nothing has been done, the line has to be inserted run by run.
    virtual bool appendLine(const FormattedLine& line) = 0;

    // The lowest offset that any change has touched since this was last asked: what stands before
    // it is as it was then. There is one asker, whom the next change tells from where to look.
    qsizetype takeChangedFrom()
    {
        return std::min(std::exchange(m_changedFrom, unchanged), TextLength());
    }

    QString Tag;

protected:
    std::optional<LineOutcome> forecast(const FormattedLine& line) const
    {
        return m_forecast ? m_forecast(line) : std::nullopt;
    }

    // A view that does not tell from where its text has changed has changed from its start.
    void raiseChange(qsizetype from = 0)
    {
        m_changedFrom = std::min(m_changedFrom, from);
        if (m_change)
            m_change();
    }

private:
    static constexpr qsizetype unchanged = std::numeric_limits<qsizetype>::max();

    std::function<void()> m_change;
    Forecast m_forecast;
    qsizetype m_changedFrom = 0;
};

class EditBlock final
{
public:
    explicit EditBlock(RichTextBox& view)
        : m_view(view)
    {
        m_view.beginEdit();
    }
    ~EditBlock() { m_view.endEdit(); }
    EditBlock(const EditBlock&) = delete;
    EditBlock& operator=(const EditBlock&) = delete;

private:
    RichTextBox& m_view;
};
