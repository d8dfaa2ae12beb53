#include "wire/ServerAddress.h"

#include <QHostAddress>
#include <QRegularExpression>
#include <QUrl>

#include <algorithm>
#include <optional>

namespace {

using namespace Qt::StringLiterals;

constexpr int longestName = 253;
constexpr int longestLabel = 63;
constexpr int lastPort = 65535;

struct Scheme
{
    QLatin1StringView name;
    bool tls;
    int port;
};

constexpr Scheme schemes[]{
    {"irc"_L1, false, ServerAddress::plainPort},
    {"ircs"_L1, true, ServerAddress::tlsPort},
};

ServerAddress wrong(const QString& error)
{
    ServerAddress address;
    address.error = error;
    address.port = 0;
    return address;
}

bool isIPv6(const QString& text)
{
    QHostAddress address;
    return text.contains(u':') && address.setAddress(text) &&
           address.protocol() == QAbstractSocket::IPv6Protocol;
}

bool isNameCharacter(QChar c)
{
    return c.unicode() < 0x80 && (c.isLetterOrNumber() || c == u'-' || c == u'_');
}

bool isName(QString name)
{
    if (name.endsWith(u'.')) // a name that no search list may add to
        name.chop(1);
    if (name.isEmpty() || name.size() > longestName)
        return false;
    const QStringList labels = name.split(u'.');
    return std::ranges::all_of(labels, [](const QString& label) {
        return !label.isEmpty() && label.size() <= longestLabel && !label.startsWith(u'-') &&
               std::ranges::all_of(label, isNameCharacter);
    });
}

ServerAddress houseServer(const QString& host)
{
    if (host.isEmpty())
        return wrong(u"There is no server's name."_s);
    if (!isIPv6(host)) {
        if (host.contains(u'/'))
            return wrong("\""_L1 + host + "\" is no host: a host alone has no \"/\"."_L1);
        if (host.contains(u'@'))
            return wrong("\""_L1 + host + "\" is no host: a host alone has no user."_L1);
        if (host.contains(u':'))
            return wrong("A host alone has no port; with a port it is irc://"_L1 + host +
                         " or, with TLS, ircs://"_L1 + host + u'.');
    }
    ServerAddress address;
    address.host = address.shownHost = host;
    return address;
}

std::optional<int> portOf(const QString& text)
{
    const bool isNumber = !text.isEmpty() &&
                          std::ranges::all_of(text, [](QChar c) { return c >= u'0' && c <= u'9'; });
    bool ok = false;
    const int port = text.toInt(&ok);
    return isNumber && ok && port >= 1 && port <= lastPort ? std::optional(port) : std::nullopt;
}

// The host and what stands behind it, ":port" or nothing.
struct Authority
{
    QString host;
    QString behind;
    bool bracketed = false;
};

std::optional<Authority> split(const QString& text)
{
    if (!text.startsWith(u'[')) {
        const qsizetype colon = text.indexOf(u':');
        return colon < 0 ? Authority{text, {}} : Authority{text.left(colon), text.mid(colon)};
    }
    const qsizetype end = text.indexOf(u']');
    if (end < 0)
        return {};
    return Authority{text.mid(1, end - 1), text.mid(end + 1), true};
}

// The error of a host, or nothing when it is one; fills in its two forms.
QString takeHost(const Authority& authority, ServerAddress& address)
{
    const QString& host = authority.host;
    if (authority.bracketed) {
        if (!isIPv6(host))
            return u'"' + host + "\" in the brackets is no IPv6 address."_L1;
        address.host = host;
        address.shownHost = u'[' + host + u']';
        return {};
    }
    if (host.isEmpty())
        return u"There is no server's name behind the \"//\"."_s;
    address.host = QString::fromLatin1(QUrl::toAce(host));
    if (!isName(address.host))
        return u'"' + host + "\" is no server's name."_L1;
    address.shownHost = QUrl::fromAce(address.host.toLatin1());
    return {};
}

ServerAddress standardServer(const Scheme& scheme, const QString& rest)
{
    const qsizetype end = rest.indexOf(QRegularExpression(u"[/?#]"_s));
    const QString tail = end < 0 ? QString() : rest.mid(end);
    if (!tail.isEmpty() && tail != u'/')
        return wrong("The address has to end before \""_L1 + tail +
                     "\": it names a server and nothing on it."_L1);
    const QString place = end < 0 ? rest : rest.left(end);
    if (place.contains(u'@'))
        return wrong(u"The address names a user; who you are stands in the sign-in form."_s);
    const std::optional<Authority> authority = split(place);
    if (!authority)
        return wrong(u"The bracket around the IPv6 address is not closed."_s);

    ServerAddress address;
    address.kind = ServerAddress::Kind::Standard;
    address.tls = scheme.tls;
    address.port = scheme.port;
    if (!authority->bracketed && isIPv6(place))
        return wrong("An IPv6 address stands in brackets: ["_L1 + place + "]."_L1);
    if (const QString error = takeHost(*authority, address); !error.isEmpty())
        return wrong(error);
    if (authority->behind.isEmpty())
        return address;
    const QString number = authority->behind.mid(1);
    const std::optional<int> port = portOf(number);
    if (!authority->behind.startsWith(u':') || !port)
        return wrong(u'"' + (number.isEmpty() ? authority->behind : number) +
                     "\" is no port: a port is a number from 1 to 65535."_L1);
    address.port = *port;
    return address;
}

} // namespace

ServerAddress ServerAddress::parse(const QString& text)
{
    const QString trimmed = text.trimmed();
    const qsizetype mark = trimmed.indexOf("://"_L1);
    const auto isNoLetter = [](QChar c) {
        return c.isSpace() || c.category() == QChar::Other_Control;
    };
    if (std::ranges::any_of(trimmed, isNoLetter))
        return wrong(u"There is a blank in the address."_s);
    if (mark < 0)
        return houseServer(trimmed);
    const QString name = trimmed.left(mark);
    for (const Scheme& scheme : schemes) {
        if (name.compare(scheme.name, Qt::CaseInsensitive) == 0)
            return standardServer(scheme, trimmed.mid(mark + 3));
    }
    return wrong(u'"' + name + "://\" leads to no chat: an address begins with irc:// or, "_L1 +
                 "with TLS, with ircs://."_L1);
}
