#include "commands/InputLine.h"

#include "common/ControlCharacters.h"
#include "common/SessionVariables.h"
#include "common/TextHelpers.h"
#include "controls/KeyCodes.h"
#include "platform/Dialogs.h"
#include "room/Room.h"
#include "text/OwnTextStyle.h"
#include "text/TextWriter.h"
#include "wire/LineSink.h"

namespace {

using namespace Qt::StringLiterals;

constexpr auto rawPrefix = "IRC "_L1;

} // namespace

int InputLine::KeyPress(int character)
{
    m_parts.DataOut.setTypeface(beforeNul(m_parts.variables.FontName), m_parts.variables.FontSize);
    if (character != key_codes::Enter)
        return character;
    const QString text = m_parts.DataOut.text();
    const QString trimmed = trimBlanks(text);
    if (trimmed.isEmpty())
        return character;
    if (trimmed.startsWith(u'!'))
        sendForBots(text);
    else if (trimmed.startsWith(rawPrefix))
        m_parts.server.SendData(trimmed.mid(rawPrefix.size()));
    else
        sendFormatted(text);
    m_parts.DataOut.setText({});
    return 0;
}

int InputLine::KeyDown(int keyCode)
{
    if (keyCode != key_codes::Up && keyCode != key_codes::Down)
        return keyCode;
    const std::optional<QString> line =
        keyCode == key_codes::Up ? m_history.back() : m_history.forward();
    if (!line) {
        m_parts.dialogs.Beep();
        return keyCode;
    }
    m_parts.DataOut.setText(*line);
    return 0;
}

void InputLine::sendForBots(const QString& text)
{
    m_parts.server.SendData("PRIVMSG "_L1 % m_parts.room.ChannelName % " :"_L1 % text);
    m_parts.writer.WriteView(m_parts.room.form.DataIn(), strColor % "04<"_L1 %
                                                             m_parts.variables.MyNick % "> "_L1 %
                                                             m_parts.style.coded(text));
}

void InputLine::sendFormatted(const QString& text)
{
    const QString message = m_parts.style.coded(text);
    m_parts.server.SendData("PRIVMSG "_L1 % m_parts.room.ChannelName % " :"_L1 % message);
    // No blank behind the ">": the one behind the colour number stands there.
    m_parts.writer.WriteView(m_parts.room.form.DataIn(), strColor % "04<"_L1 %
                                                             m_parts.variables.MyNick % strBold %
                                                             strBold % u'>' % message);
    DoHistory();
}

void InputLine::DoHistory()
{
    remember(m_parts.DataOut.text());
}

void InputLine::remember(const QString& text)
{
    m_history.add(text, m_parts.variables.MaxTextHistory);
}
