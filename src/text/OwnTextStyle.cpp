#include "text/OwnTextStyle.h"

#include "common/ControlCharacters.h"

QString OwnTextStyle::coded(const QString& text) const
{
    return BoldPrefix % strColor % TextColor % u' ' % UnderlinePrefix % text;
}
