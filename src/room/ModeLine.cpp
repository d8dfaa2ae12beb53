#include "room/ModeLine.h"

#include "common/Conversions.h"
#include "common/SessionVariables.h"
#include "room/ChannelTable.h"
#include "room/TopicField.h"

#include <QStringList>

namespace {

using namespace Qt::StringLiterals;

// With both signs: -k and -l take a word, too. The masks of e and I and the nicks of q and a are
// left standing for the next letter of these.
constexpr auto lettersWithParameter = "vbohkl"_L1;

void setMode(ChannelModes& modes, QChar letter, bool on)
{
    if (on)
        modes.AddMode(letter);
    else
        modes.RemoveMode(letter);
}

} // namespace

void ModeLine::ApplyModeLine(const QString& target, const QString& text) const
{
    const QStringList words = text.split(u' ');
    bool on = true;
    int parameter = 0;
    for (const QChar letter : words.first()) {
        if (letter == u'+' || letter == u'-') {
            on = letter == u'+';
        } else if (lettersWithParameter.contains(letter)) {
            if (++parameter >= words.size())
                throw RunTimeError(RunTimeError::Number::SubscriptOutOfRange);
            ApplyOneMode(target, on, letter, words[parameter]);
        } else {
            ApplyOneMode(target, on, letter, {});
        }
    }
}

void ModeLine::ApplyOneMode(const QString& target, bool on, QChar letter,
                            const QString& parameter) const
{
    if (target == m_variables.ownNick()) {
        setMode(m_channels.main().modes, letter, on); // user modes share the room's table
        return;
    }
    Room* room = m_channels.entered(target);
    if (!room)
        return;
    switch (letter.unicode()) {
    case u'v':
        room->nicks.SetVoice(parameter, on);
        break;
    case u'o':
        room->nicks.SetOp(parameter, on);
        if (parameter == m_variables.ownNick())
            TopicField::setLocked(room->form.rtbTopic(), !on);
        break;
    case u'h':
        room->nicks.SetHelper(parameter, on);
        break;
    case u'b':
        break;
    case u'k':
        room->modes.ChanKey = on ? parameter : QString();
        setMode(room->modes, letter, on);
        break;
    case u'l':
        room->modes.ChanLimit = on ? toInt16(parameter) : Int16();
        setMode(room->modes, letter, on);
        break;
    default:
        setMode(room->modes, letter, on);
        break;
    }
}
