#include "room/NickList.h"

#include "controls/ListBox.h"
#include "room/RoomForm.h"

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

template<typename Matches>
int findRow(const ListBox& rows, Matches matches)
{
    for (int row = 0; row < rows.ListCount(); ++row) {
        if (matches(rows.List(row)))
            return row;
    }
    return -1;
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
    nick.remove(u'@');
    nick.remove(u'+');
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
    --m_nickCount;

    ListBox& rows = m_form.lstNicks();
    const int row = findRow(rows, [&](const QString& text) { return withoutSigns(text) == nick; });
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
    if (index != 0)
        m_nicks[index - 1].Nick = newNick;

    ListBox& rows = m_form.lstNicks();
    const int row = findRow(rows, [&](const QString& text) {
        return StripRank(text).compare(oldNick, Qt::CaseInsensitive) == 0;
    });
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
    for (int index = 1; index <= m_nickCount; ++index) {
        if (m_nicks[index - 1].Nick.compare(nick, sensitivity) == 0)
            return index;
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
    const int row = findRow(rows, [&](const QString& text) { return StripRank(text) == nick; });
    if (row == -1)
        return;
    rows.RemoveItem(row);
    rows.AddItem(NickDisplay(at(index)));
}

void NickList::showCount(QLatin1StringView bracket, int count)
{
    m_form.setCmdCount(" Total Chatters : "_L1 + bracket + QString::number(count) + " ]"_L1);
}
