#pragma once

#include "common/Int16.h"

#include <QList>
#include <QString>

class ListBox;
class RoomForm;

// One member of a room with its rank flags.
struct NickRecord
{
    QString Nick;
    bool Owner = false;
    bool SOp = false;
    bool Op = false;
    bool Voice = false;
    bool Helper = false;
};

// The row that shows a member, with one sign in front at most: @ hides +, + hides &, & hides ~.
// A half-operator has none.
QString NickDisplay(const NickRecord& record);

// The row without "@" and "+", wherever they stand. Other signs stay in.
QString StripRank(const QString& row);

// Who is in the room, twice over: records with ranks, and the sorted rows of lstNicks. Each is
// searched for what changes in the other, so they may drift apart. A disconnect empties only the
// rows; of two records of a nick the older one counts.
class NickList final
{
public:
    explicit NickList(RoomForm& form)
        : m_form(form)
    {
    }

    // The nick may carry rank signs anywhere; an empty one changes nothing. Gives the bare nick.
    QString AddNick(const QString& nick);
    void RemoveNick(const QString& nick);
    // True when the row was found; the record is renamed in either case.
    bool ChangeNck(const QString& oldNick, const QString& newNick);

    // One-based; outside 1 to NickCount SubscriptOutOfRange (9).
    const QString& GetNick(int index) const { return at(index).Nick; }
    int NickCount() const { return m_nickCount; }

    // These ignore case.
    bool InChannel(const QString& nick) const;
    bool isOp(const QString& nick) const;
    bool isVoice(const QString& nick) const;
    bool isHalfOp(const QString& nick) const;

    // These compare exactly. A row without its record raises SubscriptOutOfRange (9).
    void SetOwner(const QString& nick, bool on) { set(nick, &NickRecord::Owner, on); }
    void SetSOp(const QString& nick, bool on) { set(nick, &NickRecord::SOp, on); }
    void SetOp(const QString& nick, bool on) { set(nick, &NickRecord::Op, on); }
    void SetVoice(const QString& nick, bool on) { set(nick, &NickRecord::Voice, on); }
    void SetHelper(const QString& nick, bool on) { set(nick, &NickRecord::Helper, on); }

    int ChatterCount() const { return m_chatterCount; }
    void clearChatterCount() { m_chatterCount = 0; }
    void showChatterCount();
    // The constant 0, whatever ChatterCount says.
    void showNoChatters();

private:
    const NickRecord& at(int index) const;
    int indexOf(const QString& nick, Qt::CaseSensitivity sensitivity) const; // 0: not there
    bool flagOf(const QString& nick, bool NickRecord::*flag) const;
    void set(const QString& nick, bool NickRecord::*flag, bool on);
    void showCount(QLatin1StringView bracket, int count);

    RoomForm& m_form;
    QList<NickRecord> m_nicks;
    QList<quint32> m_keys; // of each record's nick: a look at all nicks takes its time
    Int16 m_nickCount;
    Int16 m_chatterCount;
};
