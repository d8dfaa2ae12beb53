#include "room/NickList.h"

#include "controls/ListBox.h"
#include "room/RoomForm.h"

#include <algorithm>
#include <array>

namespace {

using namespace Qt::StringLiterals;

struct RankSign
{
    QChar sign;
    bool NickRecord::*flag;
};

// Owners and administrators arrive as plain operators.
constexpr std::array<RankSign, 5> arrivingSigns{{
    {u'~', &NickRecord::Op},
    {u'&', &NickRecord::Op},
    {u'@', &NickRecord::Op},
    {u'%', &NickRecord::Helper},
    {u'+', &NickRecord::Voice},
}};

// From weak to strong.
constexpr std::array<RankSign, 4> shownSigns{{
    {u'~', &NickRecord::Owner},
    {u'&', &NickRecord::SOp},
    {u'+', &NickRecord::Voice},
    {u'@', &NickRecord::Op},
}};

QString withoutSigns(QString row)
{
    for (const RankSign& rank : arrivingSigns)
        row.remove(rank.sign);
    return row;
}

bool isArrivingSign(QChar c)
{
    return std::ranges::find(arrivingSigns, c, &RankSign::sign) != arrivingSigns.end();
}

bool isStrippedSign(QChar c)
{
    return c == u'@' || c == u'+';
}

// The first row that is this nick when some signs are taken out of it. Rows are many, and their
// signs mostly stand in front: hardly one has to be copied for it.
template<typename IsSign>
int findRow(const ListBox& rows, const QString& nick, Qt::CaseSensitivity sensitivity,
            IsSign isSign)
{
    return rows.find([&](const QString& row) {
        const auto* const start = std::ranges::find_if_not(row, isSign);
        const QStringView rest(start, row.cend());
        if (rest.size() < nick.size())
            return false;
        if (rest.size() == nick.size())
            return rest.compare(nick, sensitivity) == 0 && std::ranges::none_of(rest, isSign);
        if (std::ranges::none_of(rest, isSign))
            return false;
        QString stripped = row;
        stripped.removeIf(isSign);
        return stripped.compare(nick, sensitivity) == 0;
    });
}

// Nicks that are the same in any case have the same key. Of a pair of surrogates either half alone
// has no other case: they do not count.
quint32 keyOf(QStringView nick)
{
    quint32 key = 0;
    for (const QChar c : nick) {
        if (!c.isSurrogate())
            key = key * 31 + c.toCaseFolded().unicode();
    }
    return key;
}

} // namespace

QString NickDisplay(const NickRecord& record)
{
    QString prefix;
    for (const RankSign& rank : shownSigns) {
        if (record.*rank.flag)
            prefix = rank.sign;
    }
    return prefix + record.Nick;
}

QString StripRank(const QString& row)
{
    QString nick = row;
    nick.removeIf(isStrippedSign);
    return nick;
}

QString NickList::AddNick(const QString& nick)
{
    if (nick.isEmpty())
        return {};
    ++m_nickCount;
    NickRecord record;
    for (const RankSign& rank : arrivingSigns) {
        if (nick.contains(rank.sign))
            record.*rank.flag = true;
    }
    record.Nick = withoutSigns(nick);
    m_nicks.append(record);
    m_keys.append(keyOf(record.Nick));
    m_form.lstNicks().AddItem(NickDisplay(record));
    ++m_chatterCount;
    showChatterCount();
    return record.Nick;
}

void NickList::RemoveNick(const QString& nick)
{
    const int index = indexOf(nick, Qt::CaseSensitive);
    if (index == 0)
        return;
    m_nicks.removeAt(index - 1);
    m_keys.removeAt(index - 1);
    --m_nickCount;

    ListBox& rows = m_form.lstNicks();
    const int row = findRow(rows, nick, Qt::CaseSensitive, isArrivingSign);
    if (row == -1)
        return;
    rows.RemoveItem(row);
    --m_chatterCount;
    // One blank less than elsewhere in front of the bracket: that is how a removal reads.
    showCount("[ "_L1, m_chatterCount);
}

bool NickList::ChangeNck(const QString& oldNick, const QString& newNick)
{
    const int index = indexOf(oldNick, Qt::CaseInsensitive);
    if (index != 0) {
        m_nicks[index - 1].Nick = newNick;
        m_keys[index - 1] = keyOf(newNick);
    }

    ListBox& rows = m_form.lstNicks();
    const int row = findRow(rows, oldNick, Qt::CaseInsensitive, isStrippedSign);
    if (row == -1)
        return false;
    // In place: the row moves to where it sorts with its next change of rank.
    rows.setList(row, NickDisplay(at(index)));
    return true;
}

bool NickList::InChannel(const QString& nick) const
{
    return indexOf(nick, Qt::CaseInsensitive) != 0;
}

bool NickList::isOp(const QString& nick) const
{
    return flagOf(nick, &NickRecord::Op);
}

bool NickList::isVoice(const QString& nick) const
{
    return flagOf(nick, &NickRecord::Voice);
}

bool NickList::isHalfOp(const QString& nick) const
{
    return flagOf(nick, &NickRecord::Helper);
}

void NickList::showChatterCount()
{
    showCount(" [ "_L1, m_chatterCount);
}

void NickList::showNoChatters()
{
    showCount(" [ "_L1, 0);
}

const NickRecord& NickList::at(int index) const
{
    if (index < 1 || index > m_nickCount)
        throw RunTimeError(RunTimeError::Number::SubscriptOutOfRange);
    return m_nicks[index - 1];
}

int NickList::indexOf(const QString& nick, Qt::CaseSensitivity sensitivity) const
{
    const quint32 key = keyOf(nick);
    for (auto at = std::ranges::find(m_keys, key); at != m_keys.end();
         at = std::find(at + 1, m_keys.end(), key)) {
        const auto index = at - m_keys.begin();
        if (m_nicks[index].Nick.compare(nick, sensitivity) == 0)
            return static_cast<int>(index) + 1;
    }
    return 0;
}

bool NickList::flagOf(const QString& nick, bool NickRecord::*flag) const
{
    const int index = indexOf(nick, Qt::CaseInsensitive);
    return index != 0 && m_nicks[index - 1].*flag;
}

void NickList::set(const QString& nick, bool NickRecord::*flag, bool on)
{
    const int index = indexOf(nick, Qt::CaseSensitive);
    if (index != 0)
        m_nicks[index - 1].*flag = on;

    ListBox& rows = m_form.lstNicks();
    const int row = findRow(rows, nick, Qt::CaseSensitive, isStrippedSign);
    if (row == -1)
        return;
    rows.RemoveItem(row);
    rows.AddItem(NickDisplay(at(index)));
}

void NickList::showCount(QLatin1StringView bracket, int count)
{
    m_form.setCmdCount(" Total Chatters : "_L1 + bracket + QString::number(count) + " ]"_L1);
}
