#pragma once

#include "platform/Form.h"

#include <QString>

#include <array>

class EventLoop;
class Handlers;
class LineSink;
class QTreeWidget;
struct SessionVariables;

// Who is kept out of a room, let in all the same, and invited: three lists in one view. The text
// of the first column's header says which of them it shows. Only rows that the server sends appear
// here; nothing is taken out but by asking for the list anew.
class ChannelInfo final : public Form
{
    Q_OBJECT
public:
    struct Parts
    {
        SessionVariables& variables;
        LineSink& server;
        EventLoop& events;
        const Handlers& handlers;
    };

    explicit ChannelInfo(const Parts& parts);

    QString ChannelName;

    // Adds a row below the others; an empty mask adds none. Yields to the event loop, which may
    // be the end of the row or of the whole form.
    void AddBEI(const QString& mask, const QString& setter, const QString& time);

private:
    struct List;
    static const std::array<List, 3> lists;

    void showList(const List& list);
    void cmdRemove_Click();

    Parts m_parts;
    QTreeWidget* lvBans;
};

// For a panel with a check box for each of the room's modes: what a click on a box asks for, "+"
// or "-" and the letter, or nothing where the modes already say so.
QString ChangeMode(const QString& modes, QChar letter, bool boxSet);

// The letters of such a panel, and the places of their flags.
inline constexpr QLatin1StringView panelModes{"iklmnpst"};
using ModeFlags = std::array<bool, panelModes.size()>;

// Sets the boxes and the flags of the modes that are on; those of the others stay as they are.
void ParseTheModes(const QString& modes, ModeFlags& boxes, ModeFlags& flags);
