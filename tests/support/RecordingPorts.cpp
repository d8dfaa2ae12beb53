#include "support/RecordingPorts.h"

#include "platform/Collation.h"

using namespace Qt::StringLiterals;

namespace {

QString truth(bool value)
{
    return value ? u"true"_s : u"false"_s;
}

} // namespace

void RecordingWinsock::Connect()
{
    m_state = Connecting;
    m_journal(m_name + ".Connect "_L1 + RemoteHost + u':' + QString::number(RemotePort));
}

void RecordingWinsock::Listen()
{
    m_state = Listening;
    m_journal(m_name + ".Listen"_L1);
}

void RecordingWinsock::Accept(qintptr requestID)
{
    m_state = Connected;
    m_journal(m_name + ".Accept "_L1 + QString::number(requestID));
}

void RecordingWinsock::Close()
{
    m_state = Closed;
    m_journal(m_name + ".Close"_L1);
}

void RecordingWinsock::SendData(const QString& text)
{
    const bool isLine = text.endsWith(u'\n') && text.count(u'\n') == 1 && !text.contains(u'\r');
    m_journal(isLine ? QString("<< "_L1 + text.chopped(1)) : m_name + ".SendData "_L1 + text);
}

void RecordingWinsock::setEventsHeld(bool held)
{
    m_journal(m_name + (held ? ".hold"_L1 : ".release"_L1));
}

void RecordingWinsock::arrive(const QString& data)
{
    m_waiting += data;
    Q_EMIT DataArrival(m_waiting.size());
}

void RecordingWinsock::beConnected()
{
    m_state = Connected;
    Q_EMIT ConnectEvent();
}

void RecordingEvents::DoEvents()
{
    ++yields;
    if (!onYield.isEmpty())
        onYield.takeFirst()();
}

void RecordingEvents::Pause(double seconds)
{
    m_journal("Pause "_L1 + QString::number(seconds));
    if (!onPause.isEmpty())
        onPause.takeFirst()();
}

void MemoryListBox::AddItem(const QString& text)
{
    qsizetype place = m_rows.size();
    if (m_order == Order::Sorted) {
        place = 0;
        while (place < m_rows.size() && collate(m_rows[place], text) <= 0)
            ++place;
    }
    m_rows.insert(place, text);
}

void MemoryListBox::RemoveItem(int index)
{
    if (index >= 0 && index < m_rows.size())
        m_rows.removeAt(index);
}

void MemoryListBox::Clear()
{
    m_rows.clear();
    m_journal(m_name + ".Clear"_L1);
}

void MemoryListBox::setList(int index, const QString& text)
{
    if (index >= 0 && index < m_rows.size())
        m_rows[index] = text;
}

void MemoryListBox::setEnabled(bool enabled)
{
    m_journal(m_name + ".Enabled="_L1 + truth(enabled));
}

void RecordingEntry::setCaption(const QString& caption)
{
    m_caption = caption;
    m_journal(m_name + ".Caption="_L1 + caption);
}

void RecordingEntry::setEnabled(bool enabled)
{
    m_enabled = enabled;
    m_journal(m_name + ".Enabled="_L1 + truth(enabled));
}

RecordingView::RecordingView(QString name, Journal& journal)
    : m_name(std::move(name))
    , m_journal(journal)
{
    view.onChange([this] { changed(); });
}

void RecordingView::changed()
{
    if (view.TextLength() == 0)
        m_journal(m_name + " emptied"_L1);
    else if (view.TextLength() > m_reported && view.Text().endsWith("\r\n"_L1))
        m_journal(m_name + "| "_L1 + view.runs(m_reported).chopped(2));
    else if (view.TextLength() > m_reported)
        return; // in the middle of a line
    m_reported = view.TextLength();
}

void RecordingLogin::setEntriesLocked(bool locked)
{
    m_journal("Login.locked="_L1 + truth(locked));
}

void RecordingLogin::setSignCaption(const QString& caption)
{
    m_journal("mnu_Sign="_L1 + caption);
}

void RecordingLogin::cmdSignout_Click()
{
    m_journal(u"Login.cmdSignout"_s);
}

void RecordingLogin::Login_Log()
{
    m_journal(u"Login.Log"_s);
}

void RecordingLogin::Login_UnLog()
{
    m_journal(u"Login.UnLog"_s);
}

void RecordingLogin::Show()
{
    m_journal(u"Login.Show"_s);
}

void RecordingLogin::Hide()
{
    m_journal(u"Login.Hide"_s);
}

RecordingChannel::RecordingChannel(Journal& journal)
    : dataIn(u"DataIn"_s, journal)
    , topic(u"Topic"_s, journal)
    , nicks(u"lstNicks"_s, MemoryListBox::Order::Sorted, journal)
    , connectEntry(u"Connect"_s, u"&Connect"_s, true, journal)
    , disconnectEntry(u"Disconnect"_s, u"&Disconnect"_s, false, journal)
    , m_journal(journal)
{
}

void RecordingChannel::setCmdCount(const QString& caption)
{
    m_journal("cmdCount="_L1 + caption);
}

void RecordingChannel::setVisible(bool visible)
{
    m_journal("Channel.Visible="_L1 + truth(visible));
}

void RecordingChannel::setPortText(const QString& port)
{
    Text1 = port;
    m_journal("Text1="_L1 + port);
}

void RecordingChannel::Show()
{
    m_journal(u"Channel.Show"_s);
}

void RecordingChannel::Hide()
{
    m_journal(u"Channel.Hide"_s);
}

void RecordingForms::showPassword()
{
    m_journal(u"frmPassword.Show"_s);
}

void RecordingForms::unloadPassword()
{
    m_journal(u"frmPassword.Unload"_s);
}

void RecordingForms::showUseNick()
{
    m_journal(u"usenick.Show"_s);
}

void RecordingForms::navigateHome(const QString& path)
{
    m_journal("Home "_L1 + path);
}

void RecordingForms::navigateMisc(const QString& path)
{
    m_journal("Misc "_L1 + path);
}

void RecordingForms::unloadSmallForms()
{
    m_journal(u"unloadSmallForms"_s);
}

void RecordingForms::End()
{
    m_journal(u"End"_s);
}

void RecordingForms::received(const QString& data)
{
    m_journal("DebugWin >> "_L1 + data);
}

void RecordingForms::sent(const QString& line)
{
    m_journal("DebugWin << "_L1 + line);
}

void RecordingBuddies::AddUsers(const QString& names)
{
    m_journal("BuddyList.AddUsers "_L1 + names);
}

void RecordingBuddies::clearOnline()
{
    m_journal(u"BuddyList.clear"_s);
}

void RecordingBuddies::Load()
{
    visible = true;
    m_journal(u"BuddyList.Load"_s);
}

void RecordingBuddies::Unload()
{
    visible = false;
    m_journal(u"BuddyList.Unload"_s);
}

void RecordingLists::AddBEI(const QString& mask, const QString& setter, const QString& time)
{
    m_journal("ChannelInfo.AddBEI "_L1 + mask + u'|' + setter + u'|' + time);
}

void RecordingLists::Show()
{
    visible = true;
    m_journal(u"ChannelInfo.Show"_s);
}

void RecordingPopup::Show()
{
    m_journal(u"frmPopup.Show"_s);
}

void RecordingPopup::setBody(const QString& text)
{
    m_journal("frmPopup.Label2="_L1 + text);
}

void RecordingDialogs::MsgBox(const QString& text, const QString& title, Icon)
{
    m_journal("MsgBox "_L1 + title + ": "_L1 + text);
}

bool RecordingDialogs::askYesNo(const QString& text, const QString& title)
{
    m_journal("askYesNo "_L1 + title + ": "_L1 + text);
    return answerYes;
}

QString RecordingDialogs::InputBox(const QString& prompt, const QString& title)
{
    m_journal("InputBox "_L1 + title + ": "_L1 + prompt);
    return nextInput;
}

void RecordingDialogs::Beep()
{
    m_journal(u"Beep"_s);
}

RecordingQuery::RecordingQuery(int number, Journal& journal)
    : m_name("Query"_L1 + QString::number(number))
    , m_journal(journal)
    , dataIn(m_name, journal)
{
}

void RecordingQuery::setCaption(const QString& caption)
{
    m_journal(m_name + ".Caption="_L1 + caption);
}

void RecordingQuery::setNickLabel(const QString& nick)
{
    m_journal(m_name + ".lblNick="_L1 + nick);
}

void RecordingQuery::setHostLabel(const QString& host)
{
    m_journal(m_name + ".lblHost="_L1 + host);
}

void RecordingQuery::setVisible(bool visible)
{
    m_journal(m_name + ".Visible="_L1 + truth(visible));
}

void RecordingQuery::setTag(const QString& tag)
{
    m_journal(m_name + ".Tag="_L1 + tag);
}

void RecordingQuery::SetFocus()
{
    m_journal(m_name + ".SetFocus"_L1);
}

void RecordingQuery::PutText(const QString& nick, const QString& text)
{
    m_journal(m_name + ".PutText "_L1 + nick + ": "_L1 + text);
}

void RecordingQuery::Unload()
{
    QueryNick.clear();
    m_journal(m_name + ".Unload"_L1);
}

PrivateWindow& RecordingQueries::create()
{
    const int number = static_cast<int>(windows.size()) + 1;
    windows.push_back(std::make_unique<RecordingQuery>(number, m_journal));
    return *windows.back();
}

void MemoryInputBox::setTypeface(const QString& family, int points)
{
    typeface = family + u' ' + QString::number(points);
}
