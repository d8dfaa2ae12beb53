#include "session/DebugWin.h"

#include <QIcon>
#include <QPlainTextEdit>
#include <QVBoxLayout>

namespace {

using namespace Qt::StringLiterals;

constexpr int longestText = 60000; // characters

} // namespace

DebugWin::DebugWin()
    : txtDataIn(new QPlainTextEdit(this))
{
    setObjectName(u"DebugWin"_s);
    setWindowTitle(u"DebugWin"_s);
    setWindowIcon(QIcon(u":/icons/tray.svg"_s)); // the tray borrows it
    txtDataIn->setObjectName(u"txtDataIn"_s);
    txtDataIn->setAccessibleName(u"Raw traffic"_s);
    txtDataIn->setReadOnly(true);
    txtDataIn->setUndoRedoEnabled(false);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(txtDataIn);
    resize(640, 400);
}

void DebugWin::received(const QString& data)
{
    if (txtDataIn->document()->characterCount() - 1 + data.size() > longestText)
        txtDataIn->clear();
    append(">> "_L1 + data + "\r\n"_L1);
}

void DebugWin::sent(const QString& line)
{
    append("<< "_L1 + line + "\r\n"_L1);
}

void DebugWin::append(const QString& text)
{
    txtDataIn->moveCursor(QTextCursor::End);
    txtDataIn->insertPlainText(text);
    txtDataIn->moveCursor(QTextCursor::End);
}
