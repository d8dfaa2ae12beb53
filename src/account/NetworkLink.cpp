#include "account/NetworkLink.h"

#include "wire/ServerAddress.h"

using namespace Qt::StringLiterals;

NetworkLink::NetworkLink(QWidget* parent)
    : QToolButton(parent)
{
    setObjectName(u"lnkNetwork"_s);
    setProperty("link", true);
    setCursor(Qt::PointingHandCursor);
    setFocusPolicy(Qt::StrongFocus);
    setToolTip(u"Choose another network"_s);
}

void NetworkLink::showServer(const QString& server, bool failed)
{
    const ServerAddress address = ServerAddress::parse(server);
    const QString shown = address.isValid() ? address.shownHost : server;
    const QString text = "Network: "_L1 + shown + (failed ? " does not answer"_L1 : ""_L1);
    const QFontMetrics metrics = fontMetrics();
    constexpr int widest = 280;
    setText(metrics.elidedText(text, Qt::ElideMiddle, widest).replace(u'&', "&&"_L1));
    setAccessibleName(text);
}
