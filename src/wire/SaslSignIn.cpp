#include "wire/SaslSignIn.h"

#include <QByteArray>

using namespace Qt::StringLiterals;

namespace {

constexpr qsizetype chunkLength = 400;
constexpr auto capability = "sasl"_L1;
constexpr auto mechanism = "PLAIN"_L1;

// "sasl", or "sasl=" with a list of mechanisms that has ours.
bool offersPlain(const QString& list)
{
    for (const QString& word : list.split(u' ', Qt::SkipEmptyParts)) {
        const QString name = word.section(u'=', 0, 0);
        const QStringList mechanisms = word.section(u'=', 1).split(u',', Qt::SkipEmptyParts);
        if (name == capability && (mechanisms.isEmpty() || mechanisms.contains(mechanism)))
            return true;
    }
    return false;
}

} // namespace

void SaslSignIn::begin(const Account& account)
{
    m_account = account;
    m_offered = false;
    m_state = account.password.isEmpty() ? State::Idle : State::Listing;
    if (m_state == State::Listing)
        m_ways.send(u"CAP LS 302"_s);
}

bool SaslSignIn::takes(const IRCMessage& message)
{
    if (m_state == State::Idle)
        return false;
    const QString command = message.Command.toString().toUpper();
    if (command == "CAP"_L1) {
        capabilities(message);
        return true;
    }
    if (command == "AUTHENTICATE"_L1) {
        if (m_state == State::Authenticating && GetParams(message, 1, 1) == u'+')
            authenticate();
        return true;
    }
    if (command == "001"_L1 && m_state != State::Succeeded) {
        m_state = State::Idle; // it welcomes without an answer: the usual way is left
        return false;
    }
    if (m_state == State::Listing && (command == "421"_L1 || command == "451"_L1) &&
        GetParams(message, 2, 2).compare("CAP"_L1, Qt::CaseInsensitive) == 0) {
        m_state = State::Idle; // it does not know the word
        return true;
    }
    return outcome(message);
}

// CAP nick LS|ACK|NAK [*] :words
void SaslSignIn::capabilities(const IRCMessage& message)
{
    const QString word = GetParams(message, 2, 2).toUpper();
    if (word == "LS"_L1 && m_state == State::Listing) {
        const bool isMore = GetParams(message, 3, 3) == u'*' && message.Params.size() > 3;
        m_offered = m_offered || offersPlain(GetParams(message, isMore ? 4 : 3, -1));
        if (isMore)
            return;
        if (!m_offered)
            return end(State::Idle, {});
        m_state = State::Asked;
        m_ways.send("CAP REQ :"_L1 + capability);
    } else if (word == "ACK"_L1 && m_state == State::Asked) {
        m_state = State::Authenticating;
        m_ways.send("AUTHENTICATE "_L1 + mechanism);
    } else if (word == "NAK"_L1 && m_state == State::Asked) {
        end(State::Idle, {});
    }
}

void SaslSignIn::authenticate() const
{
    const QByteArray name = m_account.nick.toUtf8();
    const QByteArray said = name + '\0' + name + '\0' + m_account.password.toUtf8();
    const QString coded = QString::fromLatin1(said.toBase64());
    for (qsizetype at = 0; at < coded.size(); at += chunkLength)
        m_ways.send("AUTHENTICATE "_L1 + coded.mid(at, chunkLength));
    if (coded.size() % chunkLength == 0)
        m_ways.send(u"AUTHENTICATE +"_s); // a full piece at the end says that more follows
}

bool SaslSignIn::outcome(const IRCMessage& message)
{
    const QStringView number = message.Command;
    if (number == "900"_L1 || number == "908"_L1)
        return true; // what follows says the same
    const bool success = number == "903"_L1 || number == "907"_L1;
    const bool refusal =
        number == "902"_L1 || number == "904"_L1 || number == "905"_L1 || number == "906"_L1;
    if (!success && !refusal)
        return false;
    if (m_state == State::Authenticating) {
        if (success)
            end(State::Succeeded,
                "You are signed in to the account of "_L1 + m_account.nick + u'.');
        else
            end(State::Idle, "The server did not sign you in to the account of "_L1 +
                                 m_account.nick + ": "_L1 + GetParams(message, 2, -1));
    }
    return true;
}

void SaslSignIn::end(State state, const QString& told)
{
    m_state = state;
    m_ways.send(u"CAP END"_s);
    if (!told.isEmpty())
        m_ways.tell(told, state == State::Succeeded);
}
