#pragma once

#include <QString>

// What the setting connect/server and the option --server hold: a host alone, which is a server of
// the house, or irc://host[:port] or ircs://host[:port], which is a network of today with lines and
// a port of its own. Take the address by parse(); a wrong one has an error and nothing to connect
// to.
struct ServerAddress
{
    enum class Kind { House, Standard };

    static constexpr int plainPort = 6667;
    static constexpr int tlsPort = 6697;

    // Blanks around the text do not count. Text from the settings file: cut it before its code 0.
    static ServerAddress parse(const QString& text);

    bool isValid() const { return error.isEmpty(); }
    bool isStandard() const { return kind == Kind::Standard; }

    bool operator==(const ServerAddress&) const = default;

    Kind kind = Kind::House;
    bool tls = false;
    QString host;      // what to connect to: ASCII, without brackets; of the house as it was typed
    QString shownHost; // what to show: international letters, an IPv6 address in its brackets
    int port = plainPort;
    QString error; // which part is wrong, as a sentence; empty when nothing is
};
