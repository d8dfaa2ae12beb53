#pragma once

#include <QByteArray>
#include <QString>

// The code page of old lines: one byte is one character, both ways. The five bytes that the code
// page leaves undefined survive a round trip; a character without a byte is sent as '?'.
QString fromWindows1252(const QByteArray& bytes);
QByteArray toWindows1252(const QString& text);
