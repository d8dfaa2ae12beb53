#include "room/ChannelInfo.h"

#include "common/Conversions.h"
#include "common/SessionVariables.h"
#include "common/UnixDate.h"
#include "controls/FormControls.h"
#include "controls/xpButton.h"
#include "platform/EventLoop.h"
#include "platform/Handlers.h"
#include "platform/LocaleTexts.h"
#include "wire/LineSink.h"

#include <QHBoxLayout>
#include <QHeaderView>
#include <QPersistentModelIndex>
#include <QPointer>
#include <QTreeWidget>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace {

constexpr QSize startSize{620, 380};

enum Column { Mask, By, When };
constexpr std::array<int, 2> columnWidths{260, 130}; // the last takes the rest

} // namespace

struct ChannelInfo::List
{
    QLatin1StringView button;
    QLatin1StringView caption;
    QLatin1StringView header;
    QChar letter;
};

const std::array<ChannelInfo::List, 3> ChannelInfo::lists{{
    {"cmdBans"_L1, "Bans"_L1, "Bans"_L1, u'b'},
    {"cmdExcepts"_L1, "Excepts"_L1, "Excepts"_L1, u'e'},
    {"cmdInvites"_L1, "Invities"_L1, "Invites"_L1, u'I'},
}};

ChannelInfo::ChannelInfo(const Parts& parts)
    : m_parts(parts)
    , lvBans(new QTreeWidget)
{
    lvBans->setObjectName(u"lvBans"_s);
    lvBans->setAccessibleName(u"Channel list"_s);
    lvBans->setHeaderLabels({u"Bans"_s, u"By"_s, u"When"_s});
    lvBans->setRootIsDecorated(false);
    lvBans->setUniformRowHeights(true);
    lvBans->setAllColumnsShowFocus(true);
    for (std::size_t column = 0; column < columnWidths.size(); ++column)
        lvBans->setColumnWidth(static_cast<int>(column), columnWidths[column]);

    auto* buttons = new QHBoxLayout;
    buttons->setSpacing(formSpacing);
    const auto addButton = [&](const QString& name, const QString& caption, auto handler) {
        xpButton* button = makeButton(name, caption);
        buttons->addWidget(button);
        parts.handlers.connect(button, &xpButton::Click, this, handler);
        return button;
    };
    for (const List& list : lists)
        addButton(list.button, list.caption, [this, &list] { showList(list); });
    addButton(u"cmdRemove"_s, u"Remove"_s, [this] { cmdRemove_Click(); });
    buttons->addStretch();
    auto* cmdOK = addButton(u"cmdOK"_s, u"OK"_s, [this] { Unload(); });

    auto* layout = new QVBoxLayout(this);
    setFormMargins(layout);
    layout->addWidget(lvBans);
    layout->addLayout(buttons);
    resize(startSize);
    new ButtonKeys(this);
    // On getting the focus the list would mark its first row as if that were selected.
    cmdOK->setFocus();
}

void ChannelInfo::AddBEI(const QString& mask, const QString& setter, const QString& time)
{
    if (mask.isEmpty())
        return;
    const QPersistentModelIndex place =
        lvBans->indexFromItem(new QTreeWidgetItem(lvBans, QStringList{mask}));
    const QPointer<ChannelInfo> self(this);
    m_parts.events.DoEvents();
    QTreeWidgetItem* row = self ? lvBans->itemFromIndex(place) : nullptr;
    if (!row)
        return;
    row->setText(By, setter);
    skipRest([&] { row->setText(When, locale_texts::shortDateTime(DateFromUnix(toInt32(time)))); });
}

void ChannelInfo::showList(const List& list)
{
    lvBans->clear();
    lvBans->headerItem()->setText(Mask, list.header);
    m_parts.variables.ListFetching = true;
    m_parts.server.SendData("MODE "_L1 % ChannelName % u' ' % list.letter);
}

void ChannelInfo::cmdRemove_Click()
{
    // No selection is no reason to stop: the line then ends in its blank.
    const QList<QTreeWidgetItem*> selected = lvBans->selectedItems();
    const QString mask = selected.isEmpty() ? QString() : selected.first()->text(Mask);
    const QString header = lvBans->headerItem()->text(Mask);
    for (const List& list : lists) {
        if (header == list.header)
            m_parts.server.SendData("mode "_L1 % ChannelName % " -"_L1 % list.letter % u' ' % mask);
    }
}

QString ChangeMode(const QString& modes, QChar letter, bool boxSet)
{
    if (boxSet == modes.contains(letter))
        return {};
    return QString(boxSet ? u'+' : u'-') + letter;
}

void ParseTheModes(const QString& modes, ModeFlags& boxes, ModeFlags& flags)
{
    for (std::size_t i = 0; i < flags.size(); ++i) {
        if (modes.contains(panelModes[static_cast<qsizetype>(i)]))
            boxes[i] = flags[i] = true;
    }
}
