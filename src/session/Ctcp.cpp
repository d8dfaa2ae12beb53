#include "session/Ctcp.h"

#include "common/ControlCharacters.h"
#include "common/TextHelpers.h"
#include "talk/QueryTable.h"
#include "text/IncomingText.h"
#include "text/MainView.h"
#include "view/RichTextBox.h"
#include "wire/LineSink.h"

using namespace Qt::StringLiterals;

void Ctcp::HandleCTCP(const QString& nick, const QString& text) const
{
    using Handler = void (Ctcp::*)(const QString&, const QString&) const;
    struct Request
    {
        QLatin1StringView word;
        Handler handler;
    };
    static constexpr Request requests[]{
        {"version"_L1, &Ctcp::answerVersion},
        {"ping"_L1, &Ctcp::answerPing},
        {"action"_L1, &Ctcp::showAction},
    };

    QString word;
    QString rest;
    SplitAt(CutRight(CutLeft(text, 1), 1), u' ', word, rest);
    const QString lowered = word.toLower();
    for (const Request& request : requests) {
        if (lowered == request.word)
            (this->*request.handler)(nick, rest);
    }
}

void Ctcp::CTCPReply(const QString& nick, const QString& text) const
{
    m_parts.server.SendData("NOTICE "_L1 % nick % " :"_L1 % strAction % text % strAction);
}

void Ctcp::answerVersion(const QString& nick, const QString&) const
{
    m_parts.mainView.write(strColor % "05"_L1 % strBold % nick % strBold %
                           " has just requested your version"_L1);
    CTCPReply(nick, u"VERSION QuillHarbor Messenger 1.0"_s);
}

void Ctcp::answerPing(const QString& nick, const QString&) const
{
    m_parts.mainView.write(strColor % "05"_L1 % strBold % nick % strBold %
                           " has just pinged you"_L1);
    CTCPReply(nick, u"PING 0 seconds, cause Quill Harbor Messenger is elite."_s);
}

void Ctcp::showAction(const QString& nick, const QString& rest) const
{
    PrivateWindow* window = m_parts.queries.windowOf(nick);
    if (!window)
        return;
    // The room gets it, headed by all that stands in the private window, which itself gets
    // nothing. Odd, and kept.
    m_parts.roomText.PutText(m_parts.mainView.view(), window->DataIn().Text(),
                             strColor % "06"_L1 % nick % u' ' % rest);
}
