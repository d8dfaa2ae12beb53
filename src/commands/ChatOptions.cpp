#include "commands/ChatOptions.h"

#include "common/ControlCharacters.h"
#include "controls/MenuEntry.h"
#include "platform/Dialogs.h"
#include "platform/Handlers.h"
#include "text/MainView.h"
#include "view/RichTextBox.h"

using namespace Qt::StringLiterals;

OptionPair::OptionPair(MenuEntry& yes, MenuEntry& no)
    : m_yes{yes, true}
    , m_no{no, false}
{
    m_yes.set(true);
    m_no.set(false);
}

void OptionPair::Side::set(bool on)
{
    checked = on;
    entry.setChecked(on);
}

void OptionPair::click(Side& own, Side& partner, const std::function<void()>& step)
{
    own.set(!own.checked);
    partner.set(false);
    if (step)
        skipRest(step);
    if (!partner.checked)
        own.set(true);
}

ChatOptions::ChatOptions(const Parts& parts)
    : m_parts(parts)
    , m_privateChat(parts.mnu_pm_no, parts.mnu_pm_yes)
    , m_sound(parts.mnu_sound_no, parts.mnu_sound_yes)
{
}

QStringList ChatOptions::entries()
{
    return {u"mnu_pm_no"_s, u"mnu_pm_yes"_s, u"mnu_sound_no"_s, u"mnu_sound_yes"_s,
            u"mnu_options_clear"_s};
}

void ChatOptions::click(const QString& entry)
{
    if (entry == "mnu_pm_no"_L1)
        m_privateChat.clickYes();
    else if (entry == "mnu_pm_yes"_L1)
        m_privateChat.clickNo([this] { closequery(); });
    else if (entry == "mnu_sound_no"_L1)
        m_sound.clickYes();
    else if (entry == "mnu_sound_yes"_L1)
        m_sound.clickNo();
    else if (entry == "mnu_options_clear"_L1)
        mnu_options_clear_Click();
}

void ChatOptions::closequery()
{
    // The answer does not count: no window is closed by either button.
    m_parts.dialogs.askYesNo(
        u"You cannot recieve/send any message with chatters. Make Sure You have close all the "
        u"private message window - CLICK YES TO CLOSE ALL PRIVATE CHAT BOX Or CLICK NO TO CLOSE "
        u"YOURSELF?"_s,
        u"QuillHarborMessenger"_s);
}

void ChatOptions::mnu_options_clear_Click()
{
    m_parts.mainView.view().setText({});
    m_parts.mainView.write(strColor % "14- Cleared Chat Screen"_L1);
    m_parts.mainView.write(
        strColor % "14- You've cleared your chat screen, all previous public messages cleared."_L1);
}
