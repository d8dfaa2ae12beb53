#include "wire/Pace.h"

#include <algorithm>
#include <utility>

namespace {

// What a server of the strictest kind reckons for a line, and how far a client may be behind before
// lines gather there. More of them than fit there end the session.
constexpr qint64 lineMilliseconds = 2000;
constexpr qint64 bytesOfASecond = 120;
constexpr qint64 allowanceMilliseconds = 18000;

qint64 cost(const QByteArray& line)
{
    return lineMilliseconds + line.size() * 1000 / bytesOfASecond;
}

} // namespace

Pace::Pace(Write write, Now now)
    : m_write(std::move(write))
    , m_now(std::move(now))
{
    m_timer.setSingleShot(true);
    QObject::connect(&m_timer, &QTimer::timeout, this, [this] { sendWhatMay(); });
}

void Pace::send(const QByteArray& line)
{
    m_waiting += line;
    sendWhatMay();
}

void Pace::sendFirst(const QByteArray& line)
{
    write(line);
}

void Pace::flush()
{
    for (const QByteArray& line : std::exchange(m_waiting, {}))
        write(line);
    m_timer.stop();
}

void Pace::clear()
{
    m_waiting.clear();
    m_timer.stop();
    m_paidUntil = 0;
}

void Pace::write(const QByteArray& line)
{
    m_paidUntil = std::max(m_paidUntil, m_now()) + cost(line);
    m_write(line);
}

qint64 Pace::behind() const
{
    return std::max<qint64>(m_paidUntil - m_now(), 0);
}

void Pace::sendWhatMay()
{
    while (!m_waiting.isEmpty() && behind() <= allowanceMilliseconds)
        write(m_waiting.takeFirst());
    if (!m_waiting.isEmpty())
        m_timer.start(static_cast<int>(behind() - allowanceMilliseconds) + 1);
}
