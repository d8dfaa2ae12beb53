#include "talk/Query.h"

#include "common/ControlCharacters.h"
#include "common/SessionVariables.h"
#include "common/TextHelpers.h"
#include "controls/KeyCodes.h"
#include "controls/ListBox.h"
#include "controls/SvgPicture.h"
#include "platform/Clock.h"
#include "platform/Dialogs.h"
#include "platform/EventLoop.h"
#include "platform/Handlers.h"
#include "room/ChannelTable.h"
#include "text/Links.h"
#include "text/OwnTextStyle.h"
#include "text/TextWriter.h"
#include "wire/LineSink.h"

#include <QLineEdit>
#include <QToolButton>

using namespace Qt::StringLiterals;

Query::Query(const Desk& desk)
    : m_desk(desk)
    , m_incoming(IncomingText::privateTalk, desk.writer, desk.server, desk.written)
{
}

Query::~Query() = default;

QueryForm& Query::form()
{
    if (m_form)
        return *m_form;
    m_form = std::make_unique<QueryForm>(m_desk.look);
    m_form->setConnected(m_desk.connected);
    connectForm(*m_form);
    try {
        Form_Load();
    } catch (...) {
        m_form.reset();
        throw;
    }
    return *m_form;
}

void Query::connectForm(QueryForm& form)
{
    const Handlers& handlers = m_desk.handlers;
    ChatView& view = form.DataIn();
    handlers.connect(&form, &QueryForm::unloadRequested, &form, [this] { Unload(); });
    handlers.connect(&form, &QueryForm::Activate, &form, [this] { Form_Activate(); });
    handlers.connect(&form, &QueryForm::MouseMove, &form, [this] { setUnread(0); });
    handlers.connect(&form, &QueryForm::KeyDown, &form,
                     [this](int keyCode) { DataOut_KeyDown(keyCode); });
    handlers.connect(&form, &QueryForm::KeyPress, &form,
                     [this](int character) { DataOut_KeyPress(character); });
    handlers.connect(&form.Image2(), &SvgPicture::Click, &form,
                     [this] { DataOut_KeyPress(key_codes::Enter); });
    handlers.connect(&form.flsh(), &QTimer::timeout, &form, [this] { flsh_Timer(); });
    handlers.connect(&view, &ChatView::MouseMove, &form,
                     [this](const QPoint& point) { DataIn_MouseMove(point); });
    handlers.connect(&view, &ChatView::MouseUp, &form,
                     [this](const QPoint& point) { DataIn_MouseUp(point); });
    handlers.connect(&view, &ChatView::DblClick, &form, [this] { DataIn_DblClick(); });
    handlers.connect(&view, &ChatView::Click, &form, [&form] { form.DataOut().setFocus(); });
    view.setLinks({linksIn, [this](const QString& link) {
                       m_desk.handlers.run([&] { m_desk.links.OpenLink(link); });
                   }});
    connectLinks(form);
    form.setNames([this] {
        RoomForm& room = m_desk.channels.main().form;
        return QStringList(QueryNick) + namesByLastSpeaker(room.DataIn(), room.lstNicks());
    });
}

void Query::connectLinks(QueryForm& form)
{
    const auto on = [&](QueryForm::Link link, std::function<void()> handler) {
        m_desk.handlers.connect(&form.link(link), &QToolButton::clicked, &form, std::move(handler));
    };
    QueryNeighbours& neighbours = m_desk.neighbours;
    on(QueryForm::Label4, [this] { Unload(); });
    on(QueryForm::Label5, [&] { neighbours.showAuthor(); });
    on(QueryForm::Label6, [&] { neighbours.showIgnoreList(); });
    on(QueryForm::Label7, [&] { neighbours.showFontOption(); });
    on(QueryForm::Label8, [&] { neighbours.showPalette(); });
    on(QueryForm::cmdOptions, [&] { neighbours.showBuddyList(); });
    on(QueryForm::LabelAction, [this] { LabelAction_Click(); });
}

void Query::Form_Load()
{
    const QString time = m_desk.clock.now().toString(u"HH:mm"_s);
    m_desk.writer.WriteView(m_form->DataIn(), strColor % "3Chat Started On "_L1 %
                                                  m_desk.clock.shortDate() % " - "_L1 % time);
    setUnread(m_unread); // the place may have been closed while it was flashing
}

void Query::Form_Activate()
{
    setUnread(0);
    form().DataOut().setFocus();
}

void Query::Unload()
{
    if (!m_form)
        return;
    QueryNick.clear();
    m_form->setCaption({});
    m_form->setNickLabel({});
    Form::end(std::move(m_form));
}

RichTextBox& Query::DataIn()
{
    return form().DataIn();
}

void Query::setCaption(const QString& caption)
{
    form().setCaption(caption);
}

void Query::setNickLabel(const QString& nick)
{
    form().setNickLabel(nick);
}

void Query::setHostLabel(const QString& host)
{
    form().setHostLabel(host);
}

void Query::setVisible(bool visible)
{
    form().setVisible(visible);
}

void Query::SetFocus()
{
    form().Show();
    if (form().isActiveWindow()) // otherwise becoming active says so
        Form_Activate();
}

void Query::PutText(const QString& nick, const QString& text)
{
    m_incoming.PutText(DataIn(), nick, text);
    m_desk.PlayWave(u"send.wav"_s);
    setUnread(1);
}

void Query::DoHistory(const QString& text)
{
    m_history.add(text, m_desk.variables.MaxTextHistory);
}

void Query::setUnread(int unread)
{
    m_unread = unread;
    if (!m_form)
        return;
    // It ticks only while there is something to flash for. Further messages do not put off the
    // next tick.
    if (unread == 0)
        m_form->flsh().stop();
    else if (!m_form->flsh().isActive())
        m_form->flsh().start();
}

void Query::flsh_Timer()
{
    if (m_unread == 1)
        m_desk.FlashWindow(*m_form);
}

void Query::DataOut_KeyDown(int keyCode)
{
    const std::optional<QString> line =
        keyCode == key_codes::Up ? m_history.back() : m_history.forward();
    if (line)
        form().DataOut().setText(*line);
    else
        m_desk.dialogs.Beep();
}

void Query::DataOut_KeyPress(int character)
{
    QLineEdit& DataOut = form().DataOut();
    setUnread(0);
    form().setCaption(QueryNick);
    if (character == key_codes::Enter) {
        if (trimBlanks(DataOut.text()).isEmpty())
            return;
        const QString message = m_desk.style.coded(DataOut.text());
        resumeNext(
            [&] {
                m_desk.writer.WriteView(DataIn(), strColor % "4<"_L1 % m_desk.variables.MyNick %
                                                      "> "_L1 % message);
            },
            // No colon before the text: servers take all of the rest for it.
            [&] { m_desk.server.SendData("PRIVMSG "_L1 % form().Caption() % u' ' % message); },
            [&] { DataOut.clear(); }, [&] { form().DataIn().scrollToEnd(); });
    }
    skipRest([&] { form().setInputColor(m_desk.neighbours.inputColor()); });
}

QString Query::wordAt(const QPoint& point)
{
    const ChatView& view = form().DataIn();
    return WordAt(view, view.offsetAt(point));
}

void Query::DataIn_MouseMove(const QPoint& point)
{
    setUnread(0);
    const bool reacts = pointerFor(wordAt(point)) == MousePointer::Custom;
    form().setPointerShape(reacts ? Qt::PointingHandCursor : Qt::ArrowCursor);
}

void Query::DataIn_MouseUp(const QPoint& point)
{
    const QueryForm* released = m_form.get();
    m_desk.events.DoEvents();
    if (m_form.get() == released) // it may have been closed
        ClickedWord = wordAt(point);
}

void Query::DataIn_DblClick()
{
    // Line ends do not part words. What stands behind one is another line of the conversation and
    // must not become another line to the server.
    const QString target = TextBefore(ClickedWord, u'\n');
    if (isLink(ClickedWord))
        m_desk.links.OpenLink(target);
    else if (ClickedWord.startsWith(u'#') && m_desk.channels.FindChannel(target) == -1)
        m_desk.server.SendData("JOIN "_L1 + target);
}

void Query::LabelAction_Click()
{
    // Whoever is selected in the room, not the peer of this conversation.
    const QString nick = StripRank(m_desk.channels.main().form.lstNicks().Text());
    if (beforeNul(nick) == m_desk.variables.ownNick())
        m_desk.dialogs.MsgBox(u"You cannot do that to yourself!"_s, u"Error"_s);
    const QString action =
        m_desk.dialogs.InputBox(u"Type Your Own Action Message"_s, u"Action Message"_s);
    m_desk.server.SendData(m_desk.ProcessInput(nick, "me "_L1 + action));
}

QueryFactory::QueryFactory(Query::Desk desk)
    : m_desk(std::move(desk))
{
}

PrivateWindow& QueryFactory::create()
{
    return *m_places.emplace_back(std::make_unique<Query>(m_desk));
}

void QueryFactory::setConnected(bool connected)
{
    m_desk.connected = connected;
    for (const auto& place : m_places) {
        if (QueryForm* form = place->window())
            form->setConnected(connected);
    }
}
