#include "controls/OneLineField.h"

#include <QLineEdit>
#include <QRegularExpression>

#include <algorithm>

namespace {

using namespace Qt::StringLiterals;

const QRegularExpression& lineEnds()
{
    static const QRegularExpression pattern(u"[\r\n\u2028\u2029]+"_s);
    return pattern;
}

} // namespace

bool hasLineEnds(const QString& text)
{
    return text.contains(lineEnds());
}

void keepToOneLine(QLineEdit* field)
{
    QObject::connect(field, &QLineEdit::textChanged, field, [field](const QString& text) {
        if (!hasLineEnds(text))
            return;
        const int caret = field->cursorPosition();
        QString line = text;
        line.replace(lineEnds(), u" "_s);
        // A copied name often brings the end of its line along.
        if (line.endsWith(u' ') && !text.endsWith(u' '))
            line.chop(1);
        field->setText(line);
        field->setCursorPosition(std::min(caret, static_cast<int>(line.size())));
    });
}
