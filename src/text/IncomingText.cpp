#include "text/IncomingText.h"

#include "common/ControlCharacters.h"
#include "common/TextHelpers.h"
#include "text/TextWriter.h"
#include "wire/LineSink.h"

using namespace Qt::StringLiterals;

const IncomingText::Manner IncomingText::room{
    .versionReply = "Quill Harbor Messengr for Windows OS"_L1,
    .headerColorEnds = false,
};

const IncomingText::Manner IncomingText::privateTalk{
    .versionReply = "Tarnwyk Messenger for Windows9x"_L1,
    .headerColorEnds = true,
};

void IncomingText::PutText(RichTextBox& view, const QString& nick, const QString& text) const
{
    static const QString action = strAction % "ACTION "_L1;
    static const QString version = strAction % "VERSION"_L1 % strAction;
    if (text.startsWith(action)) {
        // The last character goes unseen, whether it closes the action or not.
        const QString what = CutRight(CutLeft(text, action.size()), 1);
        m_writer.WriteView(view, strColor % "06"_L1 % nick % u' ' % what);
        tellWritten(view, nick, what);
    } else if (text.startsWith(version)) {
        m_server.SendData("CTCPREPLY "_L1 % nick % " VERSION :"_L1 % m_manner.versionReply);
    } else {
        const QStringView end(&strColor, m_manner.headerColorEnds ? 1 : 0);
        const QString line = strColor % "12<"_L1 % nick % u'>' % end % u' ' % text;
        m_writer.WriteView(view, trimBlanks(line));
        tellWritten(view, nick, text);
    }
}

void IncomingText::tellWritten(RichTextBox& view, const QString& nick, const QString& text) const
{
    if (m_written)
        m_written(view, nick, text);
}
