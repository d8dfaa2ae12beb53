#pragma once

#include <QString>

// The web pages that the program knows. Their hosts are values of the build.
namespace web_addresses {

QString onHost(const QString& path); // a page of the network's own site
QString home();
QString misc();
QString author();
QString feedback();
QString search();

} // namespace web_addresses
