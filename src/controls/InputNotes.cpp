#include "controls/InputNotes.h"

#include "controls/OneLineField.h"

#include <QLineEdit>

namespace {

using namespace Qt::StringLiterals;

constexpr qsizetype longText = 400;
// What is left of the 512 bytes that servers pass on when sender and room stand in front.
constexpr int passedOn = 430;
constexpr int noLimit = 32767; // of the toolkit's field

QString ofLength(qsizetype length, int limit)
{
    const QString count = limit == noLimit
                              ? QString::number(length) + " characters."_L1
                              : QString::number(limit - length) + " characters left."_L1;
    return count + " What stands behind the first "_L1 + QString::number(passedOn) +
           " or so may be cut off on the way."_L1;
}

} // namespace

InputNotes::InputNotes(QLineEdit* field, QString ofSlash, QWidget* parent)
    : QLabel(parent)
    , m_field(field)
    , m_ofSlash(std::move(ofSlash))
{
    setObjectName(u"notes"_s);
    setProperty("quiet", true);
    setTextFormat(Qt::PlainText);
    setWordWrap(true);
    hide();
    connect(field, &QLineEdit::textChanged, this, &InputNotes::tell);
}

// A paste of several lines comes twice: joined already, from inside the filter that joins them,
// and then as it was.
void InputNotes::tell(const QString& text)
{
    QStringList notes;
    if (text.trimmed().startsWith(u'/'))
        notes += m_ofSlash;
    if (hasLineEnds(text))
        notes += u"The lines of what you put in were joined into one."_s;
    const qsizetype length = m_field->text().size();
    if (length >= longText)
        notes += ofLength(length, m_field->maxLength());
    const QString words = notes.join(u' ');
    if (words == this->text())
        return;
    setText(words);
    setVisible(!words.isEmpty());
}
