#include "session/SessionStart.h"

#include "common/Conversions.h"
#include "common/SessionVariables.h"
#include "platform/EventLoop.h"
#include "session/Ports.h"
#include "settings/Settings.h"
#include "text/OwnTextStyle.h"
#include "wire/HousePorts.h"

#include <QSysInfo>

namespace {

using namespace Qt::StringLiterals;

using Take = void (*)(SessionVariables& variables, const QString& value);

struct SettingRow
{
    QLatin1StringView section;
    QLatin1StringView key;
    QLatin1StringView missing;
    Take take;
};

// Read, checked and left without effect.
template<auto convert>
void ignored(SessionVariables&, const QString& value)
{
    convert(value);
}

template<QString SessionVariables::*variable>
void text(SessionVariables& variables, const QString& value)
{
    variables.*variable = value;
}

template<bool SessionVariables::*variable>
void truth(SessionVariables& variables, const QString& value)
{
    variables.*variable = toBoolean(value);
}

template<Int16 SessionVariables::*variable>
void number(SessionVariables& variables, const QString& value)
{
    variables.*variable = toInt16(value);
}

// Stands for what is in the sign-in form at that moment.
constexpr QLatin1StringView nicknameOfForm;

constexpr SettingRow rows[]{
    {"connect"_L1, "server"_L1, QH_SERVER_HOST ""_L1, text<&SessionVariables::ServerHost>},
    {"connect"_L1, "nick"_L1, nicknameOfForm, text<&SessionVariables::MyNick>},
    {"connect"_L1, "fullname"_L1, "Quill Quill Quill Quill Harbor Messenger V 1.0"_L1,
     text<&SessionVariables::FullName>},
    {"connect"_L1, "ident"_L1, "QHM"_L1, text<&SessionVariables::IdentName>},
    {"connect"_L1, "port"_L1, "6667"_L1, ignored<toInt32>},
    {"connect"_L1, "connonload"_L1, "true"_L1, ignored<toBoolean>},
    {"connect"_L1, "reconnect"_L1, "true"_L1, truth<&SessionVariables::Reconnect>},
    {"connect"_L1, "invisible"_L1, "false"_L1, ignored<toBoolean>},
    {"irc"_L1, "update"_L1, "true"_L1, ignored<toBoolean>},
    {"connect"_L1, "retry"_L1, "true"_L1, ignored<toBoolean>},
    {"connect"_L1, "retrynum"_L1, "10"_L1, ignored<toInt16>},
    {"connect"_L1, "autojoin"_L1, "#Harbor"_L1, text<&SessionVariables::AutoJoin>},
    {"windows"_L1, "stretch"_L1, "true"_L1, ignored<toBoolean>},
    {"display"_L1, "fontsize"_L1, "10"_L1, number<&SessionVariables::FontSize>},
    {"display"_L1, "fontname"_L1, "Arial"_L1, text<&SessionVariables::FontName>},
    {"irc"_L1, "whoisquery"_L1, "false"_L1, truth<&SessionVariables::WhoisQuery>},
    {"irc"_L1, "maxtexthistory"_L1, "30"_L1, number<&SessionVariables::MaxTextHistory>},
    {"irc"_L1, "quitmsg"_L1, "Quill Harbor Messenger v 1.0"_L1, text<&SessionVariables::QuitMsg>},
    {"connect"_L1, "charset"_L1, "utf-8"_L1, text<&SessionVariables::Charset>},
    {"connect"_L1, "cafile"_L1, ""_L1, text<&SessionVariables::AuthoritiesFile>},
};

const QStringList networkKeys{u"server"_s, u"autojoin"_s, u"charset"_s};

} // namespace

void startSession(MainForm& channel, const SignInForm& login, const Settings& settings,
                  EventLoop& events, SessionVariables& variables, OwnTextStyle& style)
{
    channel.setPortText(QString::number(house_ports::first));
    channel.setComputerName(QSysInfo::machineHostName());
    events.Pause(0.01);
    style.TextColor = u'1';
    for (const SettingRow& row : rows) {
        const QString missing = row.missing.isNull() ? login.nickname() : QString(row.missing);
        settings.read(row.section, row.key, missing,
                      [&](const QString& value) { row.take(variables, value); });
    }
}

void readNetwork(const Settings& settings, SessionVariables& variables)
{
    for (const SettingRow& row : rows) {
        if (row.section == "connect"_L1 && networkKeys.contains(row.key))
            row.take(variables, settings.ReadSetting(row.section, row.key, row.missing));
    }
}
