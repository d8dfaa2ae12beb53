#include "session/IdentResponder.h"

#include "common/ControlCharacters.h"
#include "common/SessionVariables.h"
#include "common/TextHelpers.h"
#include "platform/EventLoop.h"
#include "platform/Handlers.h"
#include "text/MainView.h"
#include "wire/Charset.h"
#include "wire/Winsock.h"

namespace {

using namespace Qt::StringLiterals;

constexpr auto reply = " : USERID : UNIX : "_L1;
constexpr int yieldsForTheQuestion = 500;

bool isPortPair(const QString& text)
{
    return text.contains(", "_L1);
}

} // namespace

IdentResponder::IdentResponder(const Parts& parts, const Handlers& handlers)
    : m_parts(parts)
{
    Winsock* ident = &m_parts.ident;
    handlers.connect(ident, &Winsock::ConnectionRequest, this, [this](qintptr requestID) {
        skipRest([&] { IDENT_ConnectionRequest(requestID); });
    });
    handlers.connect(ident, &Winsock::DataArrival, this,
                     [this] { skipRest([this] { IDENT_DataArrival(); }); });
    handlers.connect(ident, &Winsock::ErrorEvent, this, [this](int, const QString& description) {
        skipRest([&] { IDENT_Error(description); });
    });
}

void IdentResponder::IDENT_ConnectionRequest(qintptr requestID)
{
    Winsock& ident = m_parts.ident;
    ident.Close();
    ident.Accept(requestID);
    send(QString::number(ident.LocalPort) + ", "_L1 + QString::number(ident.RemotePort) + reply +
         m_parts.variables.IdentName + "\r\n"_L1);
    for (int i = 0; i < yieldsForTheQuestion; ++i)
        m_parts.events.DoEvents();
    ident.Close();
}

void IdentResponder::IDENT_DataArrival()
{
    const QString question = Charset().decode(m_parts.ident.GetData());
    if (!isPortPair(question))
        return;
    const QString ports = CutRight(question, 2); // the line end
    const QString answer = ports + reply + m_parts.variables.IdentName;
    resumeNext([&] { show("*** IDENT : "_L1 + ports); }, //
               [&] { send(answer); }, [&] { show("*** IDENT reply : "_L1 + answer); });
    m_parts.ident.Close();
}

void IdentResponder::send(const QString& text)
{
    m_parts.ident.SendData(Charset().encode(text));
}

// A view shows nothing behind code 0, and the line's end would be lost with the padding.
void IdentResponder::show(const QString& text) const
{
    m_parts.mainView.write(beforeNul(text));
}

void IdentResponder::IDENT_Error(const QString& description)
{
    m_parts.mainView.write(strColor % "04IDENT Error "_L1 % strColor % description);
}
