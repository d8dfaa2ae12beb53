#include "desktop/WebAddresses.h"

using namespace Qt::StringLiterals;

namespace web_addresses {

QString onHost(const QString& path)
{
    return QString(QStringLiteral(QH_WEB_HOST) + path);
}

QString home()
{
    return onHost(u"/quillharbor"_s);
}

QString misc()
{
    return onHost(u"/quillmisc"_s);
}

QString author()
{
    return onHost(u"/qhmauthor"_s);
}

QString feedback()
{
    return QStringLiteral(QH_FEEDBACK_HOST "//");
}

QString search()
{
    return QStringLiteral(QH_SEARCH_PAGE);
}

} // namespace web_addresses
