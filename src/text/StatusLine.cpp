#include "text/StatusLine.h"

#include "common/ControlCharacters.h"
#include "common/RunTimeError.h"
#include "platform/Handlers.h"
#include "text/MainView.h"

void StatusLine::WriteStatus(const QString& text, int color) const
{
    const auto write = [&] { m_mainView.write(strColor % QString::number(color) % text); };
    try {
        write();
    } catch (const RunTimeError&) {
        skipRest(write); // one more try
    }
}
