#pragma once

#include "platform/Form.h"
#include "room/ChannelInfo.h"
#include "room/ListsForm.h"

struct Room;

// The form with a room's lists as the session and the menu reach it: every use loads it, so a
// list that ends after the form was closed brings it back, without its caption.
class ChannelLists final : public ListsForm
{
public:
    ChannelLists(const ChannelInfo::Parts& parts, const Room& room);

    void mnu_chan_ban_Click();

    void AddBEI(const QString& mask, const QString& setter, const QString& time) override;
    bool Visible() const override { return m_form.isVisible(); }
    void Show() override { m_form->Show(); }

private:
    ChannelInfo::Parts m_parts;
    const Room& m_room;
    FormSlot<ChannelInfo> m_form;
};
