#pragma once

#include <QRgb>
#include <QSize>
#include <QString>

#include <algorithm>
#include <functional>
#include <limits>
#include <utility>

// A picture that stands in text as one character.
struct InlinePicture
{
    QString code;     // what copying the picture gives
    QString resource; // path of its drawing (SVG)
    QSize size;       // logical pixels

    bool operator==(const InlinePicture&) const = default;
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

    // Several changes of one line: the view may put off its layout until the last EditBlock ends.
    // Reading stays exact in between.
    virtual void beginEdit() = 0;
    virtual void endEdit() = 0;

    // Called after every change of the text, at once, also inside the handler itself.
    void onChange(std::function<void()> handler) { m_change = std::move(handler); }

    // The lowest offset that any change has touched since this was last asked: what stands before
    // it is as it was then. There is one asker, whom the next change tells from where to look.
    qsizetype takeChangedFrom()
    {
        return std::min(std::exchange(m_changedFrom, unchanged), TextLength());
    }

    QString Tag;

protected:
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
